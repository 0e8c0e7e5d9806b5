// SPDX-License-Identifier: MIT
#include "reading/PlaceFinder.h"

#include <algorithm>

#include "terminal/words.h"

namespace tool {

Place PlaceFinder::find(std::size_t byte) {
    for (; reached < std::min(byte, text.size()); ++reached) {
        if (text[reached] == '\n')
            place = {place.line + 1, 1};
        else if (begins_character(text[reached]))
            ++place.column;
    }
    // The byte at `reached` has not been counted yet, so a character's first byte has its column.
    return place;
}

std::string_view get_line(std::string_view text, int number) {
    std::size_t begin = 0;
    for (int line = 1; line < number; ++line) {
        const std::size_t end = text.find('\n', begin);
        if (end == std::string_view::npos)
            return {};
        begin = end + 1;
    }
    std::string_view line = text.substr(begin, text.find('\n', begin) - begin);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

}  // namespace tool
