// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_RESULTS_H
#define QUXML_QUERY_RESULTS_H

#include <functional>
#include <vector>

#include "quxml/Node.h"

namespace quxml {

/// Takes the nodes that a query selects and puts them into a set.
///
/// The place of a node in a large set takes long to find, unless it is the end. In a tree that was read, each
/// result lies after the one before in memory, so each goes to the end of the set. Results that come in
/// another order wait, if they may, until the query has ended, and are then put in sorted.
class Results {
public:
    /// When the set must have a node: as soon as it has been added, so that it is there though an exception
    /// ends the query, or only after `settle`.
    enum Time { at_once, at_the_end };

    /// \param result_set borrowed; empty if nodes may wait.
    Results(NodeSet& result_set, Time when)
        : set(result_set), highest(result_set.end()), may_wait(when == at_the_end) {}

    void add(Node* node) {
        const bool is_highest = highest == set.end() || std::less<>()(*highest, node);
        if (is_highest || !may_wait) {
            highest = set.insert(set.end(), node);
        } else {
            waiting.push_back(node);
        }
    }

    /// Puts what waits into the set.
    void settle();

private:
    NodeSet& set;
    NodeSet::const_iterator highest;  // while nodes may wait, the last one of the set
    bool may_wait;
    std::vector<Node*> waiting;
};

}  // namespace quxml

#endif
