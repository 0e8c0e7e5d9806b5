// SPDX-License-Identifier: MIT

// Covers what elements add to nodes: attributes and their order, and text children.

#include "quxml/Element.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::AttributeList;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::build;
using quxml_test::links_agree;
using quxml_test::to_line;

static_assert(std::is_same<AttributeList, std::list<Attribute*>>::value, "the attributes are a plain list");

/// Tells what a node does not show.
template <class Base>
class Open : public Base {
public:
    using Base::Base;
    using Node::children;
    using Node::keep_sorted;
};

// ---- Constructors ----

TEST(ElementConstructor, takes_its_three_values) {
    Element parent("p", nullptr, false);
    for (const bool sorted : {false, true}) {
        const Open<Element> element("e", &parent, sorted);
        EXPECT_EQ(element.get_name(), "e");
        EXPECT_EQ(element.get_parent(), &parent);
        EXPECT_EQ(element.keep_sorted, sorted);
        EXPECT_EQ(element.get_previous_sibling(), nullptr);
        EXPECT_EQ(element.get_next_sibling(), nullptr);
        EXPECT_TRUE(element.get_children().empty());
        EXPECT_TRUE(element.get_attributes().empty());
    }
    EXPECT_EQ(to_line(&parent), "p");
}

TEST(AttributeConstructor, takes_its_three_values_and_is_not_linked_into_the_parent_which_is_wanted) {
    Element parent("p", nullptr, true);
    const Open<Attribute> attribute("a", "1", &parent);
    EXPECT_EQ(attribute.get_name(), "a");
    EXPECT_EQ(attribute.get_value(), "1");
    EXPECT_EQ(attribute.get_parent(), &parent);
    EXPECT_FALSE(attribute.keep_sorted) << "whatever the parent says";
    EXPECT_TRUE(attribute.get_children().empty());
    EXPECT_TRUE(parent.get_attributes().empty());
}

TEST(AttributeConstructor, accepts_a_null_parent) {
    const Attribute attribute("", "", nullptr);
    EXPECT_EQ(attribute.get_name(), "");
    EXPECT_EQ(attribute.get_value(), "");
    EXPECT_EQ(attribute.get_parent(), nullptr);
}

// ---- Values ----

TEST(AttributeValue, is_assigned_and_returned_as_a_copy) {
    Attribute attribute("a", "1", nullptr);
    std::string value = attribute.get_value();
    value += "changed";
    EXPECT_EQ(attribute.get_value(), "1");
    attribute.set_value("2");
    EXPECT_EQ(attribute.get_value(), "2");
    attribute.set_value("");
    EXPECT_EQ(attribute.get_value(), "");
}

TEST(AttributeValue, is_kept_byte_for_byte) {
    const std::string odd("<&\"'>\0\n\xff", 8);
    Element element("e", nullptr, false);
    Attribute* attribute = element.set_attribute("a", odd);
    EXPECT_EQ(attribute->get_value(), odd);
    EXPECT_EQ(element.get_attribute_value("a"), odd);
    attribute->set_value(odd + odd);
    EXPECT_EQ(element.get_attribute_value("a"), odd + odd);
}

TEST(AttributeValue, setting_the_item_does_not_sort_the_parent_again_which_is_wanted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    Element* first = root->add_child("x", 1);
    root->add_child("x", 2);
    first->get_attribute("item")->set_value("3");
    EXPECT_EQ(to_line(root), "r{x(item=3) x(item=2)}");
    first->set_attribute("item", "4");
    EXPECT_EQ(to_line(root), "r{x(item=4) x(item=2)}");
    first->remove_attribute("item");
    EXPECT_EQ(to_line(root), "r{x x(item=2)}");
    EXPECT_TRUE(links_agree(root));
}

// ---- Attributes ----

TEST(SetAttribute, appends_new_names_and_returns_the_attribute) {
    Element element("e", nullptr, false);
    Attribute* b = element.set_attribute("b", "2");
    Attribute* a = element.set_attribute("a", "1");
    EXPECT_EQ(element.get_attributes(), (AttributeList{b, a}));
    EXPECT_EQ(a->get_parent(), &element);
    EXPECT_EQ(a->get_name(), "a");
    EXPECT_EQ(a->get_value(), "1");
    EXPECT_EQ(to_line(&element), "e(b=2,a=1)");
    EXPECT_TRUE(links_agree(&element));
}

TEST(SetAttribute, assigns_in_place_to_a_name_that_is_there) {
    Element element("e", nullptr, false);
    Attribute* a = element.set_attribute("a", "1");
    Attribute* b = element.set_attribute("b", "2");
    EXPECT_EQ(element.set_attribute("a", "3"), a);
    EXPECT_EQ(element.get_attributes(), (AttributeList{a, b}));
    EXPECT_EQ(to_line(&element), "e(a=3,b=2)");
    EXPECT_TRUE(links_agree(&element));
}

