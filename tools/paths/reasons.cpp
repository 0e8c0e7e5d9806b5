// SPDX-License-Identifier: MIT

// The path is followed until a step selects nothing. What that step could have selected is then looked at: the children
// of the nodes so far, everything below them for a search, or what was left before the predicate that left nothing. All of
// it is looked at once, so a reason costs no more than a query.

#include "paths/reasons.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "paths/notes.h"
#include "terminal/similar.h"
#include "terminal/terminal.h"
#include "terminal/words.h"
#include "trees/tree.h"

namespace tool {

namespace {

/// Words, each once, in the order in which they come.
class Words {
public:
    void add(const std::string& word) {
        if (known.insert(word).second)
            words.push_back(word);
    }

    bool has(const std::string& word) const { return known.count(word) != 0; }
    bool is_empty() const { return words.empty(); }

    /// The first of them, one after the other.
    std::string list(bool quoted) const {
        constexpr std::size_t most = 8;
        std::string text;
        for (std::size_t i = 0; i != std::min(most, words.size()); ++i)
            text += (i == 0 ? "" : ", ") +
                    (quoted ? quote(shorten(escape_controls(words[i]))) : shorten(words[i]));
        if (words.size() > most)
            text += " and " + std::to_string(words.size() - most) + " more";
        return text;
    }

    std::string ask_for(const std::string& word) const { return ask_for_similar(word, words); }

private:
    /// No character is cut in two.
    static std::string shorten(const std::string& word) {
        constexpr std::size_t longest = 40;
        if (word.size() <= longest)
            return word;
        std::size_t end = longest;
        while (end != 0 && !begins_character(word[end]))
            --end;
        return word.substr(0, end) + "...";
    }

