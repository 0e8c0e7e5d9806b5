// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Removes everything that a path selects. A match below another match is destroyed with it and must not be touched again.

namespace {

bool is_below_another(const quxml::Node& node, const quxml::NodeSet& found) {
    for (quxml::Node* above = node.get_parent(); above != nullptr; above = above->get_parent()) {
        if (found.count(above) == 1)
            return true;
    }
    return false;
}

void remove_matches(quxml::Node& root, const std::string& path) {
    const quxml::NodeSet found = root.find_exact_match(path);
    quxml::NodeSet outermost;
    for (quxml::Node* node : found) {
        if (!is_below_another(*node, found))
            outermost.insert(node);
    }
    for (quxml::Node* node : outermost) {
        if (quxml::Element* parent = node->get_parent())  // a root has none: its document destroys it
            parent->remove_child(node);
    }
}

}  // namespace

int main() {
    auto document = quxml::from_string("<a><old><old/></old><keep><old/></keep><old/></a>", false);
    remove_matches(*document->get_root_node(), "//old");
    std::cout << document->write_to_string_formatted(false);
}
