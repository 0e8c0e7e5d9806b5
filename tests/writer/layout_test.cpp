// SPDX-License-Identifier: MIT

// Covers how elements, attributes and documents become XML text: both layouts, the white space of the
// formatted one, and trees too deep or too wide for a careless writer.

#include "quxml/Element.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/plain_escaping.h"
#include "support/read_file.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;
using quxml_test::build;
using quxml_test::escape_plainly;
using quxml_test::links_agree;
using quxml_test::on_small_stack;
using quxml_test::to_line;

const std::string declaration = R"(<?xml version="1.0"?>)";

std::string spaces(int count) {
    return std::string(static_cast<std::size_t>(count), ' ');
}

std::string repeat(const std::string& piece, int count) {
    std::string out;
    for (int i = 0; i < count; ++i)
        out += piece;
    return out;
}

std::string write(const Node& node, int depth) {
    std::string out;
    node.write_to_string(out, depth);
    return out;
}

std::string write_opening(const Element& element, int depth) {
    std::string out;
    element.write_opening_tag(out, depth);
    return out;
}

std::string write_closing(const Element& element, int depth) {
    std::string out;
    element.write_closing_tag(out, depth);
    return out;
}

std::string write_shorthand(const Element& element, int depth) {
    std::string out;
    element.write_shorthand_tag(out, depth);
    return out;
}

std::string write_first_child(const Element& element, int depth) {
    return write(*element.get_children().front(), depth);
}

std::string write_last_child(const Element& element, int depth) {
    return write(*element.get_children().back(), depth);
}

// ---- Where white space goes ----

struct SpaceRow {
    const char* name;
    const char* tree;
    std::function<std::string(const Element&, int)> written;
    const char* text;
    bool has_indentation;
    bool has_line_end;
};

void PrintTo(const SpaceRow& row, std::ostream* out) {
    *out << row.name << ": " << row.tree;
}

const std::vector<SpaceRow>& space_rows() {
    static const std::vector<SpaceRow> rows = {
        {"shorthand", "e", write_shorthand, "<e/>", true, true},
        {"shorthand_with_attributes", "e(a=1,b=2)", write_shorthand, R"(<e a="1" b="2"/>)", true, true},
        {"childless_element", "e", write, "<e/>", true, true},
        {"opening_above_two_elements", "e{x y}", write_opening, "<e>", true, true},
        {"opening_above_text_and_element", "e(a=1){\"t\" x}", write_opening, R"(<e a="1">)", true, true},
        {"opening_above_two_texts", "e{\"t\" \"u\"}", write_opening, "<e>", true, true},
        {"opening_above_lone_element", "e{x}", write_opening, "<e>", true, true},
        {"opening_above_lone_text", "e{\"t\"}", write_opening, "<e>", true, false},
        {"opening_above_lone_text_with_attribute", "e(a=1){\"t\"}", write_opening, R"(<e a="1">)", true,
         false},
        {"opening_above_lone_empty_text", "e{\"\"}", write_opening, "<e>", true, false},
        {"opening_of_childless_element", "e", write_opening, "<e>", true, false},
        {"lone_text", "e{\"t\"}", write_first_child, "t", false, false},
        {"lone_empty_text", "e{\"\"}", write_first_child, "", false, false},
        {"text_before_element", "e{\"t\" x}", write_first_child, "t", true, true},
        {"text_after_element", "e{x \"t\"}", write_last_child, "t", true, true},
        {"text_beside_text", "e{\"t\" \"u\"}", write_last_child, "u", true, true},
        {"empty_text_beside_element", "e{\"\" x}", write_first_child, "", true, true},
        {"closing_below_two_elements", "e{x y}", write_closing, "</e>", true, true},
        {"closing_below_text_and_element", "e{\"t\" x}", write_closing, "</e>", true, true},
        {"closing_below_two_texts", "e{\"t\" \"u\"}", write_closing, "</e>", true, true},
        {"closing_below_lone_element", "e{x}", write_closing, "</e>", true, true},
        {"closing_below_lone_text", "e{\"t\"}", write_closing, "</e>", false, true},
        {"closing_below_lone_empty_text", "e{\"\"}", write_closing, "</e>", false, true},
        {"closing_of_childless_element", "e", write_closing, "</e>", false, true},
    };
    return rows;
}

