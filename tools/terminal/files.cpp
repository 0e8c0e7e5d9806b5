// SPDX-License-Identifier: MIT
#include "terminal/files.h"

#include <filesystem>
#include <system_error>

namespace tool {

bool is_file(const std::string& name) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(name, ignored);
}

}  // namespace tool
