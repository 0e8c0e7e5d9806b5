// SPDX-License-Identifier: MIT

// Covers `SortedChildren` against `Node::add_child`: two elements get the same children, one by each, and must
// be the same after every addition that is looked at, refusals included.

#include "quxml/extras/SortedChildren.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "quxml/Document.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::extras::SortedChildren;

/// The children that an element has before anything is added to it.
using Prepare = std::function<void(Element&)>;

struct Addition {
    std::string name;
    const char* item = nullptr;  // null: added without one
};

/// Adds by `add`, and says whether that was refused.
template <class Add>
bool is_refused(Add add) {
    try {
        add();
        return false;
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "stoi");
        return true;
    }
}

/// As `Node::add_child`, which does not free a child that is refused.
void add_exactly(Element& root, const Addition& addition) {
    auto child = std::make_unique<Element>(addition.name, &root, true);
    if (addition.item != nullptr)
        child->set_attribute("item", addition.item);
    root.add_new_node(child.get());
    static_cast<void>(child.release());
}

/// Names and items of the children, in order.
std::string describe(const Element& element) {
    std::string text;
    for (const Node* child : element.get_children()) {
        const auto* child_element = dynamic_cast<const Element*>(child);
        text += child->get_name() + '(';
        text += child_element == nullptr ? "no element" : child_element->get_attribute_value("item");
        text += ") ";
    }
    return text;
}

/// Two elements that are filled in the two ways.
class Twins {
public:
    explicit Twins(const Prepare& prepare = nullptr) : exact(true), quick(true) {
        for (Document* document : {&exact, &quick}) {
            document->create_root_node("list");
            if (prepare)
                prepare(*document->get_root_node());
        }
        adder = std::make_unique<SortedChildren>(*quick.get_root_node());
    }

    /// Returns whether the addition was accepted by both; a failure if they differ.
    bool add(const Addition& addition) {
        Element& root = *exact.get_root_node();
        const bool exact_refused = is_refused([&] { add_exactly(root, addition); });
        const bool quick_refused = is_refused([&] {
            addition.item == nullptr ? adder->add(addition.name) : adder->add(addition.name, addition.item);
        });
        EXPECT_EQ(exact_refused, quick_refused)
            << addition.name << ' ' << (addition.item == nullptr ? "without item" : addition.item);
        return !exact_refused;
    }

    ::testing::AssertionResult are_same() const {
        const std::string one = describe(*exact.get_root_node());
        const std::string other = describe(*quick.get_root_node());
        if (one != other)
            return ::testing::AssertionFailure() << "\n  " << one << "\n  " << other;
        return links_agree(quick.get_root_node());
    }

    std::size_t size() const { return exact.get_root_node()->get_children().size(); }

private:
    Document exact;
    Document quick;
    std::unique_ptr<SortedChildren> adder;
};

/// Adds at random, and compares after every `step` additions and at the end.
void add_at_random(Twins& twins, unsigned seed, std::size_t count, std::size_t step,
                   const std::vector<std::string>& names, const std::vector<const char*>& items) {
    std::mt19937 random(seed);
    for (std::size_t i = 1; i <= count; ++i) {
        twins.add({names[random() % names.size()], items[random() % items.size()]});
        if (i % step == 0 || i == count) {
            ASSERT_TRUE(twins.are_same()) << "seed " << seed << ", after " << i << " additions";
        }
    }
}

const std::vector<const char*> all_items = {
    nullptr, "",   "1",    "2",   "3", "10", "07", " 7",  "+5", "-4",         "5x",
    "12abc", "x",  "a",    "B",   "-", "+",  " ",  "!",   "0",  "2147483647", "-2147483648",
    "9",     "99", "0x1F", "1e3", "é", "~",  ".5", "\t3", "zz", "-0"};

const std::vector<const char*> beyond_range = {"2147483648", "-2147483649", "99999999999",
                                               "-99999999999999999999", "99999999999x"};

std::vector<const char*> with_items_beyond_range() {
    std::vector<const char*> items = all_items;
    items.insert(items.end(), beyond_range.begin(), beyond_range.end());
    return items;
}

