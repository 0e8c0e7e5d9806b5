// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_EXPLANATION_H
#define QUXML_TOOLS_PATHS_EXPLANATION_H

#include <optional>
#include <string>
#include <vector>

#include "paths/Note.h"
#include "paths/selection.h"
#include "paths/steps.h"

namespace tool {

/// A line of an explanation. Notes and errors say in their text that they are such.
struct Line {
    std::string text;
    std::optional<NoteKind> note{};
    bool is_error = false;
};

/// What a step does, in words: a line for its nodes, one for each predicate, and notes and errors between them.
std::vector<Line> describe(const PathStep& step, NameMatch names);

bool has_fault(const PathStep& step);

}  // namespace tool

#endif
