// SPDX-License-Identifier: MIT

// Covers the canonical order of children against a slow, obvious model, and sorting against the sort of
// libstdc++'s lists.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml_test::links_agree;
using quxml_test::to_line;

// ---- A slow, obvious model ----

/// What the order looks at in a child, and a number to tell it by.
struct Record {
    std::string name;
    std::string item;
    bool is_element;
    int number;
};

/// The rule, word by word.
bool goes_before(const Record& a, const Record& b) {
    const int order = a.name.compare(b.name);
    if (order != 0)
        return order < 0;
    if (!a.is_element || !b.is_element)
        return false;
    if (a.item.empty() || b.item.empty())
        return true;
    try {
        const int first = std::stoi(a.item);
        const int second = std::stoi(b.item);
        return first < second;
    } catch (const std::invalid_argument&) {
        return a.item.compare(b.item) < 0;
    }
}

/// A parent with its children as records, beside the same parent in a tree.
class Twins {
public:
    explicit Twins(bool sorted)
        : keep_sorted(sorted), document(sorted), root(document.create_root_node("r")), added(0) {}

    void add(Record record) {
        record.number = added++;
        numbers[add_node(record)] = record.number;
        auto place = records.end();
        if (keep_sorted) {
            place = records.begin();
            while (place != records.end() && goes_before(*place, record))
                ++place;
        }
        records.insert(place, record);
    }

    void remove(std::size_t position) {
        root->remove_child(node_at(position));
        records.erase(record_at(position));
    }

    void remove_number(int number) {
        std::size_t position = 0;
        while (records[position].number != number)
            ++position;
        remove(position);
    }

    void set_first(std::size_t position) {
        root->set_child_first(node_at(position));
        std::rotate(records.begin(), record_at(position), record_at(position) + 1);
    }

    void set_item(std::size_t position, const std::string& item) {
        auto* element = dynamic_cast<Element*>(node_at(position));
        if (element == nullptr)
            return;
        element->set_attribute("item", item);
        records[position].item = item;
    }

    void sort() {
        root->sort_children();
        std::list<Record> sorted(records.begin(), records.end());
        sorted.sort(goes_before);
        records.assign(sorted.begin(), sorted.end());
    }

    /// Whether the tree's children are those of the model, in its order, and properly linked.
    ::testing::AssertionResult agree() const {
        std::string tree;
        for (Node* child : root->get_children())
            tree += std::to_string(numbers.at(child)) + " ";
        std::string model;
        for (const Record& record : records)
            model += std::to_string(record.number) + " ";
        if (tree != model)
            return ::testing::AssertionFailure()
                   << to_line(root) << " is " << tree << "and should be " << model;
        return links_agree(root);
    }

    std::size_t size() const { return records.size(); }
    int get_added() const { return added; }

private:
    Node* add_node(const Record& record) {
        if (!record.is_element)
            return root->add_child_text("t");
        return record.item.empty() ? root->add_child(record.name) : root->add_child(record.name, record.item);
    }

    Node* node_at(std::size_t position) const {
        const NodeList children = root->get_children();
        return *std::next(children.begin(), static_cast<NodeList::difference_type>(position));
    }

    std::vector<Record>::iterator record_at(std::size_t position) {
        return records.begin() + static_cast<std::vector<Record>::difference_type>(position);
    }

    bool keep_sorted;
    Document document;
    Element* root;
    int added;
    std::vector<Record> records;
    std::map<Node*, int> numbers;
};

const std::vector<Record> kinds = {
    {"", "", false, 0},  {"", "", true, 0},   {"", "1", true, 0},  {"a", "", true, 0},
    {"a", "1", true, 0}, {"a", "2", true, 0}, {"a", "x", true, 0}, {"b", "10", true, 0},
};

/// Adds every kind of child in turn, below it every kind again, up to `left` children in all.
void insert_every_sequence(Twins& twins, int left) {
    for (const Record& kind : kinds) {
        const int number = twins.get_added();
        twins.add(kind);
        ASSERT_TRUE(twins.agree());
        if (left > 1)
            insert_every_sequence(twins, left - 1);
        twins.remove_number(number);
        ASSERT_TRUE(twins.agree());
        if (::testing::Test::HasFatalFailure())
            return;
    }
}

TEST(SortedInsertion, agrees_with_the_model_for_every_sequence_of_five) {
    Twins twins(true);
    insert_every_sequence(twins, 5);
}

/// Sorts every sequence of exactly `count` kinds of children, twice.
void sort_every_sequence(std::size_t count) {
    std::size_t sequences = 1;
    for (std::size_t i = 0; i < count; ++i)
        sequences *= kinds.size();
    for (std::size_t sequence = 0; sequence < sequences; ++sequence) {
        Twins twins(false);
        std::size_t rest = sequence;
        for (std::size_t i = 0; i < count; ++i, rest /= kinds.size())
            twins.add(kinds[rest % kinds.size()]);
        twins.sort();
        ASSERT_TRUE(twins.agree()) << "sequence " << sequence;
        twins.sort();
        ASSERT_TRUE(twins.agree()) << "sequence " << sequence << ", sorted again";
    }
}