TEST(SetAttribute, accepts_the_value_of_the_attribute_itself_and_an_empty_name) {
    Element element("e", nullptr, false);
    element.set_attribute("", "1");
    element.set_attribute("", element.get_attribute_value(""));
    element.set_attribute("a", "");
    EXPECT_EQ(to_line(&element), "e(''=1,a='')");
}

TEST(SetAttribute, keeps_the_order_of_names_in_a_node_that_is_kept_sorted_too) {
    Element element("e", nullptr, true);
    element.set_attribute("b", "1");
    element.set_attribute("a", "2");
    EXPECT_EQ(to_line(&element), "e(b=1,a=2)");
}

TEST(GetAttribute, compares_byte_for_byte) {
    Element element("e", nullptr, false);
    Attribute* attribute = element.set_attribute("Id", "1");
    EXPECT_EQ(element.get_attribute("Id"), attribute);
    EXPECT_EQ(element.get_attribute("id"), nullptr);
    EXPECT_EQ(element.get_attribute("I"), nullptr);
    EXPECT_EQ(element.get_attribute("Idx"), nullptr);
    EXPECT_EQ(element.get_attribute(std::string("Id\0", 3)), nullptr);
}

TEST(GetAttribute, is_null_for_a_missing_one_and_its_value_is_empty) {
    Element element("e", nullptr, false);
    EXPECT_EQ(element.get_attribute("missing"), nullptr);
    EXPECT_EQ(element.get_attribute_value("missing"), "");
    element.set_attribute("a", "1");
    EXPECT_EQ(element.get_attribute("missing"), nullptr);
    EXPECT_EQ(element.get_attribute_value("missing"), "");
}

TEST(GetAttribute, tells_an_empty_value_from_no_attribute_which_the_value_does_not) {
    Element element("e", nullptr, false);
    Attribute* attribute = element.set_attribute("a", "");
    EXPECT_EQ(element.get_attribute("a"), attribute);
    EXPECT_EQ(element.get_attribute_value("a"), "");
    EXPECT_EQ(element.get_attribute_value("b"), "");
}

TEST(GetAttribute, finds_the_first_of_two_that_a_renaming_made_namesakes) {
    Element element("e", nullptr, false);
    Attribute* first = element.set_attribute("a", "1");
    element.set_attribute("b", "2")->set_name("a");
    EXPECT_EQ(element.get_attribute("a"), first);
    EXPECT_EQ(element.get_attribute_value("a"), "1");
    element.set_attribute("a", "3");
    EXPECT_EQ(to_line(&element), "e(a=3,a=2)");
    element.remove_attribute("a");
    EXPECT_EQ(to_line(&element), "e(a=2)");
}

