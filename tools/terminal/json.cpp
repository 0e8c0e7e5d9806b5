// SPDX-License-Identifier: MIT

// Not every text that passes for UTF-8 elsewhere is valid: libxml2 lets sequences pass that are longer than they need to be.
// A parser of JSON may refuse the whole output for one of them, so each character is checked here once more.

#include "terminal/json.h"

#include <cstddef>

#include "terminal/words.h"

namespace tool {

namespace {

unsigned char get_byte(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

// NOLINTBEGIN(readability-magic-numbers): the numbers are those of UTF-8 itself, and a name says no more.

/// How many bytes a character has that begins with this one; 0 if none does.
std::size_t get_size(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4)
        return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// Whether the second byte makes neither a character that fewer bytes could hold, nor a surrogate, nor one that is beyond
/// U+10FFFF.
bool is_second(unsigned char first, unsigned char second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second < 0xA0;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second < 0x90;
        default:
            return true;
    }
}

/// The character at the front; empty if there is no valid one.
std::string_view get_character(std::string_view text) {
    const std::string_view character = text.substr(0, get_size(get_byte(text, 0)));
    if (character.size() != get_size(get_byte(text, 0)))
        return {};
    for (std::size_t at = 1; at < character.size(); ++at) {
        if (begins_character(character[at]))
            return {};
    }
    const bool is_valid = character.size() < 2 || is_second(get_byte(character, 0), get_byte(character, 1));
    return is_valid ? character : std::string_view();
}

std::string escape_number(unsigned char number) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned base = 16;
    return std::string("\\u00") + digits[number / base] + digits[number % base];
}

/// Those of one byte, and U+0080 to U+009F, which some terminals obey.
bool is_control_character(std::string_view character) {
    const unsigned char last = get_byte(character, character.size() - 1);
    return character.size() == 1 ? last < ' ' || last == 0x7F
                                 : character.size() == 2 && character[0] == '\xC2' && last < 0xA0;
}

// NOLINTEND(readability-magic-numbers)

std::string escape_character_for_json(std::string_view character) {
    switch (character.front()) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return is_control_character(character) ? escape_number(get_byte(character, character.size() - 1))
                                                   : std::string(character);
    }
}

}  // namespace

std::string to_json(std::string_view text) {
    constexpr const char* replacement = "\xEF\xBF\xBD";
    std::string json = "\"";
    while (!text.empty()) {
        const std::string_view character = get_character(text);
        json += character.empty() ? replacement : escape_character_for_json(character);
        text.remove_prefix(character.empty() ? 1 : character.size());
    }
    return json + '"';
}

}  // namespace tool
