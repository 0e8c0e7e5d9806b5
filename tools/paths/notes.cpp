// SPDX-License-Identifier: MIT
#include "paths/notes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>

#include "terminal/words.h"

namespace tool {

namespace {

using Notes = std::vector<Note>;

constexpr const char* quote_signs = "\"'";
constexpr const char* digits = "0123456789";

bool has_any(const std::string& text, const char* characters) {
    return text.find_first_of(characters) != std::string::npos;
}

void warn(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::surprise});
}

void suggest(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::possible_reason});
}

void inform(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::information});
}

// ---- Names of steps ----

bool is_letter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Beyond ASCII everything passes.
bool can_be_in_name(char character) {
    constexpr char last_of_ascii = 0x7f;
    return is_letter(character) || static_cast<unsigned char>(character) > last_of_ascii ||
           has_any(std::string(1, character), "_:-.0123456789");
}

bool can_be_name(const std::string& name) {
    return std::all_of(name.begin(), name.end(), can_be_in_name) &&
           !has_any(name.substr(0, 1), "-.0123456789");
}

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

// ---- Nodes of steps ----

bool is_search(const PathStep& step) {
    return step.kind == StepKind::search || step.kind == StepKind::search_below;
}

void note_search(const PathStep& step, Notes& notes) {
    if (step.text != "*")
        inform(notes,
               "the search stops at the first match of each branch; what is inside a match is not found");
    else if (step.is_last)
        inform(notes, "every node is a match, texts too");
    else
        warn(notes, "everything matches, so the search does not go deeper than where it begins");
}

// ---- Predicates of both kinds ----

/// Signs that compare nothing here.
constexpr const char* other_signs = "!<>";

void note_signs(const std::string& text, const char* meaning, Notes& notes) {
    const std::size_t sign = text.find_first_of(other_signs);
    if (sign != std::string::npos)
        warn(notes, "only = compares here; " + quote(text.substr(sign, 1)) + meaning);
}

bool has_unknown_function(const std::string& text) {
    return contains(text, "(") && !contains(text, "last()") && !contains(text, "position()");
}

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

// ---- Predicates of lists ----

void note_last(const Predicate& predicate, Notes& notes) {
    if (!begins_with(predicate.text, "last()"))
        notes.push_back(
            {"what stands before last() is ignored",
             begins_with(predicate.text, "position()=last()") ? NoteKind::information : NoteKind::surprise});
}

bool has_unread_words(const std::string& text) {
    return !contains(text, "!=") && text.find_first_not_of("position()<>= +-0123456789") != std::string::npos;
}

/// Positions are counted without a sign, so that those below 0 are beyond every list.
bool asks_for_no_position(const Predicate& predicate) {
    constexpr unsigned below_0 = 0x80000000U;
    return contains(predicate.text, "=") && (predicate.range.first == 0 || predicate.range.first >= below_0);
}

void note_position(const Predicate& predicate, Notes& notes) {
    const bool has_less = contains(predicate.text, "<");
    if (predicate.range.counted)
        warn(notes, "a predicate with > never keeps the last one");
    if (has_less && predicate.range.counted)
        warn(notes, "what < says is ignored beside >");
    if (has_less && !predicate.range.counted && predicate.range.end == 0)
        warn(notes, "0 after < stands for no limit");
    if (contains(predicate.text, "!="))
        warn(notes, "!= is taken for =");
    if (!has_any(predicate.text, "<>="))
        warn(notes, "without < > or = and a number it keeps everything");
    if (asks_for_no_position(predicate))
        warn(notes, "positions begin with 1; the last is [last()]");
    if (has_unread_words(predicate.text))
        warn(notes, "only the first < > = count, each with the number after it");
}

std::string get_position_for(int number) {
    if (number > 0)
        return "for that, write [position()=" + std::to_string(number) + ']';
    return "positions begin with 1; from the end they are [last()], [last()-1] and so on";
}

/// 1 also selects elements without an item.
void note_item(const Predicate& predicate, Notes& notes) {
    notes.push_back({"this is not a position; " + get_position_for(predicate.number),
                     predicate.number == 1 ? NoteKind::surprise : NoteKind::possible_reason});
    if (predicate.value.find_first_not_of("+-0123456789") != std::string::npos)
        warn(notes, "the attribute \"item\" is compared with all of " + quote(predicate.value));
}

