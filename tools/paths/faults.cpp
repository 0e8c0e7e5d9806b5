// SPDX-License-Identifier: MIT
#include "paths/faults.h"

#include <cstddef>

#include "paths/cutting.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* too_large = "the number is too large";

std::string get_complaint_about_position(const std::string& text) {
    if (contains(text, "<="))
        return "<= is not known; use < and the next number";
    if (contains(text, ">="))
        return ">= is not known; use > and the number before, and [last()] for the last node, which > leaves "
               "out";
    return "a number is missing after <, > or =";
}

/// Two equal signs side by side are no part of a value.
std::string get_advice_on_equal_signs(const std::string& text) {
    return contains(text, "==") ? "" : "; for a value with more " + get_advice_on_value(text);
}

}  // namespace

std::string get_complaint(const Predicate& predicate) {
    switch (predicate.kind) {
        case PredicateKind::last:
            return "after last() only a number with its sign can stand, as in [last()-1]";
        case PredicateKind::position:
            return get_complaint_about_position(predicate.text);
        case PredicateKind::attribute:
            return "at most one equal sign can stand in the predicate of an attribute" +
                   get_advice_on_equal_signs(predicate.text);
        default:
            return "exactly one equal sign can stand in the predicate of a child's text" +
                   get_advice_on_equal_signs(predicate.text);
    }
}

std::string get_complaint_about_size(const Predicate& predicate) {
    const bool is_text_elsewhere = predicate.kind == PredicateKind::item;
    return std::string(too_large) + (is_text_elsewhere ? "; after // it would be compared as text" : "");
}

std::string get_advice_on_value(const std::string& text) {
    const std::size_t equal_sign = text.find('=');
    if (equal_sign == std::string::npos)
        return "";
    return "write [" + trim(text.substr(0, equal_sign), blanks) + "=$V] and --arg V=VALUE";
}

}  // namespace tool
