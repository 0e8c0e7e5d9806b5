// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_DESTINATION_H
#define QUXML_TOOLS_WRITING_DESTINATION_H

#include <functional>
#include <string>

#include "terminal/exit_codes.h"
#include "terminal/words.h"

namespace tool {

/// What all commands share that write a document again: which document it is, and what becomes of the result.
struct WritingOptions {
    std::string file = standard_input;
    bool in_place = false;
    bool diff = false;   // only show what would change
    std::string backup;  // what a file's name gets for a copy of the old text; empty for none
    bool quiet = false;  // no notes, hints or warnings
};

/// Makes the new text of a document from the old one.
using Change = std::function<std::string(const std::string& text)>;

/// Reads a document, changes it, and writes it to standard output or in place; there nothing is written if the
/// text is as it was. If only the difference is wanted, that is written.
/// \return `no_match` if there is a difference and only that is wanted.
/// \throws Failure  nothing has been written; and what `change` throws
ExitCode change_document(const WritingOptions& options, const Change& change);

}  // namespace tool

#endif
