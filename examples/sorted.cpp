// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// A document that keeps its children sorted: by name, and namesakes by their item.
int main() {
    quxml::Document settings(true);
    quxml::Element* root = settings.create_root_node("settings");
    root->add_child("server", 10)->add_child_text("backup.example");
    root->add_child("server", 2)->add_child_text("main.example");
    root->add_child("interface")->set_attribute("name", "eth0");
    std::cout << settings.write_to_string_formatted(false);

    // A number in brackets names an item, not a position.
    for (const quxml::Node* server : root->find_exact_match("/settings/server[10]")) {
        std::string text;
        server->write_to_string(text, -1);
        std::cout << text << '\n';
    }
}
