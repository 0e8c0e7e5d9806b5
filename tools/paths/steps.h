// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_STEPS_H
#define QUXML_TOOLS_PATHS_STEPS_H

#include <string>
#include <vector>

#include "paths/Path.h"
#include "paths/predicates.h"

namespace tool {

/// How a step comes by its nodes.
enum class StepKind {
    start,         // the start node is tested
    search,        // the start node and all below it are searched
    search_below,  // all below the nodes of the step before are searched
    children,      // the children of the nodes of the step before are filtered
    all_children,  // an empty last step: the children of the nodes of the step before
    nothing,       // an empty step where nothing can match
};

struct PathStep {
    std::string text;
    StepKind kind;
    std::string name_test;
    std::vector<Predicate> predicates;
    std::string ignored;    // what stands after the predicate of a single node
    bool is_closed = true;  // the last character is the "]" that the library takes it for
    bool is_last = false;
    bool is_relative = false;  // the first, with no / before it
};

/// A path as the library's queries take it, step by step.
std::vector<PathStep> get_steps(const Path& path);

/// Whether the predicates of a step test a single node instead of filtering a list.
bool tests_single_nodes(const PathStep& step);

/// Whether a step among children has an empty predicate, if only between quotes, which keeps everything.
bool has_empty_predicate(const PathStep& step);

}  // namespace tool

#endif
