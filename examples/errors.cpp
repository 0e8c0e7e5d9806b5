// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>
#include <stdexcept>

// Failures are exceptions; neither a query nor a failed read ever leaves a tree half changed.
int main() {
    try {
        quxml::from_string("", false);
    } catch (const quxml::DomParserError& error) {
        std::cout << "not read: " << error.what() << '\n';
    }

    quxml::Document document(false);
    document.create_root_node("catalog")->add_child("book");
    try {
        document.get_root_node()->find_exact_match("/catalog/book[position()>=1]");
    } catch (const std::logic_error& error) {  // std::invalid_argument or std::out_of_range
        std::cout << "not a query: " << error.what() << '\n';
    }

    // It is not an error if something is absent.
    std::cout << "found: " << document.get_root_node()->find_exact_match("/catalog/shelf").size() << '\n';
    std::cout << "child: " << (document.get_root_node()->get_child("shelf") ? "yes" : "no") << '\n';
    std::cout << "attribute: '" << document.get_root_node()->get_attribute_value("id") << "'\n";
}
