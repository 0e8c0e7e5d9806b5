// SPDX-License-Identifier: MIT

// Queries of random trees that hold classes of an application's own, against the slow engine: by the library's own
// comparators, and by comparators of a user that throw, or change the tree at any test. Two trees are grown from one
// seed, one for each engine, and must stay alike: every comparison, its order, the results and what is left in a
// helper after an exception.

#include <cctype>
#include <cstddef>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <boost/algorithm/string/predicate.hpp>

#include "dom/test_nodes.h"
#include "query/query_table.h"
#include "query/slow_engine.h"
#include "quxml/quxml.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeSet;
using quxml::TextNode;
using quxml::XPathHelper;
using quxml_test::BareNode;
using quxml_test::describe;
using quxml_test::link;
using quxml_test::links_agree;
using quxml_test::SlowEngine;

class OwnElement : public Element {
public:
    using Element::Element;
};

class OwnText : public TextNode {
public:
    using TextNode::TextNode;
};

/// Random choices, the same for the same seed on every machine.
class Choices {
public:
    explicit Choices(unsigned int seed) : engine(seed) {}

    std::size_t below(std::size_t bound) { return engine() % bound; }

    bool one_in(std::size_t count) { return below(count) == 0; }

    const char* one_of(const std::vector<const char*>& texts) { return texts[below(texts.size())]; }

private:
    std::mt19937 engine;
};

const std::vector<const char*> names = {"a", "a", "b", "A", "ab", ""};
const std::vector<const char*> items = {"1", "2", "3", "x", ""};

/// A tree of which every node that was grown has a number.
class GrownTree {
public:
    explicit GrownTree(unsigned int seed) : choices(seed), document(false) {
        root = document.create_root_node("a");
        nodes.push_back(root);
        grow(*root, 4);
    }

    Element* get_root() const { return root; }

    Node* get_node(std::size_t number) const { return nodes[number % nodes.size()]; }

    std::size_t count_nodes() const { return nodes.size(); }

    /// The numbers of nodes, or "new" for what came later.
    std::string numbers_of(const NodeSet& set) const {
        std::string numbers;
        std::size_t known = 0;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (set.count(nodes[i]) != 0) {
                numbers += std::to_string(i) + " ";
                ++known;
            }
        }
        return numbers + "and " + std::to_string(set.size() - known) + " new";
    }

    std::string line() const { return quxml_test::to_line(root); }

private:
    void grow(Element& parent, std::size_t levels) {
        for (std::size_t count = choices.below(6); count > 0; --count) {
            Node* node = add(parent);
            nodes.push_back(node);
            auto* element = dynamic_cast<Element*>(node);
            if (element == nullptr)
                continue;
            if (choices.one_in(2))
                element->set_attribute(choices.one_of({"item", "x"}), choices.one_of(items));
            if (levels > 0)
                grow(*element, levels - 1);
        }
    }

    Node* add(Element& parent) {
        const char* name = choices.one_of(names);
        switch (choices.below(6)) {
            case 0:
                return link(parent, std::make_unique<OwnElement>(name, &parent, false));
            case 1: {
                auto* text = link(parent, std::make_unique<OwnText>(&parent, name));
                text->set_content(choices.one_of({"t", "1"}));
                return text;
            }
            case 2:
                return link(parent, std::make_unique<BareNode>(name, &parent, false));
            case 3:
                return parent.add_child_text(choices.one_of({"t", "1"}));
            default:
                return parent.add_child(name);
        }
    }

    Choices choices;
    Document document;
    Element* root;
    std::vector<Node*> nodes;
};

std::string random_predicates(Choices& choices) {
    std::string predicates;
    while (choices.one_in(3)) {
        predicates += std::string("[") +
                      choices.one_of({"1", "2", "last()", "last()-1", "position()<3", "position()>0", "@x",
                                      "@item='2'", "@item =2", "a='t'", "t", "position()<=1", "b==t"}) +
                      "]";
    }
    return predicates;
}

std::string random_path(Choices& choices) {
    std::string separator = choices.one_of({"", "/", "//", "*/"});
    std::string path;
    do {
        path += separator + choices.one_of({"a", "b", "*", "ab", "*"}) + random_predicates(choices);
        separator = choices.one_of({"/", "/", "//"});
    } while (!choices.one_in(3));
    if (separator == "/" && choices.one_in(4))
        return path + separator;
    return path + separator + choices.one_of({"a", "*", "b"}) + random_predicates(choices);
}

