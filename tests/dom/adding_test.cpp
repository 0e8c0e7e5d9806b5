// SPDX-License-Identifier: MIT

// Covers how children are added and inserted, with their sibling links.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "dom/test_nodes.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::TextNode;
using quxml_test::BareNode;
using quxml_test::build;
using quxml_test::link;
using quxml_test::links_agree;
using quxml_test::OpenElement;
using quxml_test::to_line;

// ---- Adding ----

TEST(AddChild, appends_in_the_order_of_the_calls) {
    Document document(false);
    Element* root = document.create_root_node("r");
    Element* c = root->add_child("c");
    EXPECT_TRUE(links_agree(root));
    Element* a = root->add_child("a");
    EXPECT_TRUE(links_agree(root));
    Element* b = root->add_child("b");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(to_line(root), "r{c a b}");
    EXPECT_EQ(c->get_parent(), root);
    EXPECT_EQ(c->get_previous_sibling(), nullptr);
    EXPECT_EQ(c->get_next_sibling(), a);
    EXPECT_EQ(a->get_previous_sibling(), c);
    EXPECT_EQ(a->get_next_sibling(), b);
    EXPECT_EQ(b->get_previous_sibling(), a);
    EXPECT_EQ(b->get_next_sibling(), nullptr);
}

TEST(AddChild, with_a_string_sets_the_item) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "b & c");
    root->add_child("x", std::string("1"));
    EXPECT_EQ(to_line(root), "r{x(item='b & c') x(item=1)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChild, with_an_empty_item_sets_the_attribute_all_the_same) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "");
    EXPECT_EQ(to_line(root), "r{x(item='')}");
}

TEST(AddChild, writes_a_number_in_decimal) {
    const std::pair<int, std::string> rows[] = {
        {7, "7"}, {-3, "-3"}, {0, "0"}, {1000, "1000"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.second);
        Document document(false);
        Element* root = document.create_root_node("r");
        EXPECT_EQ(root->add_child("x", row.first)->get_attribute_value("item"), row.second);
        EXPECT_EQ(to_line(root), "r{x(item=" + row.second + ")}");
    }
}

TEST(AddChild, hands_keep_sorted_down_to_every_level) {
    for (const bool sorted : {false, true}) {
        Document document(sorted);
        Element* lower = document.create_root_node("r")->add_child("s")->add_child("t", 1);
        lower->add_child("b");
        lower->add_child("a");
        EXPECT_EQ(to_line(lower), sorted ? "t(item=1){a b}" : "t(item=1){b a}");
        EXPECT_TRUE(links_agree(document.get_root_node()));
    }
}

TEST(AddChild, places_by_the_item_in_a_node_that_is_kept_sorted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 10);
    root->add_child("x", 9);
    root->add_child("x", "1");
    EXPECT_EQ(to_line(root), "r{x(item=1) x(item=9) x(item=10)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChild, never_looks_at_items_unless_kept_sorted) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "99999999999");
    root->add_child("x", "99999999999");
    root->add_child("x", 1);
    EXPECT_EQ(to_line(root), "r{x(item=99999999999) x(item=99999999999) x(item=1)}");
}

TEST(AddNewNode, does_not_set_the_parent_which_is_wanted) {
    OpenElement parent("p");
    auto* child = new Element("c", nullptr, false);
    parent.add_new_node(child);
    EXPECT_EQ(child->get_parent(), nullptr);
    EXPECT_EQ(to_line(&parent), "p{c}");
}

TEST(AddNewNode, appends_nodes_of_any_class) {
    Document document(false);
    Element* root = build(document, "r{a}");
    link(*root, std::make_unique<BareNode>("n", root, false));
    link(*root, std::make_unique<TextNode>(root, "named text"));
    EXPECT_EQ(to_line(root), R"(r{a <n> ""})");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddNewNode, works_on_a_node_that_is_no_element) {
    BareNode parent(std::string("p"));
    auto* first = new BareNode(std::string("a"));
    auto* second = new BareNode(std::string("b"));
    parent.add_new_node(first);
    parent.add_new_node(second);
    EXPECT_EQ(first->get_next_sibling(), second);
    EXPECT_EQ(second->get_previous_sibling(), first);
    EXPECT_EQ(parent.get_child("b"), second);
}

TEST(AddNewNode, on_an_empty_list_touches_no_link) {
    OpenElement elsewhere("elsewhere");
    for (const bool sorted : {false, true}) {
        OpenElement parent("p", sorted);
        auto* child = new OpenElement("c");
        child->previous_sibling = &elsewhere;
        child->next_sibling = &elsewhere;
        parent.add_new_node(child);
        EXPECT_EQ(child->get_previous_sibling(), &elsewhere);
        EXPECT_EQ(child->get_next_sibling(), &elsewhere);
    }
}

