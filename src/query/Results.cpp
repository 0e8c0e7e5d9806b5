// SPDX-License-Identifier: MIT
#include "Results.h"

#include <algorithm>

namespace quxml {

void Results::settle() {
    std::sort(waiting.begin(), waiting.end(), std::less<>());
    auto place = set.end();
    std::for_each(waiting.rbegin(), waiting.rend(), [&](Node* node) { place = set.insert(place, node); });
    waiting.clear();
}

}  // namespace quxml
