// SPDX-License-Identifier: MIT

// Covers the canonical order of children: the comparison, sorted insertion and sorting, by tables and examples.

#include "dom/ordering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/small_stack.h"
#include "support/test_names.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::is_sorted_before;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::build;
using quxml_test::links_agree;
using quxml_test::note_of;
using quxml_test::on_small_stack;
using quxml_test::to_line;

const char* const beyond_int = "99999999999";

// ---- The comparison of two nodes ----

struct PairRow {
    const char* note;
    const char* pair;  // children of one element
    bool forth;        // whether the first goes before the second
    bool back;         // and the second before the first
};

void PrintTo(const PairRow& row, std::ostream* out) {
    *out << row.note << ": " << row.pair;
}

class IsSortedBefore : public ::testing::TestWithParam<PairRow> {};

TEST_P(IsSortedBefore, compares_both_ways) {
    const PairRow& row = GetParam();
    Document document(false);
    const NodeList pair = build(document, row.pair)->get_children();
    EXPECT_EQ(is_sorted_before(pair.front(), pair.back()), row.forth);
    EXPECT_EQ(is_sorted_before(pair.back(), pair.front()), row.back);
}

const PairRow pairs[] = {
    {"names", "r{a b}", true, false},
    {"a shorter name", "r{a aa}", true, false},
    {"case matters", "r{B a}", true, false},
    {"bytes are unsigned", "r{z \xc3\xa4}", true, false},
    {"names before items", "r{a(item=2) b(item=1)}", true, false},
    {"names before items that cannot be compared", "r{a(item=99999999999) b(item=99999999999)}", true, false},
    {"text before elements", "r{\"z\" a}", true, false},
    {"two texts are equal", "r{\"b\" \"a\"}", false, false},
    {"text and a nameless element are equal", "r{\"t\" ''}", false, false},
    {"text and a nameless element with an item are equal", "r{\"t\" ''(item=1)}", false, false},
    {"two nameless elements both go first, wanted", "r{'' ''}", true, true},
    {"two without an item both go first, wanted", "r{a a}", true, true},
    {"one without an item, both go first, wanted", "r{a a(item=1)}", true, true},
    {"one with an empty item, both go first, wanted", "r{a(item='') a(item=1)}", true, true},
    {"two empty items both go first, wanted", "r{a(item='') a(item='')}", true, true},
    {"none and an item beyond the range both go first, wanted", "r{a a(item=99999999999)}", true, true},
    {"other attributes do not count", "r{a(id=2) a(id=1)}", true, true},
    {"the attribute's name is compared exactly", "r{a(Item=2) a(Item=1)}", true, true},
    {"numbers", "r{a(item=1) a(item=2)}", true, false},
    {"numbers are not texts", "r{a(item=9) a(item=10)}", true, false},
    {"negative numbers", "r{a(item=-3) a(item=-2)}", true, false},
    {"equal numbers", "r{a(item=7) a(item=7)}", false, false},
    {"white space before a number is skipped", "r{a(item=' 7') a(item=7)}", false, false},
    {"all white space before a number is skipped", "r{a(item=' \\n\t\v\f\r7') a(item=7)}", false, false},
    {"a sign and zeros do not count", "r{a(item=+007) a(item=7)}", false, false},
    {"base ten", "r{a(item=010) a(item=9)}", false, true},
    {"no base sixteen", "r{a(item=0x10) a(item=0)}", false, false},
    {"what follows the digits is ignored", "r{a(item=12abc) a(item=12)}", false, false},
    {"12abc is 12", "r{a(item=12abc) a(item=13)}", true, false},
    {"the largest and the smallest", "r{a(item=-2147483648) a(item=2147483647)}", true, false},
    {"texts", "r{a(item=a) a(item=b)}", true, false},
    {"equal texts", "r{a(item=x) a(item=x)}", false, false},
    {"a number and a text are texts", "r{a(item=2) a(item=x)}", true, false},
    {"a number and a lesser text", "r{a(item=2) a(item=!)}", false, true},
    {"10 and x9 are texts", "r{a(item=10) a(item=x9)}", true, false},
    {"white space only is a text", "r{a(item=' ') a(item=1)}", true, false},
    {"a sign only is a text", "r{a(item=-) a(item=1)}", true, false},
    {"a sign apart from its digits is a text", "r{a(item='- 5') a(item=1)}", true, false},
    {"bytes of texts are unsigned", "r{a(item=z) a(item=\xc3\xa4)}", true, false},
    {"9x is the number 9", "r{a(item=9x) a(item=10)}", true, false},
};

