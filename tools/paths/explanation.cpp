// SPDX-License-Identifier: MIT
#include "paths/explanation.h"

#include <algorithm>

#include "paths/notes.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

using Lines = std::vector<Line>;

// ---- Predicates ----

std::string describe_offset(int offset) {
    if (offset > 0)
        return "none, since nothing comes after the last";
    return offset == 0 ? "the last"
                       : "the one " + std::to_string(-static_cast<long>(offset)) + " before the last";
}

std::string describe_end(const PositionRange& range) {
    if (range.counted)
        return "up to the last but one";
    return range.end == 0 ? "to the last" : "up to " + std::to_string(range.end - 1);
}

std::string describe_range(const Predicate& predicate) {
    const PositionRange& range = predicate.range;
    if (!range.counted && range.end == 1)
        return "none";
    if (contains(predicate.text, "="))
        return "the one at position " + std::to_string(range.first);
    return "those from position " + std::to_string(std::max(range.first, 1U)) + ' ' + describe_end(range);
}

/// A given value may hold anything.
std::string describe_value(const Predicate& predicate) {
    if (predicate.given.empty())
        return quote(predicate.value);
    return quote(escape_controls(predicate.value)) + " (--arg " + predicate.given + ')';
}

std::string describe_attribute(const Predicate& predicate) {
    const std::string attribute = "attribute " + quote(predicate.name);
    return predicate.existence_only ? "have the " + attribute
                                    : "have " + describe_value(predicate) + " as their " + attribute;
}

std::string describe_child(const Predicate& predicate) {
    return "have a child " + quote(predicate.name) + " whose text is " + describe_value(predicate);
}

/// The library counts an element without an item as the first.
bool is_number_one(const Predicate& predicate) {
    return predicate.number == 1;
}

std::string describe_item(const Predicate& predicate) {
    const std::string words = "those that have " + describe_value(predicate) + " as their attribute \"item\"";
    return is_number_one(predicate) ? words + ", and of those without it the first of each name" : words;
}

std::string describe_literal(const Predicate& predicate) {
    return "the only one there is, if a child of its parent with its name has the text " +
           describe_value(predicate);
}

std::string describe_test_of_item(const Predicate& predicate) {
    const std::string words = "has " + describe_value(predicate) + " as its attribute \"item\"";
    return predicate.value == "1" ? words + " or does not have that attribute" : words;
}

std::string describe_test_of_attribute(const Predicate& predicate) {
    const std::string attribute = "attribute " + quote(predicate.name);
    return predicate.existence_only ? "has the " + attribute
                                    : "has " + describe_value(predicate) + " as its " + attribute;
}

std::string describe(const Predicate& predicate) {
    switch (predicate.kind) {
        case PredicateKind::last:
            return "position from the end: keeps " + describe_offset(predicate.number);
        case PredicateKind::position:
            return "position: keeps " + describe_range(predicate);
        case PredicateKind::attribute:
            return "attribute: keeps those that " + describe_attribute(predicate);
        case PredicateKind::child_value:
            return "child's text: keeps those that " + describe_child(predicate);
        case PredicateKind::item:
            return "item: keeps " + describe_item(predicate);
        case PredicateKind::literal:
            return "bare text: keeps " + describe_literal(predicate);
        case PredicateKind::test_attribute:
            return "attribute of the node: passes if it " + describe_test_of_attribute(predicate);
        case PredicateKind::test_child_value:
            return "child's text: passes if it has a child " + quote(predicate.name) + " whose text is " +
                   describe_value(predicate);
        default:
            return "item of the node: passes if it " + describe_test_of_item(predicate);
    }
}

void add_notes(const std::vector<Note>& notes, Lines& lines) {
    for (const Note& note : notes)
        lines.push_back({"note: " + note.text, note.kind});
}

void add_predicate(const Predicate& predicate, Lines& lines) {
    const std::string opening = '[' + predicate.text + "] ";
    if (!predicate.fault.empty()) {
        lines.push_back({"error: " + opening + predicate.fault, {}, true});
        return;
    }
    lines.push_back({opening + describe(predicate)});
    add_notes(get_notes(predicate), lines);
}

// ---- Steps ----

std::string describe_name_test(const PathStep& step, NameMatch names) {
    if (step.name_test == "*")
        return "any name";
    if (step.name_test.empty() && names == NameMatch::whole)
        return "no name, which no element has";
    return std::string(names == NameMatch::prefix ? "a name that begins with " : "the name ") +
           quote(step.name_test) + " in upper or lower case";
}

std::string describe_children(const PathStep& step, NameMatch names) {
    if (step.name_test.empty())
        return "children: none, since there is no name before the predicate; any name is *";
    return "children: those with " + describe_name_test(step, names);
}

std::string describe_nodes(const PathStep& step, NameMatch names) {
    const std::string name = describe_name_test(step, names);
    switch (step.kind) {
        case StepKind::start:
            return "start node: the root element, if it has " + name;
        case StepKind::search:
            return "search: the root element and all below it, for " + name;
        case StepKind::search_below:
            return "search: all below the nodes so far, for " + name;
        case StepKind::children:
            return describe_children(step, names);
        case StepKind::all_children:
            return "children: all of them, texts too";
        default:
            return "nothing: an empty step here never matches";
    }
}

}  // namespace

std::vector<Line> describe(const PathStep& step, NameMatch names) {
    Lines lines{{describe_nodes(step, names)}};
    add_notes(get_notes_on_nodes(step), lines);
    for (const Predicate& predicate : step.predicates)
        add_predicate(predicate, lines);
    return lines;
}

bool has_fault(const PathStep& step) {
    return std::any_of(step.predicates.begin(), step.predicates.end(),
                       [](const Predicate& predicate) { return !predicate.fault.empty(); });
}

}  // namespace tool
