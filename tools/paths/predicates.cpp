// SPDX-License-Identifier: MIT

// What a predicate means is asked of the library, and its exceptions say what it refuses. Two of the library's rules are
// repeated all the same, since it applies them and does not say what came of them; the tests compare both with what it
// selects:
//
// - Which of its forms a predicate has: the first of these, for a list "last()" or "position()" anywhere in it, "@" at its
//   beginning, "=", a number at its beginning, and anything else; for a single node "@" at its beginning, "=", and anything
//   else. The operations that take a predicate of any form give back nodes, or whether a node passes.
// - Which attribute the test of a single node asks for: the character before the equal sign is not part of its name. The
//   library only says whether a node passes.
//
// The library knows nothing about values that are given for names. A predicate that compares with one is of the same
// kind as any other, but its value is not taken from the path, and its name is all that stands before the equal sign.

#include "paths/predicates.h"

#include <quxml/XPathHelper.h>

#include <cstddef>
#include <stdexcept>
#include <tuple>

#include "paths/cutting.h"
#include "paths/faults.h"
#include "terminal/words.h"

namespace tool {

namespace {

quxml::XPathHelper get_library() {
    return quxml::XPathHelper({});
}

}  // namespace

// ---- Numbers ----

std::optional<int> read_number(const std::string& text) {
    if (text.empty())
        return std::nullopt;
    try {
        return get_library().index_from_last("last()" + text);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

bool begins_with_number(const std::string& text) {
    try {
        return read_number(text).has_value();
    } catch (const std::out_of_range&) {
        return false;
    }
}

namespace {

/// Takes over what the library makes of a predicate, or why it refuses it.
template <typename Read>
void read_or_refuse(Predicate& predicate, Read read) {
    try {
        read(get_library());
    } catch (const std::out_of_range&) {
        predicate.fault = get_complaint_about_size(predicate);
    } catch (const std::invalid_argument&) {
        predicate.fault = get_complaint(predicate);
    }
}

// ---- Given values ----

/// What a predicate compares with, as it is written.
std::string get_written_value(const std::string& text) {
    const std::size_t equal_sign = text.find('=');
    if (equal_sign == std::string::npos && text[0] == '@')
        return "";
    return trim(text.substr(get_place_after(equal_sign)), blanks);
}

bool names_value(const std::string& text, const Values& values) {
    return !values.empty() && begins_with(get_written_value(text), "$");
}

/// A name cannot have blanks, so those around it mean nothing.
void take_given(Predicate& predicate, PredicateKind attribute, PredicateKind child, PredicateKind item,
                const Values& values) {
    const std::size_t equal_sign = predicate.text.find('=');
    const bool has_name = equal_sign != std::string::npos;
    const bool is_attribute = predicate.text[0] == '@';
    predicate.kind = is_attribute ? attribute : (has_name ? child : item);
    if (has_name)
        predicate.name = trim(predicate.text.substr(0, equal_sign).substr(is_attribute ? 1 : 0), blanks);
    predicate.given = get_written_value(predicate.text).substr(1);
    const auto value = values.find(predicate.given);
    if (value == values.end())
        predicate.fault = "no --arg gives a value for $" + predicate.given;
    else
        predicate.value = value->second;
    if (predicate.kind == PredicateKind::item && begins_with_number(predicate.value))
        predicate.number = read_number(predicate.value).value_or(0);
}

// ---- List filter ----

void take_last(Predicate& predicate) {
    predicate.kind = PredicateKind::last;
    read_or_refuse(predicate, [&](const quxml::XPathHelper& library) {
        predicate.number = library.index_from_last(predicate.text);
    });
}

/// An end that follows the number of nodes is that number.
void take_position(Predicate& predicate) {
    predicate.kind = PredicateKind::position;
    read_or_refuse(predicate, [&](const quxml::XPathHelper& library) {
        const auto [first, end] = library.get_position_range(predicate.text, 0);
        const bool is_counted = end != library.get_position_range(predicate.text, 1).second;
        predicate.range = {first, end, is_counted};
    });
}

void take_attribute(Predicate& predicate) {
    predicate.kind = PredicateKind::attribute;
    read_or_refuse(predicate, [&](const quxml::XPathHelper& library) {
        std::tie(predicate.name, predicate.value) = library.get_attribute_pair(predicate.text.substr(1));
        predicate.existence_only = predicate.value.empty();
    });
}

/// The library judges a predicate even if there are no nodes to filter.
void take_child_value(Predicate& predicate, PredicateKind kind) {
    predicate.kind = kind;
    read_or_refuse(predicate, [&](const quxml::XPathHelper& library) {
        quxml::NodeList none;
        library.get_node_containing_child_value(predicate.text, none);
        std::tie(predicate.name, predicate.value) = library.get_attribute_pair(predicate.text);
    });
}

void take_item_or_literal(Predicate& predicate) {
    predicate.kind = PredicateKind::item;
    predicate.value = predicate.text;
    read_or_refuse(predicate, [&](const quxml::XPathHelper& /*library*/) {
        const std::optional<int> number = read_number(predicate.text);
        predicate.number = number.value_or(0);
        if (!number) {
            predicate.kind = PredicateKind::literal;
            predicate.value = without_quotes(predicate.text);
        }
    });
}

}  // namespace

Predicate get_list_predicate(const std::string& text, const Values& values) {
    Predicate predicate{text, PredicateKind::literal, "", "", false, 0, {}, ""};
    if (contains(text, "last()"))
        take_last(predicate);
    else if (contains(text, "position()"))
        take_position(predicate);
    else if (names_value(text, values))
        take_given(predicate, PredicateKind::attribute, PredicateKind::child_value, PredicateKind::item,
                   values);
    else if (text[0] == '@')
        take_attribute(predicate);
    else if (contains(text, "="))
        take_child_value(predicate, PredicateKind::child_value);
    else
        take_item_or_literal(predicate);
    return predicate;
}

// ---- Single-node test ----

namespace {

/// The character before the equal sign is not part of the name; without any, all of it is.
void take_test_of_attribute(Predicate& predicate) {
    predicate.kind = PredicateKind::test_attribute;
    const std::size_t equal_sign = predicate.text.find('=');
    predicate.existence_only = equal_sign == std::string::npos;
    predicate.name = predicate.text.substr(1);
    if (predicate.existence_only)
        return;
    if (equal_sign > 1)
        predicate.name = predicate.text.substr(1, equal_sign - 2);
    predicate.value = predicate.text.substr(equal_sign + 1);
}

}  // namespace

Predicate get_single_predicate(const std::string& text, const Values& values) {
    Predicate predicate{text, PredicateKind::test_item, "", text, false, 0, {}, ""};
    if (names_value(text, values))
        take_given(predicate, PredicateKind::test_attribute, PredicateKind::test_child_value,
                   PredicateKind::test_item, values);
    else if (text[0] == '@')
        take_test_of_attribute(predicate);
    else if (contains(text, "="))
        take_child_value(predicate, PredicateKind::test_child_value);
    return predicate;
}

}  // namespace tool
