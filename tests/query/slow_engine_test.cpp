// SPDX-License-Identifier: MIT

// The library against the slow engine: every path of up to three steps over a few names and predicates, and
// random paths, well formed and not, over random trees, in whatever order their nodes lie in memory. Each path
// is tried with the library's own comparators and with a user's, for which it walks differently.

#include "query/slow_engine.h"

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <boost/algorithm/string/predicate.hpp>

#include "query/query_table.h"
#include "quxml/quxml.h"

namespace {

using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::NodeSet;
using quxml::XPathHelper;
using quxml_test::SlowEngine;
using quxml_test::Tree;

::testing::AssertionResult equal(const char* what, const std::string& path, const std::string& outcome,
                                 const std::string& expected) {
    if (outcome == expected)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << what << " " << ::testing::PrintToString(path) << ": [" << outcome
                                         << "] instead of [" << expected << "]";
}

/// What the library finds by a user's comparator, for which it walks differently.
std::string find_by(const quxml::StringComparator& comparator, const Tree& tree, Node* start,
                    const std::string& path) {
    return tree.outcome([&] { return XPathHelper(comparator).find(start, path); });
}

bool equals_ignoring_case(const std::string& name, const std::string& name_test) {
    return boost::algorithm::iequals(name, name_test);
}

bool begins_ignoring_case(const std::string& name, const std::string& name_test) {
    return boost::algorithm::istarts_with(name, name_test);
}

/// Whether both operations, and a helper with such a comparator, give the same nodes, or the same exception, as
/// the slow engine.
::testing::AssertionResult agree(const Tree& tree, Node* start, const std::string& path) {
    const std::string exact = tree.outcome([&] { return quxml_test::slow_find_exact_match(start, path); });
    const std::string prefix =
        tree.outcome([&] { return quxml_test::slow_find_substring_match(start, path); });
    auto result = equal("exact", path, tree.outcome([&] { return start->find_exact_match(path); }), exact);
    if (result)
        result =
            equal("prefix", path, tree.outcome([&] { return start->find_substring_match(path); }), prefix);
    if (result)
        result = equal("exact by a user", path, find_by(equals_ignoring_case, tree, start, path), exact);
    if (result)
        result = equal("prefix by a user", path, find_by(begins_ignoring_case, tree, start, path), prefix);
    return result;
}

// ---- Every short path ----

/// The steps "", "*", "a" and "b", the last three also with each of the predicates.
std::vector<std::string> steps_with(std::initializer_list<const char*> predicates) {
    std::vector<std::string> steps = {""};
    for (const char* name_test : {"*", "a", "b"}) {
        steps.emplace_back(name_test);
        for (const char* predicate : predicates)
            steps.push_back(std::string(name_test) + "[" + predicate + "]");
    }
    return steps;
}

/// All paths of up to three of the steps, also with "//" before them. With an empty step they begin with "/",
/// search, or end with "/".
std::vector<std::string> short_paths(const std::vector<std::string>& steps) {
    std::vector<std::string> paths = steps;
    std::size_t begin = 0;
    for (int length = 2; length <= 3; ++length) {
        const std::size_t end = paths.size();
        for (; begin < end; ++begin) {
            for (const std::string& step : steps)
                paths.push_back(paths[begin] + "/" + step);
        }
    }
    const std::size_t count = paths.size();
    for (std::size_t i = 0; i < count; ++i)
        paths.push_back("//" + paths[i]);
    return paths;
}

void expect_agreement_on_all(const char* line, const std::vector<std::string>& paths) {
    const Tree tree(line);
    const std::string before = tree.line();
    for (const std::string& path : paths)
        ASSERT_TRUE(agree(tree, tree.node("#1"), path)) << line;
    EXPECT_EQ(tree.line(), before);
}

const char* const small_tree =
    "a{a(item=1){b(x=1){\"t\"} a{\"t\"}} b{a(x=2){b{\"u\"}} b(item=2)} \"t\" a(item=2,x=1){a{b{\"t\"} b}} "
    "ab{\"t\"}}";

TEST(ShortPaths, agree_for_positions_and_items) {
    expect_agreement_on_all(small_tree,
                            short_paths(steps_with({"1", "2", "last()", "last()-1", "position()>0"})));
}

TEST(ShortPaths, agree_for_attributes_and_values) {
    expect_agreement_on_all(small_tree, short_paths(steps_with({"@x", "@x='1'", "@x =1", "b='t'", "t"})));
}

TEST(ShortPaths, agree_for_errors_and_several_predicates) {
    expect_agreement_on_all(small_tree,
                            short_paths(steps_with({"b==t", "@x==1", "@x][last()", "last()x", ""})));
}

// ---- Random paths over random trees ----

/// Random choices, the same for the same seed on every machine.
class Choices {
public:
    explicit Choices(unsigned int seed) : engine(seed) {}

