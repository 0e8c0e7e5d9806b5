// SPDX-License-Identifier: MIT
#include <iostream>
#include <pugixml.hpp>

namespace {

/// Adds a user in front of the first one with a larger key.
void add_user(pugi::xml_node users, int item, const char* name) {
    pugi::xml_node next = users.child("user");
    while (!next.empty() && next.attribute("item").as_int() < item)
        next = next.next_sibling("user");
    pugi::xml_node user = next.empty() ? users.append_child("user") : users.insert_child_before("user", next);
    user.append_attribute("item") = item;
    user.append_attribute("name") = name;
}

}  // namespace

// The same with pugixml. It keeps no order, and a missing name is empty.
int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_file(argv[1]);
    if (!result) {
        std::cerr << argv[1] << ": " << result.description() << " at byte " << result.offset << '\n';
        return 1;
    }
    pugi::xml_node users = document.document_element();
    users.remove_child(users.find_child_by_attribute("user", "item", argv[3]));
    add_user(users, 4, "grace");
    add_user(users, 12, "edsger");
    for (const pugi::xml_node user : users.children("user"))
        std::cout << user.attribute("item").as_int() << ' ' << user.attribute("name").as_string() << '\n';
    if (!document.save_file(argv[2], "  ")) {
        std::cerr << argv[2] << ": cannot be written\n";
        return 1;
    }
}
