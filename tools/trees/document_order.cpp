// SPDX-License-Identifier: MIT

// The tree is walked from the root, but only along branches that lead to a node of the result, so that a
// small result in a large document costs little. A list of nodes still to be visited takes the place of
// recursion.

#include "trees/document_order.h"

#include <quxml/Element.h>

#include <unordered_set>

namespace tool {

namespace {

using Branches = std::unordered_set<quxml::Node*>;

/// The nodes themselves and everything above them.
Branches branches_to(const quxml::NodeSet& nodes) {
    Branches branches;
    for (quxml::Node* node : nodes) {
        while (node != nullptr && branches.insert(node).second)
            node = node->get_parent();
    }
    return branches;
}

}  // namespace

std::vector<quxml::Node*> in_document_order(quxml::Node* root, const quxml::NodeSet& nodes) {
    const Branches branches = branches_to(nodes);
    std::vector<quxml::Node*> ordered;
    std::vector<quxml::Node*> pending{root};
    while (!pending.empty()) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        if (nodes.count(node) != 0)
            ordered.push_back(node);
        quxml::NodeList children = node->get_children();
        children.remove_if([&](quxml::Node* child) { return branches.count(child) == 0; });
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return ordered;
}

}  // namespace tool
