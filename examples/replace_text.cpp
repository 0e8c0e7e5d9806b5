// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Gives an element one text, whatever texts it had before. add_child_text alone would add another one.
int main() {
    quxml::Document document(false);
    quxml::Element* name = document.create_root_node("name");
    name->add_child_text("quick");
    name->add_child_text("silver");
    std::cout << document.write_to_string_formatted(false);
    quxml::extras::set_text(*name, "mercury");
    std::cout << document.write_to_string_formatted(false);
}
