#ifndef QUXML_WRITER_LAYOUT_H
#define QUXML_WRITER_LAYOUT_H

// The two layouts in one number, the depth: negative for compact text, which has no white space of its own,
// and n >= 0 for formatted text at nesting level n, which has one element per line and two spaces per level.

#include <cstddef>

#include "TextBuffer.h"

namespace quxml {

inline bool is_formatted(int depth) {
    return depth >= 0;
}

/// The depth of the children of a node written at `depth`.
inline int get_child_depth(int depth) {
    return is_formatted(depth) ? depth + 1 : -1;
}

/// Pieces whose length is known beforehand: to copy a few bytes, of a number that differs from line to line,
/// takes longer than writing the whole rest of a short line.
inline void append_indentation(TextBuffer& out, int depth) {
    constexpr int many_levels = 8;
    for (; depth >= many_levels; depth -= many_levels)
        out.append("                ");
    for (; depth > 0; --depth)
        out.append("  ");
}

inline void append_line_end(TextBuffer& out, int depth) {
    if (is_formatted(depth))
        out.append('\n');
}

}  // namespace quxml

#endif