    unsigned int below(unsigned int bound) { return static_cast<unsigned int>(engine() % bound); }

    bool one_in(unsigned int count) { return below(count) == 0; }

    std::string one_of(const std::vector<std::string>& texts) {
        return texts[below(static_cast<unsigned int>(texts.size()))];
    }

private:
    std::mt19937 engine;
};

const std::vector<std::string> names = {"a", "b", "A", "ab", "aB", "x", "", "*", "item", "a]b", "\xC3\xB6"};
const std::vector<std::string> attribute_names = {"item", "x", "y", "xy", "", "=1", "a", "x "};
const std::vector<std::string> attribute_values = {"1",  "2",      "01", "",   "t",          "'t'",
                                                   "=t", "last()", "1x", "-1", "99999999999"};
const std::vector<std::string> texts = {"t", "1", "", "u", "'t'", " t"};

/// Adds up to five children to the element, and to some of those.
void grow(Element* element, Choices& choices, unsigned int levels) {
    for (unsigned int count = choices.below(6); count > 0; --count) {
        if (choices.one_in(4)) {
            element->add_child_text(choices.one_of(texts));
            continue;
        }
        Element* const child = element->add_child(choices.one_of(names));
        for (unsigned int attributes = choices.below(3); attributes > 0; --attributes)
            child->set_attribute(choices.one_of(attribute_names), choices.one_of(attribute_values));
        if (levels > 0)
            grow(child, choices, levels - 1);
    }
}

std::string random_number(Choices& choices) {
    return choices.one_of({"0", "1", "2", "3", "4", "-1", "+1", " 2", "01", "2147483647", "2147483648",
                           "-2147483648", "99999999999", "x", "", "1x", "- 1"});
}

std::string random_predicate(Choices& choices) {
    switch (choices.below(9)) {
        case 0:
            return random_number(choices);
        case 1:
            return "last()" + choices.one_of({"", "-", "+", "-1", "-2", "=", " "}) +
                   (choices.one_in(4) ? random_number(choices) : "");
        case 2:
            return "position()" + choices.one_of({"<", ">", "=", "<=", ">=", "", "!=", "=<"}) +
                   random_number(choices);
        case 3:
            return "@" + choices.one_of(attribute_names);
        case 4:
            return "@" + choices.one_of(attribute_names) + choices.one_of({"=", " =", "z=", "=="}) +
                   choices.one_of({"", "'", "\""}) + choices.one_of(attribute_values) +
                   choices.one_of({"", "'", "\"", "' "});
        case 5:
            return choices.one_of(names) + choices.one_of({"=", "=", "=", "=="}) +
                   choices.one_of({"", "'", "\""}) + choices.one_of(texts) + choices.one_of({"", "'", "\""});
        case 6:
            return choices.one_of(texts);
        case 7:
            return "position()<" + random_number(choices) + " and position()>" + random_number(choices);
        default:
            return "";
    }
}

std::string random_step(Choices& choices) {
    std::string step = choices.one_in(3) ? "*" : choices.one_of(names);
    while (choices.one_in(2))
        step += "[" + random_predicate(choices) + "]";
    return step;
}

std::string random_path(Choices& choices) {
    std::string path = choices.one_of({"", "", "/", "//", " ", "a//", "*/"}) + random_step(choices);
    while (!choices.one_in(3))
        path += choices.one_of({"/", "/", "//", "///"}) + random_step(choices);
    return path + choices.one_of({"", "", "", "/", "//", " ", "\n"});
}

/// Replaces, inserts or removes a few pieces, so that most rules of the language are broken sooner or later.
std::string malformed(std::string path, Choices& choices) {
    static const std::vector<std::string> pieces = {
        "/", "//", "[", "]", "@", "=", "*",      "'",          "\"",
        "a", "1",  " ", "<", ">", "-", "last()", "position()", std::string(1, '\0')};
    for (unsigned int changes = choices.below(4); changes > 0; --changes) {
        const std::size_t position = choices.below(static_cast<unsigned int>(path.size() + 1));
        path.replace(position, choices.below(3), choices.one_in(3) ? "" : choices.one_of(pieces));
    }
    return path;
}

const unsigned int random_trees = 300;
const unsigned int paths_of_a_tree = 100;

/// Puts some children first, so that siblings do not lie in memory in their order.
void shuffle_children(const std::vector<Node*>& nodes, Choices& choices) {
    for (Node* node : nodes) {
        const NodeList list = node->get_children();
        const std::vector<Node*> children(list.begin(), list.end());
        for (std::size_t i = 0; i < children.size(); ++i)
            node->set_child_first(children[choices.below(static_cast<unsigned int>(children.size()))]);
    }
}

Tree random_tree(Choices& choices) {
    quxml::Document document(false);
    Element* const root = document.create_root_node(choices.one_of({"a", "b", "r"}));
    grow(root, choices, 3);
    return Tree(quxml_test::to_line(root));
}

TEST(RandomPaths, agree_on_random_trees) {
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(seed);
        const Tree tree = random_tree(choices);
        const std::string before = tree.line();
        for (unsigned int i = 0; i < paths_of_a_tree; ++i)
            ASSERT_TRUE(agree(tree, tree.node("#1"), malformed(random_path(choices), choices)))
                << "seed " << seed << ", path " << i << "\n"
                << before;
        ASSERT_EQ(tree.line(), before) << "seed " << seed;
    }
}

