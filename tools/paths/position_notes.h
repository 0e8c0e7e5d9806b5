// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_POSITION_NOTES_H
#define QUXML_TOOLS_PATHS_POSITION_NOTES_H

#include <string>

#include "paths/Note.h"
#include "paths/predicates.h"

namespace tool {

/// Notes on a position from the end.
void note_last(const Predicate& predicate, Notes& notes);

/// Notes on a range of positions.
void note_position(const Predicate& predicate, Notes& notes);

/// Notes on an item that was perhaps meant as a position, among children.
void note_item(const Predicate& predicate, Notes& notes);

/// Notes on the test of a single node, for which there are no positions.
void note_words_of_positions(const Predicate& predicate, Notes& notes);

/// Whether a text is a number, with a sign or without.
bool is_number(const std::string& text);

/// Notes on an item that was perhaps meant as a position, in the test of a single node.
void note_number(const std::string& number, Notes& notes);

}  // namespace tool

#endif
