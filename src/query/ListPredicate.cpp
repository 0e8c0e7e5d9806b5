// SPDX-License-Identifier: MIT
#include "ListPredicate.h"

#include "dom/integer.h"
#include "positions.h"
#include "values.h"

namespace quxml {

namespace {

void keep_all(std::string_view /*nothing*/, Candidates& /*nodes*/) {}

void keep_with_attribute_after_at(std::string_view predicate, Candidates& nodes) {
    keep_with_attribute(predicate.substr(1), nodes);
}

void keep_item_or_literal(std::string_view predicate, Candidates& nodes) {
    if (read_integer(predicate)) {
        keep_item(predicate, nodes);
    } else {
        keep_with_literal(predicate, nodes);
    }
}

}  // namespace

ListPredicate::ListPredicate(std::string_view predicate) : text(predicate), rule(choose_rule(text)) {}

/// The first rule that fits wins.
ListPredicate::Rule ListPredicate::choose_rule(std::string_view predicate) {
    const auto contains = [&predicate](std::string_view part) {
        return predicate.find(part) != std::string_view::npos;
    };
    if (predicate.empty())
        return keep_all;
    if (contains("last()"))
        return keep_last;
    if (contains("position()"))
        return keep_positions;
    if (predicate.front() == '@')
        return keep_with_attribute_after_at;
    return contains("=") ? keep_with_child_value : keep_item_or_literal;
}

}  // namespace quxml
