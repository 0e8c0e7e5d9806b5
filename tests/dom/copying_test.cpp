// SPDX-License-Identifier: MIT

// Covers copies of nodes: by import, by each class's own operation and as a new root, and of large and deep
// sources.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "dom/test_nodes.h"
#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::append_element;
using quxml_test::append_text;
using quxml_test::build;
using quxml_test::build_chain;
using quxml_test::links_agree;
using quxml_test::on_small_stack;
using quxml_test::to_line;

// ---- One element ----

TEST(ElementCopy, shallow_has_the_name_only) {
    Document document(false);
    Element* root = build(document, "r{p}");
    Document other(false);
    const Element* source = build(other, "s(id=1,item=2){a \"t\"}");
    auto* parent = dynamic_cast<Element*>(root->get_child("p"));
    const Node* copy = source->get_deep_copy_of_node(false, parent);
    EXPECT_EQ(to_line(root), "r{p{s}}");
    EXPECT_EQ(copy, parent->get_child("s"));
    EXPECT_EQ(copy->get_parent(), parent);
    EXPECT_EQ(to_line(source), "s(id=1,item=2){a \"t\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(ElementCopy, deep_has_everything_in_order) {
    const char* const line = "s(id=1,x=2,item=3){b(item=2){c{\"lowest\"}} \"text\" b(item=1) c}";
    Document document(false);
    Element* root = build(document, "r{a}");
    Document other(false);
    const Element* source = build(other, line);
    const Node* copy = root->import_node(source, true);
    EXPECT_EQ(to_line(copy), line);
    EXPECT_EQ(to_line(source), line);
    EXPECT_EQ(copy->get_parent(), root);
    EXPECT_EQ(copy->get_previous_sibling(), root->get_child("a"));
    EXPECT_TRUE(links_agree(root));
}

TEST(ElementCopy, of_an_only_name_deep_or_not) {
    for (const bool deep : {false, true}) {
        Document document(false);
        Element* root = build(document, "r");
        const Element source("", nullptr, false);
        EXPECT_EQ(to_line(root->import_node(&source, deep)), "''");
        EXPECT_EQ(to_line(root), "r{''}");
    }
}

TEST(ElementCopy, into_its_own_parent_stands_beside_the_source) {
    Document document(false);
    Element* root = build(document, "r{a(n=1){b} c}");
    root->import_node(root->get_child("a"), true);
    EXPECT_EQ(to_line(root), "r{a(n=1){b} c a(n=1){b}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(ElementCopy, lives_on_without_the_source) {
    Document document(false);
    Element* root = build(document, "r");
    {
        Document other(false);
        root->import_node(build(other, "s(id=1){\"t\"}"), true);
    }
    EXPECT_EQ(to_line(root), "r{s(id=1){\"t\"}}");
}

TEST(ElementCopy, keeps_its_own_keep_sorted_not_the_parents_which_is_wanted) {
    for (const bool source_is_sorted : {false, true}) {
        for (const bool deep : {false, true}) {
            Document document(!source_is_sorted);
            Element* root = document.create_root_node("r");
            Document other(source_is_sorted);
            const Element* source = build(other, "s{t}");
            auto* copy = dynamic_cast<Element*>(root->import_node(source, deep));
            auto* lower = deep ? dynamic_cast<Element*>(copy->get_child("t")) : copy;
            lower->add_child("z");
            lower->add_child("y");
            EXPECT_EQ(lower->get_children().front()->get_name(), source_is_sorted ? "y" : "z");
        }
    }
}

TEST(ElementCopy, goes_after_its_namesakes_whatever_its_item_which_is_wanted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 5);
    root->add_child("y");
    Document other(false);
    const Element* source = build(other, "s{x(item=9) x(item=1) a x(item=99999999999)}");
    for (Node* child : source->get_children())
        root->import_node(child, true);
    EXPECT_EQ(to_line(root), "r{a x(item=5) x(item=9) x(item=1) x(item=99999999999) y}");
    EXPECT_TRUE(links_agree(root));
}

TEST(ElementCopy, of_sorted_children_keeps_their_order) {
    Document other(true);
    Element* source = other.create_root_node("s");
    for (const int item : {3, 1, 2})
        source->add_child("x", item)->add_child("b", item);
    source->add_child("x");
    source->add_child("a");
    Document document(false);
    Element* root = document.create_root_node("r");
    EXPECT_EQ(to_line(root->import_node(source, true)), to_line(source));
    EXPECT_TRUE(links_agree(root));
}

TEST(ElementCopy, sorts_by_name_what_has_gone_out_of_order_in_a_sorted_source) {
    Document other(true);
    Element* source = build(other, "s{a b c d}");
    source->get_child("b")->set_name("z");
    source->set_child_first(source->get_child("d"));
    ASSERT_EQ(to_line(source), "s{d a z c}");
    Document document(false);
    EXPECT_EQ(to_line(document.create_root_node("r")->import_node(source, true)), "s{a c d z}");
    EXPECT_TRUE(links_agree(document.get_root_node()));
}

TEST(ElementCopy, reverses_the_texts_of_a_sorted_source_which_is_wanted) {
    Document other(true);
    Element* source = build(other, "s{\"1\" \"2\" \"3\" a}");
    ASSERT_EQ(to_line(source), "s{\"3\" \"2\" \"1\" a}");
    Document document(false);
    EXPECT_EQ(to_line(document.create_root_node("r")->import_node(source, true)), "s{\"1\" \"2\" \"3\" a}");
    EXPECT_TRUE(links_agree(document.get_root_node()));
}

// ---- Text and attributes ----

TEST(TextCopy, has_the_content_and_no_name_which_is_wanted) {
    for (const bool deep : {false, true}) {
        Document document(false);
        Element* root = build(document, "r{a}");
        TextNode source(nullptr, "n");
        source.set_content("t <&");
        const Node* copy = root->import_node(&source, deep);
        EXPECT_EQ(copy, root->get_child_text());
        EXPECT_EQ(copy->get_name(), "");
        EXPECT_EQ(copy->get_parent(), root);
        EXPECT_EQ(to_line(root), "r{a \"t <&\"}");
        EXPECT_EQ(source.get_name(), "n");
        EXPECT_EQ(source.get_content(), "t <&");
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(TextCopy, goes_to_the_front_of_a_sorted_parent) {
    Document document(true);
    Element* root = build(document, "r{a \"1\"}");
    TextNode source(nullptr, "z");
    source.set_content("2");
    EXPECT_EQ(to_line(source.get_deep_copy_of_node(true, root)), "\"2\"");
    EXPECT_EQ(to_line(root), "r{\"2\" \"1\" a}");
    EXPECT_TRUE(links_agree(root));
}

TEST(TextCopy, below_a_copied_element_loses_its_name_too) {
    Document document(false);
    Element* root = build(document, "r");
    Element source("s", nullptr, false);
    source.add_new_node(new TextNode(&source, "n"));
    const Node* copy = root->import_node(&source, true);
    EXPECT_EQ(to_line(copy), "s{\"\"}");
    EXPECT_EQ(copy->get_children().front()->get_name(), "");
}

TEST(AttributeCopy, is_appended_to_the_parent) {
    for (const bool deep : {false, true}) {
        Document document(false);
        Element* root = build(document, "r(a=1)");
        const Attribute source("b", "2", nullptr);
        const Node* copy = root->import_node(&source, deep);
        EXPECT_EQ(copy, root->get_attribute("b"));
        EXPECT_EQ(copy->get_parent(), root);
        EXPECT_EQ(to_line(root), "r(a=1,b=2)");
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(AttributeCopy, overwrites_a_namesake_in_place_and_returns_it) {
    for (const bool deep : {false, true}) {
        Document document(false);
        Element* root = build(document, "r(a=1,b=2,c=3)");
        const Attribute* present = root->get_attribute("b");
        const Attribute source("b", "new", nullptr);
        EXPECT_EQ(source.get_deep_copy_of_node(deep, root), present);
        EXPECT_EQ(to_line(root), "r(a=1,b=new,c=3)");
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(AttributeCopy, onto_itself_changes_nothing) {
    Document document(false);
    Element* root = build(document, "r(a=1)");
    Attribute* attribute = root->get_attribute("a");
    EXPECT_EQ(root->import_node(attribute, true), attribute);
    EXPECT_EQ(to_line(root), "r(a=1)");
}

// ---- A copy as the root of a document ----

TEST(RootByImport, shallow_has_the_name_only) {
    Document other(false);
    const Element* source = build(other, "s(id=1){a \"t\"}");
    Document document(false);
    Element* root = document.create_root_node_by_import(source, false);
    EXPECT_EQ(document.get_root_node(), root);
    EXPECT_EQ(to_line(root), "s");
    EXPECT_EQ(root->get_parent(), nullptr);
}

TEST(RootByImport, deep_has_everything_in_order) {
    Document other(false);
    Element* source = build(other, "s(id=1,x=2){b \"text\" c{d(e=f)}}");
    source->get_child("")->set_name("n");
    Document document(false);
    Element* root = document.create_root_node_by_import(source, true);
    EXPECT_EQ(document.get_root_node(), root);
    EXPECT_EQ(to_line(root), to_line(source));
    EXPECT_EQ(root->get_child_text()->get_name(), "");
    EXPECT_EQ(root->get_parent(), nullptr);
    EXPECT_TRUE(links_agree(root));
}

TEST(RootByImport, destroys_the_former_root) {
    Document other(false);
    const Element* source = build(other, "s{a}");
    for (const bool deep : {false, true}) {
        Document document(false);
        build(document, "former{x{y}}");
        document.create_root_node_by_import(source, deep);
        EXPECT_EQ(to_line(document.get_root_node()), deep ? "s{a}" : "s");
    }
}

TEST(RootByImport, copies_an_element_that_is_no_root) {
    Document other(false);
    Element* source = build(other, "r{s(a=1){b} t}");
    Document document(false);
    document.create_root_node_by_import(dynamic_cast<Element*>(source->get_child("s")), true);
    EXPECT_EQ(to_line(document.get_root_node()), "s(a=1){b}");
    EXPECT_EQ(document.get_root_node()->get_next_sibling(), nullptr);
    EXPECT_EQ(document.get_root_node()->get_parent(), nullptr);
}

TEST(RootByImport, takes_the_documents_keep_sorted_and_deeper_levels_keep_theirs_which_is_wanted) {
    Document unsorted_source(false);
    Document sorted_source(true);
    Document sorted(true);
    Document unsorted(false);
    const char* const line = "s{c{f e} b{h g}}";
    sorted.create_root_node_by_import(build(unsorted_source, line), true);
    EXPECT_EQ(to_line(sorted.get_root_node()), "s{b{h g} c{f e}}");
    sorted.get_root_node()->add_child("a")->add_child("z");
    sorted.get_root_node()->get_child("a")->add_child("y");
    EXPECT_EQ(to_line(sorted.get_root_node()), "s{a{y z} b{h g} c{f e}}");

    Element* source = build(sorted_source, line);
    source->get_child("b")->set_name("d");
    unsorted.create_root_node_by_import(source, true);
    Element* root = unsorted.get_root_node();
    EXPECT_EQ(to_line(root), "s{d{g h} c{e f}}");
    root->add_child("a");
    root->get_child("d")->add_child("a");
    EXPECT_EQ(to_line(root), "s{d{a g h} c{e f} a}");
    EXPECT_TRUE(links_agree(root));
    EXPECT_TRUE(links_agree(sorted.get_root_node()));
}

TEST(RootByImport, shallow_takes_the_documents_keep_sorted_too) {
    for (const bool sorted : {false, true}) {
        Document other(!sorted);
        Document document(sorted);
        Element* root = document.create_root_node_by_import(other.create_root_node("s"), false);
        root->add_child("b");
        root->add_child("a");
        EXPECT_EQ(to_line(root), sorted ? "s{a b}" : "s{b a}");
    }
}

// ---- Large sources ----

const std::size_t many = 50000;

/// A copy is right if it has these children, in this order, properly linked.
::testing::AssertionResult has_children_like(const Node* copy, const NodeList& expected) {
    const NodeList copies = copy->get_children();
    const auto alike = [](const Node* a, const Node* b) { return to_line(a) == to_line(b); };
    if (!std::equal(copies.begin(), copies.end(), expected.begin(), expected.end(), alike))
        return ::testing::AssertionFailure() << "other children, or in another order";
    return links_agree(copy);
}

/// Copies a sorted element with a child for each of `child_names`, in that order. A walk over the siblings
/// for each child would take minutes.
void copy_many(const std::vector<std::string>& child_names) {
    Element source("s", nullptr, true);
    for (std::size_t i = 0; i < child_names.size(); ++i)
        append_element(source, child_names[i], false)->set_attribute("item", std::to_string(many - i));
    NodeList expected = source.get_children();
    expected.sort([](const Node* a, const Node* b) { return a->get_name() < b->get_name(); });

    Element parent("p", nullptr, true);
    EXPECT_TRUE(has_children_like(parent.import_node(&source, true), expected));
    Document document(true);
    EXPECT_TRUE(has_children_like(document.create_root_node_by_import(&source, true), expected));
}

TEST(ManyCopies, of_namesakes_in_a_sorted_element_take_no_quadratic_time) {
    copy_many(std::vector<std::string>(many, "x"));
}

TEST(ManyCopies, of_rising_names_in_a_sorted_element_take_no_quadratic_time) {
    std::vector<std::string> rising;
    for (std::size_t i = 0; i < many; ++i)
        rising.push_back("x" + std::to_string(many + i));
    copy_many(rising);
}

TEST(ManyCopies, of_falling_names_in_a_sorted_element_take_no_quadratic_time) {
    std::vector<std::string> falling;
    for (std::size_t i = 0; i < many; ++i)
        falling.push_back("x" + std::to_string(2 * many - i));
    copy_many(falling);
}

TEST(ManyCopies, of_mixed_names_in_a_sorted_element_take_no_quadratic_time) {
    std::vector<std::string> mixed;
    for (std::size_t i = 0; i < many; ++i)
        mixed.push_back("x" + std::to_string(i * 7919 % many / 2));
    copy_many(mixed);
}

TEST(ManyCopies, of_elements_without_a_name_in_a_sorted_element_take_no_quadratic_time) {
    std::vector<std::string> mixed(many / 1000, "");
    for (std::size_t i = mixed.size(); i < many; ++i)
        mixed.push_back("x" + std::to_string(2 * many - i));
    copy_many(mixed);
}

TEST(Copies, keep_the_order_of_many_attributes) {
    Element wide("w", nullptr, false);
    for (std::size_t i = 0; i < 2000; ++i)
        wide.set_attribute("a" + std::to_string(i), "1");
    Document document(false);
    EXPECT_EQ(to_line(document.create_root_node_by_import(&wide, true)), to_line(&wide));
    EXPECT_TRUE(links_agree(document.get_root_node()));
}

TEST(Copies, give_attributes_one_by_one_however_many_there_are) {
    for (std::size_t size = 2; size < 140; ++size) {
        SCOPED_TRACE(size);
        Element wide("w", nullptr, false);
        for (std::size_t i = 0; i < size; ++i)
            wide.set_attribute("a" + std::to_string(i), std::to_string(i));
        const std::string last = std::to_string(size - 1);
        wide.get_attribute("a" + last)->set_name("a" + std::to_string(size / 3));
        Element expected("w", nullptr, false);
        for (const Attribute* attribute : wide.get_attributes())
            expected.set_attribute(attribute->get_name(), attribute->get_value());
        EXPECT_EQ(expected.get_attributes().size(), size - 1);
        EXPECT_EQ(expected.get_attribute_value("a" + std::to_string(size / 3)), last);
        Document document(false);
        EXPECT_EQ(to_line(document.create_root_node_by_import(&wide, true)), to_line(&expected));
    }
}

TEST(ManyCopies, of_texts_in_a_sorted_element_take_no_quadratic_time) {
    Element source("s", nullptr, true);
    for (std::size_t i = 0; i < many; ++i) {
        append_text(source, std::to_string(i));
        append_element(source, "x", false);
    }
    Element parent("p", nullptr, true);
    const NodeList copies = parent.import_node(&source, true)->get_children();
    EXPECT_EQ(to_line(copies.front()), "\"" + std::to_string(many - 1) + "\"");
    EXPECT_EQ(to_line(*std::next(copies.begin(), many - 1)), "\"0\"");
    EXPECT_EQ(to_line(copies.back()), "x");
    EXPECT_TRUE(links_agree(&parent));
}

// ---- Deep sources ----

const std::size_t deep_levels = 1000000;

/// The number of levels of a chain.
std::size_t count_levels(const Node* top) {
    std::size_t levels = 1;
    for (; !top->get_children().empty(); ++levels)
        top = top->get_children().front();
    return levels;
}

TEST(DeepCopies, by_import_need_no_deep_stack) {
    Document source(true);
    build_chain(source, "n", deep_levels);
    Element parent("p", nullptr, true);
    const Node* copy = nullptr;
    on_small_stack([&] { copy = parent.import_node(source.get_root_node(), true); });
    EXPECT_EQ(count_levels(copy), deep_levels);
    EXPECT_TRUE(links_agree(&parent));
}

TEST(DeepCopies, as_a_root_need_no_deep_stack) {
    Document source(false);
    build_chain(source, "n", deep_levels);
    Document document(false);
    on_small_stack([&] { document.create_root_node_by_import(source.get_root_node(), true); });
    EXPECT_EQ(count_levels(document.get_root_node()), deep_levels);
    EXPECT_TRUE(links_agree(document.get_root_node()));
}

}  // namespace
