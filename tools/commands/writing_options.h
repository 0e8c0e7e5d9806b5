// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_WRITING_OPTIONS_H
#define QUXML_TOOLS_COMMANDS_WRITING_OPTIONS_H

#include <string>
#include <vector>

#include "commands/hints.h"
#include "writing/rewrite.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

// What the commands that write a document again have in common on their command lines.

/// Adds to a command the options that all of them have, but for --quiet, which silences different things.
void add_writing_options(CLI::App& command, WritingOptions& options);

/// Adds to a command the options that those have which write a whole document.
void add_rewrite_options(CLI::App& command, RewriteOptions& options);

/// Adds to a command the options about the layout.
void add_layout_options(CLI::App& command, RewriteOptions& options);

/// Hints about standard input, unless they are unwanted.
void write_hints(const WritingOptions& options, const std::vector<Argument>& arguments = {});

}  // namespace tool

#endif
