#include "values.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <cstddef>
#include <stdexcept>

#include "dom/NodeAccess.h"

namespace quxml {

std::string trim_quotes(const std::string& text) {
    return boost::algorithm::trim_copy_if(text, boost::algorithm::is_any_of("\"'"));
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
        // its value.
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

ElementTest::ElementTest(const std::string& predicate) : kind(item_equals), value(predicate) {
    if (predicate.empty() || predicate.front() != '@')
        return;
    const std::size_t equal = predicate.find('=');
    if (equal == std::string::npos) {
        kind = has_attribute;
        name = predicate.substr(1);
        return;
    }
    // Deliberate: the character before the "=" does not belong to the name; if the "=" follows the "@" at
    // once, the name is everything behind the "@". The value is taken as it stands, quotes included.
    kind = attribute_equals;
    name = equal == 1 ? predicate.substr(1) : predicate.substr(1, equal - 2);
    value = predicate.substr(equal + 1);
}

bool ElementTest::accepts(const Element& element) const {
    if (kind == item_equals) {
        // Deliberate: an element without an item counts as item "1".
        const std::string* item = find_item(element);
        return item == nullptr ? value == "1" : *item == value;
    }
    const Attribute* attribute = find_attribute(element, name);
    return attribute != nullptr && (kind == has_attribute || NodeAccess::value(*attribute) == value);
}

}  // namespace quxml
