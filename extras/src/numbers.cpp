// SPDX-License-Identifier: MIT

// Numbers and durations as text.
//
// Floating-point numbers are checked against their grammar first; what converts them then sees nothing but
// digits, a point and an exponent. Where the standard library has no conversions that leave the locale alone
// (libstdc++ before 11, libc++), those of C take their place, in the classic locale.

#include <locale.h>  // NOLINT(modernize-deprecated-headers): <clocale> need not have uselocale

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "quxml/extras/Value.h"

namespace quxml {
namespace extras {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads all of a text as an integer in decimal; `from_chars` accepts neither a plus sign nor white space.
template <class Integer>
bool read_integer(std::string_view text, Integer& value) noexcept {
    Integer number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    value = number;
    return true;
}

}  // namespace

bool PlainValues::read(const std::string& text, long long least, long long greatest,
                       long long& value) noexcept {
    long long number = 0;
    if (!read_integer(text, number) || number < least || number > greatest)
        return false;
    value = number;
    return true;
}

bool PlainValues::read(const std::string& text, unsigned long long greatest,
                       unsigned long long& value) noexcept {
    unsigned long long number = 0;
    if (!read_integer(text, number) || number > greatest)
        return false;
    value = number;
    return true;
}

std::string PlainValues::describe_integer(long long least, unsigned long long greatest) {
    return "an integer from " + std::to_string(least) + " to " + std::to_string(greatest);
}

namespace {

bool equals_ignoring_case(std::string_view text, std::string_view word) {
    if (text.size() != word.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char lower =
            text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        if (lower != word[i])
            return false;
    }
    return true;
}

constexpr std::array<std::string_view, 4> true_words = {"true", "yes", "on", "1"};
constexpr std::array<std::string_view, 4> false_words = {"false", "no", "off", "0"};

bool is_one_of(std::string_view text, const std::array<std::string_view, 4>& words) {
    for (const std::string_view word : words) {
        if (equals_ignoring_case(text, word))
            return true;
    }
    return false;
}

}  // namespace

bool PlainValues::read(const std::string& text, bool& value) noexcept {
    const bool is_true = is_one_of(text, true_words);
    if (!is_true && !is_one_of(text, false_words))
        return false;
    value = is_true;
    return true;
}

namespace {

std::size_t skip_digits(std::string_view text, std::size_t at) {
    while (at < text.size() && is_digit(text[at]))
        ++at;
    return at;
}

/// Skips digits[.digits], with a digit before or after the point. Returns `at` if there is no digit.
std::size_t skip_mantissa(std::string_view text, std::size_t at) {
    const std::size_t point = skip_digits(text, at);
    if (point == text.size() || text[point] != '.')
        return point;
    const std::size_t end = skip_digits(text, point + 1);
    return end - at > 1 ? end : at;
}

/// Whether the text is e[+-]digits.
bool is_exponent(std::string_view text) {
    if (text.empty() || (text[0] != 'e' && text[0] != 'E'))
        return false;
    const std::size_t first = text.size() > 1 && (text[1] == '-' || text[1] == '+') ? 2 : 1;
    return first < text.size() && skip_digits(text, first) == text.size();
}

/// Whether the text is [-]digits[.digits][e[+-]digits], with a digit before or after the point.
bool is_decimal_number(std::string_view text) {
    const std::size_t first = !text.empty() && text[0] == '-' ? 1 : 0;
    const std::size_t end = skip_mantissa(text, first);
    return end != first && (end == text.size() || is_exponent(text.substr(end)));
}

/// Whether a number that was read as zero is one, and not just too small to be told from it.
bool has_only_zeros(std::string_view text) {
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    return mantissa.find_first_of("123456789") == std::string_view::npos;
}

// The tests build the second way, too, where there is a choice.
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L && !defined(QUXML_NUMBERS_BY_C)

template <class Number>
bool convert(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

template <class Number>
std::string write_shortest(Number value) {
    constexpr std::size_t enough = 64;
    std::array<char, enough> text = {};
    const std::to_chars_result result = std::to_chars(text.data(), text.data() + text.size(), value);
    return std::string(text.data(), result.ptr);
}

#else

/// The classic locale, in this thread only and for as long as the object lives.
class ClassicLocale {
public:
    /// \throws std::bad_alloc
    ClassicLocale() : classic(::newlocale(LC_ALL_MASK, "C", nullptr)) {
        if (classic == nullptr)
            throw std::bad_alloc();
        former = ::uselocale(classic);
    }

    ~ClassicLocale() {
        ::uselocale(former);
        ::freelocale(classic);
    }

    ClassicLocale(const ClassicLocale&) = delete;
    ClassicLocale& operator=(const ClassicLocale&) = delete;

private:
    locale_t classic;
    locale_t former;
};

void scan(const char* text, char** end, double& number) {
    number = std::strtod(text, end);
}

void scan(const char* text, char** end, float& number) {
    number = std::strtof(text, end);
}

template <class Number>
bool convert(const std::string& text, Number& number) {
    const ClassicLocale locale;
    char* end = nullptr;
    scan(text.c_str(), &end, number);
    return end == text.c_str() + text.size();
}

enum class Form { with_exponent, plain };

/// \param decimals after the point.
std::string print(double value, Form form, int decimals) {
    constexpr std::size_t enough = 512;
    std::array<char, enough> text = {};
    const ClassicLocale locale;
    // NOLINTBEGIN(cppcoreguidelines-pro-type-vararg): snprintf is declared so
    static_cast<void>(form == Form::plain ? std::snprintf(text.data(), text.size(), "%.*f", decimals, value)
                                          : std::snprintf(text.data(), text.size(), "%.*e", decimals, value));
    // NOLINTEND(cppcoreguidelines-pro-type-vararg)
    return text.data();
}

/// As few digits as bring the number back, with an exponent or without, whichever is shorter.
template <class Number>
std::string write_shortest(Number value) {
    const auto number = static_cast<double>(value);
    std::string text;
    int decimals = -1;
    Number again = 0;
    do {
        text = print(number, Form::with_exponent, ++decimals);
    } while (decimals < std::numeric_limits<Number>::max_digits10 - 1 &&
             (!convert(text, again) || again != value));
    const int exponent = std::atoi(text.c_str() + text.find('e') + 1);  // NOLINT(cert-err34-c): ours
    const std::string plain = print(number, Form::plain, decimals > exponent ? decimals - exponent : 0);
    return plain.size() <= text.size() ? plain : text;
}

#endif

template <class Number>
bool read_number(const std::string& text, Number& value) {
    Number number = 0;
    if (!is_decimal_number(text))
        return false;
    if (has_only_zeros(text)) {
        value = text[0] == '-' ? -number : number;
        return true;
    }
    if (!convert(text, number) || number == 0 || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

template <class Number>
std::string write_number(Number value) {
    if (!std::isfinite(value))
        throw std::invalid_argument("Only finite numbers can be written as values");
    return write_shortest(value);
}

}  // namespace

bool PlainValues::read(const std::string& text, float& value) {
    return read_number(text, value);
}

bool PlainValues::read(const std::string& text, double& value) {
    return read_number(text, value);
}

std::string PlainValues::write(float value) {
    return write_number(value);
}

std::string PlainValues::write(double value) {
    return write_number(value);
}

namespace {

struct Unit {
    const char* name;
    long long nanoseconds;
};

constexpr std::array<Unit, 7> units = {{{"ns", 1},
                                        {"us", 1000},
                                        {"ms", 1000000},
                                        {"s", 1000000000},
                                        {"min", 60000000000},
                                        {"h", 3600000000000},
                                        {"d", 86400000000000}}};

/// The length of a unit in nanoseconds, or 0 if there is no such unit.
long long get_length(std::string_view unit_name) {
    for (const Unit& unit : units) {
        if (unit_name == unit.name)
            return unit.nanoseconds;
    }
    return 0;
}

/// Multiplies `count` by `from` and divides it by `to`, each of which is a multiple or a fraction of the other.
/// False if the result is not whole or does not fit.
bool rescale(long long& count, long long from, long long to) {
    if (from < to) {
        const long long divisor = to / from;
        if (count % divisor != 0)
            return false;
        count /= divisor;
        return true;
    }
    const long long factor = from / to;
    if (count > std::numeric_limits<long long>::max() / factor ||
        count < std::numeric_limits<long long>::min() / factor)
        return false;
    count *= factor;
    return true;
}

}  // namespace

bool PlainValues::read_duration(const std::string& text, long long period, long long least,
                                long long greatest, long long& ticks) noexcept {
    const std::string_view all(text);
    const std::size_t digits_end = skip_digits(all, !all.empty() && all[0] == '-' ? 1 : 0);
    const long long length = get_length(all.substr(digits_end));
    long long count = 0;
    if (length == 0 || !read_integer(all.substr(0, digits_end), count) || !rescale(count, length, period))
        return false;
    if (count < least || count > greatest)
        return false;
    ticks = count;
    return true;
}

const char* PlainValues::get_unit(long long period) noexcept {
    for (const Unit& unit : units) {
        if (unit.nanoseconds == period)
            return unit.name;
    }
    return "";
}

std::string PlainValues::describe_duration(long long period) {
    return std::string("a duration in ns, us, ms, s, min, h or d that is a whole number of ") +
           get_unit(period) + " within range";
}

}  // namespace extras
}  // namespace quxml
