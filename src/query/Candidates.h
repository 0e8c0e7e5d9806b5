#ifndef QUXML_QUERY_CANDIDATES_H
#define QUXML_QUERY_CANDIDATES_H

#include <vector>

#include "quxml/Node.h"

namespace quxml {

/// The nodes that a step has selected so far among the children of one node, in child order.
using Candidates = std::vector<Node*>;

/// Keeps the nodes for which `is_kept(node)` is true, in their order.
template <typename Test>
void keep_if(Candidates& nodes, Test is_kept) {
    auto kept = nodes.begin();
    for (Node* node : nodes) {
        if (is_kept(node))
            *kept++ = node;
    }
    nodes.erase(kept, nodes.end());
}

}  // namespace quxml

#endif
