// SPDX-License-Identifier: MIT
#include "paths/value_notes.h"

#include <cstddef>
#include <string>

#include "paths/cutting.h"
#include "paths/faults.h"
#include "paths/name_notes.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* quote_signs = "\"'";

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
    return predicate.text.substr(get_place_after(predicate.text.find('=')));
}

/// Whether a quote is open at the end: a bracket in the value has ended the predicate.
bool is_cut(const std::string& written) {
    const bool is_closed = written.size() > 1 && has_any(written.substr(written.size() - 1), "\"' ");
    return begins_with_quote(written) && !is_closed;
}

}  // namespace

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

void note_cut_value(const Predicate& predicate, Notes& notes) {
    if (is_cut(get_written_value(predicate)))
        warn(notes, "the quote is not closed before the ], which counts between quotes too; " +
                        get_advice_on_value(predicate.text));
}

// ---- Attributes of single nodes ----

namespace {

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

}  // namespace

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

// ---- Values that look like names of values ----

namespace {

/// Whether a value could be meant as the name of one.
bool is_like_given(const std::string& value) {
    return value.size() > 1 && value[0] == '$' && can_be_name(value.substr(1));
}

}  // namespace

void note_dollar(const Predicate& predicate, Notes& notes) {
    if (is_like_given(predicate.value))
        suggest(notes, predicate.value + " stands for itself here; with --arg " + predicate.value.substr(1) +
                           "=VALUE and without quotes it stands for VALUE");
}

}  // namespace tool
