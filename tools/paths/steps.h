// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_STEPS_H
#define QUXML_TOOLS_PATHS_STEPS_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tool {

/// Values by their names.
using Values = std::map<std::string, std::string>;

/// A path, and the values that are given for the names in it: `$NAME`, as all that a predicate compares with, stands
/// for a value, whatever that holds. Without any value a `$` is a character like others.
struct Path {
    std::string text;
    Values values;
};

/// How a step comes by its nodes.
enum class StepKind {
    start,         // the start node is tested
    search,        // the start node and all below it are searched
    search_below,  // all below the nodes of the step before are searched
    children,      // the children of the nodes of the step before are filtered
    all_children,  // an empty last step: the children of the nodes of the step before
    nothing,       // an empty step where nothing can match
};

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

/// The number that a text begins with, as the library reads it; nothing if there is none.
/// \throws std::out_of_range  if it is beyond the range of `int`
std::optional<int> read_number(const std::string& text);

/// Whether a text begins with a number that the library reads.
bool begins_with_number(const std::string& text);

/// How to compare with a value that has no spelling in a path; empty if `text` compares nothing with an equal sign.
/// \param text  of a predicate
std::string get_advice_on_value(const std::string& text);

/// A text without the quotes, of either kind, paired or not, at its ends.
std::string without_quotes(const std::string& text);

}  // namespace tool

#endif
