// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_NOTE_H
#define QUXML_TOOLS_PATHS_NOTE_H

#include <string>
#include <vector>

namespace tool {

enum class NoteKind {
    surprise,         // the path does something other than it seems to
    possible_reason,  // perhaps why nothing is selected
    information       // good to know
};

/// Where a path may not do what was meant.
struct Note {
    std::string text;
    NoteKind kind;
};

using Notes = std::vector<Note>;

inline void warn(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::surprise});
}

inline void suggest(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::possible_reason});
}

inline void inform(Notes& notes, const std::string& text) {
    notes.push_back({text, NoteKind::information});
}

}  // namespace tool

#endif
