// SPDX-License-Identifier: MIT

// A path as the library's queries take it, without a document. Here is only where a path is cut and which way each
// step takes; what a predicate means is asked of the library, and its exceptions say what it refuses. The tests compare
// all of it with what the library selects.
//
// A path is cut at every "/", also between quotes. A "/" before the first step means nothing, "//" a search:
//
//     a/b   /a/b   the start node is tested with a, and its children are filtered with b
//     //b          the start node and all below it are searched for b
//     a//b         an empty step between others: all below a is searched for b
//     a/           an empty last step: all children of a
//
// A step is cut at its first "[". What stands before is its name test. A step among children filters a list, with every
// predicate between "[" and "]" in turn; that the step ends with "]" is taken for granted. The other steps test single
// nodes, with the one predicate from the first "[" to the first "]".
//
// The library knows nothing about values that are given for names. A predicate that compares with one is of the same
// kind as any other, but its value is not taken from the path, and its name is all that stands before the equal sign.

#include "paths/steps.h"

#include <quxml/XPathHelper.h>

#include <cstddef>
#include <stdexcept>
#include <tuple>

#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* blanks = " \t\n\v\f\r";
constexpr const char* too_large = "the number is too large";

std::string trim(const std::string& text, const char* characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::vector<std::string> split(const std::string& text, const char* separators) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    std::size_t end = 0;
    while ((end = text.find_first_of(separators, begin)) != std::string::npos) {
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

quxml::XPathHelper get_library() {
    return quxml::XPathHelper({});
}

// ---- Faults ----

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
    return trim(text.substr(equal_sign + 1), blanks);
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

/// The first form that applies wins.
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

void take_list_predicates(PathStep& step, std::size_t bracket, const Values& values) {
    if (bracket == std::string::npos)
        return;
    step.is_closed = step.text.back() == ']';
    std::string predicates = step.text.substr(bracket + 1);
    if (!predicates.empty())
        predicates.pop_back();
    for (const std::string& text : split(predicates, "[]")) {
        if (!text.empty())
            step.predicates.push_back(get_list_predicate(text, values));
    }
}

// ---- Single-node test ----

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

void take_single_predicate(PathStep& step, std::size_t bracket, const Values& values) {
    if (bracket == std::string::npos)
        return;
    const std::size_t end = step.text.find(']');
    step.is_closed = end != std::string::npos;
    step.predicates.push_back(get_single_predicate(step.text.substr(bracket + 1, end - bracket - 1), values));
    if (step.is_closed)
        step.ignored = step.text.substr(end + 1);
}

// ---- Steps ----

PathStep get_step(const std::string& text, StepKind kind, const Values& values) {
    PathStep step{text, text.empty() ? StepKind::nothing : kind, "", {}, "", true, false, false};
    const std::size_t bracket = text.find('[');
    step.name_test = text.substr(0, bracket);
    if (tests_single_nodes(step))
        take_single_predicate(step, bracket, values);
    else
        take_list_predicates(step, bracket, values);
    return step;
}

std::vector<std::string> get_pieces(const std::string& path, bool& searches) {
    const std::string trimmed = trim(path, blanks);
    searches = begins_with(trimmed, "//");
    std::vector<std::string> pieces = split(trimmed, "/");
    const bool is_rooted = pieces[0].empty() && pieces.size() > 1;
    pieces.erase(pieces.begin(), pieces.begin() + (searches ? 2 : (is_rooted ? 1 : 0)));
    return pieces;
}

StepKind get_kind(const std::vector<std::string>& pieces, std::size_t i) {
    if (pieces[i - 1].empty() && i > 1)
        return StepKind::search_below;
    return StepKind::children;
}

bool is_mark_of_search(const std::vector<std::string>& pieces, std::size_t i) {
    return pieces[i].empty() && !pieces[i - 1].empty() && i + 1 < pieces.size();
}

bool is_all_children(const std::vector<std::string>& pieces, std::size_t i) {
    return pieces[i].empty() && !pieces[i - 1].empty() && i + 1 == pieces.size();
}

}  // namespace

std::vector<PathStep> get_steps(const Path& path) {
    bool searches = false;
    const std::vector<std::string> pieces = get_pieces(path.text, searches);
    std::vector<PathStep> steps{
        get_step(pieces[0], searches ? StepKind::search : StepKind::start, path.values)};
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (is_all_children(pieces, i))
            steps.push_back({"", StepKind::all_children, "", {}, "", true, false, false});
        else if (!is_mark_of_search(pieces, i))
            steps.push_back(get_step(pieces[i], get_kind(pieces, i), path.values));
    }
    steps.back().is_last = true;
    steps.front().is_relative = !begins_with(trim(path.text, blanks), "/");
    return steps;
}

bool tests_single_nodes(const PathStep& step) {
    return step.kind == StepKind::start || step.kind == StepKind::search ||
           step.kind == StepKind::search_below;
}

bool has_empty_predicate(const PathStep& step) {
    return !tests_single_nodes(step) && contains(step.text, "[]");
}

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

std::string get_advice_on_value(const std::string& text) {
    const std::size_t equal_sign = text.find('=');
    if (equal_sign == std::string::npos)
        return "";
    return "write [" + trim(text.substr(0, equal_sign), blanks) + "=$V] and --arg V=VALUE";
}

std::string without_quotes(const std::string& text) {
    return trim(text, "\"'");
}

}  // namespace tool
