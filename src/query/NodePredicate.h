// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_NODE_PREDICATE_H
#define QUXML_QUERY_NODE_PREDICATE_H

// The predicate of the single-node test: about the element itself, or about the text of a child.

#include <optional>
#include <string_view>

#include "quxml/Element.h"
#include "values.h"

namespace quxml {

/// A predicate about the element itself: `@name`, `@name =value` or an item.
class ElementTest {
public:
    explicit ElementTest(std::string_view predicate);

    bool accepts(const Element& element) const;

private:
    enum Kind { has_attribute, attribute_equals, item_equals };

    Kind kind;
    std::string_view name;   // of the attribute
    std::string_view value;  // of the attribute or item
};

/// A predicate that tests one node. It is taken apart at once.
class NodePredicate {
public:
    /// \throws std::invalid_argument if it is about a child and has more than one "=".
    explicit NodePredicate(std::string_view text);

    bool accepts(const Node* node) const;

private:
    std::optional<ElementTest> element_test;
    NameAndValue child;  // used without an element test
};

}  // namespace quxml

#endif
