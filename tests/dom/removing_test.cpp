// SPDX-License-Identifier: MIT

// Covers how children are removed and moved to the front, with the sibling links of those that stay.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "dom/test_nodes.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml_test::add_logged;
using quxml_test::add_logged_text;
using quxml_test::build;
using quxml_test::build_chain;
using quxml_test::child_at;
using quxml_test::links_agree;
using quxml_test::Log;
using quxml_test::LoggedElement;
using quxml_test::on_small_stack;
using quxml_test::OpenElement;
using quxml_test::to_line;

const std::size_t deep = 1000000;

// ---- Removing ----

TEST(RemoveChild, null_is_rejected_before_the_empty_check) {
    Document document(false);
    Element* root = build(document, "r");
    EXPECT_THROW_MESSAGE(root->remove_child(nullptr), std::invalid_argument,
                         "Can not remove nullptr pointer from Node");
    EXPECT_EQ(to_line(root), "r");
}

TEST(RemoveChild, null_is_rejected_and_the_tree_unchanged) {
    Document document(false);
    Element* root = build(document, "r(x=1){a \"t\"}");
    EXPECT_THROW_MESSAGE(root->remove_child(nullptr), std::invalid_argument,
                         "Can not remove nullptr pointer from Node");
    EXPECT_EQ(to_line(root), "r(x=1){a \"t\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, nothing_can_be_removed_from_a_node_without_children) {
    Document document(false);
    Element* root = build(document, "r{a{b} c}");
    Node* a = root->get_child("a");
    Node* c = root->get_child("c");
    EXPECT_THROW_MESSAGE(c->remove_child(a), std::invalid_argument,
                         "Can not remove when Node has no children");
    EXPECT_EQ(to_line(root), "r{a{b} c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, nothing_can_be_removed_from_text_or_attributes) {
    Document document(false);
    Element* root = build(document, "r(x=1){a \"t\"}");
    for (Node* childless : {static_cast<Node*>(root->get_attribute("x")), root->get_child("")}) {
        EXPECT_THROW_MESSAGE(childless->remove_child(root->get_child("a")), std::invalid_argument,
                             "Can not remove when Node has no children");
        EXPECT_THROW_MESSAGE(childless->remove_child(nullptr), std::invalid_argument,
                             "Can not remove nullptr pointer from Node");
    }
    EXPECT_EQ(to_line(root), "r(x=1){a \"t\"}");
}

TEST(RemoveChild, of_the_only_child_empties_the_list) {
    Document document(false);
    Element* root = build(document, "r{a{b}}");
    root->remove_child(root->get_child("a"));
    EXPECT_EQ(to_line(root), "r");
    root->add_child("c");
    EXPECT_EQ(to_line(root), "r{c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, relinks_the_neighbours_at_every_position) {
    const std::pair<std::string, std::string> rows[] = {
        {"a", "r{b \"t\" c}"}, {"b", "r{a \"t\" c}"}, {"", "r{a b c}"}, {"c", "r{a b \"t\"}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Document document(false);
        Element* root = build(document, "r{a b \"t\" c}");
        root->remove_child(root->get_child(row.first));
        EXPECT_EQ(to_line(root), row.second);
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(RemoveChild, relinks_the_neighbours_in_every_order_of_removal) {
    std::vector<int> order = {0, 1, 2, 3};
    do {
        Document document(false);
        Element* root = build(document, "r{a b c d}");
        const NodeList all = root->get_children();
        for (const int position : order) {
            root->remove_child(*std::next(all.begin(), position));
            EXPECT_TRUE(links_agree(root));
        }
        EXPECT_EQ(to_line(root), "r");
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(RemoveChild, destroys_the_whole_subtree_and_nothing_else) {
    Log log;
    Document document(false);
    Element* root = document.create_root_node("r");
    add_logged(log, *root, "before");
    LoggedElement* top = add_logged(log, *root, "top");
    add_logged(log, *root, "after");
    add_logged_text(log, *add_logged(log, *top, "lower"), "text");
    root->remove_child(top);
    EXPECT_EQ(log, (Log{"top 1 below r", "lower 1", "text 0"}));
    EXPECT_EQ(to_line(root), "r{before after}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, keeps_children_sorted) {
    Document document(true);
    Element* root = build(document, "r{d b a c}");
    root->remove_child(root->get_child("b"));
    root->add_child("bb");
    EXPECT_EQ(to_line(root), "r{a bb c d}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, removes_every_entry_of_a_node_that_was_linked_twice) {
    Log log;
    OpenElement parent("p");
    parent.add_child("a");
    LoggedElement* twice = add_logged(log, parent, "twice");
    parent.add_child("b");
    parent.children.insert(parent.at(1), twice);
    ASSERT_EQ(to_line(&parent), "p{a twice twice b}");
    parent.remove_child(twice);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_EQ(to_line(&parent), "p{a b}");
    EXPECT_TRUE(links_agree(&parent));
}

TEST(RemoveChild, removes_every_entry_of_a_node_that_stands_at_an_end_as_well) {
    for (const bool is_at_front : {true, false}) {
        Log log;
        OpenElement parent("p");
        parent.add_child("a");
        LoggedElement* twice = add_logged(log, parent, "twice");
        parent.add_child("b");
        parent.children.insert(is_at_front ? parent.children.begin() : parent.children.end(), twice);
        parent.remove_child(twice);
        EXPECT_EQ(log.size(), 1U);
        EXPECT_EQ(to_line(&parent), "p{a b}");
    }
}

TEST(RemoveChild,
     takes_a_foreign_node_out_of_its_own_siblings_though_its_parent_still_lists_it_which_is_wanted) {
    Log log;
    OpenElement owner("owner");
    owner.add_child("a");
    LoggedElement* foreign = add_logged(log, owner, "foreign");
    owner.add_child("b");
    Document document(false);
    Element* root = build(document, "r{x y}");
    root->remove_child(foreign);
    EXPECT_EQ(log, (Log{"foreign 0 below owner"}));
    EXPECT_EQ(to_line(root), "r{x y}");
    EXPECT_EQ(owner.children.size(), 3U);
    owner.children.erase(owner.at(1));
    EXPECT_EQ(to_line(&owner), "owner{a b}");
    EXPECT_TRUE(links_agree(&owner));
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, by_a_parent_of_one_destroys_a_foreign_node_and_relinks_nothing) {
    Log log;
    OpenElement owner("owner");
    LoggedElement* foreign = add_logged(log, owner, "foreign");
    owner.add_child("b");
    Document document(false);
    Element* root = build(document, "r{x}");
    root->remove_child(foreign);
    EXPECT_EQ(log, (Log{"foreign 0 below owner"}));
    EXPECT_EQ(to_line(root), "r{x}");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(owner.children.size(), 2U);
    EXPECT_NE(owner.children.back()->get_previous_sibling(), nullptr);
    owner.children.pop_front();
}

TEST(RemoveChild, by_a_parent_of_one_destroys_a_node_without_siblings_and_keeps_its_own_child) {
    Document document(false);
    Element* root = build(document, "r{x}");
    root->remove_child(new Element("free", nullptr, false));
    EXPECT_EQ(to_line(root), "r{x}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, of_a_deep_tree_needs_no_deep_stack) {
    Document document(false);
    build_chain(document, "n", deep);
    Element* root = document.get_root_node();
    on_small_stack([root] { root->remove_child(root->get_children().front()); });
    EXPECT_EQ(to_line(root), "n");
}

// ---- Moving to the front ----

TEST(SetChildFirst, leaves_the_first_child_where_it_is) {
    Document document(false);
    Element* root = build(document, "r{a b c}");
    root->set_child_first(root->get_child("a"));
    EXPECT_EQ(to_line(root), "r{a b c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, moves_a_child_from_every_position) {
    const std::pair<std::string, std::string> rows[] = {{"b", "r{b a c}"}, {"c", "r{c a b}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Document document(false);
        Element* root = build(document, "r{a b c}");
        Node* child = root->get_child(row.first);
        root->set_child_first(child);
        EXPECT_EQ(to_line(root), row.second);
        EXPECT_EQ(child, child_at(*root, 0));
        EXPECT_EQ(child->get_previous_sibling(), nullptr);
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(SetChildFirst, swaps_two_children_and_leaves_an_only_child) {
    Document document(false);
    Element* root = build(document, "r{a \"t\"}");
    root->set_child_first(root->get_child(""));
    EXPECT_EQ(to_line(root), "r{\"t\" a}");
    EXPECT_TRUE(links_agree(root));
    root->remove_child(root->get_child("a"));
    root->set_child_first(root->get_child(""));
    EXPECT_EQ(to_line(root), "r{\"t\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, ignores_that_the_parent_is_kept_sorted_which_is_wanted) {
    Document document(true);
    Element* root = build(document, "r{a b c}");
    root->set_child_first(root->get_child("c"));
    EXPECT_EQ(to_line(root), "r{c a b}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, does_nothing_for_a_foreign_node_without_a_previous_sibling) {
    Document document(false);
    Document other(false);
    Element* root = build(document, "r{a b}");
    Element* owner = build(other, "owner{foreign}");
    root->set_child_first(owner->get_child("foreign"));
    EXPECT_EQ(to_line(root), "r{a b}");
    EXPECT_EQ(to_line(owner), "owner{foreign}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, takes_a_foreign_node_to_the_front_though_its_parent_still_lists_it_which_is_wanted) {
    OpenElement owner("owner");
    for (const char* name : {"a", "foreign", "b"})
        owner.add_child(name);
    Node* foreign = owner.get_child("foreign");
    Document document(false);
    Element* root = build(document, "r{x y}");
    root->set_child_first(foreign);
    EXPECT_EQ(to_line(root), "r{foreign x y}");
    EXPECT_EQ(foreign->get_next_sibling(), root->get_child("x"));
    EXPECT_EQ(root->get_child("x")->get_previous_sibling(), foreign);
    EXPECT_EQ(foreign->get_parent(), &owner);
    EXPECT_EQ(to_line(&owner), "owner{a foreign b}");
    owner.children.erase(owner.at(1));
    EXPECT_TRUE(links_agree(&owner));
}

TEST(SetChildFirst, makes_a_foreign_node_the_only_child_of_a_parent_without_children_which_is_wanted) {
    OpenElement owner("owner");
    for (const char* name : {"a", "foreign", "b"})
        owner.add_child(name);
    Node* foreign = owner.get_child("foreign");
    Document document(false);
    Element* root = build(document, "r");
    root->set_child_first(foreign);
    EXPECT_EQ(to_line(root), "r{foreign}");
    EXPECT_EQ(foreign->get_previous_sibling(), nullptr);
    EXPECT_EQ(foreign->get_next_sibling(), nullptr);
    owner.children.erase(owner.at(1));
    EXPECT_TRUE(links_agree(&owner));
}

}  // namespace
