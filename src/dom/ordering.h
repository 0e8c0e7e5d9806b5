#ifndef QUXML_DOM_ORDERING_H
#define QUXML_DOM_ORDERING_H

#include "quxml/Node.h"

namespace quxml {

/// Whether `a` goes before `b` among the children of one node; see `Node::sort_children` for the order.
/// \throws std::out_of_range ("stoi") if an item that has to be compared is a number beyond the range of
///     `int`.
bool is_sorted_before(Node* a, Node* b);

/// Links `node` at the place of a new child: last or, if `parent` is kept sorted, before the first child that
/// does not sort before it.
/// \throws std::out_of_range as `is_sorted_before`; nothing has been linked.
/// \throws std::bad_alloc nothing has been linked.
void link_new_node(Node& parent, Node* node);

}  // namespace quxml

#endif