    std::vector<std::string> words;
    std::unordered_set<std::string> known;
};

const quxml::Element* to_element(const quxml::Node* node) {
    return dynamic_cast<const quxml::Element*>(node);
}

void add_attributes(const quxml::Node* node, Words& words) {
    if (const quxml::Element* element = to_element(node))
        for (const quxml::Attribute* attribute : element->get_attributes())
            words.add(attribute->get_name());
}

Words get_attributes(const Nodes& nodes) {
    Words words;
    for (const quxml::Node* node : nodes)
        add_attributes(node, words);
    return words;
}

Words get_values(const Nodes& nodes, const std::string& attribute) {
    Words words;
    for (const quxml::Node* node : nodes) {
        const quxml::Element* element = to_element(node);
        if (element != nullptr && element->get_attribute(attribute) != nullptr)
            words.add(element->get_attribute_value(attribute));
    }
    return words;
}

/// The elements in these nodes.
Nodes get_children(const Nodes& nodes) {
    Nodes children;
    for (const quxml::Node* node : nodes) {
        for (quxml::Node* child : node->get_children()) {
            if (to_element(child) != nullptr)
                children.push_back(child);
        }
    }
    return children;
}

Words get_names(const Nodes& nodes) {
    Words words;
    for (const quxml::Node* node : nodes)
        words.add(node->get_name());
    return words;
}

Words get_texts(const Nodes& nodes, const std::string& name) {
    Words words;
    for (const quxml::Node* node : nodes) {
        if (node->get_name() == name)
            words.add(get_text(*node));
    }
    return words;
}

std::string count(std::size_t number, const char* noun, const char* plural) {
    return std::to_string(number) + ' ' + (number == 1 ? noun : plural);
}

std::string get_beginning(const std::string& path, const Nodes& nodes) {
    return path + " matches " + count(nodes.size(), "node", "nodes");
}

/// What is there instead of what was asked for.
std::string list_instead(const Words& words, const std::string& wanted, bool quoted) {
    return "; there is " + words.list(quoted) + words.ask_for(wanted);
}

// ---- Predicates ----

std::string advise_attribute(const Words& attributes, const std::string& name) {
    return attributes.has(name)
               ? "; there is an attribute of that name: write [@" + name + "], or --attribute " + name
               : "";
}

std::string get_reason_for_no_value(const std::string& beginning, const Nodes& nodes,
                                    const Predicate& predicate) {
    return beginning + "; none has " + quote(escape_controls(predicate.value)) + " as its attribute " +
           predicate.name + list_instead(get_values(nodes, predicate.name), predicate.value, true);
}

std::string get_reason_for_attribute(const std::string& path, const Nodes& nodes,
                                     const Predicate& predicate) {
    if (!get_attributes(nodes).has(predicate.name))
        return get_reason_for_no_attribute(path, nodes, predicate.name);
    return get_reason_for_no_value(get_beginning(path, nodes), nodes, predicate);
}

std::string get_reason_for_child(const std::string& path, const Nodes& nodes, const Predicate& predicate) {
    const Nodes children = get_children(nodes);
    const Words names = get_names(children);
    const std::string beginning = get_beginning(path, nodes) + "; none has a child " + predicate.name;
    if (names.has(predicate.name))
        return beginning + " with the text " + quote(escape_controls(predicate.value)) +
               list_instead(get_texts(children, predicate.name), predicate.value, true);
    if (get_attributes(nodes).has(predicate.name))
        return beginning + "; there is an attribute of that name: write [@" + predicate.name + "=...]";
    return beginning +
           (names.is_empty() ? "; there are no children" : list_instead(names, predicate.name, false));
}

std::string get_reason_for_item(const std::string& path, const Nodes& nodes, const Predicate& predicate) {
    const Words items = get_values(nodes, "item");
    const std::string beginning = get_beginning(path, nodes) + "; none has ";
    if (items.is_empty())
        return beginning + "an attribute item";
    return beginning + quote(escape_controls(predicate.value)) + " as its attribute item" +
           list_instead(items, predicate.value, true);
}

std::string get_reason_for_predicate(const std::string& path, const Nodes& nodes,
                                     const Predicate& predicate) {
    switch (predicate.kind) {
        case PredicateKind::attribute:
        case PredicateKind::test_attribute:
            return get_reason_for_attribute(path, nodes, predicate);
        case PredicateKind::child_value:
        case PredicateKind::test_child_value:
            return get_reason_for_child(path, nodes, predicate);
        case PredicateKind::item:
        case PredicateKind::test_item:
            return get_reason_for_item(path, nodes, predicate);
        case PredicateKind::literal:
            return "";
        default:
            return get_beginning(path, nodes) +
                   "; none is at such a position among the children of its parent";
    }
}

// ---- Steps ----

/// All elements below some nodes, with these themselves if they are elements.
Nodes get_all(const Nodes& nodes) {
    Nodes all;
    Nodes pending(nodes.rbegin(), nodes.rend());
    while (!pending.empty()) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        if (to_element(node) == nullptr)
            continue;
        all.push_back(node);
        const quxml::NodeList children = node->get_children();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return all;
}

std::string get_reason_for_no_child(const std::string& path, const Nodes& nodes, const std::string& name,
                                    const char* called) {
    const Nodes children = get_children(nodes);
    const Words names = get_names(children);
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
    const Words names = get_names(all);
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
        const std::vector<Note> notes = get_notes(step);
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

std::string get_reason_for_no_attribute(const std::string& path, const Nodes& nodes,
                                        const std::string& name) {
    const Words attributes = get_attributes(nodes);
    const std::string beginning = get_beginning(path, nodes) + "; none has ";
    if (attributes.is_empty() && !get_names(get_children(nodes)).has(name))
        return beginning + "any attribute";
    if (get_names(get_children(nodes)).has(name))
        return beginning + "an attribute " + name + "; there is a child of that name: write [" + name +
               "=...], or /" + name;
    return beginning + "an attribute " + name + list_instead(attributes, name, false);
}

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
