// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_LIST_PREDICATE_H
#define QUXML_QUERY_LIST_PREDICATE_H

#include <string_view>

#include "Candidates.h"

namespace quxml {

/// A predicate that filters a list of nodes. Its kind is decided at once, from the characters in it. Its names,
/// values and numbers are read each time that it is applied, to an empty list too, and not before: a predicate
/// that no query reaches may be nonsense.
class ListPredicate {
public:
    explicit ListPredicate(std::string_view predicate);

    /// Keeps the nodes that satisfy the predicate, in their order.
    /// \throws std::invalid_argument, std::out_of_range if the predicate cannot be read; `nodes` is
    ///     unchanged.
    void filter(Candidates& nodes) const { rule(text, nodes); }

private:
    using Rule = void (*)(std::string_view text, Candidates& nodes);

    static Rule choose_rule(std::string_view predicate);

    std::string_view text;
    Rule rule;
};

}  // namespace quxml

#endif
