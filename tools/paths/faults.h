// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_FAULTS_H
#define QUXML_TOOLS_PATHS_FAULTS_H

#include <string>

#include "paths/predicates.h"

namespace tool {

/// Why the library refuses a predicate, and what to write instead.
std::string get_complaint(const Predicate& predicate);

/// The same if a number is beyond the range of `int`.
std::string get_complaint_about_size(const Predicate& predicate);

/// How to compare with a value that has no spelling in a path; empty if `text` compares nothing with an equal sign.
/// \param text  of a predicate
std::string get_advice_on_value(const std::string& text);

}  // namespace tool

#endif