class WhiteSpace : public ::testing::TestWithParam<std::tuple<SpaceRow, int>> {};

TEST_P(WhiteSpace, is_where_the_table_says) {
    const auto& [row, depth] = GetParam();
    Document document(false);
    const Element* element = build(document, row.tree);
    const std::string before = row.has_indentation && depth > 0 ? spaces(2 * depth) : "";
    const std::string after = row.has_line_end && depth >= 0 ? "\n" : "";
    EXPECT_EQ(row.written(*element, depth), before + row.text + after);
}

std::string name_of_space_row(const ::testing::TestParamInfo<std::tuple<SpaceRow, int>>& info) {
    const auto& [row, depth] = info.param;
    if (depth == INT_MIN)
        return std::string(row.name) + "_lowest";
    return std::string(row.name) + (depth < 0 ? "_minus" : "_") + std::to_string(std::abs(depth));
}

INSTANTIATE_TEST_SUITE_P(Layout, WhiteSpace,
                         ::testing::Combine(::testing::ValuesIn(space_rows()),
                                            ::testing::Values(0, 1, 2, 7, 40, -1, -5, INT_MIN)),
                         name_of_space_row);

// ---- Whole documents ----

const char* const catalog_line = "catalog(version=2){book(item=1){\"A & B\"} empty(x=1) mixed{\"t1\" leaf}}";

const std::string formatted_catalog =
    R"(<catalog version="2">
  <book item="1">A &amp; B</book>
  <empty x="1"/>
  <mixed>
    t1
    <leaf/>
  </mixed>
</catalog>
)";

TEST(WriteDocument, compact_catalog_stands_on_one_line_without_line_end) {
    Document document(false);
    build(document, catalog_line);
    EXPECT_EQ(document.write_to_string(),
              R"(<?xml version="1.0"?><catalog version="2"><book item="1">A &amp; B</book><empty x="1"/>)"
              "<mixed>t1<leaf/></mixed></catalog>");
}

TEST(WriteDocument, formatted_catalog_has_nine_lines_with_the_declaration) {
    Document document(false);
    build(document, catalog_line);
    EXPECT_EQ(document.write_to_string_formatted(true), declaration + "\n" + formatted_catalog);
}

TEST(WriteDocument, formatted_catalog_has_eight_lines_without_the_declaration) {
    Document document(false);
    build(document, catalog_line);
    EXPECT_EQ(document.write_to_string_formatted(false), formatted_catalog);
}

TEST(WriteDocument, declaration_has_21_bytes_and_neither_encoding_nor_standalone) {
    const Document document(false);
    EXPECT_EQ(document.write_to_string(), R"(<?xml version="1.0"?>)");
    EXPECT_EQ(document.write_to_string().size(), 21U);
}

TEST(WriteDocument, without_root_gives_the_declaration_alone) {
    const Document document(false);
    EXPECT_EQ(document.write_to_string(), declaration);
    EXPECT_EQ(document.write_to_string_formatted(true), declaration + "\n");
    EXPECT_EQ(document.write_to_string_formatted(false), "");
}

TEST(WriteDocument, moved_from_document_writes_like_one_without_root) {
    Document document(false);
    build(document, "r");
    const Document taken(std::move(document));
    EXPECT_EQ(taken.write_to_string(), declaration + "<r/>");
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.Move)
    EXPECT_EQ(document.write_to_string(), declaration);
}

