// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_WORDS_H
#define QUXML_TOOLS_TERMINAL_WORDS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// What XML takes for white space.
constexpr std::string_view white_space = " \t\r\n";

/// Whether a byte begins a character of UTF-8 text, as all but continuation bytes do.
inline bool begins_character(char byte) {
    constexpr unsigned mask = 0xC0;
    constexpr unsigned continuation = 0x80;
    return (static_cast<unsigned char>(byte) & mask) != continuation;
}

/// The FILE of a command line that names none.
constexpr const char* standard_input = "-";

/// As names in paths are compared: only letters of ASCII have an upper and a lower case, whatever the locale.
inline char in_lower_case(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

inline bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

inline bool is_white_space(std::string_view text) {
    return text.find_first_not_of(white_space) == std::string_view::npos;
}

inline bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

inline bool has_any(const std::string& text, const char* characters) {
    return text.find_first_of(characters) != std::string::npos;
}

/// Where the text after a character that was looked for begins; without one, that is all of the text.
inline std::size_t get_place_after(std::size_t found) {
    return found == std::string::npos ? 0 : found + 1;
}

inline std::string quote(const std::string& text) {
    return '"' + text + '"';
}

}  // namespace tool

#endif
