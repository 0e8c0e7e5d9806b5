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

/// Whether the completions depend on more than the names of elements and attributes and what they stand in.
bool selects_by_predicates(const std::string& beginning);

}  // namespace tool

#endif
