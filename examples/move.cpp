// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Moves an element below another one, in the same document or another. Nothing is copied: pointers into it stay valid.
int main() {
    auto document = quxml::from_string("<s><inbox><m>one</m><m>two</m></inbox><archive/></s>", false);
    quxml::Element* root = document->get_root_node();
    auto* archive = static_cast<quxml::Element*>(root->get_child("archive"));
    quxml::extras::move_to(*root->get_child("inbox")->get_child("m"), *archive);
    std::cout << document->write_to_string_formatted(false);
}
