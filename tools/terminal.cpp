#include "terminal.h"

#include <libxml/xmlstring.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace tool {

namespace {

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool is_dumb() {
    const char* terminal = std::getenv("TERM");
    return terminal == nullptr || std::string_view(terminal) == "dumb";
}

char to_printable(char byte) {
    constexpr char escape_of_terminals = 0x7f;
    if (byte == '\t' || byte == '\n' || byte == '\r')
        return ' ';
    const bool is_control = static_cast<unsigned char>(byte) < ' ' || byte == escape_of_terminals;
    return is_control ? '?' : byte;
}

// Some terminals take the characters U+0080 to U+009F for control characters.
bool is_control_sequence(std::string_view character) {
    constexpr unsigned char first_of_them = 0x80;
    constexpr unsigned char behind_them = 0xA0;
    return character.size() == 2 && character[0] == '\xC2' &&
           static_cast<unsigned char>(character[1]) >= first_of_them &&
           static_cast<unsigned char>(character[1]) < behind_them;
}

// How many bytes the character at the front has; 0 if it is no UTF-8.
std::size_t size_of_character(std::string_view text) {
    int size = static_cast<int>(std::min<std::size_t>(text.size(), 4));
    const int character = xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(text.data()), &size);
    return character < 0 ? 0 : static_cast<std::size_t>(size);
}

}  // namespace

bool has_terminal() {
    return isatty(STDERR_FILENO) == 1;
}

bool has_colours() {
    return has_terminal() && !is_set("NO_COLOR") && !is_dumb();
}

std::string to_printable(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        const std::size_t size = size_of_character(text);
        const std::string_view character = text.substr(0, size);
        if (size == 0 || is_control_sequence(character))
            printable += '?';
        else if (size == 1)
            printable += to_printable(text.front());
        else
            printable += character;
        text.remove_prefix(size == 0 ? 1 : size);
    }
    return printable;
}

}  // namespace tool
