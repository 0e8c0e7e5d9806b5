#ifndef QUXML_TOOLS_TREES_SORTING_H
#define QUXML_TOOLS_TREES_SORTING_H

#include <quxml/Node.h>

namespace tool {

/// Puts namesakes in the order of their items, in everything below `root`, which was read with `keep_sorted`
/// and so is in the order of names. Namesakes with equal items, and those without an item, keep the order
/// they have; those without come after all numbers. Sorting what is sorted changes nothing.
/// \throws std::out_of_range  if a number beyond the range of `int` is compared.
void sort_by_item(quxml::Node* root);

}  // namespace tool

#endif
