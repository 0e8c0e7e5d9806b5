// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_SPELLING_H
#define QUXML_TOOLS_READING_SPELLING_H

#include <string>
#include <vector>

#include "reading/losses.h"

namespace tool {

/// The XML declaration as the library writes it.
constexpr const char* library_declaration = "<?xml version=\"1.0\"?>";

/// Where something other than white space between elements first stands differently from how the library would write it:
/// quotes, references, spaces in tags, <a></a>, or the XML declaration. Empty if there is no such place.
/// \param document  well-formed, and nothing of it would be lost
std::vector<Loss> find_spelling(const std::string& document);

}  // namespace tool

#endif
