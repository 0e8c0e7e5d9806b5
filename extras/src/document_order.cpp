// SPDX-License-Identifier: MIT

// The nodes of a query's result in document order.
//
// The tree is walked from the top, but only along branches that lead to a node of the result, so that a small
// result in a large document costs little.

#include "document_order.h"

#include <unordered_set>

#include "quxml/extras/Fields.h"
#include "quxml/extras/finding.h"

namespace quxml {
namespace extras {

namespace {

class BranchWalk {
public:
    /// \param nodes the ends of the branches.
    BranchWalk(const Node& walk_top, const NodeSet& nodes) : top(walk_top) {
        for (const Node* node : nodes) {
            while (node != nullptr && branches.insert(node).second && node != &top)
                node = node->get_parent();
        }
    }

    /// The node on a branch that comes next in document order, or null.
    Node* get_next(const Node& node) const {
        Node* below = skip_to_branch(Fields::first_child_of(node));
        return below != nullptr ? below : get_next_outside(node);
    }

    /// The same without what is below `node`.
    Node* get_next_outside(const Node& node) const {
        for (const Node* step = &node; step != nullptr && step != &top; step = step->get_parent()) {
            if (Node* beside = skip_to_branch(step->get_next_sibling()))
                return beside;
        }
        return nullptr;
    }

private:
    /// The first of a row of siblings that lies on a branch, or null.
    Node* skip_to_branch(Node* sibling) const {
        while (sibling != nullptr && branches.count(sibling) == 0)
            sibling = sibling->get_next_sibling();
        return sibling;
    }

    const Node& top;
    std::unordered_set<const Node*> branches;
};

}  // namespace

std::vector<Node*> in_document_order(Node& top, const NodeSet& nodes) {
    const BranchWalk walk(top, nodes);
    std::vector<Node*> ordered;
    ordered.reserve(nodes.size());
    for (Node* node = &top; node != nullptr && ordered.size() < nodes.size(); node = walk.get_next(*node)) {
        if (nodes.count(node) != 0)
            ordered.push_back(node);
    }
    return ordered;
}

std::vector<Node*> find_outermost(Node& top, const NodeSet& nodes) {
    const BranchWalk walk(top, nodes);
    std::vector<Node*> outermost;
    Node* node = walk.get_next(top);
    while (node != nullptr) {
        const bool is_found = nodes.count(node) != 0 && node->get_parent() != nullptr;
        if (is_found)
            outermost.push_back(node);
        node = is_found ? walk.get_next_outside(*node) : walk.get_next(*node);
    }
    return outermost;
}

}  // namespace extras
}  // namespace quxml
