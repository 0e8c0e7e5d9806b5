#ifndef QUXML_QUERY_VALUES_H
#define QUXML_QUERY_VALUES_H

// The predicates that look at values: of an attribute, of the text of a child, of an item. Every comparison
// is exact.
//
// Attributes are tested in two ways, which take different syntax. The list filter (`keep_with_attribute`)
// removes quotes around a value, and an empty value only asks whether the attribute exists. The single-node
// test (`ElementTest` in NodePredicate.h) removes no quotes, but the character before the "=".

#include <string>
#include <utility>

#include "Candidates.h"

namespace quxml {

/// The name of an attribute or of a child, and the value that is expected of it.
using NameAndValue = std::pair<std::string, std::string>;

/// `text` without the quotes, of either kind, paired or not, at its ends.
std::string trim_quotes(const std::string& text);

/// Reads `name` or `name=value`.
/// \throws std::invalid_argument if there are two or more "=".
NameAndValue read_attribute_pair(const std::string& query);

/// Reads `name=value`.
/// \throws std::invalid_argument unless there is exactly one "=".
NameAndValue read_child_value(const std::string& query);

/// Whether a child element called `name` has a text child, the first of which is `value`; false for a null
/// node.
bool has_child_value(const Node* node, const std::string& name, const std::string& value);

/// \param nodes null entries are dropped.
void keep_with_attribute(const NameAndValue& attribute, Candidates& nodes);

void keep_with_child_value(const NameAndValue& child, Candidates& nodes);

/// Keeps a single node whose parent has a child of the node's own name with the text `literal`, quotes
/// removed; of several nodes it keeps none.
void keep_with_literal(const std::string& literal, Candidates& nodes);

}  // namespace quxml

#endif
