// SPDX-License-Identifier: MIT

// Covers text: the escaping of its bytes, and its place in both layouts.

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;
using quxml_test::build;

/// What stands for the byte in text.
std::string escaped(int byte) {
    static const std::map<int, std::string> entities = {
        {34, "&quot;"}, {38, "&amp;"}, {39, "&apos;"}, {60, "&lt;"}, {62, "&gt;"}};
    const auto entity = entities.find(byte);
    return entity == entities.end() ? std::string(1, static_cast<char>(byte)) : entity->second;
}

std::string write(const Node& node, int depth) {
    std::string out;
    node.write_to_string(out, depth);
    return out;
}

/// The text as the only child of an element.
std::string write_alone(const std::string& content, int depth) {
    Element element("p", nullptr, false);
    return write(*element.add_child_text(content), depth);
}

TEST(TextEscaping, knows_five_entities) {
    EXPECT_EQ(write_alone("\"", -1), "&quot;");
    EXPECT_EQ(write_alone("&", -1), "&amp;");
    EXPECT_EQ(write_alone("'", -1), "&apos;");
    EXPECT_EQ(write_alone("<", -1), "&lt;");
    EXPECT_EQ(write_alone(">", -1), "&gt;");
}

TEST(TextEscaping, leaves_each_of_the_other_251_bytes_as_it_is) {
    int unchanged = 0;
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string one(1, static_cast<char>(byte));
        const std::string result = write_alone(one, -1);
        EXPECT_EQ(result, escaped(byte));
        if (result == one)
            ++unchanged;
    }
    EXPECT_EQ(unchanged, 251);
}

TEST(TextEscaping, treats_each_byte_alone_wherever_it_stands) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string one(1, static_cast<char>(byte));
        const std::string out = escaped(byte);
        EXPECT_EQ(write_alone(one, -1), out);
        EXPECT_EQ(write_alone(one + "x" + one, -1), out + "x" + out);
        EXPECT_EQ(write_alone("&" + one + one + "<", 0), "&amp;" + out + out + "&lt;");
    }
}

TEST(TextEscaping, treats_each_pair_of_bytes_as_two_single_ones) {
    for (int first = 0; first < 256; ++first) {
        std::string content;
        std::string expected;
        for (int second = 0; second < 256; ++second) {
            content += {static_cast<char>(first), static_cast<char>(second)};
            expected += escaped(first) + escaped(second);
        }
        ASSERT_EQ(write_alone(content, -1), expected) << "first byte " << first;
    }
}

struct EscapingRow {
    const char* name;
    const char* content;
    const char* text;
};

void PrintTo(const EscapingRow& row, std::ostream* out) {
    *out << row.content;
}

class EscapedText : public ::testing::TestWithParam<EscapingRow> {};

TEST_P(EscapedText, is_the_same_in_both_layouts) {
    EXPECT_EQ(write_alone(GetParam().content, -1), GetParam().text);
    EXPECT_EQ(write_alone(GetParam().content, 3), GetParam().text);
}

const EscapingRow escaping_rows[] = {
    {"empty", "", ""},
    {"nothing_to_escape", "plain text, 100% harmless; #1", "plain text, 100% harmless; #1"},
    {"all_five", R"(Tom & "Jerry's" <pets>)", "Tom &amp; &quot;Jerry&apos;s&quot; &lt;pets&gt;"},
    {"only_escapes", "<>&\"'", "&lt;&gt;&amp;&quot;&apos;"},
    {"reference_is_escaped_again", "&amp;", "&amp;amp;"},
    {"reference_twice", "&amp;amp;", "&amp;amp;amp;"},
    {"character_reference", "&#10;", "&amp;#10;"},
    {"cdata_end", "]]>", "]]&gt;"},
    {"comment", "<!-- x -->", "&lt;!-- x --&gt;"},
    {"control_characters", "\x01\t\r\n\x1F\x7F", "\x01\t\r\n\x1F\x7F"},
    {"utf8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 & \xC2\xA0",
     "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 &amp; \xC2\xA0"},
    {"broken_utf8", "\xFF\xC3<\x80", "\xFF\xC3&lt;\x80"},
    {"neighbours_of_the_escapes", "!#%(;=?", "!#%(;=?"},
};

INSTANTIATE_TEST_SUITE_P(Text, EscapedText, ::testing::ValuesIn(escaping_rows),
                         [](const ::testing::TestParamInfo<EscapingRow>& info) { return info.param.name; });

TEST(TextEscaping, content_may_hold_zero_bytes) {
    EXPECT_EQ(write_alone(std::string("a\0<\0", 4), -1), std::string("a\0&lt;\0", 7));
}

TEST(TextEscaping, long_text_is_escaped_throughout) {
    std::string content;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        content += "ab<";
        expected += "ab&lt;";
    }
    EXPECT_TRUE(write_alone(content, -1) == expected);
}

