// SPDX-License-Identifier: MIT
#include "trees/node_paths.h"

#include <quxml/Element.h>

#include <algorithm>

#include "terminal/words.h"

namespace tool {

namespace {

std::string in_lower_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char byte) { return tool::in_lower_case(byte); });
    return text;
}

using Counts = std::unordered_map<std::string, int>;

Counts count_names(const quxml::NodeList& nodes) {
    Counts counts;
    for (const quxml::Node* node : nodes)
        ++counts[in_lower_case(node->get_name())];
    return counts;
}

}  // namespace

// All children of one parent are numbered at once, so that many paths cost no more than one walk.
void NodePaths::number_children(const quxml::Node& parent) {
    const quxml::NodeList children = parent.get_children();
    const Counts totals = count_names(children);
    Counts counts;
    for (const quxml::Node* child : children) {
        const std::string name = in_lower_case(child->get_name());
        const int position = ++counts[name];
        std::string step = child->get_name();
        if (totals.at(name) > 1)
            step += "[position()=" + std::to_string(position) + ']';
        steps[child] = step;
    }
}

const std::string& NodePaths::get_step(const quxml::Node& node) {
    const auto known = steps.find(&node);
    if (known != steps.end())
        return known->second;
    if (node.get_parent() == nullptr)
        return steps[&node] = node.get_name();
    number_children(*node.get_parent());
    return steps.at(&node);
}

std::string NodePaths::get(const quxml::Node& node) {
    std::string path;
    for (const quxml::Node* step = &node; step != nullptr; step = step->get_parent())
        path.insert(0, '/' + get_step(*step));
    return path;
}

}  // namespace tool
