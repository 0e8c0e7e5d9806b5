// SPDX-License-Identifier: MIT
#include "commands/file_arguments.h"

#include <CLI/CLI.hpp>

namespace tool {

void add_file_argument(CLI::App& command, std::string& file) {
    command.add_option("FILE", file, "The document; standard input if it is - or missing");
}

void add_files_argument(CLI::App& command, std::vector<std::string>& files) {
    command.add_option("FILE", files, "The documents; standard input if there is none, or for -");
}

}  // namespace tool
