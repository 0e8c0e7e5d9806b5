// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_WALK_H
#define QUXML_QUERY_WALK_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "Candidates.h"
#include "Results.h"
#include "Step.h"
#include "comparators.h"

namespace quxml {

/// Walks a tree along the steps of a path and collects the nodes that the last step selects.
class Walk {
public:
    /// \param path_steps at least one.
    Walk(std::vector<Step> path_steps, NameComparator& comparator, Results& found);

    /// Follows the steps from `node` if it satisfies the first one.
    void start_at(Node* node);

    /// Follows the steps from `node`, which has already satisfied the first one.
    void follow_from(Node* node);

    /// Searches `node` and everything below it for the first step, and follows the steps from each match.
    void search_from(Node* node);

private:
    /// Nodes that remain to be visited, one at least: children that have not been looked at yet, or those of
    /// the noted nodes that stand from `begin` on. If `step` is a step to search for, each is searched with
    /// everything below it. Otherwise the steps after `step` are followed from each that satisfies it, which
    /// noted nodes do.
    struct Row {
        std::size_t step = 0;
        NodeList::const_iterator next;  // equal to `end` for noted nodes
        NodeList::const_iterator end;
        std::size_t begin = 0;

        bool is_noted() const { return next == end; }
    };

    void run();
    Node* take_noted();
    void visit(Node* node, std::size_t step);
    void follow(Node* node, std::size_t step);
    void search(Node* node, std::size_t step);
    void follow_children(Row row);
    void search_children(Row row);
    void add_rest(const Row& row);
    bool is_match(Node* node, std::size_t step);
    bool goes_on_below_match(std::size_t step) const;
    void add_children(const Node* node, std::size_t step);
    void note(std::size_t step);

    /// Whether nodes that satisfy the step are searched for at every depth, rather than among children.
    bool is_searched(std::size_t step) const { return step == 0 || steps[step - 1].is_empty(); }

    bool is_last(std::size_t step) const { return step + 1 == steps.size(); }

    std::vector<Step> steps;
    NameComparator& names;
    Results& results;
    std::vector<Row> rows;     // the next one at the back
    std::vector<Node*> noted;  // likewise
    Candidates selected;       // what is noted next
};

/// Selects the nodes at the end of `path`, starting at `node`, or none if that is null.
/// \return whether there is a path: false if it is empty or all white space.
bool select_nodes(Node* node, std::string_view path, NameComparator& names, Results& results);

}  // namespace quxml

#endif
