#include "integer.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <stdexcept>

namespace quxml {

std::optional<int> read_integer(const std::string& text) {
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

}  // namespace quxml