bool begins_with_quote(const std::string& text) {
    return has_any(text.substr(0, 1), quote_signs);
}

bool is_in_quotes(const std::string& text) {
    return text.size() > 1 && text.front() == text.back() && begins_with_quote(text);
}

/// Whether more than the quotes around it is dropped of a value.
bool has_quotes_at_ends(const std::string& written) {
    return is_in_quotes(written) && written.substr(1, written.size() - 2) != without_quotes(written);
}

std::string get_written_value(const Predicate& predicate) {
    return predicate.text.substr(predicate.text.find('=') + 1);
}

/// Whether a quote is open at the end: a bracket in the value has ended the predicate.
bool is_cut(const std::string& written) {
    const bool is_closed = written.size() > 1 && has_any(written.substr(written.size() - 1), "\"' ");
    return begins_with_quote(written) && !is_closed;
}

/// The rest of the value is taken for predicates of its own, or for nothing.
void note_cut_value(const Predicate& predicate, Notes& notes) {
    if (is_cut(get_written_value(predicate)))
        warn(notes, "the quote is not closed before the ], which counts between quotes too; " +
                        get_advice_on_value(predicate.text));
}

void note_value(const Predicate& predicate, Notes& notes) {
    if (predicate.existence_only && contains(predicate.text, "="))
        warn(notes, "without a value it only asks for the attribute, whatever that is");
    const std::string written = get_written_value(predicate);
    if (has_quotes_at_ends(written))
        warn(notes, "all quotes at the ends are dropped, so that " + predicate.value +
                        " is compared; for all of it " + get_advice_on_value(predicate.text));
    else if (has_any(predicate.value, quote_signs) && (written.front() == ' ' || written.back() == ' '))
        warn(notes, "the quotes belong to the value, since blanks stand outside them");
}

// ---- Predicates of single nodes ----

/// The character before the equal sign is lost.
void note_cut_name(const Predicate& predicate, std::size_t equal_sign, Notes& notes) {
    const std::string written = predicate.text.substr(1, equal_sign - 1);
    if (written.empty() || written.back() == ' ')
        return;
    if (has_any(written.substr(written.size() - 1), other_signs))
        return warn(notes, written.substr(written.size() - 1) + "= is taken for =");
    const std::string spelling = has_quotes_at_ends(predicate.value) || is_cut(predicate.value)
                                     ? get_advice_on_value(predicate.text)
                                     : "write [@" + written + " =" + without_quotes(predicate.value) + ']';
    warn(notes, "the character before = is not part of the name; for " + quote(written) + ' ' + spelling);
}

void note_test_of_attribute(const Predicate& predicate, Notes& notes) {
    const std::size_t equal_sign = predicate.text.find('=');
    if (equal_sign != std::string::npos) {
        note_cut_name(predicate, equal_sign, notes);
        if (has_any(predicate.value, quote_signs))
            warn(notes, "here quotes belong to the value");
        if (begins_with(predicate.value, " "))
            warn(notes, "the blank after = belongs to the value");
    }
    note_name(predicate.name, notes);
}

bool is_number(const std::string& text) {
    const std::size_t first = has_any(text.substr(0, 1), "+-") ? 1 : 0;
    return text.size() > first && text.find_first_not_of(digits, first) == std::string::npos;
}

bool is_too_large(const std::string& number) {
    try {
        read_number(number);
        return false;
    } catch (const std::out_of_range&) {
        return true;
    }
}

void note_words_of_positions(const Predicate& predicate, Notes& notes) {
    for (const char* word : {"last()", "position()"}) {
        if (contains(predicate.text, word))
            warn(notes, std::string(word) + " means no position in the first step and after //");
    }
}

/// 1 also selects elements without an item.
void note_number(const std::string& number, Notes& notes) {
    notes.push_back({"this is not a position; positions count only after a single /",
                     number == "1" ? NoteKind::surprise : NoteKind::possible_reason});
    if (is_too_large(number))
        suggest(notes, "it is compared as text here; after a single / it would be too large");
}

