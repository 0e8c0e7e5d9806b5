// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_NAME_NOTES_H
#define QUXML_TOOLS_PATHS_NAME_NOTES_H

#include <string>

#include "paths/Note.h"
#include "paths/predicates.h"

namespace tool {

/// Whether an element or an attribute can have a name. Beyond ASCII everything passes.
bool can_be_name(const std::string& name);

/// Notes on the name test of a step.
void note_name_test(const std::string& name, Notes& notes);

/// Signs that compare nothing in a predicate.
constexpr const char* other_signs = "!<>";

/// Notes on the name of an attribute or a child in a predicate.
void note_name(const std::string& name, Notes& notes);

/// Notes on a predicate that compares nothing: where its text stands, a name was perhaps meant.
/// \param equal       the sign between a name and a value, as the step wants it
/// \param quote_sign  what stands around a value there
void note_bare_text(const Predicate& predicate, const char* equal, const char* quote_sign, Notes& notes);

}  // namespace tool

#endif
