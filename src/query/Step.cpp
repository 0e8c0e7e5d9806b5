// SPDX-License-Identifier: MIT
#include "Step.h"

#include <algorithm>

#include "dom/NodeAccess.h"
#include "dom/split.h"
#include "prefetch.h"

namespace quxml {

Step::Step(std::string_view step) : text(step), name_size(std::min(step.find('['), step.size())) {}

NameTest Step::test_of_node(NameComparator& names) const {
    if (is_empty())
        return NameTest();
    return takes_any_name() ? NameTest::any() : NameTest(name_test(), names);
}

// Deliberate: an empty name test, as in "[1]", passes no child.
// Test: Cuts/ListFilter.selects/an_empty_name_test_keeps_nothing.
NameTest Step::test_of_child(NameComparator& names) const {
    if (is_empty() || takes_any_name())
        return NameTest::any();
    return name_size == 0 ? NameTest() : NameTest(name_test(), names);
}

void Step::select_children(const Node* parent, NameComparator& names, Candidates& selected) {
    if (names.is_users()) {
        note_before_testing(parent, names, selected);
    } else {
        test_before_noting(parent, names, selected);
    }
    if (!has_predicates())
        return;
    for (const ListPredicate& predicate : get_list_predicates())
        predicate.filter(selected);
}

// A user's comparator may change the list of children.
void Step::note_before_testing(const Node* parent, NameComparator& names, Candidates& selected) const {
    const NodeList& children = NodeAccess::children(*parent);
    selected.assign(children.begin(), children.end());
    const NameTest test = test_of_child(names);
    keep_if(selected, [&test](const Node* child) { return test.accepts(child); });
}

void Step::test_before_noting(const Node* parent, NameComparator& names, Candidates& selected) const {
    constexpr std::size_t few = 16;  // room for these at once
    const NodeList& children = NodeAccess::children(*parent);
    selected.clear();
    selected.reserve(std::min(children.size(), few));
    const NameTest test = test_of_child(names);
    const Node* before = parent;
    for (Node* child : children) {
        prefetch_sibling(before, child);
        before = child;
        if (test.accepts(child))
            selected.push_back(child);
    }
}

// Deliberate: only the first predicate is read; a "]" before the "[" leaves it open to the end of the step.
// Tests: Brackets/SingleNode.selects/it_is_deliberate_that_further_predicates_are_ignored,
// SingleNodeTest.a_closing_bracket_before_the_opening_one_lets_the_predicate_run_to_the_end.
const NodePredicate& Step::get_node_predicate() {
    if (!predicates) {
        const std::string_view rest = text.substr(name_size + 1);
        const bool is_closed_before = name_test().find(']') != std::string_view::npos;
        auto read = std::make_unique<Predicates>();
        read->of_node.emplace(is_closed_before ? rest : rest.substr(0, rest.find(']')));
        predicates = std::move(read);
    }
    return *predicates->of_node;
}

// The last character of the step is taken to be the closing "]", whatever it is.
std::vector<ListPredicate>& Step::get_list_predicates() {
    if (!predicates) {
        std::string_view rest = text.substr(name_size + 1);
        rest.remove_suffix(rest.empty() ? 0U : 1U);
        auto read = std::make_unique<Predicates>();
        read->of_list = read_predicates(rest);
        predicates = std::move(read);
    }
    return predicates->of_list;
}

std::vector<Step> read_steps(std::string_view path) {
    std::vector<Step> steps;
    steps.reserve(static_cast<std::size_t>(std::count(path.begin(), path.end(), '/')) + 1);
    cut<'/'>(path, [&steps](std::string_view piece) { steps.emplace_back(piece); });
    return steps;
}

std::vector<ListPredicate> read_predicates(std::string_view predicates) {
    std::vector<ListPredicate> result;
    cut<']', '['>(predicates, [&result](std::string_view piece) {
        if (!piece.empty())
            result.emplace_back(piece);
    });
    return result;
}

}  // namespace quxml
