// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_SORTED_PLACE_H
#define QUXML_TOOLS_TREES_SORTED_PLACE_H

#include <quxml/Element.h>

#include <cstddef>
#include <optional>
#include <string>

namespace tool {

/// Where a new element would stand if its parent kept its children sorted: how many elements come before it.
/// \param item  its attribute "item"; empty if it has none
/// \return nothing if the parent's elements are not sorted: names ascend, and so do the items of namesakes; those without
///     one may stand anywhere among their namesakes.
/// \throws std::out_of_range  if a number beyond the range of `int` is compared.
std::optional<std::size_t> find_sorted_place(const quxml::Element& parent, const std::string& name,
                                             const std::string& item);

}  // namespace tool

#endif