void note_test_of_item(const Predicate& predicate, Notes& notes) {
    const std::size_t before = notes.size();
    note_words_of_positions(predicate, notes);
    if (is_number(predicate.text))
        note_number(predicate.text, notes);
    else if (notes.size() == before && !predicate.text.empty())
        note_bare_text(predicate, " =", "", notes);
}

// ---- Given values ----

/// A predicate that compares with a value given for a name.
void note_given(const Predicate& predicate, Notes& notes) {
    if (predicate.kind != PredicateKind::item && predicate.kind != PredicateKind::test_item)
        return note_name(predicate.name, notes);
    if (predicate.kind == PredicateKind::item && begins_with_number(predicate.value))
        return note_item(predicate, notes);
    if (is_number(predicate.value))
        return note_number(predicate.value, notes);
    suggest(notes, "to compare an attribute write [@name=$" + predicate.given +
                       "], for the text of a child [name=$" + predicate.given + ']');
}

/// Whether a value could be meant as the name of one.
bool is_like_given(const std::string& value) {
    return value.size() > 1 && value[0] == '$' && can_be_name(value.substr(1));
}

/// Such a value stands for itself.
void note_dollar(const Predicate& predicate, Notes& notes) {
    if (is_like_given(predicate.value))
        suggest(notes, predicate.value + " stands for itself here; with --arg " + predicate.value.substr(1) +
                           "=VALUE and without quotes it stands for VALUE");
}

}  // namespace

std::vector<Note> get_notes_on_nodes(const PathStep& step) {
    Notes notes;
    if (step.kind == StepKind::start && step.is_relative)
        suggest(notes, "the first step names the root element itself, not a child of it");
    if (is_search(step))
        note_search(step, notes);
    if (step.kind != StepKind::all_children)
        note_name_test(step.name_test, notes);
    if (!step.is_closed)
        warn(notes, "there is no ] at the end; a path is cut at every /, also between quotes" +
                        get_advice_on_cut(step));
    if (has_empty_predicate(step))
        warn(notes, "[] asks for nothing; brackets count between quotes too");
    if (!step.ignored.empty())
        warn(notes, "only one predicate counts in the first step and after //; ignored: " + step.ignored);
    return notes;
}

std::string get_advice_on_cut(const PathStep& step) {
    const bool is_cut = !step.is_closed && !step.predicates.empty();
    const std::string advice = is_cut ? get_advice_on_value(step.predicates.back().text) : "";
    return advice.empty() ? "" : "; for a value with a / " + advice;
}

std::vector<Note> get_notes(const Predicate& predicate) {
    Notes notes;
    if (!predicate.given.empty()) {
        note_given(predicate, notes);
        return notes;
    }
    note_dollar(predicate, notes);
    switch (predicate.kind) {
        case PredicateKind::last:
            note_last(predicate, notes);
            break;
        case PredicateKind::position:
            note_position(predicate, notes);
            break;
        case PredicateKind::item:
            note_item(predicate, notes);
            break;
        case PredicateKind::literal:
            note_bare_text(predicate, "=", "'", notes);
            break;
        case PredicateKind::test_attribute:
            note_test_of_attribute(predicate, notes);
            note_cut_value(predicate, notes);
            break;
        case PredicateKind::test_item:
            note_test_of_item(predicate, notes);
            break;
        case PredicateKind::test_child_value:
            note_words_of_positions(predicate, notes);
            note_name(predicate.name, notes);
            note_value(predicate, notes);
            note_cut_value(predicate, notes);
            break;
        default:
            note_name(predicate.name, notes);
            note_value(predicate, notes);
            note_cut_value(predicate, notes);
    }
    return notes;
}

// What follows from a cut predicate is of no interest.
std::vector<Note> get_notes(const PathStep& step) {
    Notes notes = get_notes_on_nodes(step);
    if (!step.is_closed)
        return notes;
    for (const Predicate& predicate : step.predicates) {
        if (predicate.fault.empty()) {
            for (const Note& note : get_notes(predicate))
                notes.push_back(note);
        }
    }
    return notes;
}

}  // namespace tool
