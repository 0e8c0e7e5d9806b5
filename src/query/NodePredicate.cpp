#include "NodePredicate.h"

#include <cstddef>

#include "dom/NodeAccess.h"

namespace quxml {

ElementTest::ElementTest(const std::string& predicate) : kind(item_equals), value(predicate) {
    if (predicate.empty() || predicate.front() != '@')
        return;
    const std::size_t equal = predicate.find('=');
    if (equal == std::string::npos) {
        kind = has_attribute;
        name = predicate.substr(1);
        return;
    }
    // Deliberate: the character before the "=" does not belong to the name; if the "=" directly follows the
    // "@", the name is everything after the "@". The value is taken as it stands, quotes included.
    // Tests: Rows/AttributeMatches.IsDecided/ItIsDeliberateThatTheCharacterBeforeTheEqualsSignIsDropped,
    // Rows/AttributeMatches.IsDecided/AnEqualsSignBehindTheAtSignMakesAllOfItTheName,
    // Attributes/SingleNode.Selects/ItIsDeliberateThatQuotesAreCompared.
    kind = attribute_equals;
    name = equal == 1 ? predicate.substr(1) : predicate.substr(1, equal - 2);
    value = predicate.substr(equal + 1);
}

bool ElementTest::accepts(const Element& element) const {
    if (kind == item_equals) {
        // Deliberate: an element without an item counts as item "1".
        // Test: Items/SingleNode.Selects/Item1AndNodesWithoutAnItem.
        const std::string* item = find_item(element);
        return item == nullptr ? value == "1" : *item == value;
    }
    const Attribute* attribute = find_attribute(element, name);
    return attribute != nullptr && (kind == has_attribute || NodeAccess::value(*attribute) == value);
}

NodePredicate::NodePredicate(const std::string& text) {
    const bool is_about_child = text.find('=') != std::string::npos && text.front() != '@';
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
