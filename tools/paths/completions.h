// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_COMPLETIONS_H
#define QUXML_TOOLS_PATHS_COMPLETIONS_H

#include <quxml/Document.h>

#include <string>
#include <vector>

namespace tool {

/// How the beginning of a path may go on: by the names of elements in a document, and after "[@" by those of attributes.
/// \return the path up to the end of each such name; none if it cannot be understood so far.
std::vector<std::string> get_completions(const quxml::Document& document, const std::string& beginning);

/// What of a document completions depend on: which names stand in which, or all elements and attributes, or texts as well.
enum class NeededParts { names, elements, everything };

NeededParts get_needed_parts(const std::string& beginning);

}  // namespace tool

#endif
