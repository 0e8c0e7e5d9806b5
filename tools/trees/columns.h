// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_COLUMNS_H
#define QUXML_TOOLS_TREES_COLUMNS_H

#include <quxml/Node.h>

#include <optional>
#include <string>

namespace tool {

// A column says what to take of each node of a table: "." its text, "@NAME" an attribute, "NAME" the text of its first
// child of this name. Upper and lower case count, as in predicates.

/// Whether a column takes an attribute.
bool is_attribute_column(const std::string& column);

/// The node whose text a column takes; null if it takes an attribute, or if there is no such child.
quxml::Node* get_text_node(quxml::Node& node, const std::string& column);

/// What a column takes of a node; none if there is no such attribute or child.
std::optional<std::string> get_value(const quxml::Node& node, const std::string& column);

}  // namespace tool

#endif