TEST(WriteDocument, bare_root_is_written_in_shorthand) {
    Document document(false);
    build(document, "r");
    EXPECT_EQ(document.write_to_string(), declaration + "<r/>");
    EXPECT_EQ(document.write_to_string_formatted(true), declaration + "\n<r/>\n");
    EXPECT_EQ(document.write_to_string_formatted(false), "<r/>\n");
}

TEST(WriteDocument, compact_text_always_has_the_declaration_and_formatted_text_on_request_which_is_wanted) {
    Document document(false);
    build(document, "r{x}");
    EXPECT_EQ(document.write_to_string().rfind(declaration, 0), 0U);
    EXPECT_EQ(document.write_to_string_formatted(true).rfind(declaration + "\n", 0), 0U);
    EXPECT_EQ(document.write_to_string_formatted(false).find("<?xml"), std::string::npos);
}

TEST(WriteDocument, root_that_is_still_a_child_elsewhere_is_written_from_level_zero) {
    Document tree(false);
    build(tree, "r{x{y}}");
    Document view(false);
    view.set_root_node(static_cast<Element*>(tree.get_root_node()->get_child("x")));
    EXPECT_EQ(view.write_to_string_formatted(false), "<x>\n  <y/>\n</x>\n");
    view.set_root_node(nullptr);  // or two documents would destroy it
}

TEST(WriteDocument, sorted_document_is_written_in_the_order_of_its_children) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("b");
    root->add_child("a");
    root->add_child_text("t");
    EXPECT_EQ(document.write_to_string(), declaration + "<r>t<a/><b/></r>");
}

TEST(WriteDocument, writing_changes_nothing) {
    Document document(false);
    const Element* root = build(document, catalog_line);
    document.write_to_string();
    document.write_to_string_formatted(true);
    EXPECT_EQ(to_line(root), catalog_line);
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(document.write_to_string_formatted(false), formatted_catalog);
}

// ---- Elements ----

struct ElementRow {
    const char* name;
    const char* tree;
    int depth;
    const char* text;
};

void PrintTo(const ElementRow& row, std::ostream* out) {
    *out << row.name << ": " << row.tree << " at " << row.depth;
}

class WriteElement : public ::testing::TestWithParam<ElementRow> {};

TEST_P(WriteElement, appends_exactly_this_text) {
    const ElementRow& row = GetParam();
    Document document(false);
    const Element* element = build(document, row.tree);
    EXPECT_EQ(write(*element, row.depth), row.text);
}

const ElementRow element_rows[] = {
    {"lone_empty_text_compact_is_no_shorthand", "e{\"\"}", -1, "<e></e>"},
    {"lone_empty_text_formatted_is_no_shorthand", "e{\"\"}", 0, "<e></e>\n"},
    {"lone_element_formatted", "e{x}", 0, "<e>\n  <x/>\n</e>\n"},
    {"lone_element_at_depth_two", "e{x}", 2, "    <e>\n      <x/>\n    </e>\n"},
    {"childless_at_depth_two", "e", 2, "    <e/>\n"},
    {"childless_with_attributes_is_shorthand", "e(a=1,b=2)", 0, "<e a=\"1\" b=\"2\"/>\n"},
    {"subtree_is_written_as_if_nested_that_deep", "e{x{y{\"t\"} z}}", 3,
     "      <e>\n        <x>\n          <y>t</y>\n          <z/>\n        </x>\n      </e>\n"},
    {"minus_five_is_compact_all_the_way_down", "e{x{y{\"t\"} \"u\"} z}", -5, "<e><x><y>t</y>u</x><z/></e>"},
    {"lowest_depth_is_compact", "e{x{y{\"t\"} \"u\"} z}", INT_MIN, "<e><x><y>t</y>u</x><z/></e>"},
    {"two_texts_stand_on_lines_of_their_own", "e{\"t\" \"u\"}", 0, "<e>\n  t\n  u\n</e>\n"},
    {"two_texts_compact_run_together", "e{\"t\" \"u\"}", -1, "<e>tu</e>"},
    {"empty_text_among_siblings_is_a_line_of_spaces", "e{\"\" x}", 1, "  <e>\n    \n    <x/>\n  </e>\n"},
    {"multi_line_text_continues_in_column_zero", "e{x{\"1\\n2\"} \"3\\n4\"}", 1,
     "  <e>\n    <x>1\n2</x>\n    3\n4\n  </e>\n"},
    {"line_feeds_of_text_are_the_only_ones_in_compact_text", "e{\"1\\n2\" x}", -1, "<e>1\n2<x/></e>"},
    {"levels_come_back_after_a_deep_branch", "e{a{b{c{d}}} f{\"t\"} g}", 0,
     "<e>\n  <a>\n    <b>\n      <c>\n        <d/>\n      </c>\n    </b>\n  </a>\n  <f>t</f>\n  "
     "<g/>\n</e>\n"},
};

