#ifndef QUXML_WRITER_LAYOUT_H
#define QUXML_WRITER_LAYOUT_H

// The two layouts in one number, the depth: negative for compact text, which has no white space of its own,
// and n >= 0 for formatted text at nesting level n, which has an element a line and two spaces a level.

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

inline void append_indentation(TextBuffer& out, int depth) {
    constexpr std::string_view blanks = "                                                                ";
    constexpr int levels = blanks.size() / 2;
    for (; depth > levels; depth -= levels)
        out.append(blanks);
    if (depth > 0)
        out.append(blanks.substr(0, 2 * static_cast<std::size_t>(depth)));
}

inline void append_line_end(TextBuffer& out, int depth) {
    if (is_formatted(depth))
        out.append('\n');
}

}  // namespace quxml

#endif
