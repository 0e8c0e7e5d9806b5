// SPDX-License-Identifier: MIT
#include "terminal/terminal.h"

#include <libxml/xmlstring.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "terminal/words.h"

namespace tool {

namespace {

/// Some terminals take the characters U+0080 to U+009F for control characters.
bool is_control_sequence(std::string_view character) {
    constexpr unsigned char first_of_them = 0x80;
    constexpr unsigned char after_them = 0xA0;
    return character.size() == 2 && character[0] == '\xC2' &&
           static_cast<unsigned char>(character[1]) >= first_of_them &&
           static_cast<unsigned char>(character[1]) < after_them;
}

/// Such characters can make a line read as another: U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069.
bool changes_direction(std::string_view character) {
    const std::string_view first = character.substr(0, 2);
    const char last = character.back();
    if (character.size() != 3 || (first != "\xE2\x80" && first != "\xE2\x81"))
        return false;
    return first == "\xE2\x81" ? last >= '\xA6' && last <= '\xA9'
                               : last == '\x8E' || last == '\x8F' || (last >= '\xAA' && last <= '\xAE');
}

/// How many bytes the character at the front has; 0 if it is not UTF-8.
std::size_t count_bytes_of_character(std::string_view text) {
    int size = static_cast<int>(std::min<std::size_t>(text.size(), 4));
    const int character = xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(text.data()), &size);
    return character < 0 ? 0 : static_cast<std::size_t>(size);
}

/// The character at the front or, where there is none, the byte.
std::string_view get_first(std::string_view text) {
    return text.substr(0, std::max<std::size_t>(count_bytes_of_character(text), 1));
}

bool is_harmless(std::string_view character) {
    constexpr unsigned char escape_of_terminals = 0x7f;
    const auto byte = static_cast<unsigned char>(character.front());
    const bool is_plain = byte >= ' ' && byte < escape_of_terminals;
    return character.size() == 1 ? is_plain
                                 : !is_control_sequence(character) && !changes_direction(character);
}

std::string blank_out(std::string_view character) {
    if (character == "\t" || character == "\n" || character == "\r")
        return " ";
    return is_harmless(character) ? std::string(character) : "?";
}

std::string escape_bytes(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned base = 16;
    std::string escaped;
    for (const char byte : bytes) {
        const auto number = static_cast<unsigned char>(byte);
        escaped += "\\x";
        escaped += digits[number / base];
        escaped += digits[number % base];
    }
    return escaped;
}

std::string escape_character(std::string_view character) {
    switch (character.front()) {
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
        case '\\':
            return "\\\\";
        case '"':
            return "\\\"";
        default:
            return is_harmless(character) ? std::string(character) : escape_bytes(character);
    }
}

std::string replace_each(std::string_view text, std::string (*replace)(std::string_view character)) {
    std::string replaced;
    while (!text.empty()) {
        const std::string_view character = get_first(text);
        replaced += replace(character);
        text.remove_prefix(character.size());
    }
    return replaced;
}

/// As much of a text as an excerpt shows, cut between two characters.
std::string_view get_beginning(std::string_view text) {
    constexpr std::size_t longest = 50;
    std::size_t size = std::min(text.size(), longest);
    while (size > 0 && size < text.size() && !begins_character(text[size]))
        --size;
    return text.substr(0, size);
}

}  // namespace

bool has_terminal() {
    return isatty(STDERR_FILENO) == 1;
}

std::string to_printable(std::string_view text) {
    return replace_each(text, blank_out);
}

std::string to_printable_lines(std::string_view text) {
    const auto replace = [](std::string_view character) {
        return character == "\n" ? "\n" : blank_out(character);
    };
    return replace_each(text, replace);
}

std::string escape_controls(std::string_view text) {
    return replace_each(text, escape_character);
}

std::string get_excerpt(std::string_view text) {
    const std::string_view beginning = get_beginning(text);
    return to_printable(beginning) + (beginning.size() < text.size() ? "..." : "");
}

std::string quote_excerpt(std::string_view text) {
    if (text.empty())
        return "";
    const std::string_view beginning = get_beginning(text);
    return quote(escape_controls(beginning)) + (beginning.size() < text.size() ? "..." : "");
}

}  // namespace tool
