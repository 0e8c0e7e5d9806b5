// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_HINTS_H
#define QUXML_TOOLS_COMMANDS_HINTS_H

#include <string>
#include <vector>

namespace tool {

/// What an argument is taken for, and what it is.
struct Argument {
    const char* name;
    std::string value;
};

/// Writes to standard error, when `file` is standard input, where that may be a mistake: an argument is the name of
/// a file, or somebody has to type the document.
void write_hints(const std::string& file, const std::vector<Argument>& arguments = {});

/// The same where standard input is read for lack of an argument: if it is a terminal, somebody has to type.
/// \param missing  what would have to be given, such as "FILE"
void write_terminal_hint(const std::string& missing);

}  // namespace tool

#endif
