#ifndef QUXML_QUERY_WALK_H
#define QUXML_QUERY_WALK_H

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "Candidates.h"
#include "Step.h"
#include "quxml/XPathHelper.h"

namespace quxml {

/// Walks a tree along the steps of a path and collects the nodes that the last step selects.
class Walk {
public:
    /// \param steps at least one.
    Walk(const StringComparator& comparator, std::deque<std::string> steps, NodeSet& results);

    /// Follows the steps from `node` if it satisfies the first one.
    void start_at(Node* node);

    /// Follows the steps from `node`, which has already satisfied the first one.
    void follow_from(Node* node);

    /// Searches `node` and everything below it for the first step, and follows the steps from each match.
    void search_from(Node* node);

private:
    /// What remains to be done with the nodes from `begin` on, one at least: to search them and everything
    /// below them for `step` if that is a step to search for, else to follow the steps after it, which they
    /// satisfy.
    struct Task {
        std::size_t step;
        std::size_t begin;
    };

    void run();
    void follow(Node* node, std::size_t step);
    void search(Node* node, std::size_t step);

    /// Adds nodes to be done before all others, the first of them first. They join the next task if that is
    /// the same.
    template <typename Nodes>
    void add_task(const Nodes& added, std::size_t step);

    /// Whether nodes that satisfy the step are searched for at every depth, rather than among children.
    bool is_searched(std::size_t step) const { return step == 0 || steps[step - 1].is_empty(); }

    bool is_last(std::size_t step) const { return step + 1 == steps.size(); }

    const StringComparator& comparator;
    std::vector<Step> steps;
    NodeSet& results;
    std::vector<Task> tasks;   // the next one at the back
    std::vector<Node*> nodes;  // likewise
    Candidates selected;
};

}  // namespace quxml

#endif
