// SPDX-License-Identifier: MIT

// What the library's queries do in one walk is done here step by step; what a step or a predicate means is asked of the
// library each time. For that, it does not matter that a set of nodes is taken along instead of one node after the
// other: what a step selects below a node depends on that node alone, and no node is reached from two of them.
//
// Only predicates that compare with a given value are put together for the library: no character of the value may mean
// anything. Of a single node it compares an attribute with all that stands after the first equal sign, so the value can
// be appended as it is; and the text of a child it takes as an argument.

#include "paths/PathWalk.h"

#include <quxml/Element.h>

namespace tool {

namespace {

// The library leaves out the character before the equal sign.
std::string get_test_of_attribute(const std::string& name, const std::string& value) {
    return '@' + name + " =" + value;
}

bool is_about_attribute(const Predicate& predicate) {
    return predicate.kind == PredicateKind::attribute || predicate.kind == PredicateKind::test_attribute;
}

bool is_about_child(const Predicate& predicate) {
    return predicate.kind == PredicateKind::child_value || predicate.kind == PredicateKind::test_child_value;
}

bool goes_on_below_match(const PathStep& step) {
    return step.is_last && step.text == "*";
}

void append(Nodes& nodes, const quxml::NodeList& added) {
    nodes.insert(nodes.end(), added.begin(), added.end());
}

}  // namespace

// ---- Single nodes ----

bool PathWalk::passes_name_test(quxml::Node* node, const PathStep& step) const {
    return !step.text.empty() && (step.name_test == "*" || comparator(node->get_name(), step.name_test));
}

// An item that is given as 1 also stands for no item.
bool PathWalk::passes_given(quxml::Node* node, const Predicate& predicate) const {
    auto* element = dynamic_cast<quxml::Element*>(node);
    if (is_about_child(predicate))
        return library.contains_child_value(node, predicate.name, predicate.value);
    if (is_about_attribute(predicate))
        return library.attribute_matches_node(element,
                                              get_test_of_attribute(predicate.name, predicate.value));
    if (predicate.value == "1")
        return library.attribute_matches_node(element, predicate.value);
    return library.attribute_matches_node(element, get_test_of_attribute("item", predicate.value));
}

bool PathWalk::passes(quxml::Node* node, const PathStep& step) const {
    if (step.predicates.empty() || step.predicates[0].given.empty())
        return library.is_correct_node(node, step.text);
    return passes_name_test(node, step) && passes_given(node, step.predicates[0]);
}

void PathWalk::search(quxml::Node* node, const PathStep& step, Nodes& found) const {
    Nodes pending{node};
    while (!pending.empty()) {
        quxml::Node* const next = pending.back();
        pending.pop_back();
        if (passes(next, step)) {
            found.push_back(next);
            if (!goes_on_below_match(step))
                continue;
        }
        const quxml::NodeList children = next->get_children();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

// ---- Lists ----

quxml::NodeList PathWalk::filter_given(quxml::NodeList nodes, const Predicate& predicate) const {
    if (predicate.kind == PredicateKind::item && begins_with_number(predicate.value))
        return library.get_node_by_number(predicate.value, nodes);
    nodes.remove_if([&](quxml::Node* node) { return !passes_given(node, predicate); });
    return nodes;
}

quxml::NodeList PathWalk::filter(quxml::NodeList nodes, const Predicate& predicate) const {
    if (predicate.given.empty())
        return library.get_nodes_matching_attribute(nodes, predicate.text);
    return filter_given(std::move(nodes), predicate);
}

// Without a name before its predicates a step keeps nothing, and an empty name test everything.
quxml::NodeList PathWalk::get_children(quxml::Node* parent, const PathStep& step, std::size_t count) const {
    if (step.name_test.empty())
        return {};
    quxml::NodeList nodes = library.get_child_nodes(parent, step.name_test);
    for (std::size_t i = 0; i != count; ++i)
        nodes = filter(std::move(nodes), step.predicates[i]);
    return nodes;
}

// ---- Steps ----

Nodes PathWalk::take(const PathStep& step, const Nodes& from) const {
    Nodes found;
    for (quxml::Node* node : from) {
        if (step.kind == StepKind::children) {
            append(found, get_children(node, step, step.predicates.size()));
        } else if (step.kind == StepKind::all_children) {
            append(found, node->get_children());
        } else if (step.kind == StepKind::search) {
            search(node, step, found);
        } else if (step.kind == StepKind::search_below) {
            for (quxml::Node* child : node->get_children())
                search(child, step, found);
        } else if (step.kind == StepKind::start && passes(node, step)) {
            found.push_back(node);
        }
    }
    return found;
}

Nodes PathWalk::take(const std::vector<PathStep>& steps, quxml::Node* root) const {
    Nodes nodes{root};
    for (const PathStep& step : steps)
        nodes = take(step, nodes);
    return nodes;
}

}  // namespace tool
