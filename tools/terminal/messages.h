// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_MESSAGES_H
#define QUXML_TOOLS_TERMINAL_MESSAGES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// What the program writes to standard error, except for the bar of `Progress`. Whatever a text holds, it is harmless on
// a terminal; a terminal that knows colours gets them.

/// How messages call a file: by its name, escaped so that it is one line and harmless on a terminal, or
/// "standard input" for "-".
std::string get_label(const std::string& file);

/// Why a command failed: "quxml: TEXT", which may have several lines.
void write_failure(std::string_view text);

/// Where a path does something other than it seems to: "quxml: note: TEXT".
void write_note(std::string_view text);

/// What on the command line may have been meant otherwise: "quxml: hint: TEXT".
void write_hint(std::string_view text);

/// What a command does not read or leaves out: "FILE: warning: TEXT".
/// \param file  as on the command line.
void write_warning(const std::string& file, const std::string& text);

/// One line of a document, and the byte of it that a caret points at.
struct Excerpt {
    std::string_view line;
    std::size_t caret;
};

/// What is wrong with a document: "PLACE: error: TEXT", and below it the line with a caret unless that is empty.
/// \param excerpt  UTF-8.
void write_error(const std::string& place, const std::string& text, const Excerpt& excerpt);

/// What there is to add to errors: "PLACE: TEXT".
void write_addition(const std::string& place, const std::string& text);

}  // namespace tool

#endif