TEST(SortedChildren, adds_what_add_child_adds) {
    Document document(true);
    Element* root = document.create_root_node("list");
    SortedChildren adder(*root);
    adder.add("x", 3)->add_child_text("three");
    adder.add("x", 1);
    EXPECT_EQ(adder.add("x")->get_parent(), root);
    adder.add("x", "2");
    adder.add("a");
    adder.add("x", 1)->set_attribute("n", "later");
    EXPECT_EQ(to_line(root), "list{a x(item=1,n=later) x(item=1) x(item=2) x(item=3){\"three\"} x}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortedChildren, gives_children_the_switch_of_their_parent) {
    Document document(true);
    SortedChildren adder(*document.create_root_node("list"));
    Element* child = adder.add("x");
    child->add_child("b");
    child->add_child("a");
    EXPECT_EQ(to_line(child), "x{a b}");
}

TEST(SortedChildren, appends_to_an_element_that_is_not_kept_sorted) {
    Document document(false);
    Element* root = document.create_root_node("list");
    SortedChildren adder(*root);
    adder.add("x", 3);
    adder.add("a");
    adder.add("x", "99999999999");
    root->add_child("b");
    adder.add("x", 1);
    EXPECT_EQ(to_line(root), "list{x(item=3) a x(item=99999999999) b x(item=1)}");
}

TEST(SortedChildren, refuses_an_item_beyond_the_range_of_int_and_leaves_the_tree) {
    Document document(true);
    Element* root = document.create_root_node("list");
    SortedChildren adder(*root);
    adder.add("x", "99999999999");  // alone, it is not read
    EXPECT_THROW_MESSAGE(adder.add("x", "7"), std::out_of_range, "stoi");
    EXPECT_THROW_MESSAGE(adder.add("x", "a"), std::out_of_range, "stoi");
    adder.add("x");
    adder.add("y", 1);
    EXPECT_THROW_MESSAGE(adder.add("y", "-99999999999"), std::out_of_range, "stoi");
    adder.add("y", 0);
    EXPECT_EQ(to_line(root), "list{x(item=99999999999) x y(item=0) y(item=1)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SortedChildren, compares_an_item_that_is_not_a_number_before_it_reads_the_other_which_is_wanted) {
    Document document(true);
    Element* root = document.create_root_node("list");
    SortedChildren adder(*root);
    adder.add("x", "a");
    adder.add("x", "99999999999");  // goes before "a" as a text
    EXPECT_EQ(to_line(root), "list{x(item=99999999999) x(item=a)}");
}

TEST(SortedChildren, is_exact_for_every_order_of_up_to_four_items_of_all_kinds) {
    const std::vector<const char*> items = {nullptr, "2", "10", "a", "!", "99999999999", ""};
    const std::size_t n = items.size();
    for (std::size_t i = 0; i < n * n * n * n; ++i) {
        Twins twins;
        for (std::size_t rest = i, k = 0; k < 4; rest /= n, ++k)
            twins.add({"x", items[rest % n]});
        ASSERT_TRUE(twins.are_same()) << i;
    }
}

class SortedChildrenAtRandom : public ::testing::TestWithParam<unsigned> {};

TEST_P(SortedChildrenAtRandom, are_exact_for_few_names_and_items_of_all_kinds) {
    Twins twins;
    add_at_random(twins, GetParam(), 300, 1, {"a", "b", "", "B"}, all_items);
}

TEST_P(SortedChildrenAtRandom, are_exact_with_items_beyond_the_range) {
    Twins twins;
    add_at_random(twins, GetParam(), 200, 1, {"a", "b"}, with_items_beyond_range());
}

TEST_P(SortedChildrenAtRandom, are_exact_whatever_is_there_before) {
    std::mt19937 random(GetParam());
    const std::vector<std::string> names = {"a", "b", "c", ""};
    const std::vector<const char*> items = with_items_beyond_range();
    // Laid down once, so that both get the same: children in no order at all, texts and renamed ones among them.
    std::vector<Addition> before(random() % 30);
    for (Addition& addition : before)
        addition = {names[random() % names.size()], items[random() % items.size()]};
    const auto texts = static_cast<unsigned>(random() % 3);
    Twins twins([&](Element& root) {
        for (const Addition& addition : before) {
            Element* child = root.add_child("z" + std::to_string(root.get_children().size()));
            child->set_name(addition.name);
            if (addition.item != nullptr)
                child->set_attribute("item", addition.item);
        }
        for (unsigned i = 0; i < texts; ++i) {
            root.add_child_text("text")->set_name(names[(GetParam() + i) % names.size()]);
            root.set_child_first(root.get_children().back());
        }
    });
    ASSERT_TRUE(twins.are_same());
    add_at_random(twins, GetParam(), 100, 1, names, items);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SortedChildrenAtRandom, ::testing::Range(0U, 20U));

TEST(SortedChildren, are_exact_for_many_names_in_any_order) {
    std::vector<std::string> names;
    for (int i = 0; i < 500; ++i)
        names.push_back("n" + std::to_string(i * 7919 % 1000));
    Twins twins;
    add_at_random(twins, 1, 2000, 100, names, {nullptr, "1", "x"});
}

// Many small parents, so that the walks of `add_child` stay short: a million and a half additions in all.
TEST(SortedChildren, are_exact_for_millions_of_additions) {
    const std::vector<const char*> items = with_items_beyond_range();
    std::mt19937 random(20);
    std::size_t additions = 0;
    for (unsigned round = 0; round < 30000; ++round) {
        Twins twins;
        const std::size_t kinds = 1 + random() % items.size();
        const std::size_t first = random() % items.size();
        for (unsigned i = 0; i < 50; ++i, ++additions)
            twins.add({random() % 4 == 0 ? "b" : "a", items[(first + random() % kinds) % items.size()]});
        ASSERT_TRUE(twins.are_same()) << "round " << round;
    }
    EXPECT_EQ(additions, 1500000U);
}

TEST(SortedChildrenDeathTest, notices_that_somebody_else_has_added_a_child) {
#ifdef NDEBUG
    GTEST_SKIP() << "only builds without NDEBUG check it";
#else
    Document document(true);
    Element* root = document.create_root_node("list");
    SortedChildren adder(*root);
    root->add_child("x");
    EXPECT_DEATH_IF_SUPPORTED(adder.add("x"), "somebody else");
#endif
}

}  // namespace

}  // namespace quxml_test