TEST(AddNewNode, fails_on_an_item_beyond_the_range_and_leaves_the_node_to_the_caller) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 1);
    root->add_child("x", 5);
    const auto node = std::make_unique<Element>("x", root, true);
    node->set_attribute("item", "99999999999");
    EXPECT_THROW_MESSAGE(root->add_new_node(node.get()), std::out_of_range, "stoi");
    EXPECT_EQ(to_line(root), "r{x(item=1) x(item=5)}");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(node->get_previous_sibling(), nullptr);
    EXPECT_EQ(node->get_next_sibling(), nullptr);
}

/// What `add_child` throws for an item beyond the range, and the tree after it.
std::string fail_to_add_child() {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 1);
    root->add_child("x", 5);
    try {
        root->add_child("x", "99999999999");
    } catch (const std::out_of_range& error) {
        return std::string(error.what()) + " " + to_line(root) + (links_agree(root) ? " ok" : " broken");
    }
    return "nothing";
}

// The new child is not freed. That is seen in a process of its own, which kills itself, so that nobody who
// looks for leaks at its end reports this one, where there are processes.
TEST(AddChildDeathTest, with_an_item_beyond_the_range_leaves_the_new_child_unlinked_which_is_wanted) {
#ifdef GTEST_HAS_DEATH_TEST
    const auto fail_and_end = [] {
        std::cerr << fail_to_add_child() << '\n';
        static_cast<void>(std::raise(SIGKILL));
    };
    EXPECT_EXIT(fail_and_end(), ::testing::KilledBySignal(SIGKILL), "^stoi r.x.item=1. x.item=5.. ok\n$");
#else
    EXPECT_EQ(fail_to_add_child(), "stoi r{x(item=1) x(item=5)} ok");
#endif
}

// ---- Inserting ----

TEST(InsertNode, into_an_empty_list_touches_no_link) {
    OpenElement elsewhere("elsewhere");
    OpenElement parent("p");
    auto* child = new OpenElement("c");
    child->previous_sibling = &elsewhere;
    child->next_sibling = &elsewhere;
    parent.insert_node(child, parent.children.end());
    EXPECT_EQ(child->get_previous_sibling(), &elsewhere);
    EXPECT_EQ(child->get_next_sibling(), &elsewhere);
    EXPECT_EQ(to_line(&parent), "p{c}");
}

TEST(InsertNode, into_an_empty_list_does_not_look_at_the_position) {
    OpenElement parent("p");
    quxml::NodeList snapshot = parent.get_children();
    parent.insert_node(parent.new_child("c"), snapshot.end());
    EXPECT_EQ(to_line(&parent), "p{c}");
    EXPECT_TRUE(snapshot.empty());
}

TEST(InsertNode, links_at_every_position) {
    const std::string rows[] = {"p{new a b c}", "p{a new b c}", "p{a b new c}", "p{a b c new}"};
    for (int position = 0; position <= 3; ++position) {
        SCOPED_TRACE(position);
        OpenElement parent("p");
        for (const char* name : {"a", "b", "c"})
            parent.add_child(name);
        parent.insert_node(parent.new_child("new"), parent.at(position));
        EXPECT_EQ(to_line(&parent), rows[position]);
        EXPECT_TRUE(links_agree(&parent));
    }
}

TEST(InsertNode, ignores_that_the_parent_is_kept_sorted_which_is_wanted) {
    OpenElement parent("p", true);
    parent.add_child("b");
    parent.insert_node(parent.new_child("z"), parent.children.begin());
    parent.insert_node(parent.new_child("a"), parent.children.end());
    EXPECT_EQ(to_line(&parent), "p{z b a}");
    EXPECT_TRUE(links_agree(&parent));
}

TEST(InsertNode, does_not_set_the_parent_which_is_wanted) {
    OpenElement parent("p");
    parent.add_child("a");
    auto* child = new Element("c", nullptr, false);
    parent.insert_node(child, parent.children.begin());
    EXPECT_EQ(child->get_parent(), nullptr);
    EXPECT_EQ(to_line(&parent), "p{c a}");
}

TEST(InsertNode, leaves_the_link_that_points_out_of_the_list_as_it_is) {
    OpenElement elsewhere("elsewhere");
    OpenElement parent("p");
    parent.add_child("a");
    auto* last = new OpenElement("last");
    last->next_sibling = &elsewhere;
    parent.insert_node(last, parent.children.end());
    EXPECT_EQ(last->get_next_sibling(), &elsewhere);
    auto* first = new OpenElement("first");
    first->previous_sibling = &elsewhere;
    parent.insert_node(first, parent.children.begin());
    EXPECT_EQ(first->get_previous_sibling(), &elsewhere);
    EXPECT_EQ(to_line(&parent), "p{first a last}");
}

}  // namespace
