// SPDX-License-Identifier: MIT

// Each path knows what is below it by name, so an element is looked up by its parent's path and its own name, and no path is
// ever put together. Attributes are looked up in the same way: there can be as many names of them as of children. The tree
// is walked along a list of what is still to be visited, so a deep tree takes no more stack.

#include "trees/distinct_paths.h"

#include <quxml/Attribute.h>

#include <utility>

#include "terminal/terminal.h"
#include "trees/text.h"

namespace tool {

void DistinctPaths::append(std::size_t parent, const std::string& name) {
    const std::size_t number = paths.size();
    DistinctPath path;
    path.name = name;
    path.parent = parent;
    path.depth = paths[parent].depth + 1;
    (is_attribute(path) ? paths[parent].attributes : paths[parent].children).push_back(number);
    paths.push_back(std::move(path));
    known.emplace_back();
}

/// Counts one more, and gives the number of its path.
std::size_t DistinctPaths::count(std::size_t parent, const std::string& name) {
    const auto [place, is_new] = known[parent].try_emplace(name, paths.size());
    const std::size_t number = place->second;
    if (is_new)
        append(parent, name);
    ++paths[number].count;
    return number;
}

void DistinctPaths::count_attributes(const quxml::Element& element, std::size_t path) {
    for (const quxml::Attribute* attribute : element.get_attributes()) {
        DistinctPath& counted = paths[count(path, '@' + attribute->get_name())];
        if (counted.example.empty())
            counted.example = quote_excerpt(attribute->get_value());
    }
}

void DistinctPaths::add(const quxml::Element& root) {
    std::vector<std::pair<const quxml::Element*, std::size_t>> pending{{&root, 0}};
    while (!pending.empty()) {
        const auto [element, parent] = pending.back();
        pending.pop_back();
        const std::size_t path = count(parent, element->get_name());
        count_attributes(*element, path);
        if (paths[path].example.empty())
            paths[path].example = quote_excerpt(get_text(*element));
        const quxml::NodeList children = element->get_children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (const auto* below = dynamic_cast<const quxml::Element*>(*child))
                pending.emplace_back(below, path);
        }
    }
}

}  // namespace tool
