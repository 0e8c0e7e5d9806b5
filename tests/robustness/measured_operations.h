// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_ROBUSTNESS_MEASURED_OPERATIONS_H
#define QUXML_TESTS_ROBUSTNESS_MEASURED_OPERATIONS_H

// What the checks of complexity measure: one operation, or a series of them, on a tree of a given size.

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace quxml_test {

/// How the work may grow when the size is doubled twice.
enum class Growth {
    linear,    // n log n at most
    quadratic  // by design: attributes of one element, sorted places
};

struct MeasuredOperation {
    const char* name;
    Growth growth;
    std::size_t size;  // the largest that is measured; a half and a quarter of it are measured too

    /// Does what is not measured and returns what is, to be called once. What that destroys is measured too,
    /// what it leaves is not.
    std::function<std::function<void()>(std::size_t size)> prepare;
};

/// Prints the name; for GoogleTest.
void PrintTo(const MeasuredOperation& operation, std::ostream* out);

const std::vector<MeasuredOperation>& measured_operations();

/// By how much the work at 4n may exceed the work at n: 4 log(4n) / log(n) is less than 5 for every n that is
/// measured, and what is quadratic takes 16 times as much.
constexpr double linear_limit = 6;
constexpr double quadratic_limit = 18;

}  // namespace quxml_test

#endif
