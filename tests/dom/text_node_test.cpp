// SPDX-License-Identifier: MIT

// Covers text nodes: what they hold and what their two setters do with the argument.

#include "quxml/TextNode.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "quxml/Document.h"
#include "quxml/Element.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::TextNode;
using quxml_test::to_line;

class OpenText : public TextNode {
public:
    using Node::keep_sorted;
    using TextNode::TextNode;
};

TEST(TextNodeConstructor, takes_the_parent_and_a_name_and_no_text_which_is_wanted) {
    Element parent("p", nullptr, true);
    const OpenText text(&parent, "n");
    EXPECT_EQ(text.get_name(), "n");
    EXPECT_EQ(text.get_content(), "");
    EXPECT_EQ(text.get_parent(), &parent);
    EXPECT_EQ(text.get_previous_sibling(), nullptr);
    EXPECT_EQ(text.get_next_sibling(), nullptr);
    EXPECT_FALSE(text.keep_sorted) << "whatever the parent says";
    EXPECT_TRUE(text.get_children().empty());
    EXPECT_EQ(to_line(&parent), "p") << "it is not linked into the parent";
}

TEST(TextNodeConstructor, accepts_a_null_parent) {
    const OpenText text(nullptr, "");
    EXPECT_EQ(text.get_parent(), nullptr);
    EXPECT_EQ(text.get_name(), "");
}

TEST(TextNode, made_by_an_element_has_no_name_and_the_given_content) {
    Document document(false);
    const TextNode* text = document.create_root_node("r")->add_child_text("abc");
    EXPECT_EQ(text->get_name(), "");
    EXPECT_EQ(text->get_content(), "abc");
}

TEST(TextNode, returns_its_content_as_a_copy) {
    TextNode text(nullptr, "");
    text.set_content("a");
    std::string content = text.get_content();
    content += "changed";
    EXPECT_EQ(text.get_content(), "a");
}

TEST(TextNode, keeps_content_unescaped_and_byte_for_byte) {
    const std::string odd("a<b&c\0\n\xff", 8);
    TextNode text(nullptr, "");
    text.set_content("a<b&c");
    EXPECT_EQ(text.get_content(), "a<b&c");
    text.set_content(odd);
    EXPECT_EQ(text.get_content(), odd);
}

TEST(SetContent, assigns_a_copy_of_a_text) {
    TextNode text(nullptr, "n");
    const std::string fixed = "one";
    std::string content = "two";
    text.set_content(fixed);
    EXPECT_EQ(text.get_content(), "one");
    text.set_content(content);
    EXPECT_EQ(text.get_content(), "two");
    EXPECT_EQ(content, "two");
    content = "three";
    EXPECT_EQ(text.get_content(), "two");
    EXPECT_EQ(text.get_name(), "n");
}

TEST(SetContent, exchanges_a_text_that_is_handed_over_which_is_wanted) {
    for (const std::size_t size : {std::size_t{3}, std::size_t{100000}}) {
        TextNode text(nullptr, "");
        text.set_content("old");
        std::string content(size, 'x');
        text.set_content(std::move(content));
        EXPECT_EQ(text.get_content(), std::string(size, 'x'));
        EXPECT_EQ(content, "old");  // NOLINT(bugprone-use-after-move): what the move leaves is the point
        text.set_content(std::move(content));
        EXPECT_EQ(text.get_content(), "old");
        EXPECT_EQ(content, std::string(size, 'x'));  // NOLINT(bugprone-use-after-move): as above
    }
}

TEST(SetContent, accepts_a_literal_and_an_empty_text) {
    TextNode text(nullptr, "");
    text.set_content("literal");
    EXPECT_EQ(text.get_content(), "literal");
    text.set_content(std::string());
    EXPECT_EQ(text.get_content(), "");
}

}  // namespace
