// SPDX-License-Identifier: MIT
#include "terminal/messages.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "terminal/Progress.h"
#include "terminal/colours.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

std::string coloured(Colour colour, const std::string& text) {
    return has_colours(STDERR_FILENO) ? in_colour(colour, text) : text;
}

std::string get_heading(const std::string& place, Colour colour, const std::string& kind) {
    return coloured(Colour::bold, place + ": ") + coloured(colour, kind + ": ");
}

std::size_t count_characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

/// The caret stands below the character that begins at its byte.
std::string show(const Excerpt& excerpt) {
    if (excerpt.line.empty())
        return "";
    const std::string before = to_printable(excerpt.line.substr(0, excerpt.caret));
    const std::string blanks(count_characters(before), ' ');
    return "    " + to_printable(excerpt.line) + "\n    " + blanks + coloured(Colour::bold_green, "^") + '\n';
}

std::ostream& get_stream() {
    take_bar_away();
    return std::cerr;
}

}  // namespace

std::string get_label(const std::string& file) {
    return file == standard_input ? "standard input" : escape_controls(file);
}

void write_failure(std::string_view text) {
    get_stream() << "quxml: " << to_printable_lines(text) << '\n';
}

void write_note(std::string_view text) {
    get_stream() << "quxml: note: " << to_printable(text) << '\n';
}

void write_hint(std::string_view text) {
    get_stream() << "quxml: hint: " << to_printable(text) << '\n';
}

void write_warning(const std::string& file, const std::string& text) {
    get_stream() << get_heading(get_label(file), Colour::bold_magenta, "warning") << text << '\n';
}

void write_error(const std::string& place, const std::string& text, const Excerpt& excerpt) {
    get_stream() << get_heading(place, Colour::bold_red, "error") << to_printable(text) << '\n'
                 << show(excerpt);
}

void write_addition(const std::string& place, const std::string& text) {
    get_stream() << place << ": " << text << '\n';
}

}  // namespace tool
