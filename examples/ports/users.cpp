// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// A list with keys: takes the user with the key ID out of the file IN, adds two others where they belong, shows all of them
// and saves the file as OUT.
int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    try {
        auto document = read_file(argv[1], true);
        quxml::Element& users = *document->get_root_node();
        if (quxml::Element* user = find_first(users, "users/user", where("item") == argv[3]))
            users.remove_child(user);
        users.add_child("user", 4)->set_attribute("name", "grace");
        users.add_child("user", 12)->set_attribute("name", "edsger");
        for (const quxml::Element& user : elements(users, "user"))
            std::cout << require<int>(user, "item") << ' ' << require<std::string>(user, "name") << '\n';
        write_file(argv[2], *document);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
