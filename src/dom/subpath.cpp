// Sub-paths: which leading part of a path of names ends at a node.
//
// The climb starts at the node and visits the components of the path from the last one to the first. A
// component that names the current node takes the climb one node up; any other is skipped. The climb never
// skips a node.

#include <deque>
#include <vector>

#include "CaseFold.h"
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
                               const CaseFold& fold) {
    std::vector<const Node*> matched;
    for (auto component = components.rbegin(); component != components.rend() && node != nullptr;
         ++component) {
        if (!fold.equals(NodeAccess::name(*node), *component))
            continue;
        matched.push_back(node);
        node = node->get_parent();
    }
    return matched;
}

}  // namespace

std::string Node::get_subpath_for(const std::string& path) {
    const CaseFold fold;
    const std::deque<std::string> components = get_components(path);
    const std::vector<const Node*> matched = climb(this, components, fold);
    if (matched.empty())
        return {};
    if (!fold.equals(NodeAccess::name(*matched.back()), components.front()))
        return {};
    std::string subpath;
    for (auto node = matched.rbegin(); node != matched.rend(); ++node)
        subpath += "/" + NodeAccess::name(**node);
    // Deliberate: compared with the path as it was passed, with its leading or trailing "/" or without.
    // Tests: Rows/Subpath.is/the_whole_path_without_its_slash_wanted,
    // Rows/Subpath.is/the_whole_path_ends_in_a_slash_wanted.
    if (fold.equals(subpath, path))
        return {};
    return subpath;
}

}  // namespace quxml
