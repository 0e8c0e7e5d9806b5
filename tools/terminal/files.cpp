// SPDX-License-Identifier: MIT
#include "terminal/files.h"

#include <filesystem>
#include <system_error>

#include "terminal/words.h"

namespace tool {

bool is_file(const std::string& name) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(name, ignored);
}

bool looks_like_file(const std::string& word) {
    return word == standard_input || word.find_first_of("./") != std::string::npos;
}

bool is_in_same_folder(const std::string& one, const std::string& other) {
    return std::filesystem::path(one).parent_path() == std::filesystem::path(other).parent_path();
}

std::string get_true_name(const std::string& name) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::canonical(name, error);
    return error ? name : path.string();
}

}  // namespace tool
