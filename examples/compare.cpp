// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using quxml::extras::is_same_tree;

// Compares two documents: as they are, and ignoring the order of children that differ in name or item.

namespace {

quxml::Document sorted_copy(const quxml::Document& document) {
    quxml::Document copy(false);
    copy.create_root_node_by_import(document.get_root_node(), true)->sort_children_recursively();
    return copy;
}

}  // namespace

int main() {
    auto one = quxml::from_string("<s><b item='2'/><b item='1'/><a/></s>", false);
    auto two = quxml::from_string("<s>\n  <a/>\n  <b item='1'/>\n  <b item='2'/>\n</s>", false);
    std::cout << std::boolalpha;
    std::cout << "same order: " << is_same_tree(*one->get_root_node(), *two->get_root_node()) << '\n';
    const quxml::Document first = sorted_copy(*one);
    const quxml::Document second = sorted_copy(*two);
    std::cout << "same otherwise: " << is_same_tree(*first.get_root_node(), *second.get_root_node()) << '\n';
}