INSTANTIATE_TEST_SUITE_P(Layout, WriteElement, ::testing::ValuesIn(element_rows),
                         [](const ::testing::TestParamInfo<ElementRow>& info) { return info.param.name; });

TEST(WriteElementText, is_appended_and_never_replaces_what_is_there) {
    Document document(false);
    const Element* element = build(document, "e{x}");
    std::string out = "kept\n";
    element->write_to_string(out, -1);
    element->write_to_string(out, -1);
    EXPECT_EQ(out, "kept\n<e><x/></e><e><x/></e>");
    element->write_to_string(out, 0);
    EXPECT_EQ(out, "kept\n<e><x/></e><e><x/></e><e>\n  <x/>\n</e>\n");
}

TEST(WriteElementText, tag_writers_append_too) {
    Document document(false);
    const Element* element = build(document, "e(a=1){x}");
    std::string out = "+";
    element->write_opening_tag(out, 1);
    element->write_closing_tag(out, 1);
    element->write_shorthand_tag(out, 1);
    EXPECT_EQ(out, "+  <e a=\"1\">\n  </e>\n  <e a=\"1\"/>\n");
}

TEST(WriteElementText, free_standing_element_is_written_unlike_free_standing_text) {
    const Element element("free", nullptr, false);
    EXPECT_EQ(write(element, -1), "<free/>");
    EXPECT_EQ(write(element, 1), "  <free/>\n");
}

TEST(WriteElementText, names_are_neither_checked_nor_escaped_which_is_wanted) {
    const Element empty("", nullptr, false);
    EXPECT_EQ(write(empty, -1), "</>");
    EXPECT_EQ(write_opening(empty, -1) + write_closing(empty, -1), "<></>");
    const Element odd("a<b & \"c\"\n", nullptr, false);
    EXPECT_EQ(write(odd, -1), "<a<b & \"c\"\n/>");
    EXPECT_EQ(write_opening(odd, -1) + write_closing(odd, -1), "<a<b & \"c\"\n></a<b & \"c\"\n>");
}

TEST(WriteElementText, changing_the_children_changes_the_layout) {
    Document document(false);
    Element* element = build(document, "e{\"t\"}");
    EXPECT_EQ(write(*element, 0), "<e>t</e>\n");
    Node* added = element->add_child("x");
    EXPECT_EQ(write(*element, 0), "<e>\n  t\n  <x/>\n</e>\n");
    element->remove_child(element->get_child_text());
    EXPECT_EQ(write(*element, 0), "<e>\n  <x/>\n</e>\n");
    element->remove_child(added);
    EXPECT_EQ(write(*element, 0), "<e/>\n");
}

// ---- Attributes ----

/// A text that changes its parent's children before it writes itself.
class Meddler : public TextNode {
public:
    Meddler(Element* parent, std::function<void()> change_tree)
        : TextNode(parent, ""), change(std::move(change_tree)) {
        set_content("text");
    }
    void write_to_string(std::string& out, int depth) const override {
        change();
        TextNode::write_to_string(out, depth);
    }

private:
    std::function<void()> change;
};

