// SPDX-License-Identifier: MIT

// Covers queries whose results are elements in document order, and conditions on them.

#include "quxml/extras/finding.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "quxml/Document.h"
#include "quxml/extras/ranges.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeSet;

class Finding : public ::testing::Test {
protected:
    std::string ids(const std::vector<Element*>& elements) {
        std::string text;
        for (const Element* element : elements)
            text += (text.empty() ? "" : " ") + element->get_attribute_value("id");
        return text;
    }

    std::string ids(const std::string& path) { return ids(find_elements(*root, path)); }

    std::string ids(const Condition& condition) {
        return ids(find_elements(*root, "catalog/book", condition));
    }

    Document document{false};
    Element* root =
        build(document,
              "catalog{book(id=3,year=1987){title{\"Emma\"}} \"text\" book(id=1,year=abc){title} note(id=n)"
              " book(id=2){title{\"Faust\"} part(id=4){book(id=5)}} book(id=03,year=2001)}");
};

TEST_F(Finding, gives_elements_in_document_order) {
    EXPECT_EQ(ids("catalog/book"), "3 1 2 03");
    EXPECT_EQ(ids("//*"), "3  1  n 2  4 5 03") << "the root and the titles have no id";
    EXPECT_EQ(ids("catalog/"), "3 1 n 2 03") << "without the text";
    EXPECT_EQ(ids("none"), "");
    EXPECT_EQ(ids(""), "");
}

TEST_F(Finding, gives_the_first_in_document_order) {
    EXPECT_EQ(find_first(*root, "//book")->get_attribute_value("id"), "3");
    EXPECT_EQ(find_first(*root, "catalog/"), find_first(*root, "//book")) << "the text is not an element";
    EXPECT_EQ(find_first(*root, "//none"), nullptr);
    EXPECT_EQ(find_first(*root, "catalog/book", where("id") == "2")->get_attribute_value("id"), "2");
    EXPECT_EQ(find_first(*root, "catalog/book", where("id") == "9"), nullptr);
}

TEST_F(Finding, is_the_whole_walk_for_any_tree_and_any_result) {
    NodeSet all = root->find_exact_match("//*");
    std::vector<Node*> expected{root};
    for (Node& node : all_descendants(*root))
        expected.push_back(&node);
    EXPECT_EQ(in_document_order(*root, all), expected);
    all.erase(root);
    all.erase(expected[3]);
    expected.erase(expected.begin() + 3);
    expected.erase(expected.begin());
    EXPECT_EQ(in_document_order(*root, all), expected);
    Document other(false);
    EXPECT_TRUE(in_document_order(*other.create_root_node("r"), all).empty());
}

// The order of a NodeSet is that of addresses, so one of the two arrangements of `a` and `b` shows whether it matters.
TEST(DocumentOrder, is_the_order_of_children_and_not_that_of_addresses) {
    Document document(false);
    Element* root = document.create_root_node("root");
    Node* a = root->add_child("a");
    Node* b = root->add_child("b");
    EXPECT_EQ(in_document_order(*root, {a, b}), (std::vector<Node*>{a, b}));
    root->set_child_first(b);
    EXPECT_EQ(in_document_order(*root, {a, b}), (std::vector<Node*>{b, a}));
}

TEST(DocumentOrder, puts_parents_before_their_children_and_whole_branches_one_after_the_other) {
    Document document(false);
    Element* root = document.create_root_node("root");
    Element* last = root->add_child("last");
    Element* first = root->add_child("first");
    root->set_child_first(first);
    Node* late = last->add_child("late");
    Node* early = first->add_child("early");
    EXPECT_EQ(in_document_order(*root, {late, early, last, first, root}),
              (std::vector<Node*>{root, first, early, last, late}));
    EXPECT_EQ(in_document_order(*root, {late, early}), (std::vector<Node*>{early, late}));
    EXPECT_EQ(in_document_order(*root, {last, early}), (std::vector<Node*>{early, last}));
    EXPECT_EQ(in_document_order(*root, {root}), std::vector<Node*>{root});
    EXPECT_TRUE(in_document_order(*root, {}).empty());
}

TEST_F(Finding, compares_values_from_outside_whatever_they_hold) {
    for (const std::string value : {"3' or '1'='1", "']", "3]/../*[1", "", "*", "3\"", "@id"}) {
        EXPECT_EQ(ids(where("id") == value), "") << value;
        root->get_children().back()->set_name("book");
        static_cast<Element*>(root->get_children().back())->set_attribute("id", value);
        EXPECT_EQ(ids(where("id") == value), value) << value;
    }
}

TEST_F(Finding, compares_texts_and_typed_values) {
    EXPECT_EQ(ids(where("id") == "3"), "3");
    EXPECT_EQ(ids(where("id") == 3), "3 03") << "as numbers";
    EXPECT_EQ(ids(where("id") != "3"), "1 2 03");
    EXPECT_EQ(ids(where("id") != 3), "1 2");
    EXPECT_EQ(ids(where("year") < 2000), "3");
    EXPECT_EQ(ids(where("year") <= 1987), "3");
    EXPECT_EQ(ids(where("year") > 1987), "03");
    EXPECT_EQ(ids(where("year") >= 1987), "3 03");
    EXPECT_EQ(ids(where("year") != "1987"), "1 03") << "an element without the value fulfils nothing";
    EXPECT_EQ(ids(where("year").exists()), "3 1 03");
    char letters[] = "03";
    char* const pointer = letters;
    EXPECT_EQ(ids(where("id") == pointer), "03") << "text in any form is text";
    EXPECT_EQ(ids(where("id") != std::string_view("3")), "1 2 03");
    EXPECT_EQ(ids(where("id") >= "2"), "3 2");
}

TEST_F(Finding, compares_the_texts_of_children) {
    EXPECT_EQ(ids(where_text("title") == "Faust"), "2");
    EXPECT_EQ(ids(where_text("title") == ""), "1");
    EXPECT_EQ(ids(where_text("title") != "Faust"), "3 1");
    EXPECT_EQ(ids(where_text("title").exists()), "3 1 2");
}

TEST_F(Finding, takes_any_condition) {
    EXPECT_EQ(ids([](const Element& book) { return !elements(book, "part").empty(); }), "2");
    const std::string name = "id";
    const Condition kept = where(std::string("id")) == std::string("2");
    EXPECT_EQ(ids(kept), "2") << "a condition owns what it compares with";
}

TEST_F(Finding, lets_errors_through) {
    EXPECT_THROW(find_elements(*root, "catalog/book[@a=b=c]"), std::invalid_argument);
    EXPECT_THROW(find_first(*root, "catalog/book",
                            [](const Element& /*element*/) -> bool { throw std::logic_error("mine"); }),
                 std::logic_error);
}

}  // namespace

}  // namespace quxml_test
