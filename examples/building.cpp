// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Builds a tree, changes it, and looks around in it.
int main() {
    quxml::Document document(false);
    quxml::Element* catalog = document.create_root_node("catalog");
    quxml::Element* emma = catalog->add_child("book", 1);
    emma->set_attribute("lang", "en");
    emma->add_child("title")->add_child_text("Emma");
    quxml::Element* faust = catalog->add_child("book", 2);
    faust->add_child("title")->add_child_text("Faust");

    emma->set_attribute("lang", "en-GB");  // in its place
    emma->get_attribute("item")->set_value("one");
    faust->set_name("play");
    catalog->set_child_first(faust);
    catalog->import_node(emma, true);  // a copy, at the end
    emma->remove_attribute("lang");
    std::cout << document.write_to_string_formatted(false);

    std::cout << emma->get_parent()->get_name() << '\n';
    std::cout << emma->get_previous_sibling()->get_name() << '\n';
    std::cout << (faust->get_child("author") == nullptr ? "no author" : "an author") << '\n';
    catalog->remove_child(emma);  // from here on the pointer dangles
    std::cout << catalog->get_children().size() << " children\n";
}
