// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_DOCUMENT_ORDER_H
#define QUXML_EXTRAS_DOCUMENT_ORDER_H

#include <vector>

#include "quxml/Node.h"

namespace quxml {
namespace extras {

/// Those of the nodes that are below `top` and below none of the others, in document order. `top` itself is not
/// looked at, nor are nodes that have no parent.
std::vector<Node*> find_outermost(Node& top, const NodeSet& nodes);

}  // namespace extras
}  // namespace quxml

#endif
