// SPDX-License-Identifier: MIT
#include "trees/document_order.h"

#include <gtest/gtest.h>
#include <quxml/Document.h>
#include <quxml/Element.h>

#include <memory>
#include <string>
#include <vector>

#include "support/small_stack.h"

namespace {

using Nodes = std::vector<quxml::Node*>;

std::string names_of(const Nodes& nodes) {
    std::string names;
    for (const quxml::Node* node : nodes)
        names += node->get_name() + ' ';
    return names;
}

std::string ordered(quxml::Document& document, const quxml::NodeSet& nodes) {
    return names_of(tool::in_document_order(document.get_root_node(), nodes));
}

/// The order of a NodeSet is that of addresses, so one of the two arrangements of `a` and `b` tells whether it
/// shows.
TEST(DocumentOrder, is_the_order_of_children_and_not_that_of_addresses) {
    quxml::Document document(false);
    quxml::Element* root = document.create_root_node("root");
    quxml::Node* a = root->add_child("a");
    quxml::Node* b = root->add_child("b");
    EXPECT_EQ(ordered(document, {a, b}), "a b ");
    root->set_child_first(b);
    EXPECT_EQ(ordered(document, {a, b}), "b a ");
}

TEST(DocumentOrder, puts_parents_before_their_children_and_whole_branches_one_after_the_other) {
    quxml::Document document(false);
    quxml::Element* root = document.create_root_node("root");
    quxml::Element* last = root->add_child("last");
    quxml::Element* first = root->add_child("first");
    root->set_child_first(first);
    quxml::Node* late = last->add_child("late");
    quxml::Node* early = first->add_child("early");
    EXPECT_EQ(ordered(document, {late, early, last, first, root}), "root first early last late ");
    EXPECT_EQ(ordered(document, {late, early}), "early late ");
    EXPECT_EQ(ordered(document, {last, early}), "early last ");
    EXPECT_EQ(ordered(document, {root}), "root ");
    EXPECT_EQ(ordered(document, {}), "");
}

TEST(DocumentOrder, takes_no_more_stack_for_a_deeper_tree) {
    constexpr int depth = 200000;
    quxml::Document document(false);
    quxml::Element* deepest = document.create_root_node("root");
    quxml::NodeSet nodes{deepest};
    Nodes expected{deepest};
    for (int i = 0; i < depth; ++i) {
        deepest = deepest->add_child("child");
        nodes.insert(deepest);
        expected.push_back(deepest);
    }
    quxml_test::on_small_stack(
        [&] { EXPECT_EQ(tool::in_document_order(document.get_root_node(), nodes), expected); });
}

}  // namespace
