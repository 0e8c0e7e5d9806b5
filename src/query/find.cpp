// SPDX-License-Identifier: MIT

// The two searches of a node. They differ in what a name test means, and in nothing else.

#include "Walk.h"
#include "quxml/Node.h"

namespace quxml {

namespace {

NodeSet find_by_own_rule(Node* node, const std::string& path, NameComparator::Rule rule) {
    const CaseFold fold;
    NameComparator names(rule, fold);
    NodeSet found;
    Results results(found, Results::at_the_end);
    select_nodes(node, path, names, results);
    results.settle();
    return found;
}

}  // namespace

NodeSet Node::find_exact_match(const std::string& path) {
    return find_by_own_rule(this, path, NameComparator::equals);
}

// Deliberate: a prefix of the name, not a substring.
// Test: Names/PrefixMatch.selects/it_is_deliberate_that_a_part_within_a_name_does_not_match.
NodeSet Node::find_substring_match(const std::string& path) {
    return find_by_own_rule(this, path, NameComparator::begins);
}

}  // namespace quxml
