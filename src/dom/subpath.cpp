// SPDX-License-Identifier: MIT

// Sub-paths: which leading part of a path of names ends at a node.
//
// The climb starts at the node and visits the components of the path from the last one to the first. A
// component that names the current node takes the climb one node up; any other is skipped. The climb never
// skips a node: what it matches is the chain of nodes from the first one up to the highest one.

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "CaseFold.h"
#include "NodeAccess.h"

namespace quxml {

namespace {

/// The path without empty names at its front.
std::string_view trim_front(std::string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return path;
}

/// The highest node that the climb from `node` matches, or null.
const Node* climb(const Node* node, std::string_view path, const CaseFold& fold) {
    const Node* matched = nullptr;
    for (bool has_more = true; has_more && node != nullptr;) {
        const std::size_t slash = path.rfind('/');
        has_more = slash != std::string_view::npos;
        const std::string_view component = path.substr(has_more ? slash + 1 : 0);
        path = path.substr(0, has_more ? slash : 0);
        if (!fold.equals(NodeAccess::name(*node), component))
            continue;
        matched = node;
        node = node->get_parent();
    }
    return matched;
}

/// The names from `top` down to `node`, with "/" before each.
std::string join_names(const Node* node, const Node* top) {
    std::size_t length = 0;
    for (const Node* named = node; named != top->get_parent(); named = named->get_parent())
        length += 1 + NodeAccess::name(*named).size();
    std::string names(length, '/');
    for (const Node* named = node; named != top->get_parent(); named = named->get_parent()) {
        const std::string& name = NodeAccess::name(*named);
        length -= name.size();
        names.replace(length, name.size(), name);
        --length;
    }
    return names;
}

}  // namespace

std::string Node::get_subpath_for(const std::string& path) {
    const CaseFold fold;
    const std::string_view components = trim_front(path);
    const Node* top = components.empty() ? nullptr : climb(this, components, fold);
    if (top == nullptr || !fold.equals(NodeAccess::name(*top), components.substr(0, components.find('/'))))
        return {};
    std::string subpath = join_names(this, top);
    // Deliberate: compared with the path as it was passed, with its leading or trailing "/" or without.
    // Tests: Rows/Subpath.is/the_whole_path_without_its_slash_wanted,
    // Rows/Subpath.is/the_whole_path_ends_in_a_slash_wanted.
    if (fold.equals(subpath, path))
        return {};
    return subpath;
}

}  // namespace quxml
