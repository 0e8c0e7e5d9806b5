// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_VALUE_NOTES_H
#define QUXML_TOOLS_PATHS_VALUE_NOTES_H

#include "paths/Note.h"
#include "paths/predicates.h"

namespace tool {

/// Notes on the value that a predicate compares with.
void note_value(const Predicate& predicate, Notes& notes);

/// Notes on a value that a bracket in it has cut: its rest is taken for predicates of its own, or for nothing.
void note_cut_value(const Predicate& predicate, Notes& notes);

/// Notes on the test of a single node's attribute: on a name that has lost its last character, and on the value.
void note_test_of_attribute(const Predicate& predicate, Notes& notes);

/// Notes on a value that could be meant as the name of one, but stands for itself.
void note_dollar(const Predicate& predicate, Notes& notes);

}  // namespace tool

#endif