TEST(TextPlace, detached_text_writes_nothing_at_any_depth_which_is_wanted) {
    TextNode text(nullptr, "");
    text.set_content("a<b");
    for (const int depth : {INT_MIN, -1, 0, 1, 5}) {
        SCOPED_TRACE(depth);
        std::string out = "kept";
        text.write_to_string(out, depth);
        EXPECT_EQ(out, "kept");
    }
}

TEST(TextPlace, lone_text_has_nothing_around_it) {
    for (const int depth : {INT_MIN, -1, 0, 1, 5}) {
        SCOPED_TRACE(depth);
        EXPECT_EQ(write_alone("t", depth), "t");
        EXPECT_EQ(write_alone("", depth), "");
    }
}

TEST(TextPlace, paragraph_at_level_one_stands_on_one_line) {
    Element paragraph("p", nullptr, false);
    paragraph.add_child_text("a<b");
    EXPECT_EQ(write(paragraph, 1), "  <p>a&lt;b</p>\n");
}

TEST(TextPlace, lone_empty_text_lets_the_tags_touch) {
    Element paragraph("p", nullptr, false);
    paragraph.add_child_text("");
    EXPECT_EQ(write(paragraph, 0), "<p></p>\n");
    EXPECT_EQ(write(paragraph, -1), "<p></p>");
}

/// A text does not know who lists it: it looks at the parent that it was made with.
TEST(TextPlace, of_a_lone_text_that_was_made_for_nobody_or_for_another_is_what_it_writes_by_itself) {
    Element element("e", nullptr, false);
    auto* text = new TextNode(nullptr, "");
    text->set_content("t");
    element.add_new_node(text);
    EXPECT_EQ(write(element, -1), "<e></e>");
    EXPECT_EQ(write(element, 0), "<e></e>\n");
    element.remove_child(text);

    Element other("o", nullptr, false);
    other.add_child("a");
    other.add_child("b");
    text = new TextNode(&other, "");
    text->set_content("t");
    element.add_new_node(text);
    EXPECT_EQ(write(element, -1), "<e>t</e>");
    EXPECT_EQ(write(element, 0), "<e>  t\n</e>\n");
}

TEST(TextPlace, text_with_siblings_has_a_line_of_its_own) {
    Document document(false);
    const Element* element = build(document, "e{\"a & b\" x}");
    const Node& text = *element->get_children().front();
    EXPECT_EQ(write(text, 0), "a &amp; b\n");
    EXPECT_EQ(write(text, 1), "  a &amp; b\n");
    EXPECT_EQ(write(text, 4), "        a &amp; b\n");
    EXPECT_EQ(write(text, -1), "a &amp; b");
    EXPECT_EQ(write(text, INT_MIN), "a &amp; b");
}

TEST(TextPlace, empty_text_with_siblings_is_a_line_of_spaces) {
    Document document(false);
    const Element* element = build(document, "e{\"\" x}");
    const Node& text = *element->get_children().front();
    EXPECT_EQ(write(text, 0), "\n");
    EXPECT_EQ(write(text, 3), "      \n");
    EXPECT_EQ(write(text, -1), "");
}

TEST(TextPlace, continuation_lines_start_in_column_zero_which_is_wanted) {
    Document document(false);
    const Element* element = build(document, "e{\"1\\n2\\n\" x}");
    EXPECT_EQ(write(*element, 1), "  <e>\n    1\n2\n\n    <x/>\n  </e>\n");
}

TEST(TextPlace, is_judged_by_the_parents_children_of_the_moment) {
    Element element("e", nullptr, false);
    const TextNode* text = element.add_child_text("t");
    EXPECT_EQ(write(*text, 1), "t");
    Node* sibling = element.add_child("x");
    EXPECT_EQ(write(*text, 1), "  t\n");
    element.remove_child(sibling);
    EXPECT_EQ(write(*text, 1), "t");
}

TEST(TextPlace, text_that_its_parent_does_not_list_is_placed_by_the_parents_count_which_is_wanted) {
    Element parent("e", nullptr, false);
    TextNode unlisted(&parent, "");
    unlisted.set_content("t");
    EXPECT_EQ(write(unlisted, 1), "  t\n");  // no child at all
    parent.add_child("x");
    EXPECT_EQ(write(unlisted, 1), "t");  // exactly one, though another one
    parent.add_child("y");
    EXPECT_EQ(write(unlisted, 1), "  t\n");
}

TEST(TextPlace, name_of_a_text_is_not_written) {
    Element parent("e", nullptr, false);
    auto* text = new TextNode(&parent, "name");
    text->set_content("t");
    parent.add_new_node(text);
    EXPECT_EQ(write(parent, -1), "<e>t</e>");
}

TEST(TextPlace, text_is_appended_and_left_unchanged) {
    Element parent("e", nullptr, false);
    const TextNode* text = parent.add_child_text("a&b");
    std::string out = "x";
    text->write_to_string(out, -1);
    text->write_to_string(out, 0);
    EXPECT_EQ(out, "xa&amp;ba&amp;b");
    EXPECT_EQ(text->get_content(), "a&b");
    EXPECT_EQ(text->get_parent(), &parent);
}

}  // namespace
