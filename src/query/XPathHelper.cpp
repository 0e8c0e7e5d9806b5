// The path-query engine as its users see it. The language:
//
//     path        what it selects, from a start node
//     s1/s2/s3    s1 tests the start node; s2 selects among its children, s3 among theirs
//     /s1/s2      the same
//     //s1/s2     s1 is searched for in the start node and everything below it
//     s1//s2      s2 is searched for below the nodes that s1 selects
//     s1/         all children of the nodes that s1 selects
//
// A step is a name test or "*", and predicates in brackets. A query takes its path apart once: `Walk` goes
// from node to node, `Step` holds one step, `Predicate` one predicate of the list filter, `NodePredicate` the
// one predicate of the single-node test; `positions` and `values` have the rules. The operations below that
// take a step or a predicate as text are thin: they take it apart and apply the same rule.
//
//     list filter: a step that selects among children    single-node test: the first step, and a step behind
//     "//" every predicate, each on what the last one left    only the first predicate, one node at a time
//     [last()] [last()-1] [position()<3]                 no meaning by position: compared with the item as
//     text [2] items; [1] elements without one too            [2] items; an element without one counts as
//     item "1"
//     [@key] [@key='value'], quotes removed              [@key] [@key =value], taken as it stands
//     [child='text'], quotes removed                     the same
//     [text]: a lone node with that text                 compared with the item

#include "quxml/XPathHelper.h"

#include <boost/algorithm/string/trim.hpp>
#include <locale>
#include <utility>

#include "Candidates.h"
#include "Predicate.h"
#include "Step.h"
#include "Walk.h"
#include "dom/NodeAccess.h"
#include "dom/split.h"
#include "positions.h"
#include "values.h"

namespace quxml {

namespace {

/// Applies a rule that filters candidates to a list, and returns what it leaves.
template <typename Filter>
NodeList filter_list(const NodeList& nodes, Filter filter) {
    Candidates candidates(nodes.begin(), nodes.end());
    filter(candidates);
    return NodeList(candidates.begin(), candidates.end());
}

}  // namespace

XPathHelper::XPathHelper(StringComparator name_comparator) : comparator(std::move(name_comparator)) {}

XPathHelper::~XPathHelper() = default;

NodeSet XPathHelper::find(Node* node, std::string path) const {
    return run(node, std::move(path)) ? results : NodeSet();
}

bool XPathHelper::run(Node* node, std::string path) const {
    boost::algorithm::trim(path, std::locale());
    if (path.empty())
        return false;
    if (node == nullptr)
        return true;
    const bool is_search = path.compare(0, 2, "//") == 0;
    std::deque<std::string> steps = split(path, "/");
    if (is_search)
        steps.pop_front();
    if (steps.front().empty())
        steps.pop_front();
    Walk walk(comparator, std::move(steps), results);
    is_search ? walk.search_from(node) : walk.start_at(node);
    return true;
}

void XPathHelper::get_nodes_from_path(Node* node, std::deque<std::string> steps) const {
    if (steps.empty())
        return;
    Walk(comparator, std::move(steps), results).follow_from(node);
}

void XPathHelper::skip_all_until_first_match(Node* node, const std::deque<std::string>& steps) const {
    if (steps.empty())
        return;
    Walk(comparator, steps, results).search_from(node);
}

NodeList XPathHelper::get_child_nodes(Node* node, const std::string& step) const {
    Candidates selected;
    Step(step).select_children(node, comparator, selected);
    return NodeList(selected.begin(), selected.end());
}

bool XPathHelper::is_correct_node(Node* node, const std::string& step) const {
    return Step(step).accepts(node, comparator);
}

NodeList XPathHelper::get_nodes_matching_attributes(NodeList& nodes, const std::string& predicates) const {
    for (Predicate& predicate : read_predicates(predicates)) {
        nodes = filter_list(nodes, [&predicate](Candidates& candidates) { predicate.filter(candidates); });
    }
    return nodes;
}

NodeList XPathHelper::get_nodes_matching_attribute(NodeList& nodes, std::string predicate) const {
    return filter_list(
        nodes, [&predicate](Candidates& candidates) { Predicate(std::move(predicate)).filter(candidates); });
}

NodeList XPathHelper::get_node_by_number(const std::string& number, NodeList& nodes) const {
    return filter_list(nodes, [&number](Candidates& candidates) { keep_item(number, candidates); });
}

NodeList XPathHelper::get_last_node(const std::string& predicate, NodeList& nodes) const {
    return filter_list(nodes, [&predicate](Candidates& candidates) { keep_last(predicate, candidates); });
}

int XPathHelper::index_from_last(const std::string& predicate) const {
    return read_index_from_last(predicate);
}

NodeList XPathHelper::get_positioned_nodes(const std::string& predicate, NodeList& nodes) const {
    return filter_list(nodes,
                       [&predicate](Candidates& candidates) { keep_positions(predicate, candidates); });
}

std::pair<unsigned int, unsigned int> XPathHelper::get_position_range(const std::string& predicate,
                                                                      unsigned int count) const {
    return read_position_range(predicate, count);
}

std::pair<std::string, std::string> XPathHelper::get_attribute_pair(const std::string& query) const {
    return read_attribute_pair(query);
}

NodeList XPathHelper::get_node_containing_attribute(const std::string& query, NodeList& nodes) const {
    const NameAndValue attribute = read_attribute_pair(query);
    return filter_list(nodes,
                       [&attribute](Candidates& candidates) { keep_with_attribute(attribute, candidates); });
}

NodeList XPathHelper::get_node_containing_child_value(const std::string& query, NodeList& nodes) const {
    const NameAndValue child = read_child_value(query);
    return filter_list(nodes, [&child](Candidates& candidates) { keep_with_child_value(child, candidates); });
}

bool XPathHelper::contains_child_value(Node* node, const std::string& child_name,
                                       const std::string& value) const {
    return has_child_value(node, child_name, value);
}

bool XPathHelper::attribute_matches_node(Element* element, const std::string& predicate) const {
    return element != nullptr && ElementTest(predicate).accepts(*element);
}

}  // namespace quxml
