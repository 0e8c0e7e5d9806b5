// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_QUERY_SLOW_ENGINE_H
#define QUXML_TESTS_QUERY_SLOW_ENGINE_H

// A second, slow and literal implementation of path queries that shares nothing with the library but the
// public tree. It recurses, copies every list and reads every predicate again at each node, so that each
// function can be checked by eye; the library must give the same nodes, or the same exception, for every tree
// and path.

#include <deque>
#include <string>
#include <utility>

#include "quxml/quxml.h"

namespace quxml_test {

/// The operations of `quxml::XPathHelper`, one by one. Lists are taken by value unless the library's
/// operation changes them.
class SlowEngine {
public:
    explicit SlowEngine(quxml::StringComparator compare);

    quxml::NodeSet find(quxml::Node* node, std::string path);

    void get_nodes_from_path(quxml::Node* node, std::deque<std::string> steps);
    void skip_all_until_first_match(quxml::Node* node, std::deque<std::string> steps);
    quxml::NodeList get_child_nodes(quxml::Node* node, std::string step) const;
    bool is_correct_node(quxml::Node* node, std::string step) const;

    quxml::NodeList get_nodes_matching_attributes(quxml::NodeList& nodes, std::string predicates) const;
    quxml::NodeList get_nodes_matching_attribute(quxml::NodeList nodes, std::string predicate) const;

    quxml::NodeList get_node_by_number(std::string number, quxml::NodeList nodes) const;
    quxml::NodeList get_last_node(std::string predicate, quxml::NodeList nodes) const;
    int index_from_last(std::string predicate) const;
    quxml::NodeList get_positioned_nodes(std::string predicate, quxml::NodeList nodes) const;
    std::pair<unsigned int, unsigned int> get_position_range(std::string predicate, unsigned int count) const;

    std::pair<std::string, std::string> get_attribute_pair(std::string query) const;
    quxml::NodeList get_node_containing_attribute(std::string query, quxml::NodeList nodes) const;
    quxml::NodeList get_node_containing_child_value(std::string query, quxml::NodeList nodes) const;
    bool contains_child_value(quxml::Node* node, std::string child_name, std::string value) const;
    bool attribute_matches_node(quxml::Element* element, std::string predicate) const;

private:
    quxml::NodeList get_nodes_by_bare_literal(quxml::NodeList nodes, std::string literal) const;

    quxml::NodeSet results;
    quxml::StringComparator comparator;
};

/// What `node->find_exact_match(path)` must give.
quxml::NodeSet slow_find_exact_match(quxml::Node* node, const std::string& path);

/// What `node->find_substring_match(path)` must give.
quxml::NodeSet slow_find_substring_match(quxml::Node* node, const std::string& path);

}  // namespace quxml_test

#endif