TEST(WriteElementText, closing_tag_goes_by_the_children_that_the_element_has_then) {
    Element gains("gains", nullptr, false);
    gains.add_new_node(new Meddler(&gains, [&] { gains.set_child_first(gains.add_child("first")); }));
    EXPECT_EQ(write(gains, 1), "  <gains>    text\n  </gains>\n");
    Element loses("loses", nullptr, false);
    Element* lost = loses.add_child("lost");
    loses.add_new_node(new Meddler(&loses, [&] { loses.remove_child(lost); }));
    EXPECT_EQ(write(loses, 1), "  <loses>\n    <lost/>\ntext</loses>\n");
}

TEST(WriteAttribute, is_a_space_the_name_and_the_quoted_value_at_every_depth) {
    const Attribute attribute("n", "v", nullptr);
    for (const int depth : {INT_MIN, -5, -1, 0, 1, 2, 30, INT_MAX}) {
        SCOPED_TRACE(depth);
        EXPECT_EQ(write(attribute, depth), " n=\"v\"");
    }
}

TEST(WriteAttribute, is_appended) {
    const Attribute attribute("n", "", nullptr);
    std::string out = "x";
    attribute.write_to_string(out, 3);
    EXPECT_EQ(out, "x n=\"\"");
}

TEST(WriteAttribute, value_with_double_quotes_is_written_as_it_is_which_is_wanted) {
    const Attribute attribute("n", "say \"hi\"", nullptr);
    EXPECT_EQ(write(attribute, -1), " n=\"say \"hi\"\"");
}

TEST(WriteAttribute, no_byte_of_a_value_or_name_is_escaped_which_is_wanted) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string one(1, static_cast<char>(byte));
        const Attribute attribute(one, one, nullptr);
        EXPECT_EQ(write(attribute, -1), " " + one + "=\"" + one + "\"");
    }
}

TEST(WriteAttribute, attributes_stand_in_the_tag_in_the_order_in_which_their_names_were_first_set) {
    Element element("e", nullptr, false);
    element.set_attribute("b", "1");
    element.set_attribute("a", "2");
    element.set_attribute("c", "3");
    element.set_attribute("b", "4");
    EXPECT_EQ(write(element, 0), "<e b=\"4\" a=\"2\" c=\"3\"/>\n");
    element.remove_attribute("b");
    element.set_attribute("b", "5");
    EXPECT_EQ(write(element, 0), "<e a=\"2\" c=\"3\" b=\"5\"/>\n");
}

TEST(WriteAttribute, attributes_never_start_a_line_of_their_own) {
    Document document(false);
    const Element* element = build(document, "e(a=1,b=2){x(c=3){y(d=4){\"t\"}}}");
    EXPECT_EQ(write(*element, 1),
              "  <e a=\"1\" b=\"2\">\n    <x c=\"3\">\n      <y d=\"4\">t</y>\n    </x>\n  </e>\n");
}

TEST(WriteAttribute, attributes_are_no_children_so_an_element_with_attributes_alone_is_shorthand) {
    Document document(false);
    const Element* element = build(document, "e(a='')");
    EXPECT_EQ(write(*element, -1), R"(<e a=""/>)");
}

// ---- Against a writer that is as simple as can be ----

/// The same text by plain recursion over the public interface.
std::string write_simply(const Node* node, int depth);

std::string tag_simply(const Element& element) {
    std::string out = "<" + element.get_name();
    for (const Attribute* attribute : element.get_attributes()) {
        out += " " + attribute->get_name() + "=\"" + attribute->get_value() + "\"";
    }
    return out;
}

