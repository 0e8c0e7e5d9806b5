// SPDX-License-Identifier: MIT

// Covers typed values, in attributes and in texts.

#include "quxml/extras/values.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include "quxml/Document.h"
#include "support/decimal_commas.h"
#include "support/expect_throw.h"
#include "support/locales.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Document;
using quxml::Element;

/// What a type reads from a text, as it writes it; "-" if it refuses, which must leave the value alone.
template <class T>
std::string read_as(const std::string& text) {
    T value = T();
    const T before = value;
    if (Value<T>::read(text, value))
        return Value<T>::write(value);
    EXPECT_TRUE(value == before);
    return "-";
}

/// What every type of numbers refuses.
const char* const no_numbers[] = {
    "",         " ",     " 7",    "7 ",    "\t7",   "7\n",       "+7",   "0x7", "0X7", "7x",
    "x",        "--7",   "-",     "+",     "- 7",   "7-",        "NaN",  "nan", "inf", "-inf",
    "infinity", "1,000", "1_000", "1'000", "٧",     "7\xC2\xA0", "true", "1e",  "e3",  "1e+",
    ".",        "-.",    "0x1p3", "1.2.3", "1e3.5", "\xff",      "7d",   "7L",  "7.0f"};

TEST(Values, refuse_what_is_not_a_number) {
    for (const std::string text : no_numbers) {
        EXPECT_EQ(read_as<int>(text), "-") << text;
        EXPECT_EQ(read_as<unsigned>(text), "-") << text;
        EXPECT_EQ(read_as<std::int8_t>(text), "-") << text;
        EXPECT_EQ(read_as<std::uint64_t>(text), "-") << text;
        EXPECT_EQ(read_as<double>(text), "-") << text;
        EXPECT_EQ(read_as<float>(text), "-") << text;
    }
    const std::string zero("7\0", 2);
    EXPECT_EQ(read_as<int>(zero), "-");
    EXPECT_EQ(read_as<double>(zero), "-");
    EXPECT_EQ(read_as<std::chrono::seconds>(std::string("7s\0", 3)), "-");
}

TEST(Values, of_integers_are_read_exactly) {
    EXPECT_EQ(read_as<int>("0"), "0");
    EXPECT_EQ(read_as<int>("-0"), "0");
    EXPECT_EQ(read_as<int>("0080"), "80") << "decimal, not octal";
    EXPECT_EQ(read_as<int>(std::string(1000, '0') + "7"), "7");
    EXPECT_EQ(read_as<int>("1e3"), "-");
    EXPECT_EQ(read_as<int>("7.0"), "-");
    EXPECT_EQ(read_as<unsigned>("-0"), "-");
    EXPECT_EQ(read_as<unsigned>("-1"), "-");
}

/// The limits of a type are read, and what lies one beyond is not.
template <class T>
void expect_limits(const std::string& below, const std::string& above) {
    EXPECT_EQ(read_as<T>(Value<T>::write(std::numeric_limits<T>::min())),
              Value<T>::write(std::numeric_limits<T>::min()));
    EXPECT_EQ(read_as<T>(Value<T>::write(std::numeric_limits<T>::max())),
              Value<T>::write(std::numeric_limits<T>::max()));
    EXPECT_EQ(read_as<T>(below), "-") << below;
    EXPECT_EQ(read_as<T>(above), "-") << above;
    EXPECT_EQ(read_as<T>(std::string(400, '9')), "-");
}

