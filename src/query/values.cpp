#include "values.h"

#include <cstddef>
#include <stdexcept>

#include "dom/NodeAccess.h"
#include "dom/trim.h"

namespace quxml {

std::string trim_quotes(const std::string& text) {
    return trim(text, "\"'");
}

NameAndValue read_attribute_pair(const std::string& query) {
    const std::size_t equal = query.find('=');
    if (equal == std::string::npos)
        return {query, {}};
    if (query.rfind('=') != equal) {
        throw std::invalid_argument("Can at most have one equal sign in attribute queries");
    }
    return {query.substr(0, equal), trim_quotes(query.substr(equal + 1))};
}

NameAndValue read_child_value(const std::string& query) {
    const std::size_t equal = query.find('=');
    if (equal == std::string::npos || query.rfind('=') != equal) {
        throw std::invalid_argument("Search for child node must contain exactly one equals sign");
    }
    return {query.substr(0, equal), trim_quotes(query.substr(equal + 1))};
}

bool has_child_value(const Node* node, const std::string& name, const std::string& value) {
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

void keep_with_attribute(const NameAndValue& attribute, Candidates& nodes) {
    keep_if(nodes, [&attribute](const Node* node) {
        const Element* element = node == nullptr ? nullptr : as_element(node);
        const Attribute* found = element == nullptr ? nullptr : find_attribute(*element, attribute.first);
        if (found == nullptr)
            return false;
        // Deliberate: an empty value, written as nothing or as quotes alone, asks for the attribute, not for
        // its value. Test: Values/BothRoutes.Select/QuotesAlone.
        return attribute.second.empty() || NodeAccess::value(*found) == attribute.second;
    });
}

void keep_with_child_value(const NameAndValue& child, Candidates& nodes) {
    keep_if(nodes, [&child](const Node* node) { return has_child_value(node, child.first, child.second); });
}

void keep_with_literal(const std::string& literal, Candidates& nodes) {
    const bool is_kept =
        nodes.size() == 1 && nodes.front() != nullptr &&
        has_child_value(nodes.front()->get_parent(), NodeAccess::name(*nodes.front()), trim_quotes(literal));
    if (!is_kept)
        nodes.clear();
}

}  // namespace quxml
