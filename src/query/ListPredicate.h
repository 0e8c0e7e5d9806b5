#ifndef QUXML_QUERY_LIST_PREDICATE_H
#define QUXML_QUERY_LIST_PREDICATE_H

#include <optional>
#include <string_view>

#include "Candidates.h"
#include "values.h"

namespace quxml {

/// A predicate that filters a list of nodes. Its kind is decided at once, from the characters in it. Whether
/// it can be read is judged when it is applied, to an empty list too, and not before: a predicate that no
/// query reaches may be nonsense.
class ListPredicate {
public:
    explicit ListPredicate(std::string_view predicate);

    /// Keeps the nodes that satisfy the predicate, in their order.
    /// \throws std::invalid_argument, std::out_of_range if the predicate cannot be read; `nodes` is
    ///     unchanged.
    void filter(Candidates& nodes);

private:
    enum Kind { empty, last, position, attribute, child_value, item_or_literal };

    static Kind classify(std::string_view predicate);
    NameAndValue get_pair();
    void filter_by_item_or_literal(Candidates& nodes) const;

    std::string_view text;
    Kind kind;
    std::optional<NameAndValue> pair;  // of an attribute or child value predicate, once it has been read
};

}  // namespace quxml

#endif
