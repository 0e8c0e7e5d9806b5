// SPDX-License-Identifier: MIT

// Covers the reading of integers, which items and positions are.

#include "dom/integer.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "support/expect_throw.h"

namespace {

using quxml::read_integer;
using quxml::require_integer;

struct Row {
    const char* text = nullptr;
    std::optional<int> number;
};

TEST(ReadInteger, reads_the_number_that_a_text_begins_with) {
    const Row rows[] = {
        {"0", 0},
        {"007", 7},
        {"999999999", 999999999},
        {"1000000000", 1000000000},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"+5", 5},
        {" \t\n12", 12},
        {"12ab", 12},
        {"1 2", 1},
        {"9:", 9},
        {"9/", 9},
    };
    for (const Row& row : rows)
        EXPECT_EQ(read_integer(row.text), row.number) << row.text;
}

TEST(ReadInteger, reads_no_number_from_other_texts) {
    for (const char* const text : {"", " ", "-", "+", "- 1", "--1", "a1", "/", ":"})
        EXPECT_EQ(read_integer(text), std::nullopt) << text;
}

TEST(ReadInteger, refuses_numbers_beyond_int) {
    for (const char* const text :
         {"2147483648", "-2147483649", "9223372036854775807", "99999999999999999999", "2147483648x"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW_MESSAGE(read_integer(text), std::out_of_range, "stoi");
    }
}

TEST(RequireInteger, reads_what_read_integer_reads) {
    EXPECT_EQ(require_integer("7"), 7);
    EXPECT_EQ(require_integer("\t-12 apples"), -12);
    EXPECT_EQ(require_integer("2147483647"), 2147483647);
}

TEST(RequireInteger, refuses_other_texts_in_the_words_of_one_standard_library_under_all) {
    for (const char* const text : {"", " ", "-", "+", "- 1", "--1", "a1"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW_MESSAGE(require_integer(text), std::invalid_argument, "stoi");
    }
    EXPECT_THROW_MESSAGE(require_integer("2147483648"), std::out_of_range, "stoi");
}

}  // namespace
