// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_MOVING_H
#define QUXML_TOOLS_WRITING_MOVING_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "trees/sorting.h"
#include "writing/outline.h"
#include "writing/patches.h"

namespace tool {

/// What gives elements another order: each moves with its bytes, and with the remarks that belong to it. These are those
/// directly above it, with no blank line between, and those after it on its last line.
/// \param orders  sorted by their elements, none of which is mixed
std::vector<Patch> move_elements(std::string_view document, const std::vector<Piece>& pieces,
                                 const std::vector<Order>& orders);

/// Where the elements in another one begin, each with the remarks above it that move with it.
/// \param parent  the index of its piece
std::vector<std::size_t> find_units(std::string_view document, const std::vector<Piece>& pieces,
                                    std::size_t parent);

}  // namespace tool

#endif
