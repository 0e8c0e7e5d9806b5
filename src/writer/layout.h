// SPDX-License-Identifier: MIT
#ifndef QUXML_WRITER_LAYOUT_H
#define QUXML_WRITER_LAYOUT_H

// The two layouts in one number, the depth: negative for compact text, which has no white space of its own,
// and n >= 0 for formatted text at nesting level n, which has one element per line and two spaces per level.

#include <cstddef>
#include <string_view>

#include "TextBuffer.h"

namespace quxml {

inline bool is_formatted(int depth) {
    return depth >= 0;
}

/// The depth of the children of a node written at `depth`.
inline int get_child_depth(int depth) {
    return is_formatted(depth) ? depth + 1 : -1;
}

/// Two spaces per level, from a run of spaces that is cut short.
inline void append_indentation(TextBuffer& out, int depth) {
    constexpr std::string_view spaces = "                                ";
    constexpr int many_levels = spaces.size() / 2;
    for (; depth > many_levels; depth -= many_levels)
        out.append(spaces);
    if (depth > 0)
        out.append(spaces.substr(0, 2 * static_cast<std::size_t>(depth)));
}

inline void append_line_end(TextBuffer& out, int depth) {
    if (is_formatted(depth))
        out.append('\n');
}

}  // namespace quxml

#endif
