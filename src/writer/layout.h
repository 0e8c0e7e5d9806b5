#ifndef QUXML_WRITER_LAYOUT_H
#define QUXML_WRITER_LAYOUT_H

// The two layouts in one number, the depth: negative for compact text, which has no white space of its own,
// and n >= 0 for formatted text at nesting level n, which has an element a line and two spaces a level.

#include <cstddef>
#include <string>

namespace quxml {

inline bool is_formatted(int depth) {
    return depth >= 0;
}

/// The depth of the children of a node written at `depth`.
inline int get_child_depth(int depth) {
    return is_formatted(depth) ? depth + 1 : -1;
}

inline void append_indentation(std::string& out, int depth) {
    if (depth > 0)
        out.append(2 * static_cast<std::size_t>(depth), ' ');
}

inline void append_line_end(std::string& out, int depth) {
    if (is_formatted(depth))
        out += '\n';
}

}  // namespace quxml

#endif
