// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_TREE_H
#define QUXML_TOOLS_TREES_TREE_H

#include <quxml/Node.h>

#include <string>

namespace tool {

/// Whether two trees are the same: names, attributes, texts, and the order of all of them.
bool is_same_tree(const quxml::Node& one, const quxml::Node& other);

/// The content of a text node, or of the text in an element; empty if it has none.
std::string get_text(const quxml::Node& node);

}  // namespace tool

#endif