std::string write_element_simply(const Element& element, int depth) {
    const quxml::NodeList children = element.get_children();
    const std::string indentation = depth > 0 ? spaces(2 * depth) : "";
    const std::string end = depth >= 0 ? "\n" : "";
    if (children.empty())
        return indentation + tag_simply(element) + "/>" + end;
    const bool inline_text = children.size() == 1 && element.has_child_text();
    std::string out = indentation + tag_simply(element) + ">" + (inline_text ? "" : end);
    for (const Node* child : children)
        out += write_simply(child, depth < 0 ? -1 : depth + 1);
    return out + (inline_text ? "" : indentation) + "</" + element.get_name() + ">" + end;
}

std::string write_simply(const Node* node, int depth) {
    if (const auto* element = dynamic_cast<const Element*>(node))
        return write_element_simply(*element, depth);
    std::string text;
    escape_plainly(dynamic_cast<const TextNode&>(*node).get_content(), text);
    if (depth < 0 || node->get_parent()->get_children().size() == 1)
        return text;
    return spaces(2 * depth) + text + "\n";
}

/// Grows a tree of a few dozen nodes of every kind.
void grow(Element& root, std::mt19937& random) {
    const auto pick = [&random](std::size_t count) { return random() % count; };
    static const std::string texts[] = {"", "t", R"(a<b&c>"d"'e')", "1\n2", " ", "\xC3\xA9"};
    std::vector<Element*> elements = {&root};
    for (std::size_t i = pick(40); i > 0; --i) {
        Element* element = elements[pick(elements.size())];
        switch (pick(4)) {
            case 0:
                element->set_attribute(std::string(1, static_cast<char>('a' + pick(4))), texts[pick(6)]);
                break;
            case 1:
                element->add_child_text(texts[pick(6)]);
                break;
            default:
                elements.push_back(
                    element->add_child(std::string(1 + pick(3), static_cast<char>('a' + pick(26)))));
        }
    }
}

TEST(RandomTrees, are_written_as_plain_recursion_would_write_them) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Document document(seed % 2 == 0);
        Element* root = document.create_root_node("r");
        grow(*root, random);
        ASSERT_EQ(document.write_to_string(), declaration + write_simply(root, -1));
        ASSERT_EQ(document.write_to_string_formatted(false), write_simply(root, 0));
        for (const Node* child : root->get_children()) {
            for (const int depth : {-3, 0, 1, 5})
                ASSERT_EQ(write(*child, depth), write_simply(child, depth));
        }
    }
}

// ---- Deep and wide trees ----

/// A chain of elements `d`, `levels` of them.
void build_chain(Document& document, int levels) {
    Element* deepest = document.create_root_node("d");
    for (int i = 1; i < levels; ++i)
        deepest = deepest->add_child("d");
}

TEST(DeepTree, of_a_million_levels_is_written_compact_on_a_small_stack) {
    const int levels = 1000000;
    Document document(false);
    build_chain(document, levels);
    std::string out;
    on_small_stack([&] { out = document.write_to_string(); });
    const std::string expected =
        declaration + repeat("<d>", levels - 1) + "<d/>" + repeat("</d>", levels - 1);
    EXPECT_TRUE(out == expected) << "the text of " << out.size() << " bytes is not the expected one of "
                                 << expected.size();
}

TEST(DeepTree, of_three_thousand_levels_is_written_formatted_on_a_small_stack) {
    const int levels = 3000;
    Document document(false);
    build_chain(document, levels);
    std::string out;
    on_small_stack([&] { out = document.write_to_string_formatted(false); });
    std::string expected;
    for (int level = 0; level < levels - 1; ++level)
        expected += spaces(2 * level) + "<d>\n";
    expected += spaces(2 * (levels - 1)) + "<d/>\n";
    for (int level = levels - 2; level >= 0; --level)
        expected += spaces(2 * level) + "</d>\n";
    EXPECT_TRUE(out == expected) << "the text of " << out.size() << " bytes is not the expected one of "
                                 << expected.size();
}

