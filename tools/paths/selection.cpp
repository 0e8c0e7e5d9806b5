// SPDX-License-Identifier: MIT

// A path is judged before anything is looked for: whether the library would come to a predicate that it refuses depends on
// the document, but here a bad path is bad on every document. Then the library finds the nodes, in the order of their
// addresses, and they are put into document order. A path that has names in place of values is not one that the library
// knows: it is followed step by step instead, and each step is asked of the library.

#include "paths/selection.h"

#include <quxml/Element.h>
#include <quxml/extras/finding.h>

#include <algorithm>
#include <set>
#include <stdexcept>

#include "paths/PathWalk.h"
#include "paths/notes.h"
#include "paths/reasons.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

Failure bad_query(const Path& path, const std::string& reason) {
    return {ExitCode::bad_query, "bad query \"" + path.text + "\": " + reason +
                                     "\n\"quxml explain\" shows how a path is taken; put it in quotes."};
}

std::string get_fault(const std::vector<PathStep>& steps) {
    int number = 0;
    for (const PathStep& step : steps) {
        ++number;
        for (const Predicate& predicate : step.predicates) {
            if (!predicate.fault.empty())
                return "step " + std::to_string(number) + ", [" + predicate.text + "]: " + predicate.fault;
        }
    }
    return "";
}

/// Whether the library would come to a predicate that it refuses depends on the document; a bad query is a bad
/// query in any case.
void require_no_fault(const Path& path, const std::vector<PathStep>& steps) {
    const std::string fault = get_fault(steps);
    if (!fault.empty())
        throw bad_query(path, fault);
}

namespace {

quxml::NodeSet find(quxml::Node* root, const std::string& path, NameMatch names) {
    return names == NameMatch::prefix ? root->find_substring_match(path) : root->find_exact_match(path);
}

/// The library knows nothing about given values.
bool has_given_value(const std::vector<PathStep>& steps) {
    return std::any_of(steps.begin(), steps.end(), [](const PathStep& step) {
        return std::any_of(step.predicates.begin(), step.predicates.end(),
                           [](const Predicate& predicate) { return !predicate.given.empty(); });
    });
}

Nodes get_matches(quxml::Node* root, const Path& path, const std::vector<PathStep>& steps, NameMatch names) {
    require_no_fault(path, steps);
    try {
        if (has_given_value(steps))
            return PathWalk(names).take(steps, root);
        return quxml::extras::in_document_order(*root, find(root, path.text, names));
    } catch (const std::logic_error& error) {
        throw bad_query(path, error.what());
    }
}

std::string get_gap(const PathStep& step) {
    if (!step.is_closed)
        return "there is no ] at the end";
    if (has_empty_predicate(step))
        return "[] asks for nothing";
    for (const Predicate& predicate : step.predicates) {
        if (predicate.existence_only && contains(predicate.text, "="))
            return '[' + predicate.text + "] has no value";
    }
    return "";
}

void give_notes(const PathStep& step, int number, NoteKind least, const PathNotes& notes) {
    const std::string name = step.text.empty() ? "(empty)" : step.text;
    const std::string place = "step " + std::to_string(number) + ", " + name + ": ";
    for (const Note& note : get_notes(step)) {
        if (note.kind <= least)
            notes({place + note.text, note.kind});
    }
}

/// Of a step that the root element satisfies no possible reason is wanted: nothing is selected for another reason. What
/// follows a step that was cut was not meant as a step.
void give_notes(quxml::Node* root, const std::vector<PathStep>& steps, NameMatch names, bool has_match,
                const PathNotes& notes) {
    int number = 0;
    for (const PathStep& step : steps) {
        const bool is_satisfied =
            has_match || (step.kind == StepKind::start && !PathWalk(names).take(step, {root}).empty());
        give_notes(step, ++number, is_satisfied ? NoteKind::surprise : NoteKind::possible_reason, notes);
        if (!step.is_closed)
            return;
    }
}

void give_reason(quxml::Node* root, const std::vector<PathStep>& steps, NameMatch names,
                 const PathNotes& notes) {
    const std::string reason = get_reason(root, steps, names);
    if (!reason.empty())
        notes({reason, NoteKind::possible_reason});
}

void give_note_on_case(const PathStep& last, const std::vector<quxml::Node*>& nodes, const PathNotes& notes) {
    if (last.name_test == "*" || last.kind == StepKind::all_children)
        return;
    std::set<std::string> spellings;
    for (const quxml::Node* node : nodes)
        spellings.insert(node->get_name());
    if (spellings.size() > 1)
        notes({"matches differ in case: " + *spellings.begin() + " and " + *spellings.rbegin(),
               NoteKind::information});
}

}  // namespace

void give_notes(quxml::Node* start, const std::vector<PathStep>& steps,
                const std::vector<quxml::Node*>& nodes, NameMatch names, const PathNotes& notes) {
    give_notes(start, steps, names, !nodes.empty(), notes);
    if (nodes.empty())
        give_reason(start, steps, names, notes);
    else if (names == NameMatch::whole)
        give_note_on_case(steps.back(), nodes, notes);
}

std::vector<quxml::Node*> select(const quxml::Document& document, const Path& path, const PathNotes& notes,
                                 NameMatch names) {
    quxml::Node* const root = document.get_root_node();
    const std::vector<PathStep> steps = get_steps(path);
    std::vector<quxml::Node*> nodes = get_matches(root, path, steps, names);
    if (notes)
        give_notes(root, steps, nodes, names, notes);
    return nodes;
}

void require_no_gap(const Path& path) {
    int number = 0;
    for (const PathStep& step : get_steps(path)) {
        const std::string gap = get_gap(step);
        ++number;
        if (!gap.empty())
            throw bad_query(path, "step " + std::to_string(number) + ", " + step.text + ": " + gap +
                                      ", and nothing is changed on a guess" + get_advice_on_cut(step));
    }
}

std::vector<quxml::Element*> select_elements(const quxml::Document& document, const Path& path,
                                             const PathNotes& notes) {
    require_no_gap(path);
    std::vector<quxml::Element*> elements;
    for (quxml::Node* node : select(document, path, notes)) {
        if (auto* element = dynamic_cast<quxml::Element*>(node))
            elements.push_back(element);
    }
    if (elements.empty())
        throw Failure(ExitCode::no_match, "no element matches " + path.text);
    return elements;
}

}  // namespace tool
