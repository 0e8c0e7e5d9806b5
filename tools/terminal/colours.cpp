// SPDX-License-Identifier: MIT
#include "terminal/colours.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>

namespace tool {

namespace {

/// In the order of Colour.
constexpr std::array<const char*, 9> codes{"0", "1", "2", "31", "32", "36", "1;31", "1;32", "1;35"};

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool is_dumb() {
    const char* terminal = std::getenv("TERM");
    return terminal == nullptr || std::string_view(terminal) == "dumb";
}

std::string get_code(Colour colour) {
    return std::string("\033[") + codes.at(static_cast<std::size_t>(colour)) + 'm';
}

}  // namespace

bool has_colours(int descriptor) {
    return isatty(descriptor) == 1 && !is_set("NO_COLOR") && !is_dumb();
}

std::string in_colour(Colour colour, std::string_view text) {
    if (colour == Colour::plain)
        return std::string(text);
    return get_code(colour) + std::string(text) + get_code(Colour::plain);
}

}  // namespace tool
