// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Compares two documents: as they are, and ignoring the order of children that differ in name or item.

namespace {

std::string sorted_text(const quxml::Document& document) {
    quxml::Document copy(false);
    copy.create_root_node_by_import(document.get_root_node(), true)->sort_children_recursively();
    return copy.write_to_string();
}

}  // namespace

int main() {
    auto one = quxml::from_string("<s><b item='2'/><b item='1'/><a/></s>", false);
    auto two = quxml::from_string("<s>\n  <a/>\n  <b item='1'/>\n  <b item='2'/>\n</s>", false);
    std::cout << std::boolalpha;
    std::cout << "same order: " << (one->write_to_string() == two->write_to_string()) << '\n';
    std::cout << "same otherwise: " << (sorted_text(*one) == sorted_text(*two)) << '\n';
}
