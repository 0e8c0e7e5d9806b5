// SPDX-License-Identifier: MIT

// Trees are walked along a list of what is still to be visited, so a deep tree takes no more stack.

#include "trees/tree.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace tool {

namespace {

bool is_same_attribute(const quxml::Attribute* one, const quxml::Attribute* other) {
    return one->get_name() == other->get_name() && one->get_value() == other->get_value();
}

bool has_same_attributes(const quxml::Element& one, const quxml::Element& other) {
    const quxml::AttributeList mine = one.get_attributes();
    const quxml::AttributeList others = other.get_attributes();
    return std::equal(mine.begin(), mine.end(), others.begin(), others.end(), is_same_attribute);
}

/// All but the children.
bool is_same_node(const quxml::Node& one, const quxml::Node& other) {
    const auto* element = dynamic_cast<const quxml::Element*>(&one);
    const auto* other_element = dynamic_cast<const quxml::Element*>(&other);
    if (element != nullptr && other_element != nullptr)
        return one.get_name() == other.get_name() && has_same_attributes(*element, *other_element);
    return element == nullptr && other_element == nullptr && get_text(one) == get_text(other);
}

}  // namespace

std::string get_text(const quxml::Node& node) {
    if (const auto* text = dynamic_cast<const quxml::TextNode*>(&node))
        return text->get_content();
    const auto* element = dynamic_cast<const quxml::Element*>(&node);
    const quxml::TextNode* text = element == nullptr ? nullptr : element->get_child_text();
    return text == nullptr ? "" : text->get_content();
}

bool is_same_tree(const quxml::Node& one, const quxml::Node& other) {
    std::vector<std::pair<const quxml::Node*, const quxml::Node*>> pending{{&one, &other}};
    while (!pending.empty()) {
        const auto [mine, others] = pending.back();
        pending.pop_back();
        const quxml::NodeList children = mine->get_children();
        const quxml::NodeList other_children = others->get_children();
        if (!is_same_node(*mine, *others) || children.size() != other_children.size())
            return false;
        std::transform(children.begin(), children.end(), other_children.begin(), std::back_inserter(pending),
                       [](const quxml::Node* a, const quxml::Node* b) { return std::make_pair(a, b); });
    }
    return true;
}

}  // namespace tool
