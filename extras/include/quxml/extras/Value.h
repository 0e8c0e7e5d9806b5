// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_VALUE_H
#define QUXML_EXTRAS_VALUE_H

/// \file
/// Typed values as text, exactly: all of a text is read, or it is refused. White space around a value, a plus
/// sign, and anything after the value are refused, whatever the locale of the program.
///
/// | type | what is read | what is written |
/// |---|---|---|
/// | `bool` | `true`, `yes`, `on`, `1`; `false`, `no`, `off`, `0`; letters in either case | `true`, `false` |
/// | integers | decimal digits, for signed types after an optional `-`, within the range of the type | the same |
/// | `float`, `double` | `-`, digits, a point and digits, `e` and an exponent; all optional but digits before or after the point; no hexadecimal numbers, infinities and NaN; nothing beyond the range of the type | the shortest text that is read as the same number |
/// | `std::chrono` durations | digits, after an optional `-`, and a unit: `ns`, `us`, `ms`, `s`, `min`, `h` or `d`; the value must be a whole number of what the type counts | the number and the type's own unit |
/// | `std::string` | anything | as it is |
///
/// `signed char` and `unsigned char`, so `std::int8_t` and `std::uint8_t`, are integers. Plain `char` and the
/// types of wide characters are neither: they do not compile. Further types can be added by specialising
/// `Value`; enumerations need not, see `EnumTable`.

#include <chrono>
#include <initializer_list>
#include <limits>
#include <ratio>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "TextView.h"

namespace quxml {
namespace extras {

/// How values of type `T` are read from text and written as text. A specialisation has three static functions,
/// each linear in the length of the text:
///
///     static bool read(const std::string& text, T& value);  // false, and `value` unchanged, if it cannot
///     static std::string write(const T& value);
///     static std::string describe();                        // what is read, such as "an integer from 0 to 9"
///
/// \tparam Enable void; for specialisations that are for many types.
template <class T, class Enable = void>
struct Value;

/// Reads and writes what `Value` does for the types that the extras know; users call the functions of values.h.
struct PlainValues {
    /// Reads a truth value. Here as below, the result says whether all of the text was one, and `value` is
    /// unchanged if not.
    static bool read(const std::string& text, bool& value) noexcept;

    /// Reads an integer from `least`, which is 0 or negative, to `greatest`.
    static bool read(const std::string& text, long long least, long long greatest, long long& value) noexcept;

    /// Reads an integer from 0 to `greatest`.
    static bool read(const std::string& text, unsigned long long greatest,
                     unsigned long long& value) noexcept;

    /// Reads a number: the nearest that there is.
    /// \throws std::bad_alloc only where the standard library cannot read numbers without a locale.
    static bool read(const std::string& text, float& value);

    /// As above.
    static bool read(const std::string& text, double& value);

    /// Reads a duration in ticks, from `least` to `greatest`, of `period` nanoseconds.
    static bool read_duration(const std::string& text, long long period, long long least, long long greatest,
                              long long& ticks) noexcept;

    /// The shortest text that is read as the same number.
    /// \throws std::invalid_argument "Only finite numbers can be written as values" for NaN and infinities.
    static std::string write(float value);

    /// As above.
    static std::string write(double value);

    /// "an integer from ... to ...".
    static std::string describe_integer(long long least, unsigned long long greatest);

    /// What is read as a duration in ticks of `period` nanoseconds, with the unit's name.
    static std::string describe_duration(long long period);

    /// The unit, such as "ms", of durations that count ticks of `period` nanoseconds; empty if it has no name.
    static const char* get_unit(long long period) noexcept;
};

// The types that the extras know; what `Value` says holds for each of them.
/// \cond
template <>
struct Value<std::string> {
    static bool read(const std::string& text, std::string& value) {
        value = text;
        return true;
    }

    static std::string write(const std::string& value) { return value; }
    static std::string describe() { return "text"; }
};

template <>
struct Value<bool> {
    static bool read(const std::string& text, bool& value) { return PlainValues::read(text, value); }
    static std::string write(bool value) { return value ? "true" : "false"; }
    static std::string describe() { return "a truth value (true or false)"; }
};

/// Whether a type is an integer that stands for a number.
template <class T>
struct IsNumber
    : std::integral_constant<bool, std::is_integral<T>::value && !std::is_same<T, bool>::value &&
                                       !std::is_same<T, char>::value && !std::is_same<T, wchar_t>::value &&
                                       !std::is_same<T, char16_t>::value &&
                                       !std::is_same<T, char32_t>::value && sizeof(T) <= sizeof(long long)> {
};

template <class T>
struct Value<T, typename std::enable_if<IsNumber<T>::value && std::is_signed<T>::value>::type> {
    static bool read(const std::string& text, T& value) {
        long long number = 0;
        if (!PlainValues::read(text, std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), number))
            return false;
        value = static_cast<T>(number);
        return true;
    }

