// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// Finds an element by a value that comes from outside. The value is compared and never put into a path, where it could break
// the path or change its meaning.
int main() {
    quxml::Document document(false);
    quxml::Element* users = document.create_root_node("users");
    users->add_child("user", 1)->set_attribute("name", "ada");
    users->add_child("user", 2)->set_attribute("name", "a/b='c'][2");
    for (const std::string name : {"a/b='c'][2", "ada", "']"}) {
        const quxml::Element* user = find_first(*users, "/users/user", where("name") == name);
        std::cout << name << ": " << (user == nullptr ? "nobody" : get(*user, "item", "")) << '\n';
    }
}
