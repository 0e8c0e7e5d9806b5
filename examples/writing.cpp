// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Shows where the white space of formatted text goes.
int main() {
    quxml::Document document(false);
    quxml::Element* catalog = document.create_root_node("catalog");
    catalog->add_child("book", 1)->add_child_text("A & B");
    catalog->add_child("empty");
    quxml::Element* mixed = catalog->add_child("mixed");
    mixed->add_child_text("text beside an element");
    mixed->add_child("leaf");
    catalog->add_child("blank")->add_child_text("");
    std::cout << document.write_to_string_formatted(false);
    std::cout << document.write_to_string() << '\n';
}
