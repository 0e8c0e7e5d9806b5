// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_PATCHES_H
#define QUXML_TOOLS_WRITING_PATCHES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// What takes the place of the bytes from `begin` up to `end` of a text.
struct Patch {
    std::size_t begin;
    std::size_t end;  // the byte after; equal to `begin` for an insertion
    std::string text;
};

/// Sorts patches by their places. No two of them may have a byte in common.
void sort(std::vector<Patch>& patches);

/// The text with all of the sorted patches applied. Linear.
std::string apply(std::string_view text, const std::vector<Patch>& patches);

}  // namespace tool

#endif