    static std::string write(T value) { return std::to_string(static_cast<long long>(value)); }

    static std::string describe() {
        return PlainValues::describe_integer(std::numeric_limits<T>::min(),
                                             static_cast<unsigned long long>(std::numeric_limits<T>::max()));
    }
};

template <class T>
struct Value<T, typename std::enable_if<IsNumber<T>::value && std::is_unsigned<T>::value>::type> {
    static bool read(const std::string& text, T& value) {
        unsigned long long number = 0;
        if (!PlainValues::read(text, std::numeric_limits<T>::max(), number))
            return false;
        value = static_cast<T>(number);
        return true;
    }

    static std::string write(T value) { return std::to_string(static_cast<unsigned long long>(value)); }
    static std::string describe() { return PlainValues::describe_integer(0, std::numeric_limits<T>::max()); }
};

template <class T>
struct Value<T,
             typename std::enable_if<std::is_same<T, float>::value || std::is_same<T, double>::value>::type> {
    static bool read(const std::string& text, T& value) { return PlainValues::read(text, value); }
    static std::string write(T value) { return PlainValues::write(value); }
    static std::string describe() { return "a decimal number within range"; }
};

/// Durations that count nanoseconds, microseconds, milliseconds, seconds, minutes, hours or days in a signed
/// integer.
template <class Rep, class Period>
struct Value<std::chrono::duration<Rep, Period>,
             typename std::enable_if<IsNumber<Rep>::value && std::is_signed<Rep>::value>::type> {
    using Duration = std::chrono::duration<Rep, Period>;

    /// In nanoseconds.
    static constexpr long long period() { return std::ratio_divide<Period, std::nano>::num; }

    using Days = std::ratio<86400>;  // NOLINT(readability-magic-numbers): seconds

    static_assert(std::ratio_equal<Period, std::nano>::value || std::ratio_equal<Period, std::micro>::value ||
                      std::ratio_equal<Period, std::milli>::value ||
                      std::ratio_equal<Period, std::chrono::seconds::period>::value ||
                      std::ratio_equal<Period, std::chrono::minutes::period>::value ||
                      std::ratio_equal<Period, std::chrono::hours::period>::value ||
                      std::ratio_equal<Period, Days>::value,
                  "a duration has to count ns, us, ms, s, min, h or d");

    static bool read(const std::string& text, Duration& value) {
        long long ticks = 0;
        if (!PlainValues::read_duration(text, period(), std::numeric_limits<Rep>::min(),
                                        std::numeric_limits<Rep>::max(), ticks))
            return false;
        value = Duration(static_cast<Rep>(ticks));
        return true;
    }

    static std::string write(Duration value) {
        return std::to_string(static_cast<long long>(value.count())) + PlainValues::get_unit(period());
    }

    static std::string describe() { return PlainValues::describe_duration(period()); }
};

/// \endcond

/// The names of the values of an enumeration:
///
///     const EnumTable<Level> levels = {{"low", Level::low}, {"high", Level::high}};
///
/// Names are compared exactly. If a name or a value is there twice, the first entry counts.
template <class Enum>
class EnumTable {
public:
    /// \param table_entries names, which are copied, and their values.
    /// \throws std::bad_alloc
    EnumTable(std::initializer_list<std::pair<const char*, Enum>> table_entries)
        : entries(table_entries.begin(), table_entries.end()) {}

    /// False, and `value` unchanged, if there is no such name. Linear in the entries, as are the others.
    bool read(const std::string& text, Enum& value) const {
        for (const auto& entry : entries) {
            if (entry.first == text) {
                value = entry.second;
                return true;
            }
        }
        return false;
    }

    /// \throws std::invalid_argument "The value has no name" if it is not in the table.
    std::string write(Enum value) const {
        for (const auto& entry : entries) {
            if (entry.second == value)
                return entry.first;
        }
        throw std::invalid_argument("The value has no name");
    }

    /// Such as "one of low, high".
    std::string describe() const {
        std::string names = "one of";
        for (const auto& entry : entries)
            names += (&entry == &entries.front() ? " " : ", ") + entry.first;
        return names;
    }

private:
    std::vector<std::pair<std::string, Enum>> entries;
};

}  // namespace extras
}  // namespace quxml

#endif
