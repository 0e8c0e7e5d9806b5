// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_REWRITE_OPTIONS_H
#define QUXML_TOOLS_COMMANDS_REWRITE_OPTIONS_H

#include <string>

#include "writing/rewrite.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

// What the commands that write a document again have in common on their command lines.

/// Adds to a command the options about what becomes of the result.
void add_destination_options(CLI::App& command, Destination& destination);

/// Adds to a command the options that those have which write a whole document.
void add_rewrite_options(CLI::App& command, RewriteOptions& options);

/// Adds to a command the options about the layout.
void add_layout_options(CLI::App& command, RewriteOptions& options);

/// Adds to a command the last argument, FILE.
void add_file_argument(CLI::App& command, std::string& file);

/// Hints about standard input, unless they are unwanted.
void write_hints(const RewriteOptions& options);

}  // namespace tool

#endif
