// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_SORTING_H
#define QUXML_TOOLS_TREES_SORTING_H

#include <quxml/Node.h>

#include <cstddef>
#include <vector>

namespace tool {

/// The order that the children of an element have got.
struct Order {
    std::size_t element;                // its number in document order; the root element's is 0
    std::vector<std::size_t> children;  // for each place which child is there now, by the place it had before
};

/// Puts everything below `root` in the order of names, and namesakes in the order of their items. Namesakes with equal
/// items, and those without an item, keep the order they have; those without go after all numbers. Sorting what is
/// sorted changes nothing.
/// \param fixed  for elements, by their numbers, whether their children stay as they are
/// \return what has changed, in document order. The numbers are those from before.
/// \throws std::out_of_range  if a number beyond the range of `int` is compared.
std::vector<Order> sort_by_item(quxml::Node* root, const std::vector<bool>& fixed = {});

}  // namespace tool

#endif