TEST(Values, of_integers_are_held_to_the_range_of_the_type) {
    expect_limits<std::int8_t>("-129", "128");
    expect_limits<std::uint8_t>("-1", "256");
    expect_limits<short>("-32769", "32768");
    expect_limits<unsigned short>("-1", "65536");
    expect_limits<int>("-2147483649", "2147483648");
    expect_limits<unsigned>("-1", "4294967296");
    expect_limits<long>("-9223372036854775809", "9223372036854775808");
    expect_limits<unsigned long>("-1", "18446744073709551616");
    expect_limits<long long>("-9223372036854775809", "9223372036854775808");
    expect_limits<unsigned long long>("-1", "18446744073709551616");
    EXPECT_EQ(Value<long long>::write(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(Value<std::int8_t>::describe(), "an integer from -128 to 127");
    EXPECT_EQ(Value<std::uint64_t>::describe(), "an integer from 0 to 18446744073709551615");
}

TEST(Values, of_truth_have_four_spellings_each) {
    for (const char* text : {"true", "yes", "on", "1", "TRUE", "Yes", "oN"})
        EXPECT_EQ(read_as<bool>(text), "true") << text;
    for (const char* text : {"false", "no", "off", "0", "False", "NO", "oFf"})
        EXPECT_EQ(read_as<bool>(text), "false") << text;
    for (const char* text :
         {"", "2", "t", "y", "true ", " true", "00", "01", "-1", "enabled", "tru", "truee"})
        EXPECT_EQ(read_as<bool>(text), "-") << text;
    EXPECT_EQ(read_as<bool>(std::string("no\0", 3)), "-");
}

TEST(Values, of_floating_point_are_read_exactly) {
    EXPECT_EQ(read_as<double>("1e3"), "1000");
    EXPECT_EQ(read_as<double>("1E+3"), "1000");
    EXPECT_EQ(read_as<double>("-1.5"), "-1.5");
    EXPECT_EQ(read_as<double>(".5"), "0.5");
    EXPECT_EQ(read_as<double>("5."), "5");
    EXPECT_EQ(read_as<double>("0.1"), "0.1");
    EXPECT_EQ(read_as<double>("-0"), "-0");
    EXPECT_EQ(read_as<double>("0e999999999999"), "0");
    EXPECT_EQ(read_as<double>("1e999"), "-") << "beyond the range";
    EXPECT_EQ(read_as<double>("-1e999999999999"), "-");
    EXPECT_EQ(read_as<double>("1e-999"), "-") << "too small to be told from zero";
    EXPECT_EQ(read_as<double>("4.9406564584124654e-324"), "5e-324");
    EXPECT_EQ(read_as<double>("1.7976931348623157e308"), "1.7976931348623157e+308");
    EXPECT_EQ(read_as<float>("1e39"), "-");
    EXPECT_EQ(read_as<float>("0.1"), "0.1");
    double value = 0;
    EXPECT_TRUE(Value<double>::read("9007199254740993", value));
    EXPECT_EQ(value, 9007199254740992.0);
}

TEST(Values, of_floating_point_come_back_as_they_were) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        double again = 0;
        ASSERT_TRUE(Value<double>::read(Value<double>::write(value), again)) << Value<double>::write(value);
        ASSERT_EQ(again, value);
    }
}

TEST(Values, that_are_not_finite_cannot_be_written) {
    Document document(false);
    Element* root = document.create_root_node("r");
    const char* message = "Only finite numbers can be written as values";
    EXPECT_THROW_MESSAGE(set(*root, "x", std::nan("")), std::invalid_argument, message);
    EXPECT_THROW_MESSAGE(set(*root, "x", std::numeric_limits<float>::infinity()), std::invalid_argument,
                         message);
    EXPECT_EQ(to_line(root), "r");
}

/// A decimal comma and dots between thousands.
class Commas : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Values, do_not_depend_on_the_locale) {
    const GlobalLocale global(std::locale(std::locale(), new Commas));
    const DecimalCommas commas;
    EXPECT_EQ(read_as<double>("1234.5"), "1234.5");
    EXPECT_EQ(read_as<double>("1234,5"), "-");
    EXPECT_EQ(read_as<double>("1.234,5"), "-");
    EXPECT_EQ(read_as<int>("1.234"), "-");
    EXPECT_EQ(read_as<int>("1234567"), "1234567");
}

