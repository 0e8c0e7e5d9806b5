// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_TERMINAL_H
#define QUXML_TOOLS_TERMINAL_TERMINAL_H

#include <string>
#include <string_view>

namespace tool {

/// Whether standard error is a terminal.
bool has_terminal();

/// UTF-8 text that is harmless on any terminal: control characters become question marks, tabs and line ends
/// blanks, and bytes that are not UTF-8 question marks.
std::string to_printable(std::string_view text);

/// The same for a text of several lines, which stay apart.
std::string to_printable_lines(std::string_view text);

/// Text that is harmless on any terminal, stands on one line between double quotes, and can be distinguished from any
/// other: control characters, bytes that are not UTF-8, double quotes and backslashes become escapes such as
/// \n, \x1b and \".
std::string escape_controls(std::string_view text);

/// The beginning of a text, as `to_printable` gives it; "..." follows if there is more of it.
std::string get_excerpt(std::string_view text);

/// The same between double quotes, as `escape_controls` gives it; "..." follows after the quotes. Empty for an empty text.
std::string quote_excerpt(std::string_view text);

}  // namespace tool

#endif
