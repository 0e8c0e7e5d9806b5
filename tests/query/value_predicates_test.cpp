// SPDX-License-Identifier: MIT

// Predicates that test an attribute or the text of a child, on both routes side by side, and their handlers.

#include "quxml/XPathHelper.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"
#include "support/expect_throw.h"

namespace {

using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::XPathHelper;
using quxml_test::at_most_one_equals_sign;
using quxml_test::not_a_number;
using quxml_test::number_too_large;
using quxml_test::one_equals_sign;
using quxml_test::SlowEngine;
using quxml_test::Tree;

/// One predicate on both routes: `list_filter` is what it leaves of the root's children, `single_node` are
/// the children that pass it when each is tested alone.
struct RouteRow {
    const char* note;
    const char* tree;
    const char* predicate;
    const char* list_filter;
    const char* single_node;
};

void PrintTo(const RouteRow& row, std::ostream* out) {
    *out << row.note;
}

class BothRoutes : public ::testing::TestWithParam<RouteRow> {};

NodeList children_passing(Node* root, const std::string& step) {
    NodeList passing;
    for (Node* child : root->get_children()) {
        if (!child->find_exact_match(step).empty())
            passing.push_back(child);
    }
    return passing;
}

NodeList children_passing_slowly(Node* root, const std::string& step) {
    NodeList passing;
    for (Node* child : root->get_children()) {
        if (!quxml_test::slow_find_exact_match(child, step).empty())
            passing.push_back(child);
    }
    return passing;
}

TEST_P(BothRoutes, select) {
    const RouteRow& row = GetParam();
    SCOPED_TRACE(std::string(row.predicate) + " in " + row.tree);
    const Tree tree(row.tree);
    Node* const root = tree.node("#1");
    const std::string before = tree.line();
    const std::string step = std::string("*") + row.predicate;
    const std::string path = "*/" + step;
    EXPECT_EQ(tree.outcome([&] { return root->find_exact_match(path); }), row.list_filter);
    EXPECT_EQ(tree.outcome([&] { return quxml_test::slow_find_exact_match(root, path); }), row.list_filter);
    EXPECT_EQ(tree.outcome([&] { return children_passing(root, step); }), row.single_node);
    EXPECT_EQ(tree.outcome([&] { return children_passing_slowly(root, step); }), row.single_node);
    EXPECT_EQ(tree.line(), before);
}

const char* const books =
    "books{book(n=B1,item=1,lang=en){title{\"Dune\"}} book(n=B2,item=2,lang=de){title{\"Faust\"} "
    "title{\"Emma\"}}"
    " book(n=B3){title note{\"Dune\"}} \"T\"}";

// The candidates are named by an attribute `n`, which no row asks for. #14 is the text.
const RouteRow book_rows[] = {
    {"attribute exists", books, "[@lang]", "B1 B2", "B1 B2"},
    {"attribute value in quotes", books, "[@lang='en']", "B1", ""},
    {"attribute value without quotes", books, "[@lang=en]", "B1", ""},
    {"attribute name with a blank after it", books, "[@lang =en]", "", "B1"},
    {"attribute name with a blank after it and quotes", books, "[@lang ='en']", "", ""},
    {"quotes need not pair", books, "[@lang=\"de']", "B2", ""},
    {"an empty value in quotes", books, "[@lang='']", "B1 B2", ""},
    {"attribute names keep their case", books, "[@LANG='en']", "", ""},
    {"attribute values keep their case", books, "[@lang='EN']", "", ""},
    {"a blank before the attribute name", books, "[@ lang='en']", "", ""},
    {"two equals signs after an at sign", books, "[@lang='e=n']", at_most_one_equals_sign, ""},
    {"child value in quotes", books, "[title='Emma']", "B2", "B2"},
    {"child value without quotes", books, "[title=Dune]", "B1", "B1"},
    {"child value with a blank after it", books, "[title='Dune' ]", "", ""},
    {"child names keep their case", books, "[Title='Dune']", "", ""},
    {"child values keep their case", books, "[title='dune']", "", ""},
    {"two equals signs without an at sign", books, "[title==Dune]", one_equals_sign, one_equals_sign},
    {"item 2", books, "[2]", "B2", "B2"},
    {"item 1", books, "[1]", "B1 B3", "B1 B3"},
    {"item 01", books, "[01]", "B3", ""},
    {"a number too large", books, "[99999999999]", number_too_large, ""},
    {"last", books, "[last()]", "#14", ""},
    {"last with a bad offset", books, "[last()x]", not_a_number, ""},
    {"position", books, "[position()=2]", "B2", ""},
    {"position with less or equal", books, "[position()<=2]", not_a_number, ""},
    {"nothing", books, "[]", "B1 B2 B3 #14", ""},
    {"a bare text", books, "[Dune]", "", ""},
    {"an opening bracket alone", books, "[", "B1 B2 B3 #14", ""},
    {"a second predicate that fails", books, "[@lang][@none]", "", "B1 B2"},
};
INSTANTIATE_TEST_SUITE_P(Books, BothRoutes, ::testing::ValuesIn(book_rows), quxml_test::note_of<RouteRow>);

const char* const quoted_values = "r{a(n=1,x='') a(n=2,x=v) a(n=3,x='\\'v\\'') a(n=4,x='\\'\\'') a(n=5)}";
const char* const blank_values = "r{a(n=1,x=v) a(n=2,x=' v') a(n=3,x='v ')}";
const char* const texts =
    "r{a(n=1){k{\"\"}} a(n=2){k} a(n=3){k{\"v\"}} a(n=4){k{\"w\" \"v\"}} a(n=5){k{c \"v\"}} a(n=6)}";
const char* const blank_texts = "r{a(n=1){k{\"v\"}} a(n=2){k{\" v\"}} a(n=3){k{\"v \"}}}";

const RouteRow value_rows[] = {
    {"nothing after the equals sign", quoted_values, "[@x=]", "1 2 3 4", ""},
    {"nothing after the equals sign and a blank before it", quoted_values, "[@x =]", "", "1"},
    {"quotes alone", quoted_values, "[@x='']", "1 2 3 4", ""},
    {"quotes alone and a blank before the equals sign", quoted_values, "[@x ='']", "", "4"},
    {"one quote alone", quoted_values, "[@x=\"]", "1 2 3 4", ""},
    {"one quote within others", quoted_values, "[@x='\"']", "1 2 3 4", ""},
    {"a value in quotes", quoted_values, "[@x='v']", "2", ""},
    {"a value in quotes and a blank before the equals sign", quoted_values, "[@x ='v']", "", "3"},
    {"a value without quotes and a blank before the equals sign", quoted_values, "[@x =v]", "", "2"},
    {"any character before the equals sign", quoted_values, "[@xy=v]", "", "2"},
    {"blanks of values are compared", blank_values, "[@x=' v']", "2", ""},
    {"blanks of values are compared without quotes", blank_values, "[@x=v ]", "3", ""},
    {"blanks of values are compared and a blank before the equals sign", blank_values, "[@x = v]", "", "2"},
    {"entities are not read", "r{a(n=1,x='&amp;') a(n=2,x=&)}", "[@x='&amp;']", "1", ""},
    {"several equals signs in a value", "r{a(n=1,x='v=w')}", "[@x =v=w]", at_most_one_equals_sign, "1"},
    {"several equals signs in a row", "r{a(n=1,x='=')}", "[@x ==]", at_most_one_equals_sign, "1"},
    {"an empty text", texts, "[k='']", "1", "1"},
    {"an empty text without quotes", texts, "[k=]", "1", "1"},
    {"an empty text in the other quotes", texts, "[k='\"']", "1", "1"},
    {"only the first text is compared", texts, "[k=v]", "3 5", "3 5"},
    {"the first of several texts", texts, "[k=w]", "4", "4"},
    {"blanks of texts are compared", blank_texts, "[k=' v']", "2", "2"},
    {"blanks at the end of texts are compared", blank_texts, "[k=v ]", "3", "3"},
    {"a blank after the child name is part of it", blank_texts, "[k =v]", "", ""},
    {"quotes of the child name are part of it", blank_texts, "['k'=v]", "", ""},
    {"quotes within a value stay", "r{a(n=1){k{\"it's\"}} a(n=2){k{\"its\"}}}", "[k='it's']", "1", "1"},
    {"two children of one name", "r{a(n=1){k{\"u\"} k{\"v\"}} a(n=2){k{\"u\"}}}", "[k=v]", "1", "1"},
    {"a child without text before one with it", "r{a(n=1){k k{\"v\"}}}", "[k=v]", "1", "1"},
    {"grandchildren do not count", "r{a(n=1){b{k{\"v\"}}}}", "[k=v]", "", ""},
    {"text of the node itself does not count", "r{a(n=1){\"v\"}}", "[a=v]", "", ""},
    {"text has no name to be looked for", "r{a(n=1){\"v\"}}", "[=v]", "", ""},
    {"an equals sign alone", texts, "[=]", "", ""},
    {"two equals signs alone", texts, "[==]", one_equals_sign, one_equals_sign},
};
INSTANTIATE_TEST_SUITE_P(Values, BothRoutes, ::testing::ValuesIn(value_rows), quxml_test::note_of<RouteRow>);

struct PairRow {
    const char* note;
    const char* query;
    const char* name;
    const char* value;
};

void PrintTo(const PairRow& row, std::ostream* out) {
    *out << row.note;
}

class AttributePair : public ::testing::TestWithParam<PairRow> {};

TEST_P(AttributePair, is_read) {
    const PairRow& row = GetParam();
    const std::pair<std::string, std::string> expected(row.name, row.value);
    EXPECT_EQ(XPathHelper(nullptr).get_attribute_pair(row.query), expected) << row.query;
    EXPECT_EQ(SlowEngine(nullptr).get_attribute_pair(row.query), expected) << row.query;
}

const PairRow pair_rows[] = {
    {"nothing", "", "", ""},
    {"a name", "lang", "lang", ""},
    {"a value", "lang=en", "lang", "en"},
    {"a value in quotes", "lang='en'", "lang", "en"},
    {"a value in double quotes", "lang=\"en\"", "lang", "en"},
    {"quotes that do not pair", "lang=\"en'", "lang", "en"},
    {"many quotes of both kinds", "lang='\"'en\"\"", "lang", "en"},
    {"a quote at the beginning", "lang='en", "lang", "en"},
    {"a quote at the end", "lang=en\"", "lang", "en"},
    {"quotes within the value stay", "x='it's'", "x", "it's"},
    {"blanks stop the trimming", "x= 'en' ", "x", " 'en' "},
    {"blanks within the quotes stay", "x=' en '", "x", " en "},
    {"only quotes", "x='\"'", "x", ""},
    {"nothing after the equals sign", "x=", "x", ""},
    {"nothing before the equals sign", "=x", "", "x"},
    {"an equals sign alone", "=", "", ""},
    {"names are not trimmed", " 'x' =y", " 'x' ", "y"},
    {"a name in quotes without a value", "'x'", "'x'", ""},
    {"an at sign belongs to the name", "@x=y", "@x", "y"},
};
INSTANTIATE_TEST_SUITE_P(Rows, AttributePair, ::testing::ValuesIn(pair_rows), quxml_test::note_of<PairRow>);

TEST(AttributePairErrors, more_than_one_equals_sign_throws) {
    const XPathHelper helper(nullptr);
    const std::string message = "Can at most have one equal sign in attribute queries";
    for (const char* query : {"a==b", "a=b=c", "==", "a='b=c'", "====="})
        EXPECT_THROW_MESSAGE(helper.get_attribute_pair(query), std::invalid_argument, message) << query;
}

/// Whether one element satisfies a predicate.
struct MatchRow {
    const char* note;
    const char* element;
    const char* predicate;
    bool matches;
};

void PrintTo(const MatchRow& row, std::ostream* out) {
    *out << row.note;
}

class AttributeMatches : public ::testing::TestWithParam<MatchRow> {};

TEST_P(AttributeMatches, is_decided) {
    const MatchRow& row = GetParam();
    SCOPED_TRACE(std::string(row.predicate) + " on " + row.element);
    const Tree tree(row.element);
    Element* const element = tree.element("#1");
    EXPECT_EQ(XPathHelper(nullptr).attribute_matches_node(element, row.predicate), row.matches);
    EXPECT_EQ(SlowEngine(nullptr).attribute_matches_node(element, row.predicate), row.matches);
    EXPECT_FALSE(XPathHelper(nullptr).attribute_matches_node(nullptr, row.predicate));
}

const MatchRow match_rows[] = {
    {"item equal to the text", "a(item=2)", "2", true},
    {"item of another text", "a(item=2)", "02", false},
    {"item of any text", "a(item='x y')", "x y", true},
    {"item is last", "a(item='last()')", "last()", true},
    {"item with an equals sign", "a(item='x=y')", "x=y", true},
    {"empty item and empty predicate", "a(item='')", "", true},
    {"empty item is not item 1", "a(item='')", "1", false},
    {"item 1", "a(item=1)", "1", true},
    {"item 1 is not 01", "a(item=1)", "01", false},
    {"no item counts as item 1", "a", "1", true},
    {"no item is not item 01", "a", "01", false},
    {"no item is not item 1 with a blank", "a", " 1", false},
    {"no item is not item 2", "a", "2", false},
    {"no item and an empty predicate", "a", "", false},
    {"no item and a blank before the at sign", "a(x=1)", " @x", false},
    {"attribute exists", "a(x=1)", "@x", true},
    {"attribute exists and is empty", "a(x='')", "@x", true},
    {"attribute is absent", "a(x=1)", "@y", false},
    {"attribute name is exact", "a(x=1)", "@X", false},
    {"attribute name with blanks", "a(' x '=1)", "@ x ", true},
    {"an at sign alone asks for the empty name", "a(''=1)", "@", true},
    {"an at sign alone without such an attribute", "a(x=1)", "@", false},
    {"it is deliberate that the character before the equals sign is dropped", "a(lan=en)", "@lang=en", true},
    {"the whole name is never looked for", "a(lang=en)", "@lang=en", false},
    {"a blank before the equals sign is dropped", "a(lang=en)", "@lang =en", true},
    {"an equals sign is dropped", "a(lang='=en')", "@lang==en", false},
    {"the first equals sign counts", "a(lan='=en')", "@lang==en", true},
    {"the value is raw", "a(lang=en)", "@lang ='en'", false},
    {"the value with its quotes", "a(lang='\\'en\\'')", "@lang ='en'", true},
    {"an empty value", "a(lang='')", "@lang =", true},
    {"an empty value is required", "a(lang=en)", "@lang =", false},
    {"one character before the equals sign leaves the empty name", "a(''=x)", "@a=x", true},
    {"one character before the equals sign is not a name", "a(a=x)", "@a=x", false},
    {"an equals sign after the at sign makes all of it the name", "a('=x'=x)", "@=x", true},
    {"that name with another value", "a('=x'=y)", "@=x", false},
    {"that name must be there", "a(x=x)", "@=x", false},
    {"an equals sign after the at sign and nothing else", "a('='='')", "@=", true},
};
INSTANTIATE_TEST_SUITE_P(Rows, AttributeMatches, ::testing::ValuesIn(match_rows),
                         quxml_test::note_of<MatchRow>);

/// Whether some child of the node holds a value.
struct ContainsRow {
    const char* note;
    const char* node;
    const char* child_name;
    const char* value;
    bool contains;
};

void PrintTo(const ContainsRow& row, std::ostream* out) {
    *out << row.note;
}

class ContainsChildValue : public ::testing::TestWithParam<ContainsRow> {};

TEST_P(ContainsChildValue, is_decided) {
    const ContainsRow& row = GetParam();
    SCOPED_TRACE(std::string(row.child_name) + "=" + row.value + " in " + row.node);
    const Tree tree(row.node);
    EXPECT_EQ(XPathHelper(nullptr).contains_child_value(tree.node("#1"), row.child_name, row.value),
              row.contains);
    EXPECT_EQ(SlowEngine(nullptr).contains_child_value(tree.node("#1"), row.child_name, row.value),
              row.contains);
}

const ContainsRow contains_rows[] = {
    {"a child with the text", "a{k{\"v\"}}", "k", "v", true},
    {"another text", "a{k{\"v\"}}", "k", "w", false},
    {"another case of the text", "a{k{\"v\"}}", "k", "V", false},
    {"another name", "a{k{\"v\"}}", "j", "v", false},
    {"another case of the name", "a{k{\"v\"}}", "K", "v", false},
    {"no children", "a", "k", "v", false},
    {"a later child", "a{k{\"u\"} j{\"v\"} k{\"v\"}}", "k", "v", true},
    {"a child without text", "a{k}", "k", "", false},
    {"a child with empty text", "a{k{\"\"}}", "k", "", true},
    {"a child with empty text before another", "a{k{\"\" \"v\"}}", "k", "v", false},
    {"the first text stands after an element", "a{k{j{\"u\"} \"v\"}}", "k", "v", true},
    {"texts are not joined", "a{k{\"v\" j \"w\"}}", "k", "vw", false},
    {"text of grandchildren", "a{k{j{\"v\"}}}", "k", "v", false},
    {"text children have no text of their own", "a{\"v\"}", "", "v", false},
    {"quotes are compared", "a{k{\"v\"}}", "k", "'v'", false},
    {"a child with an empty name", "a{''{\"v\"}}", "", "v", true},
};
INSTANTIATE_TEST_SUITE_P(Rows, ContainsChildValue, ::testing::ValuesIn(contains_rows),
                         quxml_test::note_of<ContainsRow>);

TEST(ContainsChildValueOf, null_is_false) {
    const XPathHelper helper(nullptr);
    EXPECT_FALSE(helper.contains_child_value(nullptr, "", ""));
    EXPECT_FALSE(helper.contains_child_value(nullptr, "k", "v"));
}

/// A node of a kind of its own that can have children.
class OtherNode : public Node {
public:
    using Node::Node;
    void write_to_string(std::string& /*out*/, int /*indent*/) const override {}
    Node* get_deep_copy_of_node(bool /*deep*/, Element* /*parent*/) const override { return nullptr; }
};

/// An element and a text of classes of their own.
class OwnElement : public Element {
public:
    using Element::Element;
};

class OwnText : public quxml::TextNode {
public:
    using TextNode::TextNode;
};

TEST(ContainsChildValueOf, nodes_of_any_class_are_looked_into) {
    OtherNode node;
    auto* const child = new Element("k", nullptr, false);
    node.add_new_node(child);
    child->add_child_text("v");
    const XPathHelper helper(nullptr);
    EXPECT_TRUE(helper.contains_child_value(&node, "k", "v"));
    NodeList nodes = {&node};
    EXPECT_EQ(helper.get_node_containing_child_value("k=v", nodes), nodes);
    EXPECT_EQ(helper.get_node_containing_attribute("k", nodes), NodeList());
    EXPECT_EQ(helper.get_node_by_number("1", nodes), NodeList());
}

TEST(ContainsChildValueOf, derived_classes_count_as_elements_and_texts) {
    Element node("a", nullptr, false);
    auto* const child = new OwnElement("k", &node, false);
    node.add_new_node(child);
    auto* const text = new OwnText(child, "");
    child->add_new_node(text);
    text->set_content(std::string("v"));
    const XPathHelper helper(nullptr);
    EXPECT_TRUE(helper.contains_child_value(&node, "k", "v"));
    NodeList nodes = {child};
    EXPECT_EQ(helper.get_node_by_number("1", nodes), nodes);
    child->set_attribute("x", "1");
    EXPECT_EQ(helper.get_node_containing_attribute("x=1", nodes), nodes);
    EXPECT_TRUE(helper.attribute_matches_node(child, "@x"));
    EXPECT_EQ(node.find_exact_match("a/k[@x]"), quxml::NodeSet({child}));
    EXPECT_EQ(node.find_exact_match("//k[@x]"), quxml::NodeSet({child}));
}

TEST(ContainsChildValueOf, a_child_of_another_class_never_qualifies) {
    Element node("a", nullptr, false);
    auto* const child = new OtherNode("k", &node, false);
    node.add_new_node(child);
    auto* const text = new OwnText(nullptr, "");
    child->add_new_node(text);
    text->set_content(std::string("v"));
    EXPECT_FALSE(XPathHelper(nullptr).contains_child_value(&node, "k", "v"));
    EXPECT_EQ(node.find_exact_match("a/k"), quxml::NodeSet({child}));
    EXPECT_EQ(node.find_exact_match("a/k[1]"), quxml::NodeSet());
    EXPECT_EQ(node.find_exact_match("//k[1]"), quxml::NodeSet());
}

}  // namespace
