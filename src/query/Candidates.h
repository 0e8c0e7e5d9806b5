// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_CANDIDATES_H
#define QUXML_QUERY_CANDIDATES_H

#include <vector>

#include "prefetch.h"
#include "quxml/Node.h"

namespace quxml {

/// The nodes that a step has selected so far among the children of one node, in child order.
using Candidates = std::vector<Node*>;

/// Keeps the nodes for which `is_kept(node)` is true, in their order.
template <typename Test>
void keep_if(Candidates& nodes, Test is_kept) {
    auto kept = nodes.begin();
    for (auto next = nodes.begin(); next != nodes.end(); ++next) {
        if (nodes.end() - next > 2)
            prefetch_attributes(next[2]);
        if (is_kept(*next))
            *kept++ = *next;
    }
    nodes.erase(kept, nodes.end());
}

}  // namespace quxml

#endif