// ---- Comparators of a user ----

/// Compares ignoring case. Now and then it throws, or changes the tree first: nodes are renamed, moved, sorted and
/// added, but none is removed.
class WildComparator {
public:
    WildComparator(unsigned int seed, GrownTree& grown_tree, std::vector<std::string>& log_of_test)
        : choices(seed), tree(grown_tree), log(log_of_test) {}

    bool operator()(const std::string& name, const std::string& name_test) {
        log.push_back(name + " " + name_test);
        if (choices.one_in(60))
            throw std::runtime_error("refused");
        if (choices.one_in(4))
            change_tree();
        return boost::algorithm::iequals(name, name_test);
    }

private:
    void change_tree() {
        Node* const node = tree.get_node(choices.below(tree.count_nodes()));
        auto* const element = dynamic_cast<Element*>(node);
        switch (choices.below(element == nullptr ? 2 : 5)) {
            case 0:
                return node->set_name(choices.one_of(names));
            case 1:
                if (node->get_parent() != nullptr)
                    node->get_parent()->set_child_first(node);
                return;
            case 2:
                return element->sort_children();
            case 3:
                element->add_child(choices.one_of(names), choices.one_of(items));
                return;
            default:
                element->set_attribute(choices.one_of({"item", "x"}), choices.one_of(items));
        }
    }

    Choices choices;
    GrownTree& tree;
    std::vector<std::string>& log;
};

/// A function keeps a copy of what it calls; this one hands every call on to the same comparator.
quxml::StringComparator refer_to(WildComparator& comparator) {
    return [&comparator](const std::string& name, const std::string& name_test) {
        return comparator(name, name_test);
    };
}

template <class Query>
std::string outcome(const GrownTree& tree, Query query) {
    try {
        return tree.numbers_of(query());
    } catch (const std::exception& error) {
        return describe(error);
    }
}

/// What an engine makes of a few paths, one after another, on a tree of its own.
template <class Engine>
std::string run_wildly(unsigned int seed, const std::vector<std::string>& paths) {
    GrownTree tree(seed);
    std::vector<std::string> log;
    WildComparator comparator(seed, tree, log);
    Engine engine(refer_to(comparator));
    std::string all;
    for (const std::string& path : paths) {
        all += path + ": " + outcome(tree, [&] { return engine.find(tree.get_root(), path); }) + "\n";
        // Selects nothing and asks nobody, but returns what has been found before, exceptions or not.
        all += "in all " + outcome(tree, [&] { return engine.find(tree.get_root(), "*[@none]"); }) + "\n";
    }
    for (const std::string& comparison : log)
        all += comparison + ";";
    if (!links_agree(tree.get_root()))
        all += " broken links";
    return all + "\n" + tree.line();
}

TEST(DerivedNodes, are_found_as_by_the_slow_engine) {
    for (unsigned int seed = 1; seed <= 200; ++seed) {
        const GrownTree tree(seed);
        Choices choices(seed);
        for (int i = 0; i < 60; ++i) {
            const std::string path = random_path(choices);
            Node* const start = tree.get_node(choices.below(tree.count_nodes()));
            const auto found = [&](NodeSet (Node::*find)(const std::string&)) {
                return outcome(tree, [&] { return (start->*find)(path); });
            };
            ASSERT_EQ(found(&Node::find_exact_match),
                      outcome(tree, [&] { return quxml_test::slow_find_exact_match(start, path); }))
                << "seed " << seed << ", " << path << "\n"
                << tree.line();
            ASSERT_EQ(found(&Node::find_substring_match),
                      outcome(tree, [&] { return quxml_test::slow_find_substring_match(start, path); }))
                << "seed " << seed << ", " << path << "\n"
                << tree.line();
        }
    }
}

TEST(WildComparators, see_and_get_the_same_as_from_the_slow_engine) {
    for (unsigned int seed = 1; seed <= 2000; ++seed) {
        Choices choices(seed);
        std::vector<std::string> paths;
        for (int i = 0; i < 4; ++i)
            paths.push_back(random_path(choices));
        ASSERT_EQ(run_wildly<XPathHelper>(seed, paths), run_wildly<SlowEngine>(seed, paths))
            << "seed " << seed;
    }
}

}  // namespace