TEST(RandomPaths, agree_from_any_node) {
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(~seed);
        const Tree tree = random_tree(choices);
        const std::vector<Node*> nodes = quxml_test::nodes_in_document_order(tree.node("#1"));
        for (unsigned int i = 0; i < paths_of_a_tree; ++i) {
            Node* const start = nodes[choices.below(static_cast<unsigned int>(nodes.size()))];
            ASSERT_TRUE(agree(tree, start, random_path(choices)))
                << "seed " << ~seed << ", path " << i << " from " << tree.name(start) << "\n"
                << tree.line();
        }
    }
}

TEST(RandomPaths, add_up_like_those_of_the_slow_engine) {
    const auto begins_with = [](const std::string& name, const std::string& name_test) {
        return name.compare(0, name_test.size(), name_test) == 0;
    };
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(seed);
        const Tree tree = random_tree(choices);
        const XPathHelper helper(begins_with);
        SlowEngine slow(begins_with);
        for (unsigned int i = 0; i < 10; ++i) {
            const std::string path = malformed(random_path(choices), choices);
            ASSERT_EQ(tree.outcome([&] { return helper.find(tree.node("#1"), path); }), tree.outcome([&] {
                return slow.find(tree.node("#1"), path);
            })) << "seed "
                << seed << ", path " << i << " " << ::testing::PrintToString(path) << "\n"
                << tree.line();
        }
    }
}

TEST(RandomPaths, agree_on_trees_whose_nodes_lie_scattered) {
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(seed);
        const Tree tree = random_tree(choices);
        shuffle_children(quxml_test::nodes_in_document_order(tree.node("#1")), choices);
        for (unsigned int i = 0; i < paths_of_a_tree; ++i)
            ASSERT_TRUE(agree(tree, tree.node("#1"), malformed(random_path(choices), choices)))
                << "seed " << seed << ", path " << i << "\n"
                << tree.line();
    }
}

