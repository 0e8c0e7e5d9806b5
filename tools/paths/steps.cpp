#include "paths/steps.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "terminal/words.h"

// This follows the library's engine without a document: where a path is cut, which route each step takes, and
// which handler each predicate goes to. Its tests hold it against what the engine selects.

namespace tool {

namespace {

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

// What a number is, or why there is none.
struct Number {
    std::optional<int> value;
    bool is_too_large = false;
};

Number read_number(const std::string& text) {
    try {
        return {std::stoi(text)};
    } catch (const std::out_of_range&) {
        return {std::nullopt, true};
    } catch (const std::invalid_argument&) {
        return {};
    }
}

constexpr const char* too_large = "the number is too large";

// Takes a number over, or the reason why that is not possible.
int take_number(const std::string& text, const std::string& complaint, std::string& fault) {
    const Number number = read_number(text);
    if (!number.value)
        fault = number.is_too_large ? too_large : complaint;
    return number.value.value_or(0);
}

// ---- List filter

void take_last(Predicate& predicate) {
    constexpr std::string_view last = "last()";
    predicate.handler = Handler::last;
    const std::string offset = predicate.text.substr(predicate.text.find(last) + last.size());
    if (!offset.empty())
        predicate.offset = take_number(
            offset,
            "behind last() only a number with its sign can stand, as in [last()-1], not \"" + offset + '"',
            predicate.fault);
}

// The number behind the first `sign` of the predicate.
unsigned get_bound(Predicate& predicate, char sign) {
    const std::string behind = predicate.text.substr(predicate.text.find(sign) + 1);
    return static_cast<unsigned>(
        take_number(behind, std::string("a number is missing behind ") + sign, predicate.fault));
}

void refuse(Predicate& predicate, const char* sign, const std::string& instead) {
    if (contains(predicate.text, sign))
        predicate.fault = std::string(sign) + " is not known; use " + instead;
}

// The tests are independent of each other; a later one overrides what it sets.
void take_position(Predicate& predicate) {
    predicate.handler = Handler::position;
    if (contains(predicate.text, "<"))
        predicate.range.end = get_bound(predicate, '<');
    if (contains(predicate.text, ">"))
        predicate.range = {get_next_position(get_bound(predicate, '>')), 0, true};
    if (contains(predicate.text, "=")) {
        const unsigned position = get_bound(predicate, '=');
        predicate.range = {position, get_next_position(position), false};
    }
    refuse(predicate, ">=", "> and the number before, and [last()] for the last node, which > leaves out");
    refuse(predicate, "<=", "< and the next number");
}

constexpr const char* quotes = "\"'";

void take_attribute(Predicate& predicate) {
    predicate.handler = Handler::attribute;
    const std::vector<std::string> fields = split(predicate.text.substr(1), "=");
    predicate.name = fields[0];
    if (fields.size() > 1)
        predicate.value = trim(fields[1], quotes);
    predicate.existence_only = predicate.value.empty();
    if (fields.size() > 2)
        predicate.fault = "at most one equal sign can stand in the predicate of an attribute";
}

void take_child_value(Predicate& predicate, Handler handler) {
    predicate.handler = handler;
    const std::vector<std::string> fields = split(predicate.text, "=");
    predicate.name = fields[0];
    predicate.value = trim(fields[1], quotes);
    if (fields.size() > 2)
        predicate.fault = "exactly one equal sign can stand in the predicate of a child's text";
}

void take_item_or_literal(Predicate& predicate) {
    const Number number = read_number(predicate.text);
    const bool is_item = number.value || number.is_too_large;
    predicate.handler = is_item ? Handler::item : Handler::literal;
    predicate.value = is_item ? predicate.text : trim(predicate.text, quotes);
    if (number.is_too_large)
        predicate.fault = std::string(too_large) + "; behind // it would be compared as text";
}

// The first form that applies wins.
Predicate get_list_predicate(const std::string& text) {
    Predicate predicate{text, Handler::literal, "", "", false, 0, {}, ""};
    if (contains(text, "last()"))
        take_last(predicate);
    else if (contains(text, "position()"))
        take_position(predicate);
    else if (text[0] == '@')
        take_attribute(predicate);
    else if (contains(text, "="))
        take_child_value(predicate, Handler::child_value);
    else
        take_item_or_literal(predicate);
    return predicate;
}

void take_list_predicates(Step& step, std::size_t bracket) {
    if (bracket == std::string::npos)
        return;
    step.is_closed = step.text.back() == ']';
    std::string predicates = step.text.substr(bracket + 1);
    if (!predicates.empty())
        predicates.pop_back();
    for (const std::string& text : split(predicates, "[]"))
        if (!text.empty())
            step.predicates.push_back(get_list_predicate(text));
}

// ---- Single-node test

// The character before the equal sign is not taken for a part of the name; without any, all of it is.
void take_test_of_attribute(Predicate& predicate) {
    predicate.handler = Handler::test_attribute;
    const std::size_t equal_sign = predicate.text.find('=');
    predicate.existence_only = equal_sign == std::string::npos;
    predicate.name = predicate.text.substr(1);
    if (predicate.existence_only)
        return;
    if (equal_sign > 1)
        predicate.name = predicate.text.substr(1, equal_sign - 2);
    predicate.value = predicate.text.substr(equal_sign + 1);
}

Predicate get_single_predicate(const std::string& text) {
    Predicate predicate{text, Handler::test_item, "", text, false, 0, {}, ""};
    if (text[0] == '@')
        take_test_of_attribute(predicate);
    else if (contains(text, "="))
        take_child_value(predicate, Handler::test_child_value);
    return predicate;
}

void take_single_predicate(Step& step, std::size_t bracket) {
    if (bracket == std::string::npos)
        return;
    const std::size_t end = step.text.find(']');
    step.is_closed = end != std::string::npos;
    step.predicates.push_back(get_single_predicate(step.text.substr(bracket + 1, end - bracket - 1)));
    if (step.is_closed)
        step.ignored = step.text.substr(end + 1);
}

// ---- Steps

Step get_step(const std::string& text, StepKind kind) {
    Step step{text, text.empty() ? StepKind::nothing : kind, "", {}, "", true, false, false};
    const std::size_t bracket = text.find('[');
    step.name_test = text.substr(0, bracket);
    if (tests_single_nodes(step))
        take_single_predicate(step, bracket);
    else
        take_list_predicates(step, bracket);
    return step;
}

constexpr const char* blanks = " \t\n\v\f\r";

// Cuts the path at every "/", also between quotes, and tells whether it begins with a search.
std::vector<std::string> get_pieces(const std::string& path, bool& searches) {
    const std::string trimmed = trim(path, blanks);
    searches = trimmed.substr(0, 2) == "//";
    std::vector<std::string> pieces = split(trimmed, "/");
    const bool is_rooted = pieces[0].empty() && pieces.size() > 1;
    pieces.erase(pieces.begin(), pieces.begin() + (searches ? 2 : (is_rooted ? 1 : 0)));
    return pieces;
}

// An empty step between others stands for all children, in which the next step is searched for.
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

unsigned get_next_position(unsigned position) {
    return static_cast<unsigned>(std::uint64_t{position} + 1);
}

bool has_empty_predicate(const Step& step) {
    return !tests_single_nodes(step) && contains(step.text, "[]");
}

bool tests_single_nodes(const Step& step) {
    return step.kind == StepKind::start || step.kind == StepKind::search ||
           step.kind == StepKind::search_below;
}

std::vector<Step> get_steps(const std::string& path) {
    bool searches = false;
    const std::vector<std::string> pieces = get_pieces(path, searches);
    std::vector<Step> steps{get_step(pieces[0], searches ? StepKind::search : StepKind::start)};
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (is_all_children(pieces, i))
            steps.push_back({"", StepKind::all_children, "", {}, "", true, false, false});
        else if (!is_mark_of_search(pieces, i))
            steps.push_back(get_step(pieces[i], get_kind(pieces, i)));
    }
    steps.back().is_last = true;
    steps.front().is_relative = trim(path, blanks).substr(0, 1) != "/";
    return steps;
}

}  // namespace tool
