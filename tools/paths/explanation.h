// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_EXPLANATION_H
#define QUXML_TOOLS_PATHS_EXPLANATION_H

#include <string>
#include <vector>

#include "paths/selection.h"
#include "paths/steps.h"

namespace tool {

/// What a step does, in words: a line for its nodes, one for each predicate, and notes and errors between them.
std::vector<std::string> describe(const PathStep& step, NameMatch names);

bool has_fault(const PathStep& step);

}  // namespace tool

#endif
