// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Something of every header of the extras, by a program in C++11.
int main() {
    using namespace quxml::extras;
    quxml::Document document(true);
    quxml::Element& users = *document.create_root_node("users");
    SortedChildren adder(users);
    for (int id : {7, 3, 5})
        set(*adder.add("user", id), "name", "number " + std::to_string(id) + " & more");
    for (quxml::Element& user : elements(users, "user")) {
        if (get<int>(user, "item", 0) == 5)
            set_text(user, "port", 8080);
    }
    remove_matches(users, "users/user[7]");
    try {
        require<bool>(*find_first(users, "users/user", where("item") == 3), "active");
    } catch (const ValueError& error) {
        std::cout << error.what() << '\n';
    }
    try {
        read_file("none.xml");
    } catch (const FileError& error) {
        std::cout << error.what() << '\n';
    }
    write_formatted(std::cout, document);
}
