// SPDX-License-Identifier: MIT
#include "terminal/similar.h"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <numeric>
#include <utility>

namespace tool {

namespace {

/// How many characters may be wrong.
constexpr std::size_t most = 2;

/// Nobody misspells longer words by two characters only, and comparing them would take long.
constexpr std::size_t longest = 64;

/// How many characters to insert, to remove or to exchange.
std::size_t get_distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t exchanged = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, exchanged});
        }
    }
    return row.back();
}

bool is_in_other_case(const std::string& one, const std::string& other) {
    return one.size() == other.size() &&
           std::equal(one.begin(), one.end(), other.begin(), [](char first, char second) {
               return std::tolower(first, std::locale::classic()) ==
                      std::tolower(second, std::locale::classic());
           });
}

bool is_similar(const std::string& one, const std::string& word) {
    if (one.size() > longest || one.size() > word.size() + most || word.size() > one.size() + most)
        return false;
    return is_in_other_case(one, word) ||
           (one[0] == word[0] && one.size() > most && get_distance(one, word) <= most);
}

}  // namespace

std::string ask_for_similar(const std::string& word, const std::vector<std::string>& words) {
    const auto similar = std::find_if(words.begin(), words.end(),
                                      [&](const std::string& one) { return is_similar(one, word); });
    return similar == words.end() ? "" : "; is it " + *similar + '?';
}

}  // namespace tool
