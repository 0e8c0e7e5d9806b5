#ifndef QUXML_TOOLS_TERMINAL_H
#define QUXML_TOOLS_TERMINAL_H

#include <string>
#include <string_view>

namespace tool {

/// Whether standard error is a terminal.
bool has_terminal();

/// Whether standard error may be coloured: it is a terminal that knows colours, and NO_COLOR is not set.
bool has_colours();

/// UTF-8 text that is harmless on any terminal: control characters become question marks, tabs and line ends
/// blanks, and bytes that are no UTF-8 question marks.
std::string to_printable(std::string_view text);

}  // namespace tool

#endif
