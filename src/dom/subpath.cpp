// Sub-paths: which leading part of a path of names ends at a node.
//
// The climb starts at the node and visits the components of the path from the last one to the first. A
// component that names the current node takes the climb one node up; any other is skipped. The climb never
// skips a node.

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <deque>
#include <locale>
#include <vector>

#include "NodeAccess.h"
#include "split.h"

namespace quxml {

namespace {

/// The names of the path without empty ones at its front.
std::deque<std::string> get_components(const std::string& path) {
    std::deque<std::string> components = split(path, "/");
    while (!components.empty() && components.front().empty())
        components.pop_front();
    return components;
}

/// The nodes that the climb from `node` matches, the lowest first.
std::vector<const Node*> climb(const Node* node, const std::deque<std::string>& components,
                               const std::locale& locale) {
    std::vector<const Node*> matched;
    for (auto component = components.rbegin(); component != components.rend() && node != nullptr;
         ++component) {
        if (!boost::algorithm::iequals(NodeAccess::name(*node), *component, locale))
            continue;
        matched.push_back(node);
        node = node->get_parent();
    }
    return matched;
}

}  // namespace

std::string Node::get_subpath_for(const std::string& path) {
    const std::locale locale;
    const std::deque<std::string> components = get_components(path);
    const std::vector<const Node*> matched = climb(this, components, locale);
    if (matched.empty())
        return {};
    if (!boost::algorithm::iequals(NodeAccess::name(*matched.back()), components.front(), locale))
        return {};
    std::string subpath;
    for (auto node = matched.rbegin(); node != matched.rend(); ++node)
        subpath += "/" + NodeAccess::name(**node);
    // Deliberate: compared with the path as it was passed, with its leading or trailing "/" or without.
    if (boost::algorithm::iequals(subpath, path, locale))
        return {};
    return subpath;
}

}  // namespace quxml
