// SPDX-License-Identifier: MIT

// Covers how numbers are read and written where the standard library cannot do it without a locale: numbers.cpp is
// compiled into this program such that it takes that way anywhere.

#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include "quxml/extras/Value.h"
#include "support/decimal_commas.h"

namespace quxml_test {

namespace {

using quxml::extras::Value;

/// What is written for what has been read, or a dash.
template <class Number>
std::string read_as(const std::string& text) {
    Number value = 0;
    return Value<Number>::read(text, value) ? Value<Number>::write(value) : "-";
}

TEST(NumbersByC, are_read_exactly_or_not_at_all) {
    EXPECT_EQ(read_as<double>("1E+3"), "1000");
    EXPECT_EQ(read_as<double>("-1.5"), "-1.5");
    EXPECT_EQ(read_as<double>(".5"), "0.5");
    EXPECT_EQ(read_as<double>("-0"), "-0");
    EXPECT_EQ(read_as<double>("4.9406564584124654e-324"), "5e-324");
    EXPECT_EQ(read_as<double>("1.7976931348623157e308"), "1.7976931348623157e+308");
    EXPECT_EQ(read_as<float>("0.1"), "0.1");
    EXPECT_EQ(read_as<float>("1e-45"), "1e-45");
    for (const char* text :
         {"", " 1.5", "1.5 ", "+1.5", "0x1p3", "1,5", "1.5e", "nan", "inf", "1e999", "1e-999"})
        EXPECT_EQ(read_as<double>(text), "-") << text;
    EXPECT_EQ(read_as<float>("1e39"), "-");
    EXPECT_THROW(Value<double>::write(std::nan("")), std::invalid_argument);
}

template <class Number, class Bits>
void expect_same_texts_as_the_standard_library(int count) {
    std::mt19937_64 random(7);
    for (int i = 0; i < count; ++i) {
        const Bits bits = static_cast<Bits>(random());
        Number value = 0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        const std::string text = Value<Number>::write(value);
        Number again = 0;
        ASSERT_TRUE(Value<Number>::read(text, again)) << text;
        ASSERT_EQ(again, value) << text;
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
        char expected[64];
        ASSERT_EQ(text,
                  std::string(expected, std::to_chars(expected, expected + sizeof expected, value).ptr));
#endif
    }
}

TEST(NumbersByC, are_written_as_the_standard_library_writes_them) {
    expect_same_texts_as_the_standard_library<double, std::uint64_t>(5000);
    expect_same_texts_as_the_standard_library<float, std::uint32_t>(5000);
}

TEST(NumbersByC, do_not_depend_on_the_locale_and_leave_it_as_it_is) {
    const DecimalCommas commas;
    const std::string before = std::localeconv()->decimal_point;
    EXPECT_EQ(read_as<double>("1234.5"), "1234.5");
    EXPECT_EQ(read_as<double>("1e-7"), "1e-07");
    EXPECT_EQ(read_as<double>("1234,5"), "-");
    EXPECT_EQ(read_as<float>("0.25"), "0.25");
    EXPECT_EQ(std::localeconv()->decimal_point, before);
}

}  // namespace

}  // namespace quxml_test
