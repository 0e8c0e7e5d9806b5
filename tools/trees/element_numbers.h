// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_ELEMENT_NUMBERS_H
#define QUXML_TOOLS_TREES_ELEMENT_NUMBERS_H

#include <quxml/Element.h>

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace tool {

/// Elements in document order, and the number that each has in it; the root element's is 0.
struct NumberedElements {
    std::vector<quxml::Element*> elements;
    std::vector<std::size_t> numbers;
};

/// \param root    of the tree to which all of them belong
/// \param wanted  the elements
NumberedElements number_elements(quxml::Element* root, const std::unordered_set<quxml::Element*>& wanted);

}  // namespace tool

#endif