INSTANTIATE_TEST_SUITE_P(Pairs, IsSortedBefore, ::testing::ValuesIn(pairs), note_of<PairRow>);

TEST(IsSortedBefore, compares_the_null_byte_as_a_byte) {
    const std::string with_null("a\0b", 3);
    Element shorter("a", nullptr, false);
    Element longer(with_null, nullptr, false);
    EXPECT_TRUE(is_sorted_before(&shorter, &longer));
    EXPECT_FALSE(is_sorted_before(&longer, &shorter));
    shorter.set_name(with_null);
    shorter.set_attribute("item", std::string("x\0a", 3));
    longer.set_attribute("item", std::string("x\0b", 3));
    EXPECT_TRUE(is_sorted_before(&shorter, &longer));
    EXPECT_FALSE(is_sorted_before(&longer, &shorter));
    shorter.set_attribute("item", std::string("1\0002", 3));
    longer.set_attribute("item", "1");
    EXPECT_FALSE(is_sorted_before(&shorter, &longer)) << "the number ends at the null byte";
    EXPECT_FALSE(is_sorted_before(&longer, &shorter));
}

/// A node that is neither element nor text.
class OtherNode : public Node {
public:
    using Node::Node;
    void write_to_string(std::string& /*out*/, int /*indent*/) const override {}
    Node* get_deep_copy_of_node(bool /*deep*/, Element* /*parent*/) const override { return nullptr; }
};

TEST(IsSortedBefore, compares_nodes_of_other_classes_by_name_alone) {
    OtherNode other(std::string("b"));
    OtherNode same(std::string("b"));
    Element element("b", nullptr, false);
    Element lesser("a", nullptr, false);
    TextNode text(nullptr, "b");
    for (Node* namesake :
         {static_cast<Node*>(&same), static_cast<Node*>(&element), static_cast<Node*>(&text)}) {
        EXPECT_FALSE(is_sorted_before(&other, namesake));
        EXPECT_FALSE(is_sorted_before(namesake, &other));
    }
    EXPECT_TRUE(is_sorted_before(&lesser, &other));
    EXPECT_FALSE(is_sorted_before(&other, &lesser));
}

/// An element of an application's own class.
class DerivedElement : public Element {
public:
    using Element::Element;
};

TEST(IsSortedBefore, takes_derived_elements_for_elements) {
    DerivedElement one("a", nullptr, false);
    DerivedElement two("a", nullptr, false);
    EXPECT_TRUE(is_sorted_before(&one, &two));
    EXPECT_TRUE(is_sorted_before(&two, &one));
    one.set_attribute("item", "1");
    two.set_attribute("item", "2");
    EXPECT_TRUE(is_sorted_before(&one, &two));
    EXPECT_FALSE(is_sorted_before(&two, &one));
}

// ---- Items beyond the range of int ----

struct RangeRow {
    const char* note;
    const char* first;
    const char* second;
    bool throws;
    bool before;  // if it does not
};

void PrintTo(const RangeRow& row, std::ostream* out) {
    *out << row.note;
}

class ItemRange : public ::testing::TestWithParam<RangeRow> {};

