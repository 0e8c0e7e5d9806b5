// SPDX-License-Identifier: MIT
#ifndef QUXML_FUZZ_CHECK_H
#define QUXML_FUZZ_CHECK_H

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

/// What a target does with one input. Each target defines it; libFuzzer or `replay_main.cpp` calls it.
// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quxml_fuzz {

/// Ends the program with a message that says what does not hold; that is what a finding is.
[[noreturn]] inline void fail(const std::string& message) {
    std::cerr << "fuzz: " << message << std::endl;
    std::abort();
}

inline void check(bool holds, const char* message) {
    if (!holds)
        fail(message);
}

/// Both must be the same text. What is compared is named by `what` and `detail`.
inline void check_same(const char* what, const std::string& got, const std::string& expected,
                       const std::string& detail = std::string()) {
    if (got != expected)
        fail(what + (" " + detail) + "\n  expected: " + expected + "\n  got:      " + got);
}

inline std::string to_text(const std::uint8_t* data, std::size_t size) {
    return std::string(data, data + size);
}

}  // namespace quxml_fuzz

#endif
