// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_CASEFOLD_H
#define QUXML_DOM_CASEFOLD_H

#include <algorithm>
#include <array>
#include <functional>
#include <locale>
#include <string_view>

namespace quxml {

/// Compares texts without regard to case under the locale that was the global one at construction: byte by byte, two
/// bytes are equal if the locale has the same capital for both. It asks the locale once for each byte value that turns
/// up, not for each byte: asking takes longer than all the rest of a comparison.
class CaseFold {
public:
    CaseFold() : types(std::use_facet<std::ctype<char>>(locale)) {}

    // `types` is the locale's, and what is known is worth less than what a copy costs.
    CaseFold(const CaseFold&) = delete;
    CaseFold& operator=(const CaseFold&) = delete;
    ~CaseFold() = default;

    bool operator()(char a, char b) const { return a == b || fold(a) == fold(b); }

    bool equals(std::string_view a, std::string_view b) const { return a.size() == b.size() && begins(a, b); }

    /// Whether the beginning of `text` equals `prefix`; every text begins with an empty one.
    bool begins(std::string_view text, std::string_view prefix) const {
        return text.size() >= prefix.size() &&
               std::equal(prefix.begin(), prefix.end(), text.begin(), std::cref(*this));
    }

private:
    char fold(char c) const {
        const auto byte = static_cast<unsigned char>(c);
        if (!is_known[byte]) {
            folded[byte] = types.toupper(c);
            is_known[byte] = true;
        }
        return folded[byte];
    }

    std::locale locale;
    const std::ctype<char>& types;
    mutable std::array<char, 256> folded = {};
    mutable std::array<bool, 256> is_known = {};
};

}  // namespace quxml

#endif
