// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Builds a tree, reads its text, queries it, and lets reading fail: something of every part of the library.
int main() {
    quxml::Document document(true);
    quxml::Element* shelf = document.create_root_node("shelf");
    shelf->add_child("book", 2)->add_child_text("Faust & Iphigenie");
    shelf->add_child("book", 1)->set_attribute("lang", "fr");

    const auto copy = quxml::from_string(document.write_to_string(), false);
    std::cout << copy->write_to_string_formatted(true);
    for (quxml::Node* node : copy->get_root_node()->find_exact_match("/shelf/book[2]")) {
        if (const auto* book = dynamic_cast<quxml::Element*>(node))
            std::cout << book->get_child_text()->get_content() << '\n';
    }

    try {
        quxml::from_string("<shelf>", false);
    } catch (const quxml::DomParserError&) {
        std::cout << "not XML\n";
    }
}