/// The processor time that writing both layouts takes, in seconds.
double time_writing(const Document& document) {
    const std::clock_t start = std::clock();
    EXPECT_GT(document.write_to_string().size(), declaration.size());
    EXPECT_GT(document.write_to_string_formatted(true).size(), declaration.size());
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct WideRow {
    const char* name;
    void (*add_one)(Element& parent);
};

void PrintTo(const WideRow& row, std::ostream* out) {
    *out << row.name;
}

class WideElement : public ::testing::TestWithParam<WideRow> {};

TEST_P(WideElement, is_written_in_linear_time) {
    const auto make = [](int children) {
        auto document = std::make_unique<Document>(false);
        Element* root = document->create_root_node("r");
        for (int i = 0; i < children; ++i)
            GetParam().add_one(*root);
        return document;
    };
    const auto narrow = make(20000);
    const auto wide = make(200000);
    const double time_of_narrow =
        std::min({time_writing(*narrow), time_writing(*narrow), time_writing(*narrow)});
    // Ten times the children take ten times as long, or a hundred times if each child looks at all of them.
    EXPECT_LT(time_writing(*wide), 30 * time_of_narrow + 0.5);
}

const WideRow wide_rows[] = {
    {"elements", [](Element& parent) { parent.add_child("c"); }},
    {"texts", [](Element& parent) { parent.add_child_text("t"); }},
    {"elements_with_text", [](Element& parent) { parent.add_child("c")->add_child_text("t"); }},
};

INSTANTIATE_TEST_SUITE_P(Layout, WideElement, ::testing::ValuesIn(wide_rows),
                         [](const ::testing::TestParamInfo<WideRow>& info) { return info.param.name; });

// ---- Golden files ----

// Each tests/data/NAME.xml is read and written in both layouts. QUXML_UPDATE_GOLDEN=1
// rewrites the expected texts.

std::string golden_path(const std::string& file) {
    return QUXML_REPOSITORY "/tests/data/" + file;
}

bool is_update_wanted() {
    const char* const update = std::getenv("QUXML_UPDATE_GOLDEN");  // NOLINT(concurrency-mt-unsafe)
    return update != nullptr && std::string(update) == "1";
}

void write_file(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    ASSERT_TRUE(file.flush()) << "cannot write " << path;
}

class GoldenFile : public ::testing::TestWithParam<const char*> {};

TEST_P(GoldenFile, is_written_as_expected_in_both_layouts) {
    const std::string name = GetParam();
    const auto document = quxml::from_string(quxml_test::read_file(golden_path(name + ".xml")), false);
    EXPECT_TRUE(links_agree(document->get_root_node()));
    const std::string compact = document->write_to_string();
    const std::string formatted = document->write_to_string_formatted(true);
    if (is_update_wanted()) {
        write_file(golden_path(name + ".compact"), compact);
        write_file(golden_path(name + ".formatted"), formatted);
        GTEST_SKIP() << "expected texts rewritten; look at the difference before you commit it";
    }
    EXPECT_EQ(compact, quxml_test::read_file(golden_path(name + ".compact")));
    EXPECT_EQ(formatted, quxml_test::read_file(golden_path(name + ".formatted")));
}

TEST_P(GoldenFile, comes_back_unchanged_from_both_layouts) {
    const std::string name = GetParam();
    if (is_update_wanted())
        GTEST_SKIP() << "expected texts are being rewritten";
    const auto document = quxml::from_string(quxml_test::read_file(golden_path(name + ".xml")), false);
    for (const char* const layout : {".compact", ".formatted"}) {
        SCOPED_TRACE(layout);
        const auto again = quxml::from_string(quxml_test::read_file(golden_path(name + layout)), false);
        EXPECT_EQ(to_line(again->get_root_node()), to_line(document->get_root_node()));
    }
}

INSTANTIATE_TEST_SUITE_P(Data, GoldenFile, ::testing::Values("catalog", "dropped", "names", "texts"),
                         [](const ::testing::TestParamInfo<const char*>& info) { return info.param; });

}  // namespace
