// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_REASONS_H
#define QUXML_TOOLS_PATHS_REASONS_H

#include <quxml/Node.h>

#include <string>
#include <vector>

#include "paths/names.h"
#include "paths/steps.h"

namespace tool {

/// Why a path selects nothing: the longest part of it that matches, and what stands there instead of what was asked for.
/// Takes about as long as the query. Empty if the notes on the step say it all.
/// \param steps  without a fault; they select nothing
std::string get_reason(quxml::Node* root, const std::vector<PathStep>& steps, NameMatch names);

}  // namespace tool

#endif
