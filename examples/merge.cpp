// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>
#include <utility>
#include <vector>

// Merges a user's settings into the defaults: what both have is taken from the user, what only one has is kept.

namespace {

bool has_elements(const quxml::Element& element) {
    for (const quxml::Node* child : element.get_children()) {
        if (dynamic_cast<const quxml::Element*>(child) != nullptr)
            return true;
    }
    return false;
}

void merge(quxml::Element& defaults, const quxml::Element& user) {
    std::vector<std::pair<quxml::Element*, const quxml::Element*>> waiting{{&defaults, &user}};
    while (!waiting.empty()) {
        const auto [onto, from] = waiting.back();
        waiting.pop_back();
        for (const quxml::Attribute* attribute : from->get_attributes())
            onto->set_attribute(attribute->get_name(), attribute->get_value());
        for (const quxml::Node* node : from->get_children()) {
            auto* same = dynamic_cast<quxml::Element*>(onto->get_child(node->get_name()));
            const auto* element = dynamic_cast<const quxml::Element*>(node);
            if (element != nullptr && same != nullptr && has_elements(*element)) {
                waiting.emplace_back(same, element);
                continue;
            }
            if (same != nullptr)
                onto->remove_child(same);
            onto->import_node(node, true);
        }
    }
}

}  // namespace

int main() {
    auto settings =
        quxml::from_string("<s><net dhcp='yes'><dns>1.1.1.1</dns></net><volume>5</volume></s>", true);
    auto user = quxml::from_string(
        "<s><net dhcp='no'><dns>9.9.9.9</dns><mtu>1400</mtu></net><theme>dark</theme></s>", false);
    merge(*settings->get_root_node(), *user->get_root_node());
    std::cout << settings->write_to_string_formatted(false);
}
