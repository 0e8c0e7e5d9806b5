// SPDX-License-Identifier: MIT
#include "paths/cutting.h"

#include <cstddef>

namespace tool {

std::string trim(const std::string& text, const char* characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::string without_quotes(const std::string& text) {
    return trim(text, "\"'");
}

std::vector<std::string> split(const std::string& text, const char* separators) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    std::size_t end = 0;
    while ((end = text.find_first_of(separators, begin)) != std::string::npos) {
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

}  // namespace tool