TEST_P(ItemRange, is_checked_when_the_item_is_read) {
    const RangeRow& row = GetParam();
    Element first("a", nullptr, false);
    Element second("a", nullptr, false);
    first.set_attribute("item", row.first);
    second.set_attribute("item", row.second);
    if (row.throws) {
        EXPECT_THROW_MESSAGE(is_sorted_before(&first, &second), std::out_of_range, "stoi");
    } else {
        EXPECT_EQ(is_sorted_before(&first, &second), row.before);
    }
}

const RangeRow ranges[] = {
    {"the first is beyond", beyond_int, "1", true, false},
    {"the second is beyond", "1", beyond_int, true, false},
    {"both are beyond", beyond_int, beyond_int, true, false},
    {"far below", "-99999999999999999999999999", "1", true, false},
    {"one beyond the largest", "2147483648", "1", true, false},
    {"one below the smallest", "1", "-2147483649", true, false},
    {"beyond with something after", "99999999999x", "1", true, false},
    {"the first is beyond, the second a text", beyond_int, "x", true, false},
    {"the first is a text, so the second is not read, wanted", "x", beyond_int, false, false},
    {"a lesser text, the second is not read, wanted", "!", beyond_int, false, true},
    {"the first is empty, so neither is read", "", beyond_int, false, true},
    {"the second is empty, so neither is read", beyond_int, "", false, true},
    {"the largest fits", "2147483647", "2147483646", false, false},
    {"the smallest fits", "-2147483648", "-2147483647", false, true},
};

INSTANTIATE_TEST_SUITE_P(Items, ItemRange, ::testing::ValuesIn(ranges), note_of<RangeRow>);

TEST(IsSortedBefore, leaves_errno_as_it_is) {
    Element first("a", nullptr, false);
    Element second("a", nullptr, false);
    first.set_attribute("item", beyond_int);
    second.set_attribute("item", "1");
    errno = EDOM;
    EXPECT_THROW_MESSAGE(is_sorted_before(&first, &second), std::out_of_range, "stoi");
    EXPECT_EQ(errno, EDOM);
    for (const char* const item : {"2", "+2", "2 and more"}) {
        first.set_attribute("item", item);
        errno = ERANGE;
        EXPECT_FALSE(is_sorted_before(&first, &second)) << item;
        EXPECT_TRUE(is_sorted_before(&second, &first)) << item;
        EXPECT_EQ(errno, ERANGE) << item;
    }
    errno = 0;
}

// ---- Sorted insertion, by example ----

TEST(SortedInsertion, places_by_name_and_item) {
    Document document(true);
    Element* root = document.create_root_node("r");
    const Element* x3 = root->add_child("x", 3);
    const Element* x1 = root->add_child("x", 1);
    const Element* x = root->add_child("x");
    const Element* x2 = root->add_child("x", 2);
    const Element* a = root->add_child("a");
    const Element* later_x1 = root->add_child("x", 1);
    const std::vector<const Node*> expected = {a, later_x1, x1, x2, x3, x};
    const NodeList children = root->get_children();
    EXPECT_TRUE(std::equal(children.begin(), children.end(), expected.begin(), expected.end()))
        << to_line(root);
    EXPECT_EQ(to_line(root), "r{a x(item=1) x(item=1) x(item=2) x(item=3) x}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortedInsertion, puts_text_in_front_of_earlier_text_which_is_wanted) {
    Document document(true);
    Element* root = build(document, "r{b \"1\" a \"2\"}");
    EXPECT_EQ(to_line(root), "r{\"2\" \"1\" a b}");
}

TEST(SortedInsertion, puts_an_element_without_an_item_after_its_namesakes) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", "b");
    const Node* first = root->add_child("x");
    root->add_child("x", "a");
    const Node* second = root->add_child("x");
    root->add_child("y");
    EXPECT_EQ(to_line(root), "r{x(item=a) x(item=b) x x y}");
    EXPECT_EQ(first->get_next_sibling(), second);
}

