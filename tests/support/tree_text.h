// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_TREE_TEXT_H
#define QUXML_TESTS_SUPPORT_TREE_TEXT_H

// Trees as one readable line, for building them and for comparing them:
//
//     catalog(version=2){book(item=1){"A & B"} empty(x=1) mixed{"t1" leaf}}
//
// An element is its name, its attributes in parentheses and its children in braces, both optional. Attributes
// are separated by commas, children by blanks. Text stands in double quotes. Names and values that are empty
// or contain a blank, a quote, a backslash, a line feed or one of ( ) { } , = stand in single quotes. Within
// quotes of both kinds \" \' \\ and \n stand for a quote, a backslash and a line feed.

#include <cstddef>
#include <string>

#include "quxml/Document.h"
#include "quxml/Element.h"

namespace quxml_test {

/// The tree below `node` as one line; "null" for null. An attribute is printed as `@name=value`, a node of
/// any further class as `<name>`. Calls itself for each level, so not for trees of many thousand levels.
std::string to_line(const quxml::Node* node);

/// Builds the tree as the document's new root, in the order of the line: each element is linked before it
/// gets its attributes, each attribute and child is added as it comes.
/// \throws std::invalid_argument if the line cannot be read.
quxml::Element* build(quxml::Document& document, const std::string& line);

/// The same as a new child of `parent`.
quxml::Element* build_child(quxml::Element& parent, const std::string& line);

/// Builds a new root with one element below the other, `levels` elements in all.
/// \return the lowest one.
quxml::Element* build_chain(quxml::Document& document, const std::string& name, std::size_t levels);

}  // namespace quxml_test

#endif