using Minutes = std::chrono::minutes;
using Seconds = std::chrono::seconds;
using Milliseconds = std::chrono::milliseconds;
using Days = std::chrono::duration<int, std::ratio<86400>>;

TEST(Values, of_durations_have_units) {
    EXPECT_EQ(read_as<Milliseconds>("250ms"), "250ms");
    EXPECT_EQ(read_as<Milliseconds>("2s"), "2000ms");
    EXPECT_EQ(read_as<Milliseconds>("-1min"), "-60000ms");
    EXPECT_EQ(read_as<Milliseconds>("1d"), "86400000ms");
    EXPECT_EQ(read_as<Milliseconds>("2000us"), "2ms");
    EXPECT_EQ(read_as<Seconds>("1000ms"), "1s");
    EXPECT_EQ(read_as<Minutes>("2h"), "120min");
    EXPECT_EQ(read_as<std::chrono::hours>("3d"), "72h");
    EXPECT_EQ(read_as<std::chrono::nanoseconds>("7us"), "7000ns");
    EXPECT_EQ(read_as<std::chrono::microseconds>("0ns"), "0us");
    EXPECT_EQ(read_as<Days>("48h"), "2d");
}

TEST(Values, of_durations_are_whole_numbers_within_range) {
    EXPECT_EQ(read_as<Seconds>("1500ms"), "-") << "not a whole number of seconds";
    EXPECT_EQ(read_as<Days>("47h"), "-");
    EXPECT_EQ(read_as<std::chrono::nanoseconds>("106751d"), "9223286400000000000ns");
    EXPECT_EQ(read_as<std::chrono::nanoseconds>("106752d"), "-") << "beyond the range";
    EXPECT_EQ(read_as<std::chrono::nanoseconds>("-106752d"), "-");
    EXPECT_EQ(read_as<Days>("2147483648d"), "-");
    EXPECT_EQ(read_as<Days>("9223372036854775807d"), "-");
    for (const char* text : {"", "5", "s", "5 s", " 5s", "5s ", "+5s", "5S", "5sec", "5m", "1.5s", "1e3s",
                             "--5s", "5ss", "1h30min", "-s", "99999999999999999999s"})
        EXPECT_EQ(read_as<Seconds>(text), "-") << text;
    EXPECT_EQ(Value<Seconds>::describe(),
              "a duration in ns, us, ms, s, min, h or d that is a whole number of s within range");
}

enum class Level { low, high, unnamed };

const EnumTable<Level> levels = {{"low", Level::low}, {"high", Level::high}};

class TypedValues : public ::testing::Test {
protected:
    Document document{false};
    Element* root =
        build(document,
              "settings{server(port=8080,ratio=0.25,on=yes,empty='',wrong=8o80,timeout=5s,level=high)"
              "{port{\"81\"} name{\"emma\"} nothing wrong{\"x\"} level{\"low\"}}}");
    Element* server = static_cast<Element*>(root->get_child("server"));
};

TEST_F(TypedValues, are_read_from_attributes) {
    EXPECT_EQ(get<int>(*server, "port", 80), 8080);
    EXPECT_EQ(get(*server, "port", 80), 8080);
    EXPECT_EQ(get<double>(*server, "ratio", 1), 0.25);
    EXPECT_EQ(get(*server, "on", false), true);
    EXPECT_EQ(get(*server, "port", "none"), "8080");
    EXPECT_EQ(get<std::string>(*server, "empty", "none"), "") << "empty is not absent";
    EXPECT_EQ(get<Milliseconds>(*server, "timeout", Milliseconds(1)), Milliseconds(5000));
    EXPECT_EQ(get(*server, "level", Level::low, levels), Level::high);
    EXPECT_EQ(require<std::uint16_t>(*server, "port"), 8080);
    EXPECT_EQ(require(*server, "level", levels), Level::high);
    EXPECT_EQ(get<int>(*server, std::string("port"), 80), 8080);
}

