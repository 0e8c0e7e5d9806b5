// SPDX-License-Identifier: MIT
#include "reading/diagnostics.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

#include "reading/PlaceFinder.h"
#include "reading/encoding.h"
#include "reading/xml_events.h"
#include "terminal/messages.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// Later errors mostly follow from the first ones.
constexpr std::size_t most_errors = 5;

/// What is shown of a long line, in bytes, and how much of it before the error.
constexpr std::size_t widest = 120;
constexpr std::size_t before_error = 80;

/// The byte of a line at which a column begins.
std::size_t get_byte(std::string_view line, int column) {
    std::size_t byte = 0;
    for (int passed = 1; passed < column && byte < line.size(); ++passed) {
        ++byte;
        while (byte < line.size() && !begins_character(line[byte]))
            ++byte;
    }
    return byte;
}

/// Cuts a line to what is shown, at the borders of characters; `error` stays the same byte.
std::string_view cut(std::string_view line, std::size_t& error) {
    std::size_t first = error > before_error ? error - before_error : 0;
    while (first < error && !begins_character(line[first]))
        ++first;
    std::size_t end = std::min(line.size(), first + widest);
    while (end < line.size() && end > error && !begins_character(line[end]))
        --end;
    error -= first;
    return line.substr(first, end - first);
}

Excerpt get_excerpt(std::string_view document, const Problem& problem) {
    const std::string_view line = get_line(document, problem.line);
    std::size_t error = get_byte(line, problem.column);
    const std::string_view shown = cut(line, error);
    return {shown, error};
}

/// Where libxml2 speaks of its own parts and options.
struct Wording {
    std::string_view beginning;
    const char* plain;
};

constexpr std::array<Wording, 4> wordings{{
    {"Excessive depth in document", "elements are nested too deeply"},
    {"internal error: Huge input lookup", "something is too long, nearly 10,000,000 bytes or more"},
    {"Detected an entity reference loop", "entities hold each other, or too much"},
    {"xmlSAX2Characters: huge text nod", "a text is too long, more than 10,000,000 bytes"},
}};

std::string in_plain_words(const std::string& message) {
    for (const Wording& wording : wordings) {
        if (begins_with(message, wording.beginning))
            return wording.plain;
    }
    return message;
}

void write_error(const std::string& file, std::string_view document, const Problem& problem) {
    const std::string place =
        get_label(file) + ':' + std::to_string(problem.line) + ':' + std::to_string(problem.column);
    write_error(place, problem.message, get_excerpt(document, problem));
}

std::vector<Problem> find_fatal(std::string_view document) {
    std::vector<Problem> problems = read_events(document, [](const Event&) {});
    const auto is_harmless = [](const Problem& problem) { return !problem.is_fatal; };
    problems.erase(std::remove_if(problems.begin(), problems.end(), is_harmless), problems.end());
    for (Problem& problem : problems)
        problem.message = in_plain_words(problem.message);
    return problems;
}

std::optional<Problem> find_zero(std::string_view document) {
    const std::size_t zero = document.find('\0');
    if (zero == std::string_view::npos)
        return std::nullopt;
    const Place place = PlaceFinder(document).find(zero);
    return Problem{true, place.line, place.column, "a zero byte, which XML does not allow"};
}

bool comes_before(const Problem& one, const Problem& other) {
    return std::tie(one.line, one.column) < std::tie(other.line, other.column);
}

}  // namespace

// libxml2 takes a zero character for the end of the text, or complains of what stands around it. Of other errors that only
// the library sees, nobody knows the place.
std::vector<Problem> find_errors(std::string_view document, const std::string& reason) {
    std::vector<Problem> errors = find_fatal(document);
    const std::optional<Problem> zero = find_zero(document);
    if (zero && (errors.empty() || !comes_before(errors.front(), *zero)))
        return {*zero};
    if (errors.empty())
        errors.push_back({true, 1, 1, in_plain_words(reason)});
    return errors;
}

void write_errors(const std::string& file, const std::string& document, const std::string& reason) {
    const std::string text = to_utf8(document, get_encoding(document));
    const std::string_view shown = without_mark(text);
    const std::vector<Problem> errors = find_errors(shown, reason);
    const std::size_t count = std::min(errors.size(), most_errors);
    for (std::size_t i = 0; i < count; ++i)
        write_error(file, shown, errors[i]);
    if (count < errors.size())
        write_addition(get_label(file),
                       std::to_string(errors.size() - count) + " more errors follow from these");
}

}  // namespace tool
