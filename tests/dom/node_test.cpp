// SPDX-License-Identifier: MIT

// Covers what all nodes share: constructors, names, the list of children, looking up and importing.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dom/test_nodes.h"
#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::BareNode;
using quxml_test::build;
using quxml_test::child_at;
using quxml_test::links_agree;
using quxml_test::OpenElement;
using quxml_test::to_line;

bool is_free_standing(const Node& node) {
    return node.get_parent() == nullptr && node.get_previous_sibling() == nullptr &&
           node.get_next_sibling() == nullptr && node.get_children().empty();
}

// ---- The classes ----

static_assert(std::is_abstract<Node>::value, "a node is always of a class of its own");
static_assert(std::has_virtual_destructor<Node>::value, "nodes are destroyed through their base");
static_assert(!std::is_copy_constructible<Element>::value, "copies are made by get_deep_copy_of_node");
static_assert(!std::is_copy_assignable<Element>::value, "copies are made by get_deep_copy_of_node");
static_assert(std::is_convertible<Element*, Node*>::value, "elements are nodes");
static_assert(std::is_convertible<Attribute*, Node*>::value, "attributes are nodes");
static_assert(std::is_convertible<TextNode*, Node*>::value, "texts are nodes");
static_assert(std::is_same<NodeList, std::list<Node*>>::value, "the children are a plain list");

// ---- Constructors ----

TEST(NodeConstructor, without_arguments_gives_a_free_standing_node) {
    const BareNode node;
    EXPECT_EQ(node.get_name(), "");
    EXPECT_FALSE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, with_a_parent_takes_whether_to_keep_sorted_from_it) {
    for (const bool sorted : {false, true}) {
        OpenElement parent("p", sorted);
        const BareNode node(&parent);
        EXPECT_EQ(node.get_name(), "");
        EXPECT_EQ(node.get_parent(), &parent);
        EXPECT_EQ(node.keep_sorted, sorted);
        EXPECT_EQ(node.get_previous_sibling(), nullptr);
        EXPECT_EQ(node.get_next_sibling(), nullptr);
        EXPECT_TRUE(node.get_children().empty());
    }
}

TEST(NodeConstructor, with_a_name_gives_a_free_standing_node_of_that_name) {
    const BareNode node(std::string("n"));
    EXPECT_EQ(node.get_name(), "n");
    EXPECT_FALSE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, with_all_three_takes_them_as_given) {
    for (const bool parent_is_sorted : {false, true}) {
        for (const bool sorted : {false, true}) {
            OpenElement parent("p", parent_is_sorted);
            const BareNode node("n", &parent, sorted);
            EXPECT_EQ(node.get_name(), "n");
            EXPECT_EQ(node.get_parent(), &parent);
            EXPECT_EQ(node.keep_sorted, sorted);
            EXPECT_TRUE(node.get_children().empty());
        }
    }
}

TEST(NodeConstructor, all_three_accept_a_null_parent) {
    const BareNode node("n", nullptr, true);
    EXPECT_TRUE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, none_links_the_node_into_its_parent_which_is_wanted) {
    OpenElement parent("p");
    parent.add_child("first");
    const BareNode with_parent(&parent);
    const BareNode with_all("n", &parent, false);
    const Element element("e", &parent, false);
    const TextNode text(&parent, "");
    const Attribute attribute("a", "1", &parent);
    EXPECT_EQ(to_line(&parent), "p{first}");
    EXPECT_TRUE(links_agree(&parent));
}

// ---- Names ----

TEST(NodeName, is_returned_as_a_copy) {
    const BareNode node(std::string("n"));
    std::string name = node.get_name();
    name += "changed";
    EXPECT_EQ(node.get_name(), "n");
}

TEST(NodeName, is_kept_byte_for_byte) {
    const std::string odd("a\0b\xff", 4);
    BareNode node(odd);
    EXPECT_EQ(node.get_name(), odd);
    node.set_name("");
    EXPECT_EQ(node.get_name(), "");
    node.set_name(odd);
    EXPECT_EQ(node.get_name(), odd);
}

