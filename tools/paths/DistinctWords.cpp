// SPDX-License-Identifier: MIT
#include "paths/DistinctWords.h"

#include <algorithm>

#include "terminal/similar.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// No character is cut in two.
std::string shorten(const std::string& word) {
    constexpr std::size_t longest = 40;
    if (word.size() <= longest)
        return word;
    std::size_t end = longest;
    while (end != 0 && !begins_character(word[end]))
        --end;
    return word.substr(0, end) + "...";
}

}  // namespace

void DistinctWords::add(const std::string& word) {
    if (known.insert(word).second)
        words.push_back(word);
}

std::string DistinctWords::list(bool quoted) const {
    constexpr std::size_t most = 8;
    std::string text;
    for (std::size_t i = 0; i != std::min(most, words.size()); ++i)
        text +=
            (i == 0 ? "" : ", ") + (quoted ? quote(shorten(escape_controls(words[i]))) : shorten(words[i]));
    if (words.size() > most)
        text += " and " + std::to_string(words.size() - most) + " more";
    return text;
}

std::string DistinctWords::ask_for(const std::string& word) const {
    return ask_for_similar(word, words);
}

}  // namespace tool
