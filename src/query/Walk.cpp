// The walk of a query. What a recursive walk would keep on the stack stands in two lists: nodes that remain
// to be visited, and tasks, each of which says what is to be done with the last nodes of the first list. A
// node that is visited may add a task for its children, and that is done before everything that was there
// before. So nodes are visited in the order of a depth-first walk, and predicates are judged in that order.
//
// The children of a node are noted when it is visited: a comparator that moves nodes or adds some does not
// disturb the walk.

#include "Walk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "dom/NodeAccess.h"

namespace quxml {

Walk::Walk(const StringComparator& name_comparator, std::deque<std::string> step_texts, NodeSet& found)
    : comparator(name_comparator), results(found) {
    steps.reserve(step_texts.size());
    for (std::string& step : step_texts)
        steps.emplace_back(std::move(step));
}

void Walk::start_at(Node* node) {
    if (steps.front().accepts(node, comparator))
        follow_from(node);
}

void Walk::follow_from(Node* node) {
    follow(node, 0);
    run();
}

void Walk::search_from(Node* node) {
    search(node, 0);
    run();
}

void Walk::run() {
    while (!tasks.empty()) {
        const Task task = tasks.back();
        Node* node = nodes.back();
        nodes.pop_back();
        if (nodes.size() == task.begin)
            tasks.pop_back();
        if (is_searched(task.step)) {
            search(node, task.step);
        } else {
            follow(node, task.step);
        }
    }
}

void Walk::follow(Node* node, std::size_t step) {
    if (is_last(step)) {
        results.insert(results.end(), node);
    } else if (steps[step].is_empty()) {
        add_task(std::array<Node*, 1>{node}, step + 1);
    } else {
        steps[step + 1].select_children(node, comparator, selected);
        add_task(selected, step + 1);
    }
}

void Walk::search(Node* node, std::size_t step) {
    if (steps[step].accepts(node, comparator)) {
        follow(node, step);
        // Deliberate: a match ends the search of its branch, except for a final "*".
        // Test: Searches/ExactMatch.Selects/ASearchStopsAtTheOuterMatch.
        if (!is_last(step) || !steps[step].is_star())
            return;
    }
    add_task(NodeAccess::children(*node), step);
}

template <typename Nodes>
void Walk::add_task(const Nodes& added, std::size_t step) {
    if (added.empty())
        return;
    if (tasks.empty() || tasks.back().step != step)
        tasks.push_back({step, nodes.size()});
    nodes.resize(nodes.size() + added.size());
    std::copy(added.begin(), added.end(), nodes.rbegin());
}

}  // namespace quxml