TEST_F(TypedValues, are_the_default_where_the_attribute_is_absent) {
    EXPECT_EQ(get<int>(*server, "Port", 80), 80);
    EXPECT_EQ(get(*server, "host", "localhost"), "localhost");
    EXPECT_EQ(get(*server, "verbosity", Level::low, levels), Level::low);
    EXPECT_EQ(get<int>(*server, "port").value_or(80), 8080);
    EXPECT_EQ(get<int>(*server, "absent"), std::nullopt);
}

TEST_F(TypedValues, are_an_error_where_the_attribute_is_not_a_value_even_with_a_default_which_is_wanted) {
    const char* message = "/settings/server/@wrong is \"8o80\", which is not an integer from 0 to 65535";
    EXPECT_THROW_MESSAGE(get<std::uint16_t>(*server, "wrong", 80), ValueError, message);
    EXPECT_THROW_MESSAGE(require<std::uint16_t>(*server, "wrong"), ValueError, message);
    EXPECT_THROW_MESSAGE(get<std::uint16_t>(*server, "wrong"), ValueError, message);
    EXPECT_THROW_MESSAGE(get(*server, "empty", true), ValueError,
                         "/settings/server/@empty is \"\", which is not a truth value (true or false)");
    EXPECT_THROW_MESSAGE(get(*server, "port", Level::low, levels), ValueError,
                         "/settings/server/@port is \"8080\", which is not one of low, high");
    EXPECT_THROW_MESSAGE(require(*server, "port", levels), ValueError,
                         "/settings/server/@port is \"8080\", which is not one of low, high");
}

TEST_F(TypedValues, are_an_error_where_they_are_required_and_missing) {
    EXPECT_THROW_MESSAGE(require<bool>(*server, "tls"), ValueError, "/settings/server/@tls is missing");
    EXPECT_THROW_MESSAGE(require(*server, "tls", levels), ValueError, "/settings/server/@tls is missing");
    EXPECT_THROW_MESSAGE(require_text<int>(*server, "host"), ValueError, "/settings/server/host is missing");
}

TEST_F(TypedValues, are_text_in_any_form) {
    char letters[] = "abc";
    char* const pointer = letters;
    const std::string_view view = std::string_view("abcdef").substr(0, 3);
    set(*server, "a", letters);
    set(*server, "b", pointer);
    set(*server, "c", view);
    set_text(*server, "d", pointer);
    set_text(*server, "e", view);
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(server->get_attribute_value(name), "abc") << name;
    EXPECT_EQ(text_of(*server, "d") + text_of(*server, "e"), "abcabc");
    EXPECT_EQ(get(*server, "none", pointer) + get(*server, "none", view) + get_text(*server, "none", view),
              "abcabcabc");
    static_assert(std::is_same<decltype(get(*server, "none", view)), std::string>::value);
}

TEST_F(TypedValues, are_in_children_that_can_be_required) {
    EXPECT_EQ(&require_child(*root, "server"), server);
    const Element& constant = *root;
    EXPECT_EQ(&require_child(constant, "server"), server);
    EXPECT_THROW_MESSAGE(require_child(*server, "host"), ValueError, "/settings/server/host is missing");
}

TEST_F(TypedValues, name_their_place_among_namesakes) {
    build_child(*root, "server(port=x)");
    try {
        require<int>(static_cast<Element&>(*root->get_children().back()), "port");
        FAIL();
    } catch (const ValueError& error) {
        EXPECT_EQ(error.get_place(), "/settings/server[position()=2]/@port");
        EXPECT_EQ(error.get_value(), "x");
    }
}

TEST_F(TypedValues, are_shown_on_one_short_line) {
    server->set_attribute("wrong", "\x1b[31m\n" + std::string(100, 'x'));
    EXPECT_THROW_MESSAGE(get<int>(*server, "wrong", 1), ValueError,
                         "/settings/server/@wrong is \"?[31m?" + std::string(54, 'x') +
                             "...\", which is not an integer from -2147483648 to 2147483647");
}