TEST(SortChildren, agrees_with_the_model_for_every_sequence_of_up_to_four) {
    for (std::size_t count = 0; count <= 4; ++count)
        sort_every_sequence(count);
}

/// A random choice that is the same on every machine.
class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}
    std::size_t below(std::size_t count) { return engine() % count; }
    const std::string& pick(const std::vector<std::string>& texts) { return texts[below(texts.size())]; }

private:
    std::mt19937 engine;
};

const std::vector<std::string> names = {"", "a", "a", "a", "aa", "b", "B", "\xc3\xa4", std::string("a\0", 2)};
const std::vector<std::string> items = {"",   "",   "",  "1",  "1",   "2",          "9",
                                        "10", " 7", "7", "-3", "+4",  "2147483647", "x",
                                        "b",  "-",  " ", "1x", "010", "12abc",      "\xc3\xa4"};

Record random_record(Dice& dice) {
    if (dice.below(5) == 0)
        return {"", "", false, 0};
    return {dice.pick(names), dice.pick(items), true, 0};
}

void change(Twins& twins, Dice& dice) {
    const std::size_t choice = dice.below(12);
    if (choice < 6 || twins.size() == 0) {
        twins.add(random_record(dice));
    } else if (choice < 8) {
        twins.remove(dice.below(twins.size()));
    } else if (choice == 8) {
        twins.set_first(dice.below(twins.size()));
    } else if (choice == 9) {
        twins.sort();
    } else {
        twins.set_item(dice.below(twins.size()), dice.pick(items));
    }
}

TEST(Ordering, agrees_with_the_model_after_random_changes) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        Twins twins(seed % 2 == 0);
        for (int step = 0; step < 100; ++step) {
            change(twins, dice);
            ASSERT_TRUE(twins.agree()) << "step " << step;
        }
    }
}

TEST(Ordering, agrees_with_the_model_for_many_children) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        Twins twins(seed % 2 == 0);
        for (int i = 0; i < 300; ++i)
            twins.add(random_record(dice));
        ASSERT_TRUE(twins.agree());
        twins.sort();
        ASSERT_TRUE(twins.agree());
    }
}

// ---- The sort of libstdc++'s lists, which decides the results for namesakes without items ----

#ifdef __GLIBCXX__

/// The order, word for word.
bool goes_before_node(Node* a, Node* b) {
    const int order = a->get_name().compare(b->get_name());
    if (order != 0)
        return order < 0;
    const auto* one = dynamic_cast<Element*>(a);
    const auto* other = dynamic_cast<Element*>(b);
    if (one == nullptr || other == nullptr)
        return false;
    const std::string item = one->get_attribute_value("item");
    const std::string other_item = other->get_attribute_value("item");
    if (item.empty() || other_item.empty())
        return true;
    try {
        const int number = std::stoi(item);
        return number < std::stoi(other_item);
    } catch (const std::invalid_argument&) {
        return item.compare(other_item) < 0;
    }
}

/// Adds an element, with an item beyond the range of `int` now and then if `is_wild`, or text.
void add_random_child(Element& root, Dice& dice, bool is_wild) {
    const Record record = random_record(dice);
    if (!record.is_element) {
        root.add_child_text("text");
        return;
    }
    const bool is_beyond = is_wild && dice.below(20) == 0;
    root.add_child(record.name)->set_attribute("item", is_beyond ? "99999999999" : record.item);
}

/// The children as the list's own sort orders them; empty if it fails.
NodeList sorted_by_list(const Element& root) {
    NodeList children = root.get_children();
    try {
        children.sort(goes_before_node);
    } catch (const std::out_of_range&) {
        children.clear();
    }
    return children;
}

TEST(SortChildren, agrees_with_the_sort_of_a_list_for_random_children) {
    Dice dice(1);
    int failures = 0;
    for (int round = 0; round < 20000; ++round) {
        Document document(false);
        Element* root = document.create_root_node("r");
        const std::size_t count = dice.below(round % 50 == 0 ? 300 : 20);
        for (std::size_t i = 0; i <= count; ++i)
            add_random_child(*root, dice, round % 4 == 0);
        const NodeList expected = sorted_by_list(*root);
        if (expected.empty()) {
            ++failures;
            EXPECT_THROW_MESSAGE(root->sort_children(), std::out_of_range, "stoi");
        } else {
            root->sort_children();
            ASSERT_EQ(root->get_children(), expected) << "round " << round;
        }
        ASSERT_TRUE(links_agree(root));
    }
    EXPECT_GT(failures, 100);
}

#endif

}  // namespace
