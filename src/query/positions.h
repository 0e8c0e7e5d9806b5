// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_POSITIONS_H
#define QUXML_QUERY_POSITIONS_H

// The predicates that select by number: `last()`, `position()` and items. Each rule filters a list in place.

#include <string_view>
#include <utility>

#include "Candidates.h"

namespace quxml {

/// The offset after `last()`, 0 if nothing follows it.
/// \throws std::invalid_argument, std::out_of_range ("stoi")
int read_index_from_last(std::string_view predicate);

/// The first position that a `position()` predicate selects, and the one at which selection stops (0: no
/// bound).
/// \throws std::invalid_argument, std::out_of_range ("stoi")
std::pair<unsigned int, unsigned int> read_position_range(std::string_view predicate, unsigned int count);

void keep_last(std::string_view predicate, Candidates& nodes);
void keep_positions(std::string_view predicate, Candidates& nodes);

/// \param nodes null entries are dropped.
void keep_item(std::string_view number, Candidates& nodes);

}  // namespace quxml

#endif
