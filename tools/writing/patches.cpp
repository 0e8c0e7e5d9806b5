// SPDX-License-Identifier: MIT
#include "writing/patches.h"

#include <algorithm>

namespace tool {

void sort(std::vector<Patch>& patches) {
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch& one, const Patch& other) { return one.begin < other.begin; });
}

std::string apply(std::string_view text, const std::vector<Patch>& patches) {
    std::size_t size = text.size();
    for (const Patch& patch : patches)
        size = size - (patch.end - patch.begin) + patch.text.size();
    std::string patched;
    patched.reserve(size);
    std::size_t done = 0;
    for (const Patch& patch : patches) {
        patched += text.substr(done, patch.begin - done);
        patched += patch.text;
        done = patch.end;
    }
    return patched += text.substr(done);
}

}  // namespace tool
