// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_DIAGNOSTICS_H
#define QUXML_TOOLS_READING_DIAGNOSTICS_H

#include <string>

namespace tool {

/// Writes to standard error what is wrong with a document that the library refuses, the first error first, each as
/// FILE:LINE:COLUMN: error: TEXT with the line and a caret below the place.
/// \param reason  what the library says, for errors that only it sees.
void write_errors(const std::string& file, const std::string& document, const std::string& reason);

}  // namespace tool

#endif
