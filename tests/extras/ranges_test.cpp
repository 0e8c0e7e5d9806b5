// SPDX-License-Identifier: MIT

// Covers the ranges: what they visit, what may change meanwhile, and that they allocate nothing (for that see
// memory_failure_test.cpp).

#include "quxml/extras/ranges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "quxml/Document.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;

const char* const library =
    "library{\"t1\" shelf(id=1){book(id=2){title{\"Emma\"}} book(id=3)} \"t2\" note shelf(id=4)}";

/// Names, or texts in quotes, of what a range visits.
template <class Range>
std::string visited(const Range& range) {
    std::string names;
    for (const Node& node : range) {
        const auto* text = dynamic_cast<const TextNode*>(&node);
        names +=
            (names.empty() ? "" : " ") + (text == nullptr ? name_of(node) : '"' + text->get_content() + '"');
    }
    return names;
}

class OwnElement : public Element {
public:
    OwnElement(const std::string& name, Element* parent) : Element(name, parent, false) {}
};

class OwnText : public TextNode {
public:
    explicit OwnText(Element* parent) : TextNode(parent, "") { set_content("own"); }
};

class Ranges : public ::testing::Test {
protected:
    Document document{false};
    Element* root = build(document, library);
};

TEST_F(Ranges, visit_the_children_that_are_asked_for) {
    EXPECT_EQ(visited(children(*root)), "\"t1\" shelf \"t2\" note shelf");
    EXPECT_EQ(visited(elements(*root)), "shelf note shelf");
    EXPECT_EQ(visited(elements(*root, "shelf")), "shelf shelf");
    const std::string shelf = "shelf";
    EXPECT_EQ(visited(elements(*root, shelf)), "shelf shelf");
    EXPECT_EQ(visited(elements(*root, std::string_view("shelf"))), "shelf shelf");
    static_assert(!std::is_constructible<LastingName, std::string&&>::value, "a temporary is refused");
    EXPECT_EQ(visited(elements(*root, "Shelf")), "");
    EXPECT_EQ(visited(elements(*root, "")), "") << "text has the empty name, and is not an element";
    EXPECT_EQ(visited(texts(*root)), "\"t1\" \"t2\"");
}

TEST_F(Ranges, visit_what_is_below_in_document_order) {
    EXPECT_EQ(visited(descendants(*root)), "shelf book title book note shelf");
    EXPECT_EQ(visited(descendants(*root, "book")), "book book");
    EXPECT_EQ(visited(all_descendants(*root)), "\"t1\" shelf book title \"Emma\" book \"t2\" note shelf");
    EXPECT_EQ(visited(descendants(*root->get_child("shelf"))), "book title book") << "siblings are not below";
    EXPECT_EQ(visited(descendants(*root->get_child("note"))), "");
}

TEST_F(Ranges, climb_to_the_root) {
    const Element& title = *std::next(descendants(*root).begin(), 2);
    EXPECT_EQ(visited(ancestors(title)), "book shelf library");
    EXPECT_TRUE(ancestors(*root).empty());
}

TEST_F(Ranges, visit_attributes_in_order) {
    root->set_attribute("b", "1");
    root->set_attribute("a", "2");
    std::string seen;
    for (const Attribute& attribute : attributes(*root))
        seen += attribute.get_name() + attribute.get_value();
    EXPECT_EQ(seen, "b1a2");
    EXPECT_TRUE(attributes(*static_cast<Element*>(root->get_child("note"))).empty());
}

TEST_F(Ranges, know_whether_they_are_empty) {
    Element& note = *static_cast<Element*>(root->get_child("note"));
    EXPECT_TRUE(children(note).empty() && elements(note).empty() && texts(note).empty() &&
                descendants(note).empty() && ancestors(*root).empty());
    EXPECT_FALSE(children(*root).empty() || elements(*root, "note").empty() || ancestors(note).empty());
}

TEST_F(Ranges, give_constant_nodes_from_constant_nodes) {
    const Element& constant = *root;
    static_assert(std::is_same<decltype(*elements(constant).begin()), const Element&>::value);
    static_assert(std::is_same<decltype(*elements(*root).begin()), Element&>::value);
    static_assert(std::is_same<decltype(*texts(constant).begin()), const TextNode&>::value);
    static_assert(std::is_same<decltype(*descendants(constant).begin()), const Element&>::value);
    static_assert(std::is_same<decltype(*ancestors(constant).begin()), const Element&>::value);
    static_assert(std::is_same<decltype(*attributes(constant).begin()), const Attribute&>::value);
    EXPECT_EQ(visited(children(constant)), visited(children(*root)));
}

TEST_F(Ranges, can_be_walked_again_after_the_tree_has_changed) {
    const auto shelves = elements(*root, "shelf");
    const auto below = descendants(*root, "shelf");
    for (Element& shelf : shelves)
        root->remove_child(&shelf);
    EXPECT_EQ(visited(shelves), "");
    root->add_child("shelf");
    EXPECT_EQ(visited(shelves), "shelf");
    EXPECT_EQ(visited(below), "shelf");
}

/// Whether there are children of a `Given`.
template <class Given, class = void>
struct HasChildren : std::false_type {};

template <class Given>
struct HasChildren<Given, decltype(children(std::declval<Given&>()).begin(), void())> : std::true_type {};

TEST_F(Ranges, are_of_nodes_only) {
    static_assert(HasChildren<Element>::value);
    static_assert(HasChildren<const Node>::value);
    static_assert(!HasChildren<Document>::value);
    static_assert(!HasChildren<Element*>::value);
}

