#include <quxml/quxml.h>

#include <iostream>
#include <stdexcept>

// What goes wrong is told by exceptions; the tree is never left half changed by a query or a failed read.
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

    // What is absent is no error.
    std::cout << "found: " << document.get_root_node()->find_exact_match("/catalog/shelf").size() << '\n';
    std::cout << "child: " << (document.get_root_node()->get_child("shelf") ? "yes" : "no") << '\n';
    std::cout << "attribute: '" << document.get_root_node()->get_attribute_value("id") << "'\n";
}
