// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_COLOURS_H
#define QUXML_TOOLS_TERMINAL_COLOURS_H

#include <string>
#include <string_view>

namespace tool {

enum class Colour { plain, bold, dim, red, green, cyan, bold_red, bold_green, bold_magenta };

/// Whether what is written to a file descriptor may be coloured: it is a terminal that knows colours, and NO_COLOR is not
/// set.
bool has_colours(int descriptor);

/// Text as a terminal shows it in a colour.
std::string in_colour(Colour colour, std::string_view text);

}  // namespace tool

#endif
