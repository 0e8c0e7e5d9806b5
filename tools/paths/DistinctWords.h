// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_DISTINCT_WORDS_H
#define QUXML_TOOLS_PATHS_DISTINCT_WORDS_H

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace tool {

/// Words, each once, in the order in which they come.
class DistinctWords {
public:
    void add(const std::string& word);

    bool has(const std::string& word) const { return known.count(word) != 0; }
    bool is_empty() const { return words.empty(); }

    /// The first of them, one after the other.
    std::string list(bool quoted) const;

    /// A question for the one that was perhaps meant with `word`; empty if none is similar.
    std::string ask_for(const std::string& word) const;

private:
    std::vector<std::string> words;
    std::unordered_set<std::string> known;
};

}  // namespace tool

#endif