TEST(RemoveAttribute, takes_the_named_one_out_and_nothing_else) {
    const std::pair<std::string, std::string> rows[] = {
        {"a", "e(b=2,c=3){x}"}, {"b", "e(a=1,c=3){x}"}, {"c", "e(a=1,b=2){x}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Document document(false);
        Element* element = build(document, "e(a=1,b=2,c=3){x}");
        element->remove_attribute(row.first);
        EXPECT_EQ(to_line(element), row.second);
        EXPECT_EQ(element->get_attribute(row.first), nullptr);
        EXPECT_TRUE(links_agree(element));
    }
}

TEST(RemoveAttribute, ignores_a_missing_one) {
    Document document(false);
    Element* element = build(document, "e(a=1,b=2)");
    EXPECT_NO_THROW(element->remove_attribute("missing"));
    EXPECT_NO_THROW(element->remove_attribute("A"));
    EXPECT_EQ(to_line(element), "e(a=1,b=2)");
    Element empty("e", nullptr, false);
    EXPECT_NO_THROW(empty.remove_attribute("a"));
}

TEST(RemoveAttribute, puts_attributes_that_are_set_again_at_the_end) {
    Document document(false);
    Element* element = build(document, "e(a=1,b=2)");
    element->remove_attribute("a");
    element->set_attribute("a", "3");
    EXPECT_EQ(to_line(element), "e(b=2,a=3)");
}

TEST(GetAttributes, is_a_snapshot) {
    Document document(false);
    Element* element = build(document, "e(a=1,b=2,c=3)");
    AttributeList snapshot = element->get_attributes();
    for (Attribute* attribute : snapshot) {
        if (attribute->get_name() != "b")
            element->remove_attribute(attribute->get_name());
    }
    EXPECT_EQ(snapshot.size(), 3U);
    EXPECT_EQ(to_line(element), "e(b=2)");
    snapshot.clear();
    EXPECT_EQ(to_line(element), "e(b=2)");
}

TEST(Attributes, are_never_children_and_have_no_siblings) {
    Element element("e", nullptr, false);
    const Attribute* a = element.set_attribute("a", "1");
    const Attribute* b = element.set_attribute("b", "2");
    EXPECT_TRUE(element.get_children().empty());
    EXPECT_EQ(element.get_child("a"), nullptr);
    for (const Attribute* attribute : {a, b}) {
        EXPECT_EQ(attribute->get_previous_sibling(), nullptr);
        EXPECT_EQ(attribute->get_next_sibling(), nullptr);
    }
}

// ---- Text children ----

TEST(AddChildText, adds_text_without_a_name_and_returns_it) {
    Document document(false);
    Element* root = document.create_root_node("r");
    const std::string content = "abc";
    TextNode* text = root->add_child_text(content);
    EXPECT_EQ(text->get_name(), "");
    EXPECT_EQ(text->get_content(), "abc");
    EXPECT_EQ(text->get_parent(), root);
    EXPECT_EQ(root->get_children(), (NodeList{text}));
    EXPECT_EQ(content, "abc");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChildText, does_not_merge_with_text_that_is_there_which_is_wanted) {
    Document document(false);
    Element* root = document.create_root_node("r");
    TextNode* first = root->add_child_text("one");
    TextNode* second = root->add_child_text("two");
    EXPECT_NE(first, second);
    EXPECT_EQ(to_line(root), "r{\"one\" \"two\"}");
    EXPECT_EQ(root->get_child_text(), first);
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChildText, leaves_a_text_that_is_handed_over_empty) {
    Document document(false);
    Element* root = document.create_root_node("r");
    for (const std::size_t size : {std::size_t{3}, std::size_t{100000}}) {
        std::string content(size, 'x');
        const TextNode* text = root->add_child_text(std::move(content));
        EXPECT_EQ(text->get_content(), std::string(size, 'x'));
        EXPECT_EQ(content, "");  // NOLINT(bugprone-use-after-move): what the move leaves is the point
    }
}

TEST(AddChildText, keeps_the_bytes_as_given) {
    const std::string odd("<&\"'>\0\n\xff", 8);
    Document document(false);
    Element* root = document.create_root_node("r");
    EXPECT_EQ(root->add_child_text(odd)->get_content(), odd);
    EXPECT_EQ(root->add_child_text("")->get_content(), "");
    EXPECT_EQ(root->get_children().size(), 2U);
}

TEST(AddChildText, goes_in_front_of_everything_if_kept_sorted_which_is_wanted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("a");
    root->add_child_text("one");
    EXPECT_EQ(to_line(root), "r{\"one\" a}");
    root->add_child_text("two");
    root->add_child("b");
    root->add_child_text("three");
    EXPECT_EQ(to_line(root), "r{\"three\" \"two\" \"one\" a b}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChildText, and_elements_without_a_name_go_in_front_of_each_other_if_kept_sorted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("");
    root->add_child_text("t");
    EXPECT_EQ(to_line(root), "r{\"t\" ''}");
    root->add_child("");
    EXPECT_EQ(to_line(root), "r{'' \"t\" ''}");
    EXPECT_TRUE(links_agree(root));
}

TEST(GetChildText, finds_the_first_text_among_elements) {
    Document document(false);
    Element* root = build(document, "r{a{\"lower\"} \"one\" b \"two\"}");
    ASSERT_NE(root->get_child_text(), nullptr);
    EXPECT_EQ(root->get_child_text()->get_content(), "one");
    EXPECT_TRUE(root->has_child_text());
}

TEST(GetChildText, is_null_without_text_of_the_element_itself) {
    Document document(false);
    for (const char* line : {"r", "r(a=1)", "r{a b}", "r{a{\"lower\"}}", "r{''}"}) {
        SCOPED_TRACE(line);
        const Element* root = build(document, line);
        EXPECT_EQ(root->get_child_text(), nullptr);
        EXPECT_FALSE(root->has_child_text());
    }
}

/// Text of an application's own class.
class DerivedText : public TextNode {
public:
    using TextNode::TextNode;
};

TEST(GetChildText, finds_text_by_its_class_not_by_its_name) {
    Document document(false);
    Element* root = build(document, "r{'' a}");
    auto* named = new TextNode(root, "a");
    root->add_new_node(named);
    EXPECT_EQ(root->get_child_text(), named);
    auto* derived = new DerivedText(root, "d");
    root->add_new_node(derived);
    root->set_child_first(derived);
    EXPECT_EQ(root->get_child_text(), derived);
    EXPECT_TRUE(root->has_child_text());
}

TEST(GetChildText, is_null_again_when_the_text_is_removed) {
    Document document(false);
    Element* root = build(document, "r{a \"t\"}");
    root->remove_child(root->get_child_text());
    EXPECT_EQ(root->get_child_text(), nullptr);
    EXPECT_FALSE(root->has_child_text());
    EXPECT_EQ(to_line(root), "r{a}");
}

}  // namespace
