#ifndef QUXML_QUERY_POSITIONS_H
#define QUXML_QUERY_POSITIONS_H

// The predicates that select by number: `last()`, `position()` and items. Each rule filters a list in place.

#include <string>
#include <utility>

#include "Candidates.h"

namespace quxml {

/// The offset after `last()`, 0 if nothing follows it.
/// \throws std::invalid_argument, std::out_of_range ("stoi")
int read_index_from_last(const std::string& predicate);

/// The first position that a `position()` predicate selects, and the one at which selection stops (0: no
/// bound).
/// \throws std::invalid_argument, std::out_of_range ("stoi")
std::pair<unsigned int, unsigned int> read_position_range(const std::string& predicate, unsigned int count);

void keep_last(const std::string& predicate, Candidates& nodes);
void keep_positions(const std::string& predicate, Candidates& nodes);

/// \param nodes null entries are dropped.
void keep_item(const std::string& number, Candidates& nodes);

}  // namespace quxml

#endif
