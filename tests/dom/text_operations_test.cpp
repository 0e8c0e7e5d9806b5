// SPDX-License-Identifier: MIT

// Covers the splitting, trimming and comparing of texts. Boost's string algorithms do the same and are the judge: of
// every short text, of random ones, of every pair of bytes, and under several locales.

#include <cstddef>
#include <deque>
#include <locale>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <boost/algorithm/string.hpp>

#include "dom/CaseFold.h"
#include "dom/split.h"
#include "dom/trim.h"
#include "support/locales.h"

namespace {

using quxml::CaseFold;
using quxml_test::FoursAreLetters;
using quxml_test::GlobalLocale;
using quxml_test::LatinLetters;
using quxml_test::NoCapitals;
using quxml_test::UnderscoresAreSpace;
using quxml_test::with_facet;

/// Every text of at most `length` characters of an alphabet, the empty one included.
std::vector<std::string> all_texts(const std::string& alphabet, std::size_t length) {
    std::vector<std::string> texts = {""};
    for (std::size_t begin = 0; length > 0; --length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char c : alphabet)
                texts.push_back(texts[begin] + c);
        }
    }
    return texts;
}

std::vector<std::string> random_texts(const std::string& alphabet, std::size_t count) {
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> length(0, 60);
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::vector<std::string> texts(count);
    for (std::string& text : texts) {
        for (std::size_t left = length(random); left > 0; --left)
            text += alphabet[letter(random)];
    }
    return texts;
}

std::vector<std::string> all_bytes() {
    std::vector<std::string> texts;
    for (int byte = 0; byte < 256; ++byte)
        texts.emplace_back(1, static_cast<char>(byte));
    return texts;
}

std::vector<std::locale> locales() {
    return {std::locale::classic(), with_facet(new FoursAreLetters), with_facet(new NoCapitals),
            with_facet(new LatinLetters), with_facet(new UnderscoresAreSpace)};
}

template <char... Separators>
void expect_same_pieces_at(const std::vector<std::string>& texts) {
    const std::string separators = {Separators...};
    for (const std::string& text : texts) {
        std::deque<std::string> expected;
        boost::algorithm::split(expected, text, boost::algorithm::is_any_of(separators));
        std::deque<std::string> pieces;
        quxml::cut<Separators...>(text, [&pieces](std::string_view piece) { pieces.emplace_back(piece); });
        ASSERT_EQ(pieces, expected) << text << " at " << separators;
    }
}

void expect_same_pieces(const std::vector<std::string>& texts) {
    expect_same_pieces_at<'/'>(texts);
    expect_same_pieces_at<'='>(texts);
    expect_same_pieces_at<']', '['>(texts);
}

TEST(Split, gives_the_pieces_of_every_short_text) {
    expect_same_pieces(all_texts(std::string("/=][a\0", 6), 6));
}

TEST(Split, gives_the_pieces_of_random_texts) {
    expect_same_pieces(random_texts("/=][ab\xC3", 2000));
}

void expect_same_trimmed(const std::vector<std::string>& texts) {
    for (const char* const characters : {"\"'", "'", ""}) {
        for (const std::string& text : texts) {
            const auto is_trimmed = boost::algorithm::is_any_of(characters);
            ASSERT_EQ(quxml::trim(text, characters), boost::algorithm::trim_copy_if(text, is_trimmed))
                << text << " without " << characters;
        }
    }
}

TEST(Trim, takes_the_characters_off_every_short_text) {
    expect_same_trimmed(all_texts(std::string("\"' a\0", 5), 6));
}

TEST(Trim, takes_the_characters_off_random_texts) {
    expect_same_trimmed(random_texts("\"'a", 2000));
}

void expect_same_without_space(const std::vector<std::string>& texts) {
    for (const std::locale& locale : locales()) {
        const GlobalLocale changed(locale);
        for (const std::string& text : texts) {
            ASSERT_EQ(quxml::trim_space(text), boost::algorithm::trim_copy(text)) << '"' << text << '"';
        }
    }
}

TEST(TrimSpace, takes_white_space_off_every_short_text) {
    expect_same_without_space(all_texts(std::string(" \t_a\xA0\0", 6), 5));
}

TEST(TrimSpace, takes_white_space_off_random_texts) {
    expect_same_without_space(random_texts(" _\na", 2000));
}

TEST(TrimSpace, knows_what_is_white_space) {
    expect_same_without_space(all_bytes());
}

void expect_same_comparisons(const std::vector<std::string>& texts) {
    for (const std::locale& locale : locales()) {
        const GlobalLocale changed(locale);
        const CaseFold fold;
        for (const std::string& a : texts) {
            for (const std::string& b : texts) {
                ASSERT_EQ(fold.equals(a, b), boost::algorithm::iequals(a, b, locale)) << a << " and " << b;
                ASSERT_EQ(fold.begins(a, b), boost::algorithm::istarts_with(a, b, locale))
                    << a << " and " << b;
            }
        }
    }
}

TEST(CaseFold, compares_all_pairs_of_bytes) {
    expect_same_comparisons(all_bytes());
}

TEST(CaseFold, compares_all_pairs_of_short_texts) {
    expect_same_comparisons(all_texts("aAb4\xF6\xD6", 3));
}

TEST(CaseFold, compares_random_texts) {
    std::vector<std::string> texts = random_texts("aA", 40);
    for (std::size_t i = 0; i < 40; ++i)
        texts.push_back(boost::algorithm::to_upper_copy(texts[i]) + "b");
    expect_same_comparisons(texts);
}

}  // namespace
