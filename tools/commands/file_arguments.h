// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_FILE_ARGUMENTS_H
#define QUXML_TOOLS_COMMANDS_FILE_ARGUMENTS_H

#include <string>
#include <vector>

namespace CLI {  // NOLINT(readability-identifier-naming): the name is CLI11's
class App;
}  // namespace CLI

namespace tool {

/// Adds to a command the last argument, FILE.
void add_file_argument(CLI::App& command, std::string& file);

/// The same for several files.
void add_files_argument(CLI::App& command, std::vector<std::string>& files);

}  // namespace tool

#endif
