// SPDX-License-Identifier: MIT
#include "paths/position_notes.h"

#include <cstddef>
#include <stdexcept>

#include "terminal/words.h"

namespace tool {

// ---- Lists ----

void note_last(const Predicate& predicate, Notes& notes) {
    if (!begins_with(predicate.text, "last()"))
        notes.push_back(
            {"what stands before last() is ignored",
             begins_with(predicate.text, "position()=last()") ? NoteKind::information : NoteKind::surprise});
}

namespace {

bool has_unread_words(const std::string& text) {
    return !contains(text, "!=") && text.find_first_not_of("position()<>= +-0123456789") != std::string::npos;
}

/// Positions are counted without a sign, so that those below 0 are beyond every list.
bool asks_for_no_position(const Predicate& predicate) {
    constexpr unsigned below_0 = 0x80000000U;
    return contains(predicate.text, "=") && (predicate.range.first == 0 || predicate.range.first >= below_0);
}

}  // namespace

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

namespace {

std::string get_position_for(int number) {
    if (number > 0)
        return "for that, write [position()=" + std::to_string(number) + ']';
    return "positions begin with 1; from the end they are [last()], [last()-1] and so on";
}

}  // namespace

/// 1 also selects elements without an item.
void note_item(const Predicate& predicate, Notes& notes) {
    notes.push_back({"this is not a position; " + get_position_for(predicate.number),
                     predicate.number == 1 ? NoteKind::surprise : NoteKind::possible_reason});
    if (predicate.value.find_first_not_of("+-0123456789") != std::string::npos)
        warn(notes, "the attribute \"item\" is compared with all of " + quote(predicate.value));
}

// ---- Single nodes ----

void note_words_of_positions(const Predicate& predicate, Notes& notes) {
    for (const char* word : {"last()", "position()"}) {
        if (contains(predicate.text, word))
            warn(notes, std::string(word) + " means no position in the first step and after //");
    }
}

bool is_number(const std::string& text) {
    const std::size_t first = has_any(text.substr(0, 1), "+-") ? 1 : 0;
    return text.size() > first && text.find_first_not_of("0123456789", first) == std::string::npos;
}

namespace {

bool is_too_large(const std::string& number) {
    try {
        read_number(number);
        return false;
    } catch (const std::out_of_range&) {
        return true;
    }
}

}  // namespace

/// 1 also selects elements without an item.
void note_number(const std::string& number, Notes& notes) {
    notes.push_back({"this is not a position; positions count only after a single /",
                     number == "1" ? NoteKind::surprise : NoteKind::possible_reason});
    if (is_too_large(number))
        suggest(notes, "it is compared as text here; after a single / it would be too large");
}

}  // namespace tool
