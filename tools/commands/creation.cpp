// SPDX-License-Identifier: MIT

// A step from which an element can be made asks for a name, for values of attributes, for the item and for texts of
// children. Whether a path is made of such steps is judged before anything is looked at, so that a path is refused with
// every document or with none. In the end the path has to select what was made: steps may contradict themselves.

#include "commands/creation.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "commands/argument_checks.h"
#include "paths/PathWalk.h"
#include "terminal/Failure.h"
#include "terminal/words.h"
#include "trees/text.h"

namespace tool {

namespace {

/// An element that a step misses.
struct Missing {
    NewElement element;
    std::vector<Setting> children;  // names and texts
};

constexpr const char* makeable =
    "--create takes names, [@name='value'], [name='text'] and [item] only, since it makes what they ask for";

std::string get_place(const std::vector<PathStep>& steps, std::size_t i) {
    const std::string& text = steps[i].text;
    return "step " + std::to_string(i + 1) + ", " + (text.empty() ? "(empty)" : text) + ": ";
}

/// False if an element cannot be made that satisfies the predicate.
bool add_wish(const Predicate& predicate, Missing& missing) {
    switch (predicate.kind) {
        case PredicateKind::attribute:
            missing.element.attributes.emplace_back(predicate.name, predicate.value);
            return !predicate.existence_only && is_name(predicate.name);
        case PredicateKind::child_value:
            missing.children.emplace_back(predicate.name, predicate.value);
            return is_name(predicate.name) && !predicate.value.empty();
        case PredicateKind::item:
            missing.element.attributes.emplace_back("item", predicate.value);
            return true;
        default:
            return false;
    }
}

bool read_wishes(const PathStep& step, Missing& missing) {
    missing.element.name = step.name_test;
    return step.kind == StepKind::children && is_name(step.name_test) &&
           std::all_of(step.predicates.begin(), step.predicates.end(),
                       [&](const Predicate& predicate) { return add_wish(predicate, missing); });
}

/// Two equal wishes are one.
void join_equal_attributes(NewElement& element) {
    std::vector<Setting> attributes;
    for (const Setting& setting : element.attributes) {
        if (std::find(attributes.begin(), attributes.end(), setting) == attributes.end())
            attributes.push_back(setting);
    }
    element.attributes = std::move(attributes);
}

/// For each step but the first, which is for the root element.
std::vector<Missing> read_wishes(const Path& path, const std::vector<PathStep>& steps) {
    if (steps[0].kind != StepKind::start || steps[0].name_test == "*")
        throw bad_query(path, get_place(steps, 0) + makeable);
    std::vector<Missing> wishes(steps.size() - 1);
    for (std::size_t i = 1; i != steps.size(); ++i) {
        if (!read_wishes(steps[i], wishes[i - 1]))
            throw bad_query(path, get_place(steps, i) + makeable);
        join_equal_attributes(wishes[i - 1].element);
    }
    return wishes;
}

bool has_contradiction(const NewElement& element) {
    std::vector<std::string> names;
    for (const Setting& setting : element.attributes)
        names.push_back(setting.first);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

quxml::Element* create(EditedDocument& document, quxml::Element* parent, const Missing& missing) {
    document.add({parent}, missing.element);
    auto* const made = dynamic_cast<quxml::Element*>(parent->get_children().back());
    for (const auto& [name, text] : missing.children) {
        NewElement child;
        child.name = name;
        child.text = text;
        document.add({made}, child);
    }
    return made;
}

/// How many of the steps select something, and what the last of these selects.
std::pair<std::size_t, Nodes> follow(const std::vector<PathStep>& steps, quxml::Node* root) {
    const PathWalk walk(NameMatch::whole);
    Nodes nodes{root};
    for (std::size_t i = 0; i != steps.size(); ++i) {
        Nodes next = walk.take(steps[i], nodes);
        if (next.empty())
            return {i, nodes};
        nodes = std::move(next);
    }
    return {steps.size(), nodes};
}

}  // namespace

void require_makeable(const Path& path) {
    read_wishes(path, get_steps(path));
}

std::vector<quxml::Element*> select_or_create(EditedDocument& document, const Path& path,
                                              const PathNotes& notes) {
    require_no_gap(path);
    const std::vector<PathStep> steps = get_steps(path);
    require_no_fault(path, steps);
    const std::vector<Missing> wishes = read_wishes(path, steps);
    quxml::Node* const root = document.get_tree().get_root_node();
    const auto [found, nodes] = follow(steps, root);
    if (found == 0 || found == steps.size())
        return select_elements(document.get_tree(), path, notes);
    const std::string place = get_place(steps, std::min(found, steps.size() - 1));
    if (nodes.size() > 1)
        throw bad_query(path, place + "it is missing, and the steps before select " +
                                  std::to_string(nodes.size()) +
                                  " elements; name the one in which it is to be made");
    auto* element = dynamic_cast<quxml::Element*>(nodes[0]);
    for (std::size_t i = found; i != steps.size(); ++i) {
        if (has_contradiction(wishes[i - 1].element))
            throw bad_query(path, get_place(steps, i) + "no element can have two values of one attribute");
        element = create(document, element, wishes[i - 1]);
    }
    if (PathWalk(NameMatch::whole).take(steps, root) != Nodes{element})
        throw bad_query(path, place + "it does not select what was made for it");
    return {element};
}

bool has_such_child(const quxml::Element& parent, const NewElement& wanted) {
    const quxml::NodeList children = parent.get_children();
    return std::any_of(children.begin(), children.end(), [&](const quxml::Node* child) {
        const auto* element = dynamic_cast<const quxml::Element*>(child);
        if (element == nullptr || element->get_name() != wanted.name || get_text(*element) != wanted.text)
            return false;
        if (wanted.has_item && element->get_attribute_value("item") != wanted.item)
            return false;
        return std::all_of(wanted.attributes.begin(), wanted.attributes.end(), [&](const Setting& setting) {
            return element->get_attribute(setting.first) != nullptr &&
                   element->get_attribute_value(setting.first) == setting.second;
        });
    });
}

}  // namespace tool
