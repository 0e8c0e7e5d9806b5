// SPDX-License-Identifier: MIT

// The path-query engine as its users see it. `XPathHelper.h` has the language.
//
// A query takes its path apart once. `Walk` goes from node to node, `Step` holds one step, `ListPredicate` one
// predicate of the list filter and `NodePredicate` the one predicate of the single-node test; `positions` and
// `values` have the rules, `comparators` the two ways to compare names. The operations below that take a step,
// a predicate or a part of one as text are thin: they take it apart and apply the same rule.

#include "quxml/XPathHelper.h"

#include <string_view>
#include <utility>
#include <vector>

#include "Candidates.h"
#include "ListPredicate.h"
#include "Step.h"
#include "Walk.h"
#include "dom/split.h"
#include "positions.h"
#include "values.h"

namespace quxml {

namespace {

/// Applies a rule that filters candidates to a list, and returns what it leaves.
NodeList filter_list(const NodeList& nodes, std::string_view text,
                     void (*rule)(std::string_view text, Candidates& candidates)) {
    Candidates candidates(nodes.begin(), nodes.end());
    rule(text, candidates);
    return NodeList(candidates.begin(), candidates.end());
}

void keep_by_predicate(std::string_view predicate, Candidates& nodes) {
    ListPredicate(predicate).filter(nodes);
}

/// Walks along steps that are texts of their own. They are copied, for a comparator may change the caller's: into
/// one text, which takes less code than a second list of texts.
void walk_along(const std::deque<std::string>& texts, Node* node, void (Walk::*walk)(Node*),
                const StringComparator& comparator, NodeSet& results) {
    if (texts.empty())
        return;
    std::string text;
    for (const std::string& step : texts)
        text += step;
    std::vector<Step> steps;
    steps.reserve(texts.size());
    std::string_view rest = text;
    for (const std::string& step : texts) {
        steps.emplace_back(rest.substr(0, step.size()));
        rest.remove_prefix(step.size());
    }
    NameComparator names(comparator);
    Results found(results, Results::at_once);
    (Walk(std::move(steps), names, found).*walk)(node);
}

}  // namespace

XPathHelper::XPathHelper(StringComparator name_comparator) : comparator(std::move(name_comparator)) {}

XPathHelper::~XPathHelper() = default;

NodeSet XPathHelper::find(Node* node, std::string path) const {
    NameComparator names(comparator);
    Results found(results, Results::at_once);
    const std::string text = std::move(path);
    return select_nodes(node, text, names, found) ? results : NodeSet();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface has it.
void XPathHelper::get_nodes_from_path(Node* node, std::deque<std::string> steps) const {
    walk_along(steps, node, &Walk::follow_from, comparator, results);
}

void XPathHelper::skip_all_until_first_match(Node* node, const std::deque<std::string>& steps) const {
    walk_along(steps, node, &Walk::search_from, comparator, results);
}

NodeList XPathHelper::get_child_nodes(Node* node, const std::string& step) const {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a comparator may change the caller's.
    const std::string text = step;
    NameComparator names(comparator);
    Candidates selected;
    Step(text).select_children(node, names, selected);
    return NodeList(selected.begin(), selected.end());
}

bool XPathHelper::is_correct_node(Node* node, const std::string& step) const {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a comparator may change the caller's.
    const std::string text = step;
    NameComparator names(comparator);
    return Step(text).accepts(node, names);
}

NodeList XPathHelper::get_nodes_matching_attributes(NodeList& nodes, const std::string& predicates) const {
    cut<']', '['>(predicates, [&nodes](std::string_view predicate) {
        if (!predicate.empty())
            nodes = filter_list(nodes, predicate, keep_by_predicate);
    });
    return nodes;
}

NodeList XPathHelper::get_nodes_matching_attribute(NodeList& nodes, std::string predicate) const {
    const std::string text = std::move(predicate);
    return filter_list(nodes, text, keep_by_predicate);
}

NodeList XPathHelper::get_node_by_number(const std::string& number, NodeList& nodes) const {
    return filter_list(nodes, number, keep_item);
}

NodeList XPathHelper::get_last_node(const std::string& predicate, NodeList& nodes) const {
    return filter_list(nodes, predicate, keep_last);
}

int XPathHelper::index_from_last(const std::string& predicate) const {
    return read_index_from_last(predicate);
}

NodeList XPathHelper::get_positioned_nodes(const std::string& predicate, NodeList& nodes) const {
    return filter_list(nodes, predicate, keep_positions);
}

std::pair<unsigned int, unsigned int> XPathHelper::get_position_range(const std::string& predicate,
                                                                      unsigned int count) const {
    return read_position_range(predicate, count);
}

std::pair<std::string, std::string> XPathHelper::get_attribute_pair(const std::string& query) const {
    const NameAndValue pair = read_attribute_pair(query);
    return {std::string(pair.first), std::string(pair.second)};
}

NodeList XPathHelper::get_node_containing_attribute(const std::string& query, NodeList& nodes) const {
    return filter_list(nodes, query, keep_with_attribute);
}

NodeList XPathHelper::get_node_containing_child_value(const std::string& query, NodeList& nodes) const {
    return filter_list(nodes, query, keep_with_child_value);
}

bool XPathHelper::contains_child_value(Node* node, const std::string& child_name,
                                       const std::string& value) const {
    return has_child_value(node, child_name, value);
}

bool XPathHelper::attribute_matches_node(Element* element, const std::string& predicate) const {
    return element != nullptr && ElementTest(predicate).accepts(*element);
}

}  // namespace quxml
