// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_EACH_FILE_H
#define QUXML_TOOLS_COMMANDS_EACH_FILE_H

#include <functional>
#include <string>
#include <vector>

#include "paths/selection.h"
#include "terminal/exit_codes.h"

namespace tool {

/// What a command does with each of its files.
struct FileTask {
    /// Returns whether the file has what is looked for: a match, a loss, a change.
    /// \throws Failure  `no_match` if a path selects nothing, whatever else keeps this file from being done
    std::function<bool(const std::string& file, const PathNotes& notes)> act;

    /// The exit code if any file has it.
    ExitCode if_any = ExitCode::done;

    /// What the summary calls files that have it and those that do not; there is none if both are null.
    const char* having = nullptr;
    const char* lacking = nullptr;

    bool quiet = false;   // no notes and no summary
    bool silent = false;  // no messages either
};

/// Does it with one file after the other. One that fails is reported and does not stop the others. Of several files each
/// message names its own, notes on a path are written once, and those on why nothing is selected only if no file has a
/// match.
/// \return the highest code of all failures; else `no_match` if a path selects nothing in any file, `if_any` or `done`.
/// \throws Failure  (usage) if standard input is there twice, (io) if standard output cannot be written.
ExitCode do_with_each(const std::vector<std::string>& files, const FileTask& task);

}  // namespace tool

#endif
