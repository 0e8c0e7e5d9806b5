// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_ORDERING_H
#define QUXML_DOM_ORDERING_H

#include "NodeAccess.h"
#include "quxml/Node.h"

namespace quxml {

/// Whether `a` goes before `b` among the children of one node; see `Node::sort_children` for the order.
/// \throws std::out_of_range ("stoi") if an item that has to be compared is a number beyond the range of
///     `int`.
bool is_sorted_before(Node* a, Node* b);

/// Links `node` before the first child that does not sort before it.
/// \throws std::out_of_range, std::bad_alloc as `link_new_node`.
void link_sorted(Node& parent, Node* node);

/// Links `node` at the place of a new child: last or, if `parent` is kept sorted, before the first child that
/// does not sort before it.
/// \throws std::out_of_range as `is_sorted_before`; nothing has been linked.
/// \throws std::bad_alloc nothing has been linked.
inline void link_new_node(Node& parent, Node* node) {
    if (NodeAccess::keep_sorted(parent)) {
        link_sorted(parent, node);
    } else {
        NodeAccess::link_last(parent, node);
    }
}

/// Compares by name alone.
bool has_lesser_name(Node* a, Node* b) noexcept;

/// Sorts the children, of which there is one at least, by their names alone; namesakes keep their order.
void sort_by_name(Node& parent) noexcept;

}  // namespace quxml

#endif
