// SPDX-License-Identifier: MIT
#ifndef QUXML_FUZZ_TREE_INPUT_H
#define QUXML_FUZZ_TREE_INPUT_H

// Trees as input. Any bytes make a tree, and a mutation of the bytes makes a similar tree:
//
//     a            a run of letters and digits: adds a child of this name and enters it
//     'a b'        the same with any bytes as the name; the name ends at the next ' or with the input
//     .            leaves the element; does nothing at the root
//     @key=value;  sets an attribute; the name ends at "=", the value at ";", both end with the input
//     "text"       adds text; it ends at the next " or with the input
//     !            as the first byte: the document is kept sorted
//
// Everything else is skipped. The root is called "r". So `@id=1;a"x".b@item=2;` stands for
// `<r id="1"><a>x</a><b item="2"/></r>`.

#include <string>
#include <vector>

#include "quxml/Document.h"
#include "quxml/Element.h"

namespace quxml_fuzz {

quxml::Document build_tree(const std::string& input);

/// A path and a tree; the first line feed separates them.
struct PathAndTree {
    explicit PathAndTree(const std::string& input);

    std::string path;
    quxml::Document document;
};

/// The node and everything below it, parents before their children.
std::vector<quxml::Node*> list_nodes(quxml::Node* node);

}  // namespace quxml_fuzz

#endif
