// SPDX-License-Identifier: MIT
#include "paths/name_notes.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "terminal/words.h"

namespace tool {

namespace {

bool is_letter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Beyond ASCII everything passes.
bool can_be_in_name(char character) {
    constexpr char last_of_ascii = 0x7f;
    return is_letter(character) || static_cast<unsigned char>(character) > last_of_ascii ||
           has_any(std::string(1, character), "_:-.0123456789");
}

}  // namespace

bool can_be_name(const std::string& name) {
    return std::all_of(name.begin(), name.end(), can_be_in_name) &&
           !has_any(name.substr(0, 1), "-.0123456789");
}

// ---- Name tests of steps ----

namespace {

struct Advice {
    const char* part;
    const char* text;
};

/// What those may want who write such a name; the first part that is there decides.
constexpr std::array<Advice, 8> advices{{
    {"..", "there is no way up"},
    {"text()", "a / at the end selects all that is in an element, its text too"},
    {"|", "ask for one path at a time"},
    {"(", "there are no functions here"},
    {" ", "the blanks belong to it"},
    {"'", "the quotes belong to it"},
    {"\"", "the quotes belong to it"},
    {"", "any name is *"},
}};

std::string get_advice_on_name(const std::string& name) {
    if (name[0] == '@')
        return "attributes are not selected; \"quxml query --attribute " + name.substr(1) + "\" writes them";
    const auto* const advice = std::find_if(advices.begin(), advices.end(),
                                            [&](const Advice& one) { return contains(name, one.part); });
    return advice->text;
}

}  // namespace

void note_name_test(const std::string& name, Notes& notes) {
    if (name.empty())
        return warn(notes, "a name is missing here; any name is *");
    if (name == "*")
        return;
    if (!can_be_name(name))
        return warn(notes, "no element can have the name " + quote(name) + "; " + get_advice_on_name(name));
    if (contains(name, "::"))
        warn(notes, quote(name) + " is taken for a name, since there are no axes; // searches all below");
    else if (contains(name, ":"))
        suggest(notes, "a declared prefix is dropped when a document is read, so that only " +
                           quote(name.substr(name.find(':') + 1)) + " is left");
}

// ---- Names in predicates ----

namespace {

void note_signs(const std::string& text, const char* meaning, Notes& notes) {
    const std::size_t sign = text.find_first_of(other_signs);
    if (sign != std::string::npos)
        warn(notes, "only = compares here; " + quote(text.substr(sign, 1)) + meaning);
}

bool has_unknown_function(const std::string& text) {
    return contains(text, "(") && !contains(text, "last()") && !contains(text, "position()");
}

}  // namespace

void note_name(const std::string& name, Notes& notes) {
    const std::size_t before = notes.size();
    if (contains(name, " "))
        warn(notes, "the blanks in " + quote(name) + " belong to the name");
    if (has_unknown_function(name))
        warn(notes, "no such function is known; " + quote(name) + " is taken for a name");
    note_signs(name, " belongs to the name", notes);
    if (name.empty())
        warn(notes, "a name is missing");
    else if (notes.size() == before && !can_be_name(name) && !contains(name, "()"))
        warn(notes, "nothing can have the name " + quote(name));
}

void note_bare_text(const Predicate& predicate, const char* equal, const char* quote_sign, Notes& notes) {
    const std::size_t before = notes.size();
    if (has_unknown_function(predicate.text))
        warn(notes, "no such function is known; it is taken for a text");
    note_signs(predicate.text, " belongs to the text", notes);
    if (notes.size() == before)
        suggest(notes, "to compare an attribute write [@name" + std::string(equal) + quote_sign +
                           predicate.value + quote_sign + "], for the text of a child [name='" +
                           predicate.value + "']");
}

}  // namespace tool
