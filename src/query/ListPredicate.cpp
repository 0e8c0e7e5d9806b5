#include "ListPredicate.h"

#include "dom/integer.h"
#include "positions.h"

namespace quxml {

ListPredicate::ListPredicate(std::string_view predicate) : text(predicate), kind(classify(text)) {}

/// The first kind that fits wins.
ListPredicate::Kind ListPredicate::classify(std::string_view predicate) {
    const auto contains = [&predicate](const char* part) {
        return predicate.find(part) != std::string_view::npos;
    };
    if (predicate.empty())
        return empty;
    if (contains("last()"))
        return last;
    if (contains("position()"))
        return position;
    if (predicate.front() == '@')
        return attribute;
    if (contains("="))
        return child_value;
    return item_or_literal;
}

void ListPredicate::filter(Candidates& nodes) {
    switch (kind) {
        case empty:
            return;
        case last:
            return keep_last(text, nodes);
        case position:
            return keep_positions(text, nodes);
        case attribute:
            return keep_with_attribute(get_pair(), nodes);
        case child_value:
            return keep_with_child_value(get_pair(), nodes);
        case item_or_literal:
            return filter_by_item_or_literal(nodes);
    }
}

NameAndValue ListPredicate::get_pair() {
    if (!pair)
        pair = kind == attribute ? read_attribute_pair(text.substr(1)) : read_child_value(text);
    return *pair;
}

void ListPredicate::filter_by_item_or_literal(Candidates& nodes) const {
    if (read_integer(std::string(text))) {
        keep_item(text, nodes);
    } else {
        keep_with_literal(text, nodes);
    }
}

}  // namespace quxml
