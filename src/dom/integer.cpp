#include "integer.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace quxml {

namespace {

/// The number if the text is a few digits and nothing else, as most are: reading these by hand takes a tenth
/// of the time.
std::optional<int> read_few_digits(const std::string& text) {
    constexpr std::size_t few = 9;
    if (text.empty() || text.size() > few)
        return std::nullopt;
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

}  // namespace

std::optional<int> read_integer(const std::string& text) {
    if (const std::optional<int> number = read_few_digits(text))
        return number;
    const int saved_errno = errno;
    errno = 0;
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    const bool is_out_of_range = errno == ERANGE || value < INT_MIN || value > INT_MAX;
    errno = saved_errno;
    if (end == text.c_str())
        return std::nullopt;
    if (is_out_of_range)
        throw std::out_of_range("stoi");
    return static_cast<int>(value);
}

int require_integer(const std::string& text) {
    const std::optional<int> number = read_integer(text);
    if (!number)
        throw std::invalid_argument("stoi");
    return *number;
}

std::string write_integer(int number) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read of the buffer has been written before
    std::array<char, std::numeric_limits<int>::digits10 + 2> buffer;
    char* const end = buffer.data() + buffer.size();
    char* begin = end;
    unsigned rest = number < 0 ? 0 - static_cast<unsigned>(number) : static_cast<unsigned>(number);
    do
        *--begin = static_cast<char>('0' + rest % 10);
    while ((rest /= 10) != 0);
    if (number < 0)
        *--begin = '-';
    return {begin, end};
}

}  // namespace quxml
