// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_VALUES_H
#define QUXML_QUERY_VALUES_H

// The predicates that look at values: of an attribute, of the text of a child, of an item. Every comparison
// is exact.
//
// Attributes are tested in two ways, which take different syntax. The list filter (`keep_with_attribute`)
// removes quotes around a value, and an empty value only asks whether the attribute exists. The single-node
// test (`ElementTest` in NodePredicate.h) removes no quotes, but the character before the "=".

#include <string_view>
#include <utility>

#include "Candidates.h"

namespace quxml {

/// The name of an attribute or of a child, and the value that is expected of it. Both look into the text that
/// they were read from.
using NameAndValue = std::pair<std::string_view, std::string_view>;

/// `text` without the quotes, of either kind, paired or not, at its ends.
std::string_view trim_quotes(std::string_view text);

/// Reads `name` or `name=value`.
/// \throws std::invalid_argument if there are two or more "=".
NameAndValue read_attribute_pair(std::string_view query);

/// Reads `name=value`.
/// \throws std::invalid_argument unless there is exactly one "=".
NameAndValue read_child_value(std::string_view query);

/// Whether a child element called `name` has a text child, the first of which is `value`; false for a null
/// node.
bool has_child_value(const Node* node, std::string_view name, std::string_view value);

/// \param query `name` or `name=value`.
/// \param nodes null entries are dropped.
/// \throws std::invalid_argument as `read_attribute_pair`; `nodes` is unchanged.
void keep_with_attribute(std::string_view query, Candidates& nodes);

/// \param query `name=value`.
/// \throws std::invalid_argument as `read_child_value`; `nodes` is unchanged.
void keep_with_child_value(std::string_view query, Candidates& nodes);

/// Keeps a single node whose parent has a child of the node's own name with the text `literal`, quotes
/// removed; of several nodes it keeps none.
void keep_with_literal(std::string_view literal, Candidates& nodes);

}  // namespace quxml

#endif
