// SPDX-License-Identifier: MIT

// The walk of a query.
//
// What a recursive walk would keep on the stack is kept in rows. A row is one or more nodes that remain to be
// visited for one step; what a visit adds goes to the end, and the last row is taken first. So nodes are
// visited in the order of a depth-first walk, predicates are judged in that order, and the stack does not
// grow.
//
// Most rows are nothing but a position in a list of children. The name of each child is tested when its turn
// comes, while the walk goes through memory in one direction. This needs children that stay where they are.
// A step with predicates has to see all its candidates at once: they are selected first, noted, and the row
// says from where on. A user's comparator may change the tree at any test: for it, all nodes are noted before
// the first of them is tested.
//
// An example: `r` has the children `a1`, with `b1` and `c1` below it, and `a2`, below which `c2` has the child
// `b2`. The digits only tell nodes apart. The path is `r/a[@k]//b`, and both `a` have the attribute. Its steps
// are, from 0 on: `r`, `a[@k]`, an empty one, and `b`, which is searched for because it comes after the empty
// one. Rows, with their step, and noted nodes, the next one last, after each visit:
//
//     visited   rows                  noted    found
//     r         1: noted              a2 a1
//     a1        1: noted  2: b1 c1    a2
//     b1        1: noted  2: c1       a2       b1
//     c1        1: noted              a2       b1
//     a2        2: c2                          b1
//     c2        3: b2                          b1
//     b2                                       b1 b2
//
// Each child of `a1` and `a2` stands for itself and everything below it: that is what the empty step means. A
// child that the empty step takes is noted for the next step and visited again at once; the table shows what is
// left after that.

#include "Walk.h"

#include <algorithm>
#include <utility>

#include "dom/NodeAccess.h"
#include "dom/trim.h"
#include "prefetch.h"

namespace quxml {

Walk::Walk(std::vector<Step> path_steps, NameComparator& comparator, Results& found)
    : steps(std::move(path_steps)), names(comparator), results(found) {}

void Walk::start_at(Node* node) {
    if (steps.front().accepts(node, names))
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
    while (!rows.empty()) {
        const Row row = rows.back();
        if (row.is_noted()) {
            visit(take_noted(), row.step);
            continue;
        }
        rows.pop_back();
        if (is_searched(row.step)) {
            search_children(row);
        } else {
            follow_children(row);
        }
    }
}

Node* Walk::take_noted() {
    Node* node = noted.back();
    noted.pop_back();
    if (noted.size() == rows.back().begin)
        rows.pop_back();
    return node;
}

void Walk::visit(Node* node, std::size_t step) {
    if (is_searched(step)) {
        search(node, step);
    } else {
        follow(node, step);
    }
}

void Walk::follow(Node* node, std::size_t step) {
    if (is_last(step)) {
        results.add(node);
    } else if (steps[step].is_empty()) {
        selected.clear();
        selected.push_back(node);
        note(step + 1);
    } else if (names.is_users() || steps[step + 1].has_predicates()) {
        steps[step + 1].select_children(node, names, selected);
        note(step + 1);
    } else {
        add_children(node, step + 1);
    }
}

void Walk::search(Node* node, std::size_t step) {
    if (is_match(node, step)) {
        follow(node, step);
        if (!goes_on_below_match(step))
            return;
    }
    add_children(node, step);
}

void Walk::follow_children(Row row) {
    const NameTest test = steps[row.step].test_of_child(names);
    while (row.next != row.end) {
        Node* node = *row.next++;
        if (!test.accepts(node)) {
            prefetch_following(node);
            continue;
        }
        if (is_last(row.step)) {
            results.add(node);
        } else {
            add_rest(row);
            return follow(node, row.step);
        }
    }
}

void Walk::search_children(Row row) {
    Step& step = steps[row.step];
    const NameTest test = step.test_of_node(names);
    while (row.next != row.end) {
        Node* node = *row.next++;
        if (test.accepts(node) && step.accepts_by_predicate(node)) {
            if (!is_last(row.step)) {
                add_rest(row);
                return follow(node, row.step);
            }
            results.add(node);
            if (!goes_on_below_match(row.step))
                continue;
        }
        prefetch_following(node);
        const NodeList& children = NodeAccess::children(*node);
        if (!children.empty()) {
            add_rest(row);
            row.next = children.begin();
            row.end = children.end();
        }
    }
}

// Deliberate: a user who refuses a node for the last step is asked again, and the second answer counts.
// Test: Handlers.it_is_deliberate_that_a_search_asks_twice_before_the_last_step_is_refused.
bool Walk::is_match(Node* node, std::size_t step) {
    return steps[step].accepts(node, names) ||
           (names.is_users() && is_last(step) && steps[step].accepts(node, names));
}

// Deliberate: a match ends the search of its branch, except for a final "*".
// Test: Searches/ExactMatch.selects/a_search_stops_at_the_outer_match.
bool Walk::goes_on_below_match(std::size_t step) const {
    return is_last(step) && steps[step].is_star();
}

void Walk::add_rest(const Row& row) {
    if (row.next != row.end)
        rows.push_back(row);
}

void Walk::add_children(const Node* node, std::size_t step) {
    const NodeList& children = NodeAccess::children(*node);
    if (names.is_users()) {
        selected.assign(children.begin(), children.end());
        note(step);
    } else {
        add_rest({step, children.begin(), children.end(), 0});
    }
}

/// Adds the selected nodes to be visited before all others, the first of them first. They join the next row if
/// that is of the same step.
void Walk::note(std::size_t step) {
    if (selected.empty())
        return;
    if (rows.empty() || !rows.back().is_noted() || rows.back().step != step) {
        const Row row = {step, {}, {}, noted.size()};
        rows.push_back(row);
    }
    noted.resize(noted.size() + selected.size());
    std::copy(selected.begin(), selected.end(), noted.rbegin());
}

bool select_nodes(Node* node, std::string_view path, NameComparator& names, Results& results) {
    path = trim_space(path);
    if (path.empty())
        return false;
    if (node == nullptr)
        return true;
    const bool is_search = path.substr(0, 2) == "//";
    path.remove_prefix(is_search ? 2 : path.front() == '/' ? 1 : 0);
    Walk walk(read_steps(path), names, results);
    if (is_search) {
        walk.search_from(node);
    } else {
        walk.start_at(node);
    }
    return true;
}

}  // namespace quxml
