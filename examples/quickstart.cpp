// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

int main() {
    auto document =
        quxml::from_string("<catalog><book id='1'/><book id='2'><title>Emma</title></book></catalog>", false);
    for (quxml::Node* node : document->get_root_node()->find_exact_match("/catalog/book[@id='2']")) {
        auto* book = static_cast<quxml::Element*>(node);
        book->set_attribute("lang", "en");
        book->add_child("author")->add_child_text("Jane Austen");
    }
    std::cout << document->write_to_string_formatted(true);
}