TEST(RandomPaths, agree_on_nodes_with_many_children) {
    for (unsigned int seed = 0; seed < random_trees / 10; ++seed) {
        Choices choices(seed);
        quxml::Document document(false);
        Element* const root = document.create_root_node("a");
        for (unsigned int i = 0; i < random_trees / 10; ++i)
            grow(root, choices, 1);
        const Tree tree(quxml_test::to_line(root));
        if (choices.one_in(2))
            shuffle_children({tree.node("#1")}, choices);
        for (unsigned int i = 0; i < paths_of_a_tree / 4; ++i)
            ASSERT_TRUE(agree(tree, tree.node("#1"), "*/" + random_path(choices)))
                << "seed " << seed << ", path " << i << "\n"
                << tree.line();
    }
}

TEST(RandomPaths, leave_in_a_helper_what_was_found_before_its_comparator_threw) {
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(seed);
        const Tree tree = random_tree(choices);
        Node* const root = tree.node("#1");
        for (unsigned int i = 0; i < 10; ++i) {
            const std::string feared = choices.one_of(names);
            const auto afraid = [&feared](const std::string& name, const std::string& name_test) {
                if (name == feared)
                    throw std::invalid_argument("afraid");
                return name == name_test;
            };
            const XPathHelper helper(afraid);
            SlowEngine slow(afraid);
            const std::string path = random_path(choices);
            ASSERT_TRUE(equal("find", path, tree.outcome([&] { return helper.find(root, path); }),
                              tree.outcome([&] { return slow.find(root, path); })))
                << "seed " << seed << ", afraid of " << feared << "\n"
                << tree.line();
            ASSERT_TRUE(equal("what is held after", path,
                              tree.outcome([&] { return helper.find(root, "/"); }),
                              tree.outcome([&] { return slow.find(root, "/"); })))
                << "seed " << seed << ", afraid of " << feared << "\n"
                << tree.line();
        }
    }
}

/// Some of the nodes in any order, some of them twice.
NodeList random_list(const Tree& tree, Choices& choices) {
    const std::vector<Node*> nodes = quxml_test::nodes_in_document_order(tree.node("#1"));
    NodeList list;
    for (unsigned int count = choices.below(5); count > 0; --count)
        list.push_back(nodes[choices.below(static_cast<unsigned int>(nodes.size()))]);
    return list;
}

TEST(RandomPredicates, agree_on_lists_and_on_single_nodes) {
    const auto equal = [](const std::string& name, const std::string& name_test) {
        return name == name_test;
    };
    const XPathHelper helper(equal);
    const SlowEngine slow(equal);
    for (unsigned int seed = 0; seed < random_trees; ++seed) {
        Choices choices(seed);
        const Tree tree = random_tree(choices);
        for (unsigned int i = 0; i < paths_of_a_tree; ++i) {
            const NodeList list = random_list(tree, choices);
            const std::string predicates =
                malformed(random_predicate(choices) + "][" + random_predicate(choices), choices);
            NodeList left = list;
            NodeList slow_left = list;
            ASSERT_EQ(tree.outcome([&] { return helper.get_nodes_matching_attributes(left, predicates); }),
                      tree.outcome([&] { return slow.get_nodes_matching_attributes(slow_left, predicates); }))
                << "seed " << seed << " " << ::testing::PrintToString(predicates) << " on "
                << tree.names(list) << "\n"
                << tree.line();
            ASSERT_EQ(tree.names(left), tree.names(slow_left)) << "seed " << seed << " " << predicates;
            for (Node* node : list) {
                const std::string step = choices.one_of(names) + "[" + predicates;
                const auto passes = [&](const auto& engine) {
                    return tree.outcome(
                        [&] { return engine.is_correct_node(node, step) ? NodeSet({node}) : NodeSet(); });
                };
                ASSERT_EQ(passes(helper), passes(slow))
                    << "seed " << seed << " " << ::testing::PrintToString(step) << " on " << tree.name(node)
                    << "\n"
                    << tree.line();
            }
        }
    }
}

}  // namespace
