// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_PREDICATE_REASONS_H
#define QUXML_TOOLS_PATHS_PREDICATE_REASONS_H

#include <cstddef>
#include <string>

#include "paths/PathWalk.h"
#include "paths/predicates.h"

namespace tool {

/// Why a predicate keeps none of some nodes; empty if the notes on it say it all.
/// \param path  what has selected them
std::string get_reason_for_predicate(const std::string& path, const Nodes& nodes, const Predicate& predicate);

/// Why none of some nodes has an attribute, and which ones they have.
std::string get_reason_for_no_attribute(const std::string& path, const Nodes& nodes, const std::string& name);

// How reasons begin.
std::string count(std::size_t number, const char* noun, const char* plural);
std::string get_beginning(const std::string& path, const Nodes& nodes);

}  // namespace tool

#endif
