// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>
#include <vector>

// Puts what a query found into document order. Results come in the order of addresses, which can be any order.

namespace {

std::vector<quxml::Node*> in_document_order(quxml::Node& root, const quxml::NodeSet& found) {
    std::vector<quxml::Node*> ordered;
    std::vector<quxml::Node*> waiting{&root};
    while (!waiting.empty() && ordered.size() < found.size()) {
        quxml::Node* node = waiting.back();
        waiting.pop_back();
        if (found.count(node) == 1)
            ordered.push_back(node);
        const quxml::NodeList children = node->get_children();
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return ordered;
}

}  // namespace

int main() {
    auto document =
        quxml::from_string("<log><e id='1'/><day><e id='2'/><e id='3'/></day><e id='4'/></log>", false);
    quxml::Element* log = document->get_root_node();
    for (const quxml::Node* node : in_document_order(*log, log->find_exact_match("//e")))
        std::cout << static_cast<const quxml::Element*>(node)->get_attribute_value("id") << '\n';
}