TEST_F(TypedValues, can_be_tried_without_exceptions) {
    int port = 80;
    EXPECT_FALSE(try_get(*server, "wrong", port));
    EXPECT_FALSE(try_get(*server, "absent", port));
    EXPECT_FALSE(try_get_text(*server, "wrong", port));
    EXPECT_EQ(port, 80);
    EXPECT_TRUE(try_get(*server, "port", port));
    EXPECT_EQ(port, 8080);
    EXPECT_TRUE(try_get_text(*server, "port", port));
    EXPECT_EQ(port, 81);
}

TEST_F(TypedValues, are_read_from_texts) {
    EXPECT_EQ(get_text<int>(*server, "port", 80), 81);
    EXPECT_EQ(get_text<int>(*server, "host", 80), 80);
    EXPECT_EQ(get_text(*server, "name", "none"), "emma");
    EXPECT_EQ(get_text(*server, "level", Level::high, levels), Level::low);
    EXPECT_EQ(require_text<std::string>(*server, "nothing"), "");
    EXPECT_THROW_MESSAGE(
        get_text<int>(*server, "wrong", 80), ValueError,
        "/settings/server/wrong is \"x\", which is not an integer from -2147483648 to 2147483647");
    EXPECT_THROW_MESSAGE(get_text(*server, "wrong", Level::low, levels), ValueError,
                         "/settings/server/wrong is \"x\", which is not one of low, high");
    EXPECT_THROW(get_text<int>(*server, "nothing", 80), ValueError);
}

TEST_F(TypedValues, are_set) {
    Document fresh(false);
    Element* element = fresh.create_root_node("e");
    set(*element, "i", 8080);
    set(*element, "u", std::uint8_t{255});
    set(*element, "d", 0.1);
    set(*element, "b", true);
    set(*element, "s", std::string("text"));
    set(*element, "l", "literal");
    set(*element, "t", Milliseconds(250));
    EXPECT_EQ(set(*element, "e", Level::high, levels)->get_value(), "high");
    EXPECT_EQ(to_line(element), "e(i=8080,u=255,d=0.1,b=true,s=text,l=literal,t=250ms,e=high)");
    EXPECT_THROW_MESSAGE(set(*element, "e", Level::unnamed, levels), std::invalid_argument,
                         "The value has no name");
}

TEST_F(TypedValues, texts_are_the_first_or_the_default) {
    EXPECT_EQ(text_of(*server, "name"), "emma");
    EXPECT_EQ(text_of(*server, "nothing", "none"), "") << "an empty child is not absent";
    EXPECT_EQ(text_of(*server, "host", "none"), "none");
    EXPECT_EQ(text_of(*server, "host"), "");
    EXPECT_EQ(text_of(*server), "");
    EXPECT_EQ(text_of(*build_child(*root, "t{a \"one\" \"two\"}")), "one");
}

TEST_F(TypedValues, texts_are_replaced_in_their_place) {
    Element* mixed = build_child(*root, "m{a \"one\" b \"two\" c \"three\"}");
    set_text(*mixed, "new");
    EXPECT_EQ(to_line(mixed), "m{a \"new\" b c}");
    Element* empty = build_child(*root, "e");
    set_text(*empty, "new");
    EXPECT_EQ(to_line(empty), "e{\"new\"}");
    set_text(*empty, "port", 8080);
    set_text(*empty, "port", 8081);
    set_text(*empty, "name", "emma");
    EXPECT_EQ(set_text(*empty, "name", std::string("faust"))->get_name(), "name");
    EXPECT_EQ(to_line(empty), "e{\"new\" port{\"8081\"} name{\"faust\"}}");
}

}  // namespace

}  // namespace quxml_test
