// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_EXPECT_THROW_H
#define QUXML_TESTS_SUPPORT_EXPECT_THROW_H

#include <exception>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

namespace quxml_test {

/// Success if `statement` throws an exception whose dynamic type is exactly `Exception`, not a class derived
/// from it, and whose `what()` is exactly `message`.
template <class Exception, class Statement>
::testing::AssertionResult throws_exactly(Statement statement, const std::string& message) {
    try {
        statement();
    } catch (const std::exception& error) {
        if (typeid(error) == typeid(Exception) && error.what() == message)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << "expected " << typeid(Exception).name() << " \"" << message << "\"\n  thrown "
               << typeid(error).name() << " \"" << error.what() << "\"";
    }
    return ::testing::AssertionFailure()
           << "expected " << typeid(Exception).name() << " \"" << message << "\"\n  nothing was thrown";
}

}  // namespace quxml_test

/// Named like GoogleTest's own: checks the exact type and the exact message of what `statement` throws.
#define EXPECT_THROW_MESSAGE(statement, exception_type, message) \
    EXPECT_TRUE(::quxml_test::throws_exactly<exception_type>([&] { statement; }, message))

#endif
