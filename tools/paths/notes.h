// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_NOTES_H
#define QUXML_TOOLS_PATHS_NOTES_H

#include <string>
#include <vector>

#include "paths/steps.h"

namespace tool {

enum class NoteKind {
    surprise,         // the path does something other than it seems to
    possible_reason,  // perhaps why nothing is selected
    information       // good to know
};

/// Where a path may not do what was meant.
struct Note {
    std::string text;
    NoteKind kind;
};

/// The notes on where a step looks for its nodes.
std::vector<Note> get_notes_on_nodes(const PathStep& step);

std::vector<Note> get_notes(const Predicate& predicate);

/// How to compare with a value at whose / the step may have been cut; empty if it was not.
std::string get_advice_on_cut(const PathStep& step);

/// All notes on a step and its predicates.
std::vector<Note> get_notes(const PathStep& step);

}  // namespace tool

#endif
