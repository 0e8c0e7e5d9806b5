#ifndef QUXML_TOOLS_DIAGNOSTICS_H
#define QUXML_TOOLS_DIAGNOSTICS_H

#include <string>

namespace tool {

// What is said on standard error about a document: FILE:LINE:COLUMN: error: TEXT, then the line and a caret
// below the place. A terminal gets colours.

/// Tells what is wrong with a document that the library refuses, the first error first.
/// \param reason  what the library says, for errors that only it sees.
void write_errors(const std::string& file, const std::string& document, const std::string& reason);

/// Writes "FILE: warning: TEXT".
void write_warning(const std::string& file, const std::string& text);

}  // namespace tool

#endif
