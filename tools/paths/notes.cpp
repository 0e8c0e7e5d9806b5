// SPDX-License-Identifier: MIT

// Names, values and positions have notes of their own, each in a file; here is which of them a step and its predicates get.

#include "paths/notes.h"

#include <cstddef>

#include "paths/faults.h"
#include "paths/name_notes.h"
#include "paths/position_notes.h"
#include "paths/value_notes.h"
#include "terminal/words.h"

namespace tool {

namespace {

// ---- Steps ----

bool is_search(const PathStep& step) {
    return step.kind == StepKind::search || step.kind == StepKind::search_below;
}

void note_search(const PathStep& step, Notes& notes) {
    if (step.text != "*")
        inform(notes,
               "the search stops at the first match of each branch; what is inside a match is not found");
    else if (step.is_last)
        inform(notes, "every node is a match, texts too");
    else
        warn(notes, "everything matches, so the search does not go deeper than where it begins");
}

// ---- Predicates ----

void note_test_of_item(const Predicate& predicate, Notes& notes) {
    const std::size_t before = notes.size();
    note_words_of_positions(predicate, notes);
    if (is_number(predicate.text))
        note_number(predicate.text, notes);
    else if (notes.size() == before && !predicate.text.empty())
        note_bare_text(predicate, " =", "", notes);
}

/// A predicate that compares with a value given for a name.
void note_given(const Predicate& predicate, Notes& notes) {
    if (predicate.kind != PredicateKind::item && predicate.kind != PredicateKind::test_item)
        return note_name(predicate.name, notes);
    if (predicate.kind == PredicateKind::item && begins_with_number(predicate.value))
        return note_item(predicate, notes);
    if (is_number(predicate.value))
        return note_number(predicate.value, notes);
    suggest(notes, "to compare an attribute write [@name=$" + predicate.given +
                       "], for the text of a child [name=$" + predicate.given + ']');
}

}  // namespace

Notes get_notes_on_nodes(const PathStep& step) {
    Notes notes;
    if (step.kind == StepKind::start && step.is_relative)
        suggest(notes, "the first step names the root element itself, not a child of it");
    if (is_search(step))
        note_search(step, notes);
    if (step.kind != StepKind::all_children)
        note_name_test(step.name_test, notes);
    if (!step.is_closed)
        warn(notes, "there is no ] at the end; a path is cut at every /, also between quotes" +
                        get_advice_on_cut(step));
    if (has_empty_predicate(step))
        warn(notes, "[] asks for nothing; brackets count between quotes too");
    if (!step.ignored.empty())
        warn(notes, "only one predicate counts in the first step and after //; ignored: " + step.ignored);
    return notes;
}

std::string get_advice_on_cut(const PathStep& step) {
    const bool is_cut = !step.is_closed && !step.predicates.empty();
    const std::string advice = is_cut ? get_advice_on_value(step.predicates.back().text) : "";
    return advice.empty() ? "" : "; for a value with a / " + advice;
}

Notes get_notes(const Predicate& predicate) {
    Notes notes;
    if (!predicate.given.empty()) {
        note_given(predicate, notes);
        return notes;
    }
    note_dollar(predicate, notes);
    switch (predicate.kind) {
        case PredicateKind::last:
            note_last(predicate, notes);
            break;
        case PredicateKind::position:
            note_position(predicate, notes);
            break;
        case PredicateKind::item:
            note_item(predicate, notes);
            break;
        case PredicateKind::literal:
            note_bare_text(predicate, "=", "'", notes);
            break;
        case PredicateKind::test_attribute:
            note_test_of_attribute(predicate, notes);
            note_cut_value(predicate, notes);
            break;
        case PredicateKind::test_item:
            note_test_of_item(predicate, notes);
            break;
        case PredicateKind::test_child_value:
            note_words_of_positions(predicate, notes);
            note_name(predicate.name, notes);
            note_value(predicate, notes);
            note_cut_value(predicate, notes);
            break;
        default:
            note_name(predicate.name, notes);
            note_value(predicate, notes);
            note_cut_value(predicate, notes);
    }
    return notes;
}

// What follows from a cut predicate is of no interest.
Notes get_notes(const PathStep& step) {
    Notes notes = get_notes_on_nodes(step);
    if (!step.is_closed)
        return notes;
    for (const Predicate& predicate : step.predicates) {
        if (predicate.fault.empty()) {
            for (const Note& note : get_notes(predicate))
                notes.push_back(note);
        }
    }
    return notes;
}

}  // namespace tool
