// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Moves an element below another one, in the same document or another, by copying it and removing the original.

namespace {

quxml::Node* move_below(quxml::Element& parent, quxml::Node* node) {
    quxml::Node* copy = parent.import_node(node, true);
    node->get_parent()->remove_child(node);
    return copy;
}

}  // namespace

int main() {
    auto document = quxml::from_string("<s><inbox><m>one</m><m>two</m></inbox><archive/></s>", false);
    quxml::Element* root = document->get_root_node();
    auto* archive = static_cast<quxml::Element*>(root->get_child("archive"));
    move_below(*archive, root->get_child("inbox")->get_child("m"));
    std::cout << document->write_to_string_formatted(false);
}
