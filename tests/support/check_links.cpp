// SPDX-License-Identifier: MIT
#include "support/check_links.h"

#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Element.h"

namespace quxml_test {

namespace {

using quxml::Attribute;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;

/// What is wrong with a child that stands between `previous` and `next`; empty if nothing is.
std::string check_child(const Node& node, const Node* child, const Node* previous, const Node* next) {
    if (child == nullptr)
        return "is null";
    if (child->get_parent() != &node)
        return "has another parent";
    if (child->get_previous_sibling() != previous)
        return "its previous sibling is not the child before it";
    if (child->get_next_sibling() != next)
        return "its next sibling is not the child after it";
    return {};
}

std::string check_children(const Node& node, const NodeList& children) {
    const Node* previous = nullptr;
    int position = 0;
    for (auto child = children.begin(); child != children.end(); ++child, ++position) {
        const Node* next = std::next(child) == children.end() ? nullptr : *std::next(child);
        const std::string wrong = check_child(node, *child, previous, next);
        if (!wrong.empty())
            return "child " + std::to_string(position) + ": " + wrong;
        previous = *child;
    }
    return {};
}

std::string check_attributes(const Element& element) {
    std::set<std::string> names;
    for (const Attribute* attribute : element.get_attributes()) {
        const std::string place = "attribute " + attribute->get_name() + ": ";
        if (attribute->get_parent() != &element)
            return place + "has another parent";
        if (attribute->get_previous_sibling() != nullptr || attribute->get_next_sibling() != nullptr)
            return place + "has siblings";
        if (!attribute->get_children().empty())
            return place + "has children";
        if (!names.insert(attribute->get_name()).second)
            return place + "is there twice";
    }
    return {};
}

std::string check(const Node& node, const NodeList& children) {
    const std::string wrong = check_children(node, children);
    const auto* element = dynamic_cast<const Element*>(&node);
    return wrong.empty() && element != nullptr ? check_attributes(*element) : wrong;
}

}  // namespace

::testing::AssertionResult links_agree(const Node* root) {
    if (root == nullptr)
        return ::testing::AssertionFailure() << "there is no node";
    std::vector<const Node*> unchecked(1, root);
    while (!unchecked.empty()) {
        const Node* node = unchecked.back();
        unchecked.pop_back();
        const NodeList children = node->get_children();
        const std::string wrong = check(*node, children);
        if (!wrong.empty())
            return ::testing::AssertionFailure() << "in \"" << node->get_name() << "\", " << wrong;
        unchecked.insert(unchecked.end(), children.begin(), children.end());
    }
    return ::testing::AssertionSuccess();
}

}  // namespace quxml_test
