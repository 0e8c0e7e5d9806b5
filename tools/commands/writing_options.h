// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_WRITING_OPTIONS_H
#define QUXML_TOOLS_COMMANDS_WRITING_OPTIONS_H

#include <functional>
#include <string>
#include <vector>

#include "commands/hints.h"
#include "paths/selection.h"
#include "terminal/exit_codes.h"
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

/// Makes the new text of a file from the old one.
using FileChange =
    std::function<std::string(const std::string& file, const std::string& text, const PathNotes& notes)>;

/// Changes each of the documents, and says where that could go wrong.
/// \param arguments  what of the command line could be taken for something else
/// \throws Failure
ExitCode change_documents(const WritingOptions& options, const std::vector<Argument>& arguments,
                          const FileChange& change);

/// Sorts and lays out each of the documents.
/// \throws Failure
ExitCode rewrite_documents(const RewriteOptions& options);

}  // namespace tool

#endif
