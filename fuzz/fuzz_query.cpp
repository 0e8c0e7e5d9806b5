// SPDX-License-Identifier: MIT

// Queries, and the handlers they consist of, compared with the slow second engine of the tests: both must give the same
// nodes, or the same exception with the same message.
//
// Input: a path, a line feed, a tree (see `tree_input.h`), at most 600 bytes: the slow engine recurses with the depth
// of the tree and parses the path at every node, so time grows with the square of the input.

#include <cstdint>
#include <string>
#include <typeinfo>
#include <utility>

#include "check.h"
#include "query/slow_engine.h"
#include "quxml/quxml.h"
#include "tree_input.h"

namespace {

using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::NodeSet;
using quxml::StringComparator;
using quxml::XPathHelper;
using quxml_test::SlowEngine;

constexpr std::size_t longest_input = 600;

template <typename Nodes>
std::string print_nodes(const Nodes& nodes) {
    std::string out;
    for (const Node* node : nodes)
        out += ' ' + std::to_string(reinterpret_cast<std::uintptr_t>(node));
    return out;
}

std::string print(const NodeSet& nodes) {
    return "set" + print_nodes(nodes);
}

std::string print(const NodeList& nodes) {
    return "list" + print_nodes(nodes);
}

std::string print(bool value) {
    return value ? "true" : "false";
}

std::string print(int value) {
    return std::to_string(value);
}

std::string print(const std::pair<unsigned int, unsigned int>& range) {
    return std::to_string(range.first) + ".." + std::to_string(range.second);
}

std::string print(const std::pair<std::string, std::string>& pair) {
    return "\"" + pair.first + "\"=\"" + pair.second + "\"";
}

/// What an operation does, as text: its result, or the exact type and message of its exception.
template <typename Operation>
std::string describe(Operation operation) {
    try {
        return print(operation());
    } catch (const std::exception& error) {
        return std::string(typeid(error).name()) + " \"" + error.what() + "\"";
    }
}

template <typename Operation, typename SlowOperation>
void compare(const char* what, const std::string& text, Operation operation, SlowOperation slow_operation) {
    quxml_fuzz::check_same(what, describe(operation), describe(slow_operation), text);
}

void compare_searches(Node* node, const std::string& path) {
    compare(
        "find_exact_match", path, [&] { return node->find_exact_match(path); },
        [&] { return quxml_test::slow_find_exact_match(node, path); });
    compare(
        "find_substring_match", path, [&] { return node->find_substring_match(path); },
        [&] { return quxml_test::slow_find_substring_match(node, path); });
}

bool is_equal(const std::string& name, const std::string& name_test) {
    return name == name_test;
}

/// An engine of each kind, and operations of both to be compared.
class Engines {
public:
    explicit Engines(const StringComparator& comparator) : helper(comparator), slow(comparator) {}

    /// Results are never cleared, so after an exception and in the second search they hold what came before.
    void compare_find(Node* node, const std::string& path) {
        for (int i = 0; i < 2; ++i)
            compare(
                "find", path, [&] { return helper.find(node, path); }, [&] { return slow.find(node, path); });
        compare(
            "find of * after", path, [&] { return helper.find(node, "*"); },
            [&] { return slow.find(node, "*"); });
    }

    void compare_step(Node* node, const std::string& step) {
        compare(
            "get_child_nodes", step, [&] { return helper.get_child_nodes(node, step); },
            [&] { return slow.get_child_nodes(node, step); });
        compare(
            "is_correct_node", step, [&] { return helper.is_correct_node(node, step); },
            [&] { return slow.is_correct_node(node, step); });
    }

    void compare_predicates(const NodeList& nodes, const std::string& predicates) {
        NodeList left = nodes;
        NodeList slow_left = nodes;
        compare(
            "get_nodes_matching_attributes", predicates,
            [&] { return helper.get_nodes_matching_attributes(left, predicates); },
            [&] { return slow.get_nodes_matching_attributes(slow_left, predicates); });
        quxml_fuzz::check_same("the list given to get_nodes_matching_attributes", print(left),
                               print(slow_left));
    }

    void compare_filters(NodeList nodes, const std::string& text) {
        const NodeList before = nodes;
        compare(
            "get_nodes_matching_attribute", text,
            [&] { return helper.get_nodes_matching_attribute(nodes, text); },
            [&] { return slow.get_nodes_matching_attribute(nodes, text); });
        compare(
            "get_node_by_number", text, [&] { return helper.get_node_by_number(text, nodes); },
            [&] { return slow.get_node_by_number(text, nodes); });
        compare(
            "get_positioned_nodes", text, [&] { return helper.get_positioned_nodes(text, nodes); },
            [&] { return slow.get_positioned_nodes(text, nodes); });
        compare(
            "get_node_containing_attribute", text,
            [&] { return helper.get_node_containing_attribute(text, nodes); },
            [&] { return slow.get_node_containing_attribute(text, nodes); });
        compare(
            "get_node_containing_child_value", text,
            [&] { return helper.get_node_containing_child_value(text, nodes); },
            [&] { return slow.get_node_containing_child_value(text, nodes); });
        if (text.find("last()") != std::string::npos)
            compare_last(nodes, text);
        quxml_fuzz::check(nodes == before, "a filter changed the list given to it");
    }

    void compare_readers(Element* element, const std::string& text) {
        compare(
            "get_position_range", text, [&] { return helper.get_position_range(text, 7); },
            [&] { return slow.get_position_range(text, 7); });
        compare(
            "get_attribute_pair", text, [&] { return helper.get_attribute_pair(text); },
            [&] { return slow.get_attribute_pair(text); });
        compare(
            "attribute_matches_node", text, [&] { return helper.attribute_matches_node(element, text); },
            [&] { return slow.attribute_matches_node(element, text); });
    }

private:
    void compare_last(NodeList nodes, const std::string& text) {
        compare(
            "get_last_node", text, [&] { return helper.get_last_node(text, nodes); },
            [&] { return slow.get_last_node(text, nodes); });
        compare(
            "index_from_last", text, [&] { return helper.index_from_last(text); },
            [&] { return slow.index_from_last(text); });
    }

    const XPathHelper helper;
    SlowEngine slow;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_input)
        return 0;
    const quxml_fuzz::PathAndTree input(quxml_fuzz::to_text(data, size));
    Element* root = input.document.get_root_node();
    const NodeList children = root->get_children();
    compare_searches(root, input.path);
    compare_searches(root, "//*/" + input.path);
    if (!children.empty())
        compare_searches(children.back(), input.path);
    Engines engines{StringComparator(is_equal)};
    engines.compare_find(root, input.path);
    engines.compare_step(root, input.path);
    engines.compare_predicates(children, input.path);
    engines.compare_filters(children, input.path);
    engines.compare_readers(root, input.path);
    Engines{StringComparator()}.compare_find(root, input.path);
    return 0;
}
