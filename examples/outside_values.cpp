// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Finds an element by a value that comes from outside. The value is compared and never put into a path, where it could break
// the path or change its meaning.

namespace {

quxml::Element* find_user(quxml::Element& users, const std::string& name) {
    for (quxml::Node* node : users.find_exact_match("/users/user[@name]")) {
        auto* user = static_cast<quxml::Element*>(node);
        if (user->get_attribute_value("name") == name)
            return user;
    }
    return nullptr;
}

}  // namespace

int main() {
    quxml::Document document(false);
    quxml::Element* users = document.create_root_node("users");
    users->add_child("user", 1)->set_attribute("name", "ada");
    users->add_child("user", 2)->set_attribute("name", "a/b='c'][2");
    for (const char* name : {"a/b='c'][2", "ada", "']"}) {
        const quxml::Element* user = find_user(*users, name);
        std::cout << name << ": " << (user == nullptr ? "nobody" : user->get_attribute_value("item")) << '\n';
    }
}
