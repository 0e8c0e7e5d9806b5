// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_TEST_NAMES_H
#define QUXML_TESTS_SUPPORT_TEST_NAMES_H

#include <gtest/gtest.h>

#include <cctype>
#include <string>

namespace quxml_test {

/// The note of a row as the name of its test, which may hold letters, digits and underscores alone: one underscore for
/// whatever is between two words.
template <class Row>
std::string note_of(const ::testing::TestParamInfo<Row>& row) {
    std::string name;
    for (const char c : std::string(row.param.note)) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0)
            name += c;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    return name;
}

}  // namespace quxml_test

#endif
