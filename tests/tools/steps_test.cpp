// SPDX-License-Identifier: MIT

// What "quxml explain" says is put to the test: the steps that it describes are carried out here one by one, in
// the plainest way, and have to select what the library's engine selects.

#include "paths/steps.h"

#include <gtest/gtest.h>
#include <quxml/Attribute.h>
#include <quxml/Document.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using quxml::Element;
using quxml::Node;
using tool::PathStep;
using tool::Predicate;
using tool::PredicateKind;
using tool::StepKind;
using Nodes = std::vector<Node*>;

bool has_text(Node* child, const Predicate& predicate) {
    const auto* element = dynamic_cast<Element*>(child);
    return element != nullptr && element->get_name() == predicate.name && element->has_child_text() &&
           element->get_child_text()->get_content() == predicate.value;
}

bool has_child_with_text(const Node& node, const Predicate& predicate) {
    const quxml::NodeList children = node.get_children();
    return std::any_of(children.begin(), children.end(),
                       [&](Node* child) { return has_text(child, predicate); });
}

bool has_attribute(Node* node, const Predicate& predicate) {
    const auto* element = dynamic_cast<Element*>(node);
    if (element == nullptr || element->get_attribute(predicate.name) == nullptr)
        return false;
    return predicate.existence_only || element->get_attribute_value(predicate.name) == predicate.value;
}

bool has_item(Node* node) {
    const auto* element = dynamic_cast<Element*>(node);
    return element != nullptr && element->get_attribute("item") != nullptr;
}

// ---- Lists ----

Nodes keep_last(const Nodes& nodes, const Predicate& predicate) {
    const auto position = static_cast<long>(nodes.size()) + predicate.number;
    if (position < 1 || position > static_cast<long>(nodes.size()))
        return {};
    return {nodes.at(static_cast<std::size_t>(position) - 1)};
}

Nodes keep_range(const Nodes& nodes, const Predicate& predicate) {
    const auto end = predicate.range.counted ? static_cast<unsigned>(nodes.size()) : predicate.range.end;
    Nodes kept;
    for (unsigned position = 1; position <= nodes.size() && (end == 0 || position < end); ++position) {
        if (position >= predicate.range.first)
            kept.push_back(nodes.at(position - 1));
    }
    return kept;
}

Nodes keep_item(const Nodes& nodes, const Predicate& predicate) {
    Nodes kept;
    std::string run;
    for (Node* node : nodes) {
        const auto* element = dynamic_cast<Element*>(node);
        if (element == nullptr)
            continue;
        if (has_item(node) ? element->get_attribute_value("item") == predicate.value
                           : std::stoi(predicate.value) == 1 && element->get_name() != run) {
            kept.push_back(node);
            run = has_item(node) ? run : element->get_name();
        }
    }
    return kept;
}

Nodes keep_literal(const Nodes& nodes, const Predicate& predicate) {
    if (nodes.size() != 1)
        return {};
    Predicate of_parent = predicate;
    of_parent.name = nodes[0]->get_name();
    return has_child_with_text(*nodes[0]->get_parent(), of_parent) ? nodes : Nodes{};
}

template <typename Test>
Nodes keep_if(Nodes nodes, Test test) {
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), [&](Node* node) { return !test(node); }),
                nodes.end());
    return nodes;
}

Nodes keep(const Nodes& nodes, const Predicate& predicate) {
    switch (predicate.kind) {
        case PredicateKind::last:
            return keep_last(nodes, predicate);
        case PredicateKind::position:
            return keep_range(nodes, predicate);
        case PredicateKind::item:
            return keep_item(nodes, predicate);
        case PredicateKind::literal:
            return keep_literal(nodes, predicate);
        case PredicateKind::attribute:
            return keep_if(nodes, [&](Node* node) { return has_attribute(node, predicate); });
        case PredicateKind::child_value:
            return keep_if(nodes, [&](Node* node) { return has_child_with_text(*node, predicate); });
        default:
            throw std::logic_error("a list is filtered by a test of single nodes");
    }
}

