// The library's sort reverses namesakes without an item, since it counts each of them as going before the
// others. Where any item is found, the namesakes without one are lent the largest number there is while the
// sort lasts.

#include "trees/sorting.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <algorithm>
#include <vector>

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

}  // namespace

void sort_by_item(quxml::Node* root) {
    std::vector<quxml::Node*> pending{root};
    while (!pending.empty()) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        const quxml::NodeList children = node->get_children();
        if (std::any_of(children.begin(), children.end(), has_item)) {
            const std::vector<Lent> lent = lend_items(children);
            node->sort_children();
            take_back(lent);
        }
        pending.insert(pending.end(), children.begin(), children.end());
    }
}

}  // namespace tool
