// SPDX-License-Identifier: MIT

// Sub-paths, for every node of a tree, compared with a second implementation that follows the rules word by word.
//
// Input: a path, a line feed, a tree (see `tree_input.h`), at most 512 bytes: the second implementation builds its
// texts again for each name, and more nodes or components add no new case.

#include <deque>
#include <locale>
#include <string>

#include "check.h"
#include "tree_input.h"

namespace {

using quxml::Node;

constexpr std::size_t longest_input = 512;

bool is_equal_ignoring_case(const std::string& a, const std::string& b) {
    const std::locale locale;
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::toupper(a[i], locale) != std::toupper(b[i], locale))
            return false;
    }
    return true;
}

std::deque<std::string> split_at_slashes(const std::string& path) {
    std::deque<std::string> components(1);
    for (const char c : path) {
        if (c == '/')
            components.emplace_back();
        else
            components.back() += c;
    }
    return components;
}

std::string get_expected_subpath(const Node* node, const std::string& path) {
    std::deque<std::string> components = split_at_slashes(path);
    while (!components.empty() && components.front().empty())
        components.pop_front();
    std::deque<std::string> matched;
    for (std::size_t i = components.size(); i > 0 && node != nullptr; --i) {
        if (is_equal_ignoring_case(node->get_name(), components[i - 1])) {
            matched.push_front(node->get_name());
            node = node->get_parent();
        }
    }
    std::string candidate;
    for (const std::string& name : matched)
        candidate += "/" + name;
    if (matched.empty() || !is_equal_ignoring_case(matched.front(), components.front()) ||
        is_equal_ignoring_case(candidate, path))
        return "";
    return candidate;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_input)
        return 0;
    quxml_fuzz::PathAndTree input(quxml_fuzz::to_text(data, size));
    for (Node* node : quxml_fuzz::list_nodes(input.document.get_root_node())) {
        quxml_fuzz::check_same("get_subpath_for", node->get_subpath_for(input.path),
                               get_expected_subpath(node, input.path), input.path);
    }
    return 0;
}