bool has_name(const Node& node, const PathStep& step) {
    return step.name_test == "*" || node.get_name() == step.name_test;
}

Nodes get_filtered_children(const Node& parent, const PathStep& step) {
    Nodes nodes;
    for (Node* child : parent.get_children()) {
        if (!step.name_test.empty() && has_name(*child, step))
            nodes.push_back(child);
    }
    for (const Predicate& predicate : step.predicates)
        nodes = keep(nodes, predicate);
    return nodes;
}

// ---- Single nodes ----

bool passes(Node* node, const Predicate& predicate) {
    const auto* element = dynamic_cast<Element*>(node);
    switch (predicate.kind) {
        case PredicateKind::test_attribute:
            return has_attribute(node, predicate);
        case PredicateKind::test_child_value:
            return has_child_with_text(*node, predicate);
        case PredicateKind::test_item:
            return element != nullptr &&
                   (has_item(node) ? element->get_attribute_value("item") == predicate.value
                                   : predicate.value == "1");
        default:
            throw std::logic_error("a single node is tested by a filter of lists");
    }
}

bool passes(Node* node, const PathStep& step) {
    return has_name(*node, step) && (step.predicates.empty() || passes(node, step.predicates[0]));
}

void search(Node* node, const PathStep& step, Nodes& found) {
    if (passes(node, step)) {
        found.push_back(node);
        if (!step.is_last || step.text != "*")
            return;
    }
    for (Node* child : node->get_children())
        search(child, step, found);
}

// ---- Steps ----

Nodes take_step(Node* node, const PathStep& step) {
    Nodes found;
    switch (step.kind) {
        case StepKind::start:
            return passes(node, step) ? Nodes{node} : Nodes{};
        case StepKind::search:
            search(node, step, found);
            return found;
        case StepKind::search_below:
            for (Node* child : node->get_children())
                search(child, step, found);
            return found;
        case StepKind::children:
            return get_filtered_children(*node, step);
        case StepKind::all_children:
            for (Node* child : node->get_children())
                found.push_back(child);
            return found;
        default:
            return {};
    }
}

quxml::NodeSet take_steps(Node* root, const std::vector<PathStep>& steps) {
    Nodes nodes{root};
    for (const PathStep& step : steps) {
        Nodes next;
        for (Node* node : nodes) {
            const Nodes found = take_step(node, step);
            next.insert(next.end(), found.begin(), found.end());
        }
        nodes = next;
    }
    return {nodes.begin(), nodes.end()};
}

bool has_fault(const std::vector<PathStep>& steps) {
    return std::any_of(steps.begin(), steps.end(), [](const PathStep& step) {
        return std::any_of(step.predicates.begin(), step.predicates.end(),
                           [](const Predicate& predicate) { return !predicate.fault.empty(); });
    });
}

// ---- The tree and the paths ----

constexpr std::array<const char*, 42> predicates{
    "",
    "[1]",
    "[2]",
    "[01]",
    "[+1]",
    "[ 2]",
    "[x]",
    "['t']",
    "[t]",
    "[99999999999]",
    "[last()]",
    "[last()-1]",
    "[last()+1]",
    "[last() - 1]",
    "[xlast()]",
    "[position()]",
    "[position()=2]",
    "[position()<3]",
    "[position()>1]",
    "[position()>0]",
    "[position()<0]",
    "[position()<1]",
    "[position()>=1]",
    "[position()<=1]",
    "[position()=]",
    "[position()>1 and position()<3]",
    "[position()=-1]",
    "[@id]",
    "[@id=1]",
    "[@id='1']",
    "[@id =1]",
    "[@id ='1']",
    "[@=1]",
    "[@i=1]",
    "[@id==1]",
    "[@id='']",
    "[b=t]",
    "[b='t']",
    "[b==t]",
    "[]",
    "[b",
    "[b]x]",
};

constexpr std::array<const char*, 5> names{"a", "b", "*", "", "zzz"};

