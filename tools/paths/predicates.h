// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_PREDICATES_H
#define QUXML_TOOLS_PATHS_PREDICATES_H

#include <optional>
#include <string>

#include "paths/Path.h"

namespace tool {

/// What a predicate compares. The first six filter a list of children, the others test a single node.
enum class PredicateKind {
    last,         // a position counted from the end
    position,     // a range of positions
    attribute,    // an attribute that exists or has a value
    child_value,  // the text of a child
    item,         // the attribute "item"
    literal,      // anything else
    test_attribute,
    test_child_value,
    test_item,
};

/// Positions from `first` up to the one before `end`; an end of 0 is none, and `counted` puts the number of
/// nodes in its place.
struct PositionRange {
    unsigned first = 0;
    unsigned end = 0;
    bool counted = false;
};

struct Predicate {
    std::string text;
    PredicateKind kind;
    std::string name;             // of the attribute or the child
    std::string value;            // to be equal to
    bool existence_only = false;  // any value will do
    int number = 0;               // the offset of `last`, and what the value of `item` begins with
    PositionRange range;          // of `position`
    std::string fault;            // why it is refused; empty if it is not
    std::string given{};          // NAME, if `value` was given for it: then it is compared as it is
};

/// A predicate that filters a list.
Predicate get_list_predicate(const std::string& text, const Values& values);

/// A predicate that tests a single node.
Predicate get_single_predicate(const std::string& text, const Values& values);

/// The number that a text begins with, as the library reads it; nothing if there is none.
/// \throws std::out_of_range  if it is beyond the range of `int`
std::optional<int> read_number(const std::string& text);

/// Whether a text begins with a number that the library reads.
bool begins_with_number(const std::string& text);

}  // namespace tool

#endif
