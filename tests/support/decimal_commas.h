// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_DECIMAL_COMMAS_H
#define QUXML_TESTS_SUPPORT_DECIMAL_COMMAS_H

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace quxml_test {

/// Makes decimal commas those of C's functions, if there is a locale that has them: tests/CMakeLists.txt makes one. Puts
/// the former locale back.
class DecimalCommas {
public:
    DecimalCommas() : former(std::setlocale(LC_ALL, nullptr)) {
#ifdef QUXML_LOCALES
        ::setenv("LOCPATH", QUXML_LOCALES, 1);
        EXPECT_NE(std::setlocale(LC_ALL, "xx_XX"), nullptr);
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
#endif
    }

    DecimalCommas(const DecimalCommas&) = delete;
    DecimalCommas& operator=(const DecimalCommas&) = delete;

    ~DecimalCommas() {
        EXPECT_NE(std::setlocale(LC_ALL, former.c_str()), nullptr);
        ::unsetenv("LOCPATH");
    }

private:
    std::string former;
};

}  // namespace quxml_test

#endif
