// The walk of a query. What a recursive walk would keep on the stack stands in a list of tasks: a task may
// add further ones, for the children of its node, and they are done before everything that was in the list
// before them. So nodes are visited in the order of a depth-first walk, and predicates are judged in that
// order.

#include "Walk.h"

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
    run({node, 0, false});
}

void Walk::search_from(Node* node) {
    run({node, 0, true});
}

void Walk::run(Task first) {
    tasks.push_back(first);
    while (!tasks.empty()) {
        const Task task = tasks.back();
        tasks.pop_back();
        if (task.is_search) {
            search(task);
        } else {
            follow(task);
        }
    }
}

void Walk::follow(const Task& task) {
    if (is_last(task.step)) {
        results.insert(results.end(), task.node);
    } else if (steps[task.step].is_empty()) {
        tasks.push_back({task.node, task.step + 1, true});
    } else {
        steps[task.step + 1].select_children(task.node, comparator, selected);
        add_tasks(selected, task.step + 1, false);
    }
}

void Walk::search(const Task& task) {
    Step& step = steps[task.step];
    if (step.accepts(task.node, comparator)) {
        follow(task);
        // Deliberate: a match ends the search of its branch, except for a final "*".
        if (!is_last(task.step) || !step.is_star())
            return;
    }
    add_tasks(NodeAccess::children(*task.node), task.step, true);
}

/// Adds one task for each node, the one for the first node to be done first.
template <typename Nodes>
void Walk::add_tasks(const Nodes& nodes, std::size_t step, bool is_search) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
        tasks.push_back({*node, step, is_search});
}

}  // namespace quxml
