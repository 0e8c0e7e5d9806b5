// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_NOTES_H
#define QUXML_TOOLS_PATHS_NOTES_H

#include <string>

#include "paths/Note.h"
#include "paths/steps.h"

namespace tool {

/// The notes on where a step looks for its nodes.
Notes get_notes_on_nodes(const PathStep& step);

Notes get_notes(const Predicate& predicate);

/// How to compare with a value at whose / the step may have been cut; empty if it was not.
std::string get_advice_on_cut(const PathStep& step);

/// All notes on a step and its predicates.
Notes get_notes(const PathStep& step);

}  // namespace tool

#endif