TEST(NodeName, setting_it_does_not_sort_the_parent_again_which_is_wanted) {
    Document document(true);
    Element* root = build(document, "r{a b c}");
    root->get_child("a")->set_name("z");
    EXPECT_EQ(to_line(root), "r{z b c}");
    EXPECT_TRUE(links_agree(root));
}

// ---- Looking at children ----

TEST(GetChildren, is_a_snapshot_in_child_order) {
    Document document(false);
    Element* root = build(document, "r{c \"t\" a b}");
    NodeList snapshot = root->get_children();
    ASSERT_EQ(snapshot.size(), 4U);
    EXPECT_EQ(snapshot.front()->get_name(), "c");
    EXPECT_EQ(snapshot.back()->get_name(), "b");
    snapshot.clear();
    EXPECT_EQ(to_line(root), "r{c \"t\" a b}");
    snapshot = root->get_children();
    root->add_child("d");
    EXPECT_EQ(snapshot.size(), 4U);
}

TEST(GetChildren, lets_children_be_removed_during_the_iteration) {
    Document document(false);
    Element* root = build(document, "r{a \"t\" b{c} \"u\" d}");
    for (Node* child : root->get_children()) {
        if (child->get_name() != "b")
            root->remove_child(child);
        EXPECT_TRUE(links_agree(root));
    }
    EXPECT_EQ(to_line(root), "r{b{c}}");
}

TEST(GetChildren, is_empty_without_children) {
    Document document(false);
    EXPECT_TRUE(build(document, "r")->get_children().empty());
}

TEST(GetChild, finds_the_first_of_two_namesakes) {
    Document document(false);
    Element* root = build(document, "r{a b(n=1) b(n=2)}");
    EXPECT_EQ(root->get_child("b"), child_at(*root, 1));
}

TEST(GetChild, compares_byte_for_byte) {
    Document document(false);
    Element* root = build(document, "r{b bc}");
    EXPECT_EQ(root->get_child("B"), nullptr);
    EXPECT_EQ(root->get_child("bcd"), nullptr);
    EXPECT_EQ(root->get_child("bc"), child_at(*root, 1));
    EXPECT_EQ(root->get_child(std::string("b\0", 2)), nullptr);
    Element* with_null_byte = root->add_child(std::string("b\0c", 3));
    EXPECT_EQ(root->get_child(std::string("b\0c", 3)), with_null_byte);
    EXPECT_EQ(root->get_child("b"), child_at(*root, 0));
}

TEST(GetChild, is_null_without_a_match_or_without_children) {
    Document document(false);
    EXPECT_EQ(build(document, "r{a}")->get_child("x"), nullptr);
    EXPECT_EQ(build(document, "r{a{x}}")->get_child("x"), nullptr);
    EXPECT_EQ(build(document, "r")->get_child("r"), nullptr);
    EXPECT_EQ(build(document, "r")->get_child(""), nullptr);
}

TEST(GetChild, finds_text_by_the_empty_name) {
    Document document(false);
    Element* root = build(document, "r{a \"t\" \"u\" ''}");
    EXPECT_EQ(root->get_child(""), child_at(*root, 1));
}

TEST(GetChild, finds_an_element_without_a_name_that_precedes_the_text) {
    Document document(false);
    Element* root = build(document, "r{a '' \"t\"}");
    EXPECT_EQ(root->get_child(""), child_at(*root, 1));
}

// ---- Importing ----

/// Notes what it is asked for and copies nothing.
class AskedNode : public BareNode {
public:
    using BareNode::BareNode;

    Node* get_deep_copy_of_node(bool deep_copy, Element* new_parent) const override {
        asked.emplace_back(deep_copy, new_parent);
        return answer;
    }

    mutable std::vector<std::pair<bool, Element*>> asked;
    Node* answer = nullptr;
};

TEST(ImportNode, asks_the_node_itself_for_a_copy_and_returns_its_answer) {
    Document document(false);
    Element* root = build(document, "r{a}");
    AskedNode node;
    EXPECT_EQ(root->import_node(&node, false), nullptr);
    node.answer = root;
    EXPECT_EQ(root->import_node(&node, true), root);
    EXPECT_EQ(node.asked, (std::vector<std::pair<bool, Element*>>{{false, root}, {true, root}}));
    EXPECT_EQ(to_line(root), "r{a}");
}

}  // namespace
