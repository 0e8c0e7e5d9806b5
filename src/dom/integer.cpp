#include "integer.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace quxml {

Integer read_integer(const std::string& text) noexcept {
    const int saved_errno = errno;
    errno = 0;
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    const bool overflow = errno == ERANGE || value < INT_MIN || value > INT_MAX;
    errno = saved_errno;
    if (end == text.c_str())
        return {Integer::none, 0};
    if (overflow)
        return {Integer::out_of_range, 0};
    return {Integer::fits, static_cast<int>(value)};
}

}  // namespace quxml
