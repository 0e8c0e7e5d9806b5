// The walk of a query. What a recursive walk would keep on the stack stands in a list of tasks: a task may
// add further ones, for the children of its node, and they are done before everything that was in the list
// before them. So nodes are visited in the order of a depth-first walk, and predicates are judged in that
// order. One task stands for all the siblings that remain to be searched: an entry for each of them would make
// a search take twice as long.

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
    follow(node, 0);
    run();
}

void Walk::search_from(Node* node) {
    search(node, 0);
    run();
}

void Walk::run() {
    while (!tasks.empty()) {
        Task& task = tasks.back();
        const std::size_t step = task.step;
        if (Node* node = task.node) {
            tasks.pop_back();
            follow(node, step);
            continue;
        }
        Node* node = *task.next;
        if (++task.next == task.end)
            tasks.pop_back();
        search(node, step);
    }
}

void Walk::follow(Node* node, std::size_t step) {
    if (is_last(step)) {
        results.insert(results.end(), node);
    } else if (steps[step].is_empty()) {
        search(node, step + 1);
    } else {
        steps[step + 1].select_children(node, comparator, selected);
        for (auto next = selected.rbegin(); next != selected.rend(); ++next)
            tasks.push_back({step + 1, *next, {}, {}});
    }
}

void Walk::search(Node* node, std::size_t step) {
    if (steps[step].accepts(node, comparator)) {
        follow(node, step);
        // Deliberate: a match ends the search of its branch, except for a final "*".
        if (!is_last(step) || !steps[step].is_star())
            return;
    }
    const NodeList& children = NodeAccess::children(*node);
    if (!children.empty())
        tasks.push_back({step, nullptr, children.begin(), children.end()});
}

}  // namespace quxml