TEST_F(Ranges, work_with_the_standard_algorithms) {
    const auto shelves = elements(*root, "shelf");
    EXPECT_EQ(std::distance(shelves.begin(), shelves.end()), 2);
    const auto found = std::find_if(shelves.begin(), shelves.end(), [](const Element& shelf) {
        return shelf.get_attribute_value("id") == "4";
    });
    EXPECT_EQ(&*found, root->get_children().back());
    EXPECT_EQ(found->get_name(), "shelf");
    auto first = shelves.begin();
    EXPECT_NE(first++, found);
    EXPECT_EQ(first, found);
}

TEST_F(Ranges, take_nodes_of_derived_classes_for_what_they_are) {
    root->add_new_node(new OwnElement("own", root));
    root->add_new_node(new OwnText(root));
    EXPECT_EQ(visited(elements(*root, "own")), "own");
    EXPECT_EQ(visited(texts(*root)), "\"t1\" \"t2\" \"own\"");
}

TEST_F(Ranges, are_safe_against_removing_the_current_child) {
    for (Element& shelf : elements(*root, "shelf"))
        root->remove_child(&shelf);
    EXPECT_EQ(to_line(root), "library{\"t1\" \"t2\" note}");
    for (Node& child : children(*root))
        root->remove_child(&child);
    EXPECT_EQ(to_line(root), "library");
}

TEST_F(Ranges, are_safe_against_removing_the_current_attribute) {
    for (const char* name : {"a", "b", "c"})
        root->set_attribute(name, "");
    for (Attribute& attribute : attributes(*root)) {
        if (attribute.get_name() != "b")
            root->remove_attribute(attribute.get_name());
    }
    EXPECT_EQ(root->get_attributes().size(), 1U);
}

TEST_F(Ranges, are_safe_against_moving_the_current_child_to_the_front) {
    std::string seen;
    for (Element& child : elements(*root)) {
        seen += child.get_name() + ' ';
        root->set_child_first(&child);
    }
    EXPECT_EQ(seen, "shelf note shelf ");
}

/// Removes each node that a mask picks, by its place in document order, on arriving at it.
std::string remove_picked(const std::string& line, unsigned mask, std::string& seen) {
    Document tree(false);
    Element* top = build(tree, line);
    unsigned place = 0;
    for (Node& node : all_descendants(*top)) {
        seen += node.get_name();
        if ((mask >> place++ & 1U) != 0)
            node.get_parent()->remove_child(&node);
    }
    EXPECT_TRUE(links_agree(top));
    return to_line(top);
}

/// The same by recursion over snapshots.
void remove_picked_slowly(Node& node, unsigned mask, unsigned& place, std::string& seen) {
    for (Node* child : node.get_children()) {
        seen += child->get_name();
        if ((mask >> place++ & 1U) != 0)
            node.remove_child(child);
        else
            remove_picked_slowly(*child, mask, place, seen);
    }
}

TEST(Descendants, are_safe_against_removing_any_of_them) {
    const std::string line = "r{a{b{c} d e{f g}} h i{j{k}} l}";
    for (unsigned mask = 0; mask < 1U << 12; ++mask) {
        std::string seen;
        const std::string left = remove_picked(line, mask, seen);
        Document tree(false);
        Element* top = build(tree, line);
        unsigned place = 0;
        std::string expected;
        remove_picked_slowly(*top, mask, place, expected);
        ASSERT_EQ(left, to_line(top)) << mask;
        ASSERT_EQ(seen, expected) << mask;
    }
}

TEST(Descendants, are_safe_against_replacing_each_of_them) {
    for (const bool keep_sorted : {false, true}) {
        Document tree(keep_sorted);
        Element* top = build(tree, "r{b{x{y}} c{x} d}");
        int visits = 0;
        for (Element& element : descendants(*top)) {
            ASSERT_LT(++visits, 100);
            Element* parent = element.get_parent();
            if (element.get_name() == "n")
                continue;
            parent->remove_child(&element);
            parent->add_child("n");
        }
        EXPECT_GE(visits, 3);
        EXPECT_EQ(to_line(top), "r{n n n}");
    }
}

TEST(Descendants, go_on_through_a_node_that_gets_siblings_on_both_sides) {
    Document tree(true);
    Element* top = build(tree, "r{b{x} d}");
    std::string seen;
    for (Element& element : descendants(*top)) {
        seen += element.get_name();
        if (element.get_name() == "b") {
            top->add_child("a");
            top->add_child("c");
        }
    }
    EXPECT_EQ(seen, "bxcd");
}

TEST(Descendants, see_what_is_added_below_the_current_node_if_it_has_children) {
    Document tree(false);
    Element* top = build(tree, "r{a{b} c}");
    for (Element& element : descendants(*top))
        element.add_child("n");
    EXPECT_EQ(to_line(top), "r{a{b{n} n{n}} c{n}}") << "a child that is added to a leaf is not visited";
}

// Linear: removing the first or the last child takes no search, and neither does noticing it.
TEST(Descendants, removes_a_hundred_thousand_children_one_by_one) {
    Document tree(false);
    Element* top = tree.create_root_node("r");
    for (int i = 0; i < 100000; ++i)
        top->add_child("c")->add_child("x");
    for (Element& child : descendants(*top, "c"))
        top->remove_child(&child);
    EXPECT_EQ(to_line(top), "r");
}

TEST(RangesOfABrokenOrder, follow_the_links_after_a_sort_that_failed) {
    Document tree(false);
    Element* top = tree.create_root_node("r");
    for (const char* item : {"5", "4", "3", "99999999999", "2", "1"})
        top->add_child("x", item);
    EXPECT_THROW(top->sort_children(), std::out_of_range);
    std::string seen;
    for (const Element& child : elements(*top))
        seen += child.get_attribute_value("item") + ' ';
    EXPECT_EQ(seen, "5 4 3 99999999999 2 1 ");
}

}  // namespace

}  // namespace quxml_test
