// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <algorithm>
#include <iostream>
#include <utility>
#include <vector>

// The library does not recurse with the depth of a tree, and your own code need not either: a vector keeps what is to do.

namespace {

std::size_t depth_of(const quxml::Node& root) {
    std::size_t deepest = 0;
    std::vector<std::pair<const quxml::Node*, std::size_t>> waiting{{&root, 1}};
    while (!waiting.empty()) {
        const auto [node, depth] = waiting.back();
        waiting.pop_back();
        deepest = std::max(deepest, depth);
        for (const quxml::Node* child : node->get_children())
            waiting.emplace_back(child, depth + 1);
    }
    return deepest;
}

}  // namespace

int main() {
    constexpr int levels = 100000;
    quxml::Document document(false);
    quxml::Element* element = document.create_root_node("level");
    for (int level = 1; level < levels; ++level)
        element = element->add_child("level");
    std::cout << depth_of(*document.get_root_node()) << " levels\n";
    std::cout << document.write_to_string().size() << " bytes of text\n";
    std::cout << document.get_root_node()->find_exact_match("//*").size() << " nodes found\n";
}
