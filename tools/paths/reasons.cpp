// SPDX-License-Identifier: MIT

// The path is followed until a step selects nothing. What that step could have selected is then looked at: the children
// of the nodes so far, everything below them for a search, or what was left before the predicate that left nothing. All of
// it is looked at once, so a reason costs no more than a query.

#include "paths/reasons.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "paths/DistinctWords.h"
#include "paths/PathWalk.h"
#include "paths/notes.h"
#include "paths/predicate_reasons.h"
#include "paths/surroundings.h"

namespace tool {

namespace {

std::string advise_attribute(const DistinctWords& attributes, const std::string& name) {
    return attributes.has(name)
               ? "; there is an attribute of that name: write [@" + name + "], or --attribute " + name
               : "";
}

std::string get_reason_for_no_child(const std::string& path, const Nodes& nodes, const std::string& name,
                                    const char* called) {
    const Nodes children = get_children(nodes);
    const DistinctWords names = get_names(children);
    const std::string beginning =
        nodes.size() == 1 ? path + " has " : get_beginning(path, nodes) + ", which have ";
    const std::string advice = advise_attribute(get_attributes(nodes), name);
    if (children.empty())
        return beginning + "no elements in " + (nodes.size() == 1 ? "it" : "them") + advice;
    const std::string similar = advice.empty() ? names.ask_for(name) : advice;
    return beginning + count(children.size(), "child", "children") + ": " + names.list(false) + "; none" +
           called + name + similar;
}

std::string get_reason_for_no_find(const std::string& path, const Nodes& all, const std::string& name,
                                   const char* called) {
    const DistinctWords names = get_names(all);
    const std::string advice = advise_attribute(get_attributes(all), name);
    return "nothing " + (path.empty() ? "in the document" : "below " + path) + called + name +
           (advice.empty() ? names.ask_for(name) : advice);
}

/// A path as far as it has been followed.
class Place {
public:
    Place(const PathWalk& path_walk, NameMatch names)
        : walk(path_walk), called(names == NameMatch::prefix ? " begins with " : " is called ") {}

    void go(const PathStep& step, Nodes selected) {
        path += get_separator(step) + step.text;
        nodes = std::move(selected);
    }

    std::string get_reason(const PathStep& step, quxml::Node* root) const {
        const bool is_said = get_notes_on_step(step);
        if (is_said || step.kind == StepKind::nothing)
            return "";
        if (step.kind == StepKind::start)
            return get_reason_at_start(step, root);
        if (step.kind == StepKind::all_children)
            return get_beginning(path, nodes) + "; there is nothing in " +
                   (nodes.size() == 1 ? "it" : "them");
        return step.kind == StepKind::children ? get_reason_among_children(step)
                                               : get_reason_of_search(step, root);
    }

private:
    static bool get_notes_on_step(const PathStep& step) {
        const Notes notes = get_notes(step);
        return std::any_of(notes.begin(), notes.end(),
                           [](const Note& note) { return note.kind == NoteKind::surprise; });
    }

    static std::string get_separator(const PathStep& step) {
        return step.kind == StepKind::search || step.kind == StepKind::search_below ? "//" : "/";
    }

    std::string get_reason_at_start(const PathStep& step, quxml::Node* root) const {
        if (!walk.passes_name_test(root, step))
            return "the root element" + std::string(" is called ") + root->get_name() + ", not " +
                   step.name_test;
        return get_reason_for_predicate('/' + step.name_test, {root}, step.predicates[0]);
    }

    std::string get_reason_of_search(const PathStep& step, quxml::Node* root) const {
        Nodes all = get_all(step.kind == StepKind::search ? Nodes{root} : get_children(nodes));
        const Nodes below = all;
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [&](quxml::Node* node) { return !walk.passes_name_test(node, step); }),
                  all.end());
        if (all.empty())
            return get_reason_for_no_find(path, below, step.name_test, called);
        return get_reason_for_predicate(path + "//" + step.name_test, all, step.predicates[0]);
    }

    std::string get_reason_among_children(const PathStep& step) const {
        Nodes left = filter(step, 0);
        if (left.empty())
            return get_reason_for_no_child(path, nodes, step.name_test, called);
        std::string place = path + '/' + step.name_test;
        for (std::size_t i = 0; i != step.predicates.size(); ++i) {
            Nodes next = filter(step, i + 1);
            if (next.empty())
                return get_reason_for_predicate(place, left, step.predicates[i]);
            place += '[' + step.predicates[i].text + ']';
            left = std::move(next);
        }
        return "";
    }

    Nodes filter(const PathStep& step, std::size_t predicates) const {
        Nodes left;
        for (quxml::Node* node : nodes) {
            const quxml::NodeList children = walk.get_children(node, step, predicates);
            left.insert(left.end(), children.begin(), children.end());
        }
        return left;
    }

    const PathWalk& walk;
    const char* called;
    std::string path;
    Nodes nodes;
};

}  // namespace

std::string get_reason(quxml::Node* root, const std::vector<PathStep>& steps, NameMatch names) {
    const PathWalk walk(names);
    Place place(walk, names);
    Nodes nodes{root};
    for (const PathStep& step : steps) {
        nodes = walk.take(step, nodes);
        if (nodes.empty())
            return place.get_reason(step, root);
        place.go(step, nodes);
    }
    return "";
}

}  // namespace tool
