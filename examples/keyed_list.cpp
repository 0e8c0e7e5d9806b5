// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// A list whose entries have a key: the attribute "item". The document keeps the entries in the order of their keys.
int main() {
    quxml::Document document(true);
    quxml::Element* users = document.create_root_node("users");
    users->add_child("user", 10)->add_child_text("grace");
    users->add_child("user", 3)->add_child_text("ada");
    users->add_child("user", "guest")->add_child_text("anonymous");

    // A number in brackets is a key.
    for (quxml::Node* user : users->find_exact_match("/users/user[3]"))
        users->remove_child(user);
    users->add_child("user", 3)->add_child_text("edsger");
    std::cout << document.write_to_string_formatted(false);

    // Ask for any other key as for an attribute.
    std::cout << users->find_exact_match("/users/user[@item='guest']").size() << '\n';
}
