// SPDX-License-Identifier: MIT

// Where nodes are, as paths of the library's own language.
//
// A step is a name and, if it has siblings of the same name, its position among these. Queries compare names
// without regard to case, under the global locale, and so does this.

#include "quxml/extras/paths.h"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <vector>

#include "quxml/extras/Fields.h"
#include "quxml/extras/ranges.h"

namespace quxml {
namespace extras {

namespace {

/// A name in which letters that queries do not tell apart are the same.
std::string fold(std::string name, const std::locale& locale) {
    std::use_facet<std::ctype<char>>(locale).toupper(name.data(), name.data() + name.size());
    return name;
}

std::string make_step(const std::string& name, std::size_t position, std::size_t count) {
    return count == 1 ? name : name + "[position()=" + std::to_string(position) + ']';
}

bool is_attribute(const Node& node) {
    return dynamic_cast<const Attribute*>(&node) != nullptr;
}

/// The step of one node, found by looking at each of its siblings.
std::string find_step(const Node& node, const std::locale& locale) {
    const Element* parent = node.get_parent();
    const std::string& name = name_of(node);
    if (parent == nullptr || name.empty())
        return name;
    if (is_attribute(node))
        return '@' + name;
    const std::string folded = fold(name, locale);
    std::size_t position = 0;
    std::size_t count = 0;
    for (const Node& sibling : children(*parent)) {
        const std::string& other = name_of(sibling);
        if (other != name && (other.size() != name.size() || fold(other, locale) != folded))
            continue;
        ++count;
        if (&sibling == &node)
            position = count;
    }
    return make_step(name, position, std::max<std::size_t>(count, 1));
}

/// Puts together what `get_step` gives for the node and for each of its ancestors.
template <class GetStep>
std::string join(const Node& node, GetStep get_step) {
    std::vector<const Node*> line;
    for (const Node* step = &node; step != nullptr; step = step->get_parent())
        line.push_back(step);
    std::string path;
    for (auto step = line.rbegin(); step != line.rend(); ++step)
        path.append(1, '/').append(get_step(**step));
    return path;
}

}  // namespace

std::string path_of(const Node& node) {
    const std::locale locale;
    return join(node, [&locale](const Node& step) { return find_step(step, locale); });
}

void NodePaths::number_children(const Node& parent) {
    const std::locale locale;
    std::unordered_map<std::string, std::size_t> counts;
    for (const Node& child : children(parent))
        ++counts[fold(name_of(child), locale)];
    std::unordered_map<std::string, std::size_t> positions;
    for (const Node& child : children(parent)) {
        const std::string& name = name_of(child);
        const std::string folded = fold(name, locale);
        steps[&child] = name.empty() ? name : make_step(name, ++positions[folded], counts.at(folded));
    }
}

const std::string& NodePaths::get_step(const Node& node) {
    const auto known = steps.find(&node);
    if (known != steps.end())
        return known->second;
    if (node.get_parent() != nullptr && !is_attribute(node))
        number_children(*node.get_parent());
    else
        steps[&node] = find_step(node, std::locale());
    return steps[&node];
}

std::string NodePaths::get(const Node& node) {
    return join(node, [this](const Node& step) -> const std::string& { return get_step(step); });
}

}  // namespace extras
}  // namespace quxml
