// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_DIAGNOSTICS_H
#define QUXML_TOOLS_READING_DIAGNOSTICS_H

#include <string>
#include <string_view>
#include <vector>

#include "reading/xml_events.h"

namespace tool {

/// What is wrong with a document that the library refuses, the first error first; never empty.
/// \param document  UTF-8 without a byte-order mark, whatever encoding it declares
/// \param reason    what the library says, for errors that only it sees
std::vector<Problem> find_errors(std::string_view document, const std::string& reason);

/// Writes to standard error what is wrong with a document that the library refuses, the first error first, each as
/// FILE:LINE:COLUMN: error: TEXT with the line and a caret below the place.
/// \param reason  as above
void write_errors(const std::string& file, const std::string& document, const std::string& reason);

}  // namespace tool

#endif
