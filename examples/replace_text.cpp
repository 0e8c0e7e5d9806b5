// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Gives an element one text, whatever texts it had before. add_child_text alone would add another one.

namespace {

void replace_text(quxml::Element& element, const std::string& text) {
    while (quxml::TextNode* old = element.get_child_text())
        element.remove_child(old);
    element.add_child_text(text);
}

}  // namespace

int main() {
    quxml::Document document(false);
    quxml::Element* name = document.create_root_node("name");
    name->add_child_text("quick");
    name->add_child_text("silver");
    std::cout << document.write_to_string_formatted(false);
    replace_text(*name, "mercury");
    std::cout << document.write_to_string_formatted(false);
}
