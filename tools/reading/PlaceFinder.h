// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_PLACE_FINDER_H
#define QUXML_TOOLS_READING_PLACE_FINDER_H

#include <cstddef>
#include <string_view>

namespace tool {

/// A place in a text, counted from 1; the column in characters.
struct Place {
    int line;
    int column;
};

/// Finds the places of bytes of a UTF-8 text. The bytes are asked for in ascending order, so that the text is
/// walked only once.
class PlaceFinder {
public:
    explicit PlaceFinder(std::string_view walked_text) : text(walked_text) {}

    Place find(std::size_t byte);

private:
    std::string_view text;
    std::size_t reached = 0;
    Place place{1, 1};
};

/// The line with this number, without its end; empty if there is none.
std::string_view get_line(std::string_view text, int number);

}  // namespace tool

#endif
