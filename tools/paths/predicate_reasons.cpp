// SPDX-License-Identifier: MIT
#include "paths/predicate_reasons.h"

#include "paths/DistinctWords.h"
#include "paths/surroundings.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

std::string count(std::size_t number, const char* noun, const char* plural) {
    return std::to_string(number) + ' ' + (number == 1 ? noun : plural);
}

std::string get_beginning(const std::string& path, const Nodes& nodes) {
    return path + " matches " + count(nodes.size(), "node", "nodes");
}

namespace {

/// What is there instead of what was asked for.
std::string list_instead(const DistinctWords& words, const std::string& wanted, bool quoted) {
    return "; there is " + words.list(quoted) + words.ask_for(wanted);
}

std::string get_reason_for_no_value(const std::string& beginning, const Nodes& nodes,
                                    const Predicate& predicate) {
    return beginning + "; none has " + quote(escape_controls(predicate.value)) + " as its attribute " +
           predicate.name + list_instead(get_values(nodes, predicate.name), predicate.value, true);
}

}  // namespace

std::string get_reason_for_no_attribute(const std::string& path, const Nodes& nodes,
                                        const std::string& name) {
    const DistinctWords attributes = get_attributes(nodes);
    const std::string beginning = get_beginning(path, nodes) + "; none has ";
    if (attributes.is_empty() && !get_names(get_children(nodes)).has(name))
        return beginning + "any attribute";
    if (get_names(get_children(nodes)).has(name))
        return beginning + "an attribute " + name + "; there is a child of that name: write [" + name +
               "=...], or /" + name;
    return beginning + "an attribute " + name + list_instead(attributes, name, false);
}

namespace {

std::string get_reason_for_attribute(const std::string& path, const Nodes& nodes,
                                     const Predicate& predicate) {
    if (!get_attributes(nodes).has(predicate.name))
        return get_reason_for_no_attribute(path, nodes, predicate.name);
    return get_reason_for_no_value(get_beginning(path, nodes), nodes, predicate);
}

std::string get_reason_for_child(const std::string& path, const Nodes& nodes, const Predicate& predicate) {
    const Nodes children = get_children(nodes);
    const DistinctWords names = get_names(children);
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
    const DistinctWords items = get_values(nodes, "item");
    const std::string beginning = get_beginning(path, nodes) + "; none has ";
    if (items.is_empty())
        return beginning + "an attribute item";
    return beginning + quote(escape_controls(predicate.value)) + " as its attribute item" +
           list_instead(items, predicate.value, true);
}

}  // namespace

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

}  // namespace tool
