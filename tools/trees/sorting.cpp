// SPDX-License-Identifier: MIT

// The library's sort reverses namesakes without an item, since it counts each of them as going before the others. So
// those without one are lent the largest number there is while the sort lasts.

#include "trees/sorting.h"

#include <quxml/Element.h>

#include <algorithm>
#include <unordered_map>

namespace tool {

namespace {

constexpr const char* item = "item";
constexpr const char* largest_item = "2147483647";

struct Lent {
    quxml::Element* element;
    bool had_empty_item;
};

bool has_item(const quxml::Node* node) {
    const auto* element = dynamic_cast<const quxml::Element*>(node);
    return element != nullptr && !element->get_attribute_value(item).empty();
}

std::vector<Lent> lend_items(const quxml::NodeList& nodes) {
    std::vector<Lent> lent;
    for (quxml::Node* node : nodes) {
        auto* element = dynamic_cast<quxml::Element*>(node);
        if (!element || has_item(element))
            continue;
        lent.push_back({element, element->get_attribute(item) != nullptr});
        element->set_attribute(item, largest_item);
    }
    return lent;
}

void take_back(const std::vector<Lent>& lent) {
    for (const Lent& loan : lent) {
        if (loan.had_empty_item) {
            loan.element->set_attribute(item, "");
        } else {
            loan.element->remove_attribute(item);
        }
    }
}

/// Most children are, and then nothing has to be lent.
bool is_sorted(const quxml::NodeList& nodes) {
    const auto is_before = [](const quxml::Node* one, const quxml::Node* other) {
        return one->get_name() < other->get_name();
    };
    return std::is_sorted(nodes.begin(), nodes.end(), is_before) &&
           std::none_of(nodes.begin(), nodes.end(), has_item);
}

void sort_children(quxml::Node& node, const quxml::NodeList& children) {
    const std::vector<Lent> lent = lend_items(children);
    node.sort_children();
    take_back(lent);
}

/// Where each of the children, as they are now, was before.
std::vector<std::size_t> get_places(const quxml::NodeList& now, const quxml::NodeList& before) {
    std::unordered_map<const quxml::Node*, std::size_t> places;
    for (const quxml::Node* child : before)
        places.emplace(child, places.size());
    std::vector<std::size_t> found;
    for (const quxml::Node* child : now)
        found.push_back(places.at(child));
    return found;
}

}  // namespace

std::vector<Order> sort_by_item(quxml::Node* root, const std::vector<bool>& fixed) {
    std::vector<Order> orders;
    std::vector<quxml::Node*> pending{root};
    for (std::size_t element = 0; !pending.empty();) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        if (dynamic_cast<const quxml::Element*>(node) == nullptr)
            continue;
        const quxml::NodeList children = node->get_children();
        pending.insert(pending.end(), children.rbegin(), children.rend());
        const std::size_t number = element++;
        const bool is_fixed = number < fixed.size() && fixed[number];
        if (is_fixed || children.size() < 2 || is_sorted(children))
            continue;
        sort_children(*node, children);
        const quxml::NodeList now = node->get_children();
        if (now != children)
            orders.push_back({number, get_places(now, children)});
    }
    return orders;
}

}  // namespace tool