std::shared_ptr<quxml::Document> create_tree() {
    auto document = std::make_shared<quxml::Document>(false);
    Element* root = document->create_root_node("a");
    root->set_attribute("id", "1");
    for (const char* name : {"a", "b", "a", "b", "b"}) {
        Element* child = root->add_child(name);
        child->add_child("b")->add_child_text("t");
        child->add_child("a", 1)->add_child("b", 2)->set_attribute("id", "1");
        child->add_child("a", "2")->set_attribute("i", "1");
    }
    root->add_child("a", 1)->add_child_text("t");
    root->add_child("a", 2)->set_attribute("id", "'1'");
    root->add_child("b", "01")->set_attribute("id", "");
    root->add_child_text("text");
    return document;
}

/// Counts the paths that select anything.
void expect_the_same(Node* root, const std::string& path, int& matches) {
    const std::vector<PathStep> steps = tool::get_steps({path, {}});
    if (has_fault(steps))
        return;
    quxml::NodeSet selected;
    ASSERT_NO_THROW(selected = root->find_exact_match(path)) << path;
    ASSERT_EQ(selected, take_steps(root, steps)) << path;
    matches += selected.empty() ? 0 : 1;
}

TEST(PathSteps, select_what_the_engine_selects_for_all_paths_of_two_steps) {
    const std::shared_ptr<quxml::Document> document = create_tree();
    int matches = 0;
    for (const std::string head : {"", "/", "//"}) {
        for (const char* name : names) {
            for (const char* predicate : predicates) {
                for (const std::string tail :
                     {"", "/", "//", "/a", "//b", "/*", "//*", "/a/", "///a", "/b[1]", "//a[@id =1]"})
                    expect_the_same(document->get_root_node(), head + name + predicate + tail, matches);
            }
        }
    }
    for (const std::string head : {"a/", "//a/", "a//", "/a/b/", "a///", "///", "a/*/", "//b/a//"}) {
        for (const char* name : names) {
            for (const char* predicate : predicates) {
                for (const std::string tail : {"", "[@id]", "[2]", "[last()]", "/", "/b", "//*"})
                    expect_the_same(document->get_root_node(), head + name + predicate + tail, matches);
            }
        }
    }
    EXPECT_GT(matches, 500);
}

TEST(PathSteps, select_what_the_engine_selects_for_random_paths) {
    const std::shared_ptr<quxml::Document> document = create_tree();
    std::mt19937 random(1);
    int matches = 0;
    const auto pick = [&](const auto& words) { return std::string(words.at(random() % words.size())); };
    const std::array<const char*, 6> separators{"/", "/", "/", "//", "//", "///"};
    for (int i = 0; i < 40000; ++i) {
        std::string path = pick(separators);
        for (unsigned steps = 1 + random() % 4; steps > 0; --steps)
            path += pick(names) + pick(predicates) + (random() % 3 == 0 ? pick(predicates) : "") +
                    pick(separators);
        path.resize(path.size() - random() % 3);
        expect_the_same(document->get_root_node(), path, matches);
    }
    EXPECT_GT(matches, 300);
}

bool is_refused(Node* root, const std::string& path) {
    try {
        root->find_exact_match(path);
        return false;
    } catch (const std::logic_error&) {
        return true;
    }
}

TEST(PathSteps, have_a_fault_where_the_engine_refuses_a_predicate_that_it_comes_to) {
    const std::shared_ptr<quxml::Document> document = create_tree();
    int faults = 0;
    for (const char* predicate : predicates) {
        for (const char* opening : {"a/b", "a/*", "a", "//b", "a//a"}) {
            const std::string path = std::string(opening) + predicate;
            const bool is_bad = has_fault(tool::get_steps({path, {}}));
            EXPECT_EQ(is_bad, is_refused(document->get_root_node(), path)) << path;
            faults += is_bad ? 1 : 0;
        }
    }
    EXPECT_GT(faults, 10);
}

}  // namespace
