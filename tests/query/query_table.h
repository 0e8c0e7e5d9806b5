// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_QUERY_QUERY_TABLE_H
#define QUXML_TESTS_QUERY_QUERY_TABLE_H

// What the tables of query tests share: a tree built from one line, whose nodes can be named, and rows that
// say which nodes a path selects, or which exception it throws.

#include <algorithm>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "query/slow_engine.h"
#include "quxml/quxml.h"
#include "support/test_names.h"
#include "support/tree_text.h"

namespace quxml_test {

// Outcomes of queries that throw.
const char* const not_a_number = "invalid_argument: stoi";
const char* const number_too_large = "out_of_range: stoi";
const char* const one_equals_sign =
    "invalid_argument: Search for child node must contain exactly one equals sign";
const char* const at_most_one_equals_sign =
    "invalid_argument: Can at most have one equal sign in attribute queries";
const char* const empty_comparator = "bad_function_call: bad_function_call";

/// `node` and everything below it in document order.
inline std::vector<quxml::Node*> nodes_in_document_order(quxml::Node* node) {
    std::vector<quxml::Node*> found;
    std::vector<quxml::Node*> waiting(1, node);
    while (!waiting.empty()) {
        quxml::Node* const next = waiting.back();
        waiting.pop_back();
        found.push_back(next);
        const quxml::NodeList children = next->get_children();
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return found;
}

/// The exact type of an exception and its message, such as "out_of_range: stoi".
inline std::string describe(const std::exception& error) {
    std::string type = typeid(error).name();
    if (typeid(error) == typeid(std::invalid_argument))
        type = "invalid_argument";
    if (typeid(error) == typeid(std::out_of_range))
        type = "out_of_range";
    if (typeid(error) == typeid(std::bad_function_call))
        type = "bad_function_call";
    return type + ": " + error.what();
}

/// A tree with names for its nodes: the value of the attribute `n`, or "#3" for the third in document order.
class Tree {
public:
    explicit Tree(const std::string& line)
        : document(false), root(build(document, line)), nodes(nodes_in_document_order(root)) {}

    std::string line() const { return to_line(root); }

    std::string name(quxml::Node* node) const {
        if (node == nullptr)
            return "null";
        const auto found = std::find(nodes.begin(), nodes.end(), node);
        if (found == nodes.end())
            return "stranger";
        const auto* const element = dynamic_cast<quxml::Element*>(node);
        if (element != nullptr && element->get_attribute("n") != nullptr)
            return element->get_attribute_value("n");
        return "#" + std::to_string(found - nodes.begin() + 1);
    }

    /// The node of that name; the root for "#1", whatever its attributes.
    quxml::Node* node(const std::string& wanted) const {
        for (quxml::Node* candidate : nodes) {
            if (name(candidate) == wanted)
                return candidate;
        }
        if (wanted == "#1")
            return root;
        throw std::logic_error("no node is called " + wanted);
    }

    quxml::Element* element(const std::string& wanted) const {
        return dynamic_cast<quxml::Element*>(node(wanted));
    }

    /// The nodes called by these names, which are separated by single blanks.
    quxml::NodeList list(const std::string& names) const {
        quxml::NodeList found;
        for (std::size_t begin = 0; begin < names.size();) {
            const std::size_t end = std::min(names.find(' ', begin), names.size());
            found.push_back(node(names.substr(begin, end - begin)));
            begin = end + 1;
        }
        return found;
    }

    /// The names in list order, separated by single blanks.
    std::string names(const quxml::NodeList& list) const {
        std::string text;
        for (quxml::Node* listed : list)
            text += (text.empty() ? "" : " ") + name(listed);
        return text;
    }

    /// The names in document order, separated by single blanks; what is not in the tree comes last.
    std::string names(const quxml::NodeSet& set) const {
        quxml::NodeSet strangers = set;
        quxml::NodeList in_order;
        for (quxml::Node* candidate : nodes) {
            if (strangers.erase(candidate) != 0)
                in_order.push_back(candidate);
        }
        in_order.insert(in_order.end(), strangers.begin(), strangers.end());
        return names(in_order);
    }

    /// The names of what `query` returns, or the exception that it throws.
    template <class Query>
    std::string outcome(Query query) const {
        try {
            return names(query());
        } catch (const std::exception& error) {
            return describe(error);
        }
    }

private:
    quxml::Document document;
    quxml::Element* root;
    std::vector<quxml::Node*> nodes;
};

/// One query: from the node `start` of `tree`, `path` selects the nodes `expected`, named in document order,
/// or throws.
struct QueryRow {
    const char* note;  // what the row shows; becomes the name of the test
    const char* tree;
    const char* start;
    const char* path;
    const char* expected;
};

inline void PrintTo(const QueryRow& row, std::ostream* out) {
    *out << row.note;
}

/// Checks a row against the library and against the slow engine, and that the tree is left as it was.
inline void check_row(const QueryRow& row, quxml::NodeSet (quxml::Node::*find)(const std::string&),
                      quxml::NodeSet (*slow_find)(quxml::Node*, const std::string&)) {
    SCOPED_TRACE(std::string(row.path) + " from " + row.start + " of " + row.tree);
    const Tree tree(row.tree);
    quxml::Node* const start = tree.node(row.start);
    const std::string before = tree.line();
    EXPECT_EQ(tree.outcome([&] { return (start->*find)(row.path); }), row.expected);
    EXPECT_EQ(tree.line(), before);
    EXPECT_EQ(tree.outcome([&] { return slow_find(start, row.path); }), row.expected) << "by the slow engine";
}

inline void check_exact(const QueryRow& row) {
    check_row(row, &quxml::Node::find_exact_match, &slow_find_exact_match);
}

inline void check_prefix(const QueryRow& row) {
    check_row(row, &quxml::Node::find_substring_match, &slow_find_substring_match);
}

}  // namespace quxml_test

#endif
