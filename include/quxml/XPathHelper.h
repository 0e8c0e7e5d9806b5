// SPDX-License-Identifier: MIT
#ifndef QUXML_XPATH_HELPER_H
#define QUXML_XPATH_HELPER_H

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "Node.h"
#include "export.h"

namespace quxml {

class Element;

/// Decides name tests; always called as comparator(name of the node, name test). True: the node passes. It may
/// add, move and rename nodes of the tree that is searched, but not remove any. How often it is called for a node
/// is not promised: a search asks again about a node that it has refused for the last step.
using StringComparator = std::function<bool(const std::string&, const std::string&)>;

/// The path-query engine. Most callers want `Node::find_exact_match` or `Node::find_substring_match`, which
/// use a fresh helper for each query; a helper of your own takes a comparator of your own.
///
/// A path is a list of steps separated by "/":
///
///     s1/s2/s3     s1 is tested against the start node itself, s2 selects among its children, and so on
///     /s1/s2       the same
///     //s1/s2      s1 is searched for in the start node and everything below it
///     s1//s2       s2 is searched for below the nodes that s1 selects
///     s1/          all children of the nodes that s1 selects, text included
///
/// A step is a name test, `*` for any node, followed by predicates in brackets. A search stops at the first
/// match of each branch, except for a final step that is exactly `*`.
///
/// A step that selects among children applies its predicates in order, each to the list that the one before
/// left:
///
///     [last()] [last()-1]           counted from the end
///     [position()=2] [position()<3] positions from 1; [position()>n] leaves out the last node
///     [@key] [@key='value']         an attribute that exists, or has that value
///     [child='text']                a child element whose first text is that
///     [2]                           elements whose attribute "item" is "2"; [1] also takes some without one
///
/// The first step of a path, and a step after "//", test one node at a time, and only by their first
/// predicate:
///
///     [@key] [@key =value]          Deliberate: the character before "=" does not belong to the name,
///                                   and the value is compared as it stands, quotes included. Tests:
///                                   Rows/AttributeMatches.is_decided/it_is_deliberate_that_the_character_before_the_equals_sign_is_dropped,
///                                   Attributes/SingleNode.selects/it_is_deliberate_that_quotes_are_compared
///     [child='text']                as above
///     [2]                           an element whose item is "2"; one without an item counts as item "1"
///     anything else, last() too     compared with the item, so `//x[last()]` finds nothing
///
/// A predicate in which "last()" or "position()" stands anywhere is one of those, and `position()<=n` and
/// `position()>=n` cannot be read. A step that selects among children may also have a bare text in brackets:
/// it keeps a node if that is the only one left and its parent has a child of the same name with that text.
/// A path is cut at every "/", and predicates at every "[" and "]", inside quotes too.
///
/// Lists of children handed to the handlers below are not changed unless a handler says so. Errors, wherever
/// a predicate that is reached cannot be read: `std::invalid_argument` with a message of its own or "stoi",
/// `std::out_of_range` ("stoi") for numbers beyond `int`, and `std::bad_function_call` if a name is to be
/// tested and the comparator is empty. The tree is only read, and no node is ever owned by a helper. Nodes
/// handed to the operations must not be null, except where they say what they make of it.
///
/// \par Threads
/// A helper may not be used on two threads at once: its const operations change its results.
class QUXML_EXPORT XPathHelper {
public:
    /// \param comparator copied; may be empty, which fails when the first name test is made.
    explicit XPathHelper(StringComparator comparator);

    ~XPathHelper();

    /// Selects nodes and adds them to the results.
    ///
    /// Deliberate: the results are never cleared. A second `find` on the same helper returns the nodes of
    /// both, except that an empty path, or one of white space only, returns an empty set.
    /// Tests: Handlers.it_is_deliberate_that_results_of_several_queries_add_up,
    /// Handlers.an_empty_path_gives_an_empty_set_though_results_are_held.
    /// \param node the start node, borrowed; nothing is selected if it is null.
    /// \param path white space around it is removed.
    /// \return a copy of the results; the pointers are borrowed.
    NodeSet find(Node* node, std::string path) const;

