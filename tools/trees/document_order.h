// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_DOCUMENT_ORDER_H
#define QUXML_TOOLS_TREES_DOCUMENT_ORDER_H

#include <quxml/Node.h>

#include <vector>

namespace tool {

/// The nodes of a query's result in document order: parents before their children, first to last.
/// \param root  of the tree to which all of them belong.
std::vector<quxml::Node*> in_document_order(quxml::Node* root, const quxml::NodeSet& nodes);

}  // namespace tool

#endif
