// SPDX-License-Identifier: MIT
#include "values.h"

#include <cstddef>

#include "dom/NodeAccess.h"
#include "dom/failure.h"
#include "dom/trim.h"

namespace quxml {

std::string_view trim_quotes(std::string_view text) {
    return trim(text, "\"'");
}

namespace {

/// Cuts `query` at its only "="; without one, the second half is null.
NameAndValue cut_pair(std::string_view query, const char* complaint) {
    const std::size_t equal = query.find('=');
    if (equal == std::string_view::npos)
        return {query, {}};
    if (query.rfind('=') != equal)
        throw_invalid_argument(complaint);
    return {query.substr(0, equal), trim_quotes(query.substr(equal + 1))};
}

}  // namespace

NameAndValue read_attribute_pair(std::string_view query) {
    return cut_pair(query, "Can at most have one equal sign in attribute queries");
}

NameAndValue read_child_value(std::string_view query) {
    constexpr auto* complaint = "Search for child node must contain exactly one equals sign";
    const NameAndValue pair = cut_pair(query, complaint);
    if (pair.second.data() == nullptr)
        throw_invalid_argument(complaint);
    return pair;
}

bool has_child_value(const Node* node, std::string_view name, std::string_view value) {
    if (node == nullptr)
        return false;
    for (const Node* child : NodeAccess::children(*node)) {
        if (NodeAccess::name(*child) != name || as_element(child) == nullptr)
            continue;
        const TextNode* text = first_text(*child);
        if (text != nullptr && NodeAccess::content(*text) == value)
            return true;
    }
    return false;
}

void keep_with_attribute(std::string_view query, Candidates& nodes) {
    const NameAndValue attribute = read_attribute_pair(query);
    keep_if(nodes, [&attribute](const Node* node) {
        const Element* element = node == nullptr ? nullptr : as_element(node);
        const Attribute* found = element == nullptr ? nullptr : find_attribute(*element, attribute.first);
        if (found == nullptr)
            return false;
        // Deliberate: an empty value, written as nothing or as quotes alone, asks for the attribute, not for
        // its value. Test: Values/BothRoutes.select/quotes_alone.
        return attribute.second.empty() || NodeAccess::value(*found) == attribute.second;
    });
}

void keep_with_child_value(std::string_view query, Candidates& nodes) {
    const NameAndValue child = read_child_value(query);
    keep_if(nodes, [&child](const Node* node) { return has_child_value(node, child.first, child.second); });
}

void keep_with_literal(std::string_view literal, Candidates& nodes) {
    const bool is_kept =
        nodes.size() == 1 && nodes.front() != nullptr &&
        has_child_value(nodes.front()->get_parent(), NodeAccess::name(*nodes.front()), trim_quotes(literal));
    if (!is_kept)
        nodes.clear();
}

}  // namespace quxml
