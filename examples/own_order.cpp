// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Orders children by a rule of your own: the snapshot is sorted, then each child is moved to the front, starting with the last.

namespace {

double price_of(const quxml::Node* node) {
    return std::stod(static_cast<const quxml::Element*>(node)->get_attribute_value("price"));
}

}  // namespace

int main() {
    auto document =
        quxml::from_string("<menu><tea price='2.5'/><cake price='4'/><water price='1'/></menu>", false);
    quxml::Element* menu = document->get_root_node();
    quxml::NodeList dishes = menu->get_children();
    dishes.sort([](const quxml::Node* a, const quxml::Node* b) { return price_of(a) < price_of(b); });
    for (auto dish = dishes.rbegin(); dish != dishes.rend(); ++dish)
        menu->set_child_first(*dish);
    std::cout << document->write_to_string_formatted(false);
}
