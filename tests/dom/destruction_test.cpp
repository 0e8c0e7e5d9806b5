// SPDX-License-Identifier: MIT

// Covers what the destructor of a node destroys, in which order, and that it needs no deep stack.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

#include "dom/test_nodes.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml_test::add_logged;
using quxml_test::add_logged_text;
using quxml_test::BareNode;
using quxml_test::build_chain;
using quxml_test::link;
using quxml_test::Log;
using quxml_test::Logged;
using quxml_test::LoggedElement;
using quxml_test::on_small_stack;
using quxml_test::OpenElement;

const std::size_t deep = 1000000;

// ---- Destruction ----

TEST(NodeDestructor, destroys_parents_before_their_children_first_to_last) {
    Log log;
    auto root = std::make_unique<LoggedElement>(log, "r", nullptr, false);
    LoggedElement* a = add_logged(log, *root, "a");
    LoggedElement* b = add_logged(log, *root, "b");
    add_logged(log, *root, "c");
    LoggedElement* a1 = add_logged(log, *a, "a1");
    add_logged(log, *a, "a2");
    add_logged_text(log, *a1, "a1 text");
    add_logged(log, *b, "b1");
    root.reset();
    EXPECT_EQ(log, (Log{"r 3", "a 2", "a1 1", "a1 text 0", "a2 0", "b 1", "b1 0", "c 0"}));
}

TEST(NodeDestructor, keeps_that_order_across_plain_nodes) {
    Log log;
    auto root = std::make_unique<Element>("r", nullptr, false);
    Element* plain = root->add_child("plain");
    add_logged(log, *plain, "a");
    plain->add_child_text("text");
    LoggedElement* b = add_logged(log, *plain->add_child("lower"), "b");
    add_logged(log, *b->add_child("lowest"), "c");
    add_logged(log, *root, "d");
    root.reset();
    EXPECT_EQ(log, (Log{"a 0", "b 1", "c 0", "d 0"}));
}

TEST(NodeDestructor, of_a_class_that_is_no_element_destroys_its_children_too) {
    Log log;
    auto root = std::make_unique<BareNode>(std::string("r"));
    auto* lower = new Logged<BareNode>(log, std::string("lower"));
    root->add_new_node(lower);
    lower->add_new_node(new LoggedElement(log, "lowest", nullptr, false));
    root.reset();
    EXPECT_EQ(log, (Log{"lower 1", "lowest 0"}));
}

TEST(NodeDestructor, passes_over_null_entries) {
    Log log;
    auto root = std::make_unique<OpenElement>("r");
    add_logged(log, *root, "a");
    add_logged(log, *root, "b");
    for (const int position : {2, 1, 0})
        root->children.insert(root->at(position), nullptr);
    root.reset();
    EXPECT_EQ(log, (Log{"a 0", "b 0"}));
}

TEST(NodeDestructor, passes_over_null_entries_below) {
    Log log;
    auto root = std::make_unique<OpenElement>("r");
    OpenElement* lower = link(*root, std::make_unique<OpenElement>("lower"));
    lower->add_new_node(new LoggedElement(log, "lowest", nullptr, false));
    lower->children.push_front(nullptr);
    lower->children.push_back(nullptr);
    root.reset();
    EXPECT_EQ(log, (Log{"lowest 0"}));
}

TEST(NodeDestructor, does_not_unlink_the_node_which_is_wanted) {
    Log log;
    OpenElement parent("p");
    parent.add_child("a");
    LoggedElement* child = add_logged(log, parent, "child");
    delete child;
    EXPECT_EQ(log, (Log{"child 0 below p"}));
    EXPECT_EQ(parent.children.size(), 2U);
    EXPECT_NE(parent.children.front()->get_next_sibling(), nullptr);
    parent.children.pop_back();
}

/// Removes its children itself, as a class may that counts them.
class TidyElement : public Element {
public:
    using Element::Element;

    TidyElement(const TidyElement&) = delete;
    TidyElement& operator=(const TidyElement&) = delete;

    ~TidyElement() override {
        for (Node* child : get_children())
            remove_child(child);
    }
};

TEST(NodeDestructor, lets_a_derived_class_remove_its_children_first) {
    Log log;
    auto root = std::make_unique<Element>("r", nullptr, false);
    TidyElement* tidy = link(*root, std::make_unique<TidyElement>("tidy", root.get(), false));
    add_logged(log, *add_logged(log, *tidy, "a"), "a1");
    add_logged(log, *tidy, "b");
    add_logged(log, *root, "c");
    root.reset();
    EXPECT_EQ(log, (Log{"a 1 below tidy", "a1 0", "b 0 below tidy", "c 0"}));
}

TEST(NodeDestructor, of_a_deep_tree_needs_no_deep_stack) {
    on_small_stack([] {
        Document document(false);
        build_chain(document, "n", deep);
    });
}

/// Counts destructions.
class CountedElement : public Element {
public:
    CountedElement(Element* owner, std::size_t& count_of_test)
        : Element("n", owner, false), count(count_of_test) {}

    CountedElement(const CountedElement&) = delete;
    CountedElement& operator=(const CountedElement&) = delete;

    ~CountedElement() override { ++count; }

private:
    std::size_t& count;
};

TEST(NodeDestructor, of_a_deep_tree_of_derived_nodes_needs_no_deep_stack) {
    std::size_t count = 0;
    on_small_stack([&count] {
        CountedElement root(nullptr, count);
        Element* lowest = &root;
        for (std::size_t level = 1; level < deep; ++level) {
            lowest->add_child_text("t");
            lowest = link(*lowest, std::make_unique<CountedElement>(lowest, count));
        }
    });
    EXPECT_EQ(count, deep);
}

TEST(NodeDestructor, of_a_wide_tree_visits_every_child) {
    std::size_t count = 0;
    {
        CountedElement root(nullptr, count);
        for (int i = 0; i < 1000; ++i) {
            Element* child = link(root, std::make_unique<CountedElement>(&root, count));
            for (int k = 0; k < 10; ++k)
                link(*child, std::make_unique<CountedElement>(child, count));
        }
    }
    EXPECT_EQ(count, 1U + 1000U + 10000U);
}

}  // namespace
