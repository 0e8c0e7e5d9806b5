#include "Step.h"

#include <utility>

#include "dom/NodeAccess.h"
#include "dom/split.h"

namespace quxml {

Step::Step(std::string step)
    : text(std::move(step)),
      bracket(text.find('[')),
      name_test(text.substr(0, bracket)),
      takes_any_name(name_test == "*") {}

bool Step::accepts(const Node* node, const StringComparator& comparator) {
    if (is_empty())
        return false;
    if (!takes_any_name && !comparator(NodeAccess::name(*node), name_test))
        return false;
    if (!has_predicates())
        return true;
    if (!node_predicate)
        read_node_predicate();
    return node_predicate->accepts(node);
}

void Step::select_children(const Node* parent, const StringComparator& comparator, Candidates& selected) {
    const NodeList& children = NodeAccess::children(*parent);
    selected.assign(children.begin(), children.end());
    if (is_empty())
        return;
    keep_if(selected, [&](const Node* child) { return accepts_name(child, comparator); });
    if (!list_predicates)
        read_list_predicates();
    for (ListPredicate& predicate : *list_predicates)
        predicate.filter(selected);
}

// Deliberate: an empty name test, as in "[1]", passes no child.
// Test: Cuts/ListFilter.Selects/AnEmptyNameTestKeepsNothing.
bool Step::accepts_name(const Node* node, const StringComparator& comparator) const {
    if (takes_any_name)
        return true;
    return !name_test.empty() && comparator(NodeAccess::name(*node), name_test);
}

// Deliberate: only the first predicate is read; a "]" before the "[" leaves it open to the end of the step.
// Tests: Brackets/SingleNode.Selects/ItIsDeliberateThatFurtherPredicatesAreIgnored,
// SingleNodeTest.AClosingBracketBeforeTheOpeningOneLetsThePredicateRunToTheEnd.
void Step::read_node_predicate() {
    const std::size_t begin = bracket + 1;
    const std::size_t end = text.find(']');
    const bool is_closed = end != std::string::npos && end >= begin;
    node_predicate.emplace(is_closed ? text.substr(begin, end - begin) : text.substr(begin));
}

// The last character of the step is taken to be the closing "]", whatever it is.
void Step::read_list_predicates() {
    list_predicates.emplace();
    if (!has_predicates())
        return;
    std::string predicates = text.substr(bracket + 1);
    if (!predicates.empty())
        predicates.pop_back();
    list_predicates = read_predicates(predicates);
}

std::vector<ListPredicate> read_predicates(const std::string& predicates) {
    std::vector<ListPredicate> result;
    for (std::string& piece : split(predicates, "]["))
        result.emplace_back(std::move(piece));
    return result;
}

}  // namespace quxml