    /// Follows `steps` from `node`, which has already satisfied the first one, and adds what the last one
    /// selects to the results. Without steps it does nothing.
    void get_nodes_from_path(Node* node, std::deque<std::string> steps) const;

    /// Searches `node` and everything below it for the first of `steps`, branch by branch, and follows the
    /// remaining ones from each match. Without steps it does nothing.
    void skip_all_until_first_match(Node* node, const std::deque<std::string>& steps) const;

    /// The children of `node` that satisfy `step`, predicates applied, in child order; all of them if it is
    /// empty.
    NodeList get_child_nodes(Node* node, const std::string& step) const;

    /// Tests one node against a step: its name, and the text between the step's first "[" and its first "]"
    /// (to the end of the step if there is no "]", or if it comes first).
    bool is_correct_node(Node* node, const std::string& step) const;

    /// Applies a run of predicates, written `p1][p2` without the outer brackets.
    /// \param nodes replaced by what each predicate leaves; after an exception, what the last one that could be
    ///     read has left.
    /// \param predicates empty to leave all.
    /// \return a copy of what is left.
    NodeList get_nodes_matching_attributes(NodeList& nodes, const std::string& predicates) const;

    /// Applies one predicate, written without its brackets.
    NodeList get_nodes_matching_attribute(NodeList& nodes, std::string predicate) const;

    /// The predicate `number`: elements whose item is exactly that text; if it is the number 1, also the
    /// first of each run of namesakes without an item.
    NodeList get_node_by_number(const std::string& number, NodeList& nodes) const;

    /// The predicate `last()`, with an offset such as `last()-1`: one node, or none if the offset leaves the
    /// list.
    NodeList get_last_node(const std::string& predicate, NodeList& nodes) const;

    /// The offset after `last()`, which `predicate` must contain: 0 if nothing follows it.
    int index_from_last(const std::string& predicate) const;

    /// The predicate `position()` with `<`, `>` or `=`.
    NodeList get_positioned_nodes(const std::string& predicate, NodeList& nodes) const;

    /// The bounds of a `position()` predicate for a list of `count` nodes: the first position selected,
    /// counted from 1, and the position at which selection stops, which is not selected itself; 0 there means
    /// no bound.
    ///
    /// Deliberate: `>` and `>=` set the second bound to `count`, so the last node is left out; `<=` and `>=`
    /// always throw, because their number is read from the "=" on.
    /// Tests: Position/Positional.selects/it_is_deliberate_that_greater_leaves_out_the_last,
    /// Position/Positional.selects/it_is_deliberate_that_less_or_equal_throws.
    std::pair<unsigned int, unsigned int> get_position_range(const std::string& predicate,
                                                             unsigned int count) const;

    /// `name=value` as a pair, quotes around the value removed; the value is empty if there is no "=".
    /// \throws std::invalid_argument "Can at most have one equal sign in attribute queries".
    std::pair<std::string, std::string> get_attribute_pair(const std::string& query) const;

    /// The elements that have the attribute `query`, written `name` or `name=value`. An empty value only asks
    /// that the attribute exists.
    /// \throws std::invalid_argument as `get_attribute_pair`, for an empty list too.
    NodeList get_node_containing_attribute(const std::string& query, NodeList& nodes) const;

    /// The nodes for which `contains_child_value` holds.
    /// \param query written `name=value`.
    /// \param nodes no entry may be null.
    /// \throws std::invalid_argument "Search for child node must contain exactly one equals sign", for an
    ///     empty list too.
    NodeList get_node_containing_child_value(const std::string& query, NodeList& nodes) const;

    /// Whether some child element of `node` has exactly this name and a text child, the first of which is
    /// exactly `value`. False if `node` is null.
    bool contains_child_value(Node* node, const std::string& child_name, const std::string& value) const;

    /// Whether one element satisfies a predicate of the single-node kind: `@name`, `@name =value` or an item.
    /// False if `element` is null.
    bool attribute_matches_node(Element* element, const std::string& predicate) const;

private:
    mutable NodeSet results;
    StringComparator comparator;
};

}  // namespace quxml

#endif
