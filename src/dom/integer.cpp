// SPDX-License-Identifier: MIT
#include "integer.h"

#include <array>
#include <cctype>
#include <climits>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "failure.h"

namespace quxml {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Looks for digits first, which are never spaces: asking the locale takes longer.
bool is_space(char c) {
    return !is_digit(c) && std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// The number that the digits at the beginning make, exact up to 2147483648; for a greater one, any that is
/// greater than that too.
std::int64_t read_digits(std::string_view text) {
    constexpr unsigned tenth_of_largest = INT_MAX / 10;
    unsigned number = 0;
    for (const char c : text) {
        if (!is_digit(c))
            break;
        number = number > tenth_of_largest ? UINT_MAX : number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

}  // namespace

std::optional<int> read_integer(std::string_view text) {
    while (!text.empty() && is_space(text.front()))
        text.remove_prefix(1);
    const bool is_negative = text.substr(0, 1) == "-";
    if (is_negative || text.substr(0, 1) == "+")
        text.remove_prefix(1);
    if (text.empty() || !is_digit(text.front()))
        return std::nullopt;
    const std::int64_t value = is_negative ? -read_digits(text) : read_digits(text);
    if (value < INT_MIN || value > INT_MAX)
        throw std::out_of_range("stoi");
    return static_cast<int>(value);
}

int require_integer(std::string_view text) {
    const std::optional<int> number = read_integer(text);
    if (!number)
        throw_invalid_argument("stoi");
    return *number;
}

std::string write_integer(int number) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read of the buffer has been written before
    std::array<char, std::numeric_limits<int>::digits10 + 2> buffer;
    char* const end = buffer.data() + buffer.size();
    char* begin = end;
    auto rest = static_cast<unsigned>(number < 0 ? -std::int64_t{number} : number);
    do
        *--begin = static_cast<char>('0' + rest % 10);
    while ((rest /= 10) != 0);
    if (number < 0)
        *--begin = '-';
    return {begin, end};
}

}  // namespace quxml
