// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_DESTINATION_H
#define QUXML_TOOLS_WRITING_DESTINATION_H

#include <functional>
#include <string>
#include <vector>

#include "terminal/words.h"

namespace tool {

/// What all commands share that write a document again: which documents they are, and what becomes of the results.
struct WritingOptions {
    std::vector<std::string> files{standard_input};
    bool in_place = false;
    bool diff = false;   // only show what would change
    std::string backup;  // what a file's name gets for a copy of the old text; empty for none
    bool quiet = false;  // no notes, hints or warnings
};

/// Makes the new text of a document from the old one.
using Change = std::function<std::string(const std::string& text)>;

/// Reads one of the documents, changes it, and writes it to standard output or in place; there nothing is written if
/// the text is as it was. If only the difference is wanted, that is written.
/// \return whether the text is another one.
/// \throws Failure  nothing has been written; and what `change` throws
bool change_document(const WritingOptions& options, const std::string& file, const Change& change);

}  // namespace tool

#endif
