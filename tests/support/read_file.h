// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_READ_FILE_H
#define QUXML_TESTS_SUPPORT_READ_FILE_H

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace quxml_test {

/// All bytes of a file.
/// \throws std::runtime_error if it cannot be opened.
inline std::string read_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot open " + name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace quxml_test

#endif