TEST(SortedInsertion, passes_namesakes_without_an_item_which_is_wanted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x");
    root->add_child("x", 2);
    root->add_child("x", 1);
    root->add_child("x", 3);
    EXPECT_EQ(to_line(root), "r{x x(item=1) x(item=2) x(item=3)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortedInsertion, goes_before_an_equal_item) {
    Document document(true);
    Element* root = document.create_root_node("r");
    const Node* older = root->add_child("x", "7");
    const Node* newer = root->add_child("x", " 7");
    EXPECT_EQ(newer->get_next_sibling(), older);
}

TEST(SortedInsertion, stops_at_the_first_child_that_does_not_sort_before) {
    Document document(true);
    Element* root = build(document, "r{a b c}");
    root->get_child("b")->set_name("z");
    root->add_child("bb");
    EXPECT_EQ(to_line(root), "r{a bb z c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortedInsertion, reads_only_the_items_of_namesakes_it_passes) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("w", beyond_int);
    root->add_child("x", 1);
    root->add_child("x", 2);
    root->add_child("x", 3)->set_attribute("item", beyond_int);
    root->add_child("y", beyond_int);
    root->add_child("x", 2);
    root->add_child("x");
    EXPECT_EQ(to_line(root),
              "r{w(item=99999999999) x(item=1) x(item=2) x(item=2) x(item=99999999999) x"
              " y(item=99999999999)}");
    const auto node = std::make_unique<Element>("x", root, true);
    node->set_attribute("item", "5");
    EXPECT_THROW_MESSAGE(root->add_new_node(node.get()), std::out_of_range, "stoi");
    EXPECT_EQ(root->get_children().size(), 7U);
    EXPECT_TRUE(links_agree(root));
}

// ---- Sorting, by example ----

struct SortRow {
    const char* note;
    const char* before;
    const char* after;
};

void PrintTo(const SortRow& row, std::ostream* out) {
    *out << row.note << ": " << row.before;
}

class SortChildren : public ::testing::TestWithParam<SortRow> {};

TEST_P(SortChildren, gives) {
    const SortRow& row = GetParam();
    Document document(false);
    Element* root = build(document, row.before);
    root->sort_children();
    EXPECT_EQ(to_line(root), row.after);
    EXPECT_TRUE(links_agree(root));
}

const SortRow sorts[] = {
    {"names", "r{b a c}", "r{a b c}"},
    {"numeric items", "r{x(item=10) x(item=9) x(item=1)}", "r{x(item=1) x(item=9) x(item=10)}"},
    {"textual items", "r{x(item=b) x(item=a)}", "r{x(item=a) x(item=b)}"},
    {"a number and a text", "r{x(item=x) x(item=2)}", "r{x(item=2) x(item=x)}"},
    {"equal items keep their order", "r{x(item=' 7') x(item=7)}", "r{x(item=' 7') x(item=7)}"},
    {"equal items keep their order, the other way", "r{x(item=7) x(item=' 7')}", "r{x(item=7) x(item=' 7')}"},
    {"equal items of many", "r{x(item=7,n=1) x(item=7,n=2) a x(item=7,n=3) x(item=1,n=4) x(item=7,n=5)}",
     "r{a x(item=1,n=4) x(item=7,n=1) x(item=7,n=2) x(item=7,n=3) x(item=7,n=5)}"},
    {"namesakes without items are reversed, wanted", "r{x(n=p) x(n=q) x(n=r)}", "r{x(n=r) x(n=q) x(n=p)}"},
    {"two namesakes without items are exchanged, wanted", "r{x(n=p) x(n=q)}", "r{x(n=q) x(n=p)}"},
    {"each group of namesakes is reversed, wanted", "r{x(n=p) y(n=s) x(n=q) y(n=t) x(n=r)}",
     "r{x(n=r) x(n=q) x(n=p) y(n=t) y(n=s)}"},
    {"texts keep their order in front", "r{b \"2\" a \"1\" \"3\"}", "r{\"2\" \"1\" \"3\" a b}"},
    {"only texts", "r{\"2\" \"1\"}", "r{\"2\" \"1\"}"},
    {"one child", "r{a{c b}}", "r{a{c b}}"},
    {"no child", "r", "r"},
    {"deeper levels are left alone", "r{b{d c} a{d c}}", "r{a{d c} b{d c}}"},
    {"case and bytes", "r{b \xc3\xa4 a B}", "r{B a b \xc3\xa4}"},
};

INSTANTIATE_TEST_SUITE_P(Rows, SortChildren, ::testing::ValuesIn(sorts), note_of<SortRow>);

TEST(SortChildren, twice_restores_the_order_of_namesakes_without_items) {
    Document document(false);
    Element* root = build(document, "r{x(n=p) x(n=q) x(n=r)}");
    root->sort_children();
    root->sort_children();
    EXPECT_EQ(to_line(root), "r{x(n=p) x(n=q) x(n=r)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortChildren, reverses_namesakes_without_items_however_many_they_are_which_is_wanted) {
    for (int count = 2; count <= 70; ++count) {
        SCOPED_TRACE(count);
        Document document(false);
        Element* root = document.create_root_node("r");
        for (int i = 0; i < count; ++i)
            root->add_child("x");
        NodeList expected = root->get_children();
        root->sort_children();
        expected.reverse();
        EXPECT_EQ(root->get_children(), expected);
        EXPECT_TRUE(links_agree(root));
        root->sort_children();
        expected.reverse();
        EXPECT_EQ(root->get_children(), expected);
    }
}

TEST(SortChildren, works_whether_or_not_the_node_is_kept_sorted) {
    for (const bool sorted : {false, true}) {
        Document document(sorted);
        Element* root = build(document, "r{a b c}");
        root->get_child("a")->set_name("z");
        root->sort_children();
        EXPECT_EQ(to_line(root), "r{b c z}");
        EXPECT_TRUE(links_agree(root));
    }
}

/// An element whose list of children and whose own links the test can reach.
class OpenElement : public Element {
public:
    using Element::Element;
    using Node::children;
    using Node::next_sibling;
    using Node::previous_sibling;
};

TEST(SortChildren, does_not_touch_the_links_of_an_only_child) {
    OpenElement parent("p", nullptr, false);
    OpenElement elsewhere("elsewhere", nullptr, false);
    auto* child = new OpenElement("c", &parent, false);
    child->previous_sibling = &elsewhere;
    child->next_sibling = &elsewhere;
    parent.add_new_node(child);
    parent.sort_children();
    EXPECT_EQ(child->get_previous_sibling(), &elsewhere);
    EXPECT_EQ(child->get_next_sibling(), &elsewhere);
}

TEST(SortChildren, rebuilds_links_that_were_wrong) {
    OpenElement parent("p", nullptr, false);
    for (const char* name : {"c", "a", "b"}) {
        auto* child = new OpenElement(name, &parent, false);
        parent.add_new_node(child);
    }
    for (Node* child : parent.children) {
        auto* open = dynamic_cast<OpenElement*>(child);
        open->previous_sibling = open;
        open->next_sibling = open;
    }
    EXPECT_FALSE(links_agree(&parent));
    parent.sort_children();
    EXPECT_EQ(to_line(&parent), "p{a b c}");
    EXPECT_TRUE(links_agree(&parent));
}

TEST(SortChildren, works_on_a_node_that_is_no_element) {
    OtherNode parent(std::string("p"));
    auto* b = new OtherNode(std::string("b"));
    auto* a = new OtherNode(std::string("a"));
    parent.add_new_node(b);
    parent.add_new_node(a);
    parent.sort_children_recursively();
    EXPECT_EQ(parent.get_children(), (NodeList{a, b}));
    EXPECT_EQ(a->get_previous_sibling(), nullptr);
    EXPECT_EQ(a->get_next_sibling(), b);
    EXPECT_EQ(b->get_previous_sibling(), a);
    EXPECT_EQ(b->get_next_sibling(), nullptr);
}

TEST(SortChildren, fails_on_an_item_beyond_the_range_and_loses_no_child) {
    for (int count = 2; count <= 20; ++count) {
        SCOPED_TRACE(count);
        Document document(false);
        Element* root = document.create_root_node("r");
        for (int i = count; i > 0; --i)
            root->add_child("x", i == count / 2 ? std::string(beyond_int) : std::to_string(i));
        const NodeList before = root->get_children();
        EXPECT_THROW_MESSAGE(root->sort_children(), std::out_of_range, "stoi");
        const NodeList after = root->get_children();
        EXPECT_EQ(std::set<Node*>(before.begin(), before.end()), std::set<Node*>(after.begin(), after.end()));
        EXPECT_EQ(after.size(), before.size());
    }
}

TEST(SortChildren, fails_only_if_namesakes_with_items_are_compared) {
    Document document(false);
    Element* root = build(document, "r{y(item=99999999999) x(item=99999999999) x y \"t\"}");
    EXPECT_NO_THROW(root->sort_children());
    EXPECT_TRUE(links_agree(root));
}

TEST(SortChildrenRecursively, sorts_every_level) {
    Document document(false);
    Element* root = build(document, "r{b{\"t\" d c{f e}} a{d{h g} c} \"u\"}");
    root->sort_children_recursively();
    EXPECT_EQ(to_line(root), "r{\"u\" a{c d{g h}} b{\"t\" c{e f} d}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortChildrenRecursively, sorts_each_node_once) {
    Document document(false);
    Element* root = build(document, "r{x(n=p){y(n=s) y(n=t)} x(n=q) x(n=r)}");
    root->sort_children_recursively();
    EXPECT_EQ(to_line(root), "r{x(n=r) x(n=q) x(n=p){y(n=t) y(n=s)}}");
}

TEST(SortChildrenRecursively, begins_at_the_node_it_is_called_on) {
    Document document(false);
    Element* root = build(document, "r{b{d c} a{d c}}");
    root->get_child("b")->sort_children_recursively();
    EXPECT_EQ(to_line(root), "r{b{c d} a{d c}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortChildrenRecursively, goes_through_an_only_child) {
    Document document(false);
    Element* root = build(document, "r{a{b{d c}}}");
    root->sort_children_recursively();
    EXPECT_EQ(to_line(root), "r{a{b{c d}}}");
}

TEST(SortChildrenRecursively, leaves_what_comes_before_a_failure_sorted) {
    Document document(false);
    Element* root = build(document, "r{d{z y} c{x(item=1) x(item=99999999999)} b{z y}}");
    EXPECT_THROW_MESSAGE(root->sort_children_recursively(), std::out_of_range, "stoi");
    ASSERT_EQ(root->get_children().size(), 3U);
    EXPECT_EQ(to_line(root->get_child("b")), "b{y z}");
    EXPECT_EQ(to_line(root->get_child("d")), "d{z y}");
    EXPECT_EQ(root->get_child("c")->get_children().size(), 2U);
    EXPECT_EQ(root->get_children().front(), root->get_child("b"));
}

TEST(SortChildrenRecursively, needs_no_deep_stack) {
    Document document(false);
    Element* lowest = document.create_root_node("r");
    for (int level = 0; level < 1000000; ++level) {
        Element* next = lowest->add_child("b");
        if (level % 10 == 0)
            lowest->add_child("a");
        lowest = next;
    }
    lowest->add_child("d");
    lowest->add_child("c");
    on_small_stack([&document] { document.get_root_node()->sort_children_recursively(); });
    EXPECT_EQ(to_line(lowest), "b{c d}");
    const Node* root = document.get_root_node();
    EXPECT_EQ(root->get_children().front()->get_name(), "a");
    EXPECT_TRUE(links_agree(root));
}

}  // namespace
