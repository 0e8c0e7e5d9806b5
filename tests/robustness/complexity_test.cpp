// SPDX-License-Identifier: MIT

// No operation's work grows faster than its documentation says, by processor time at n and 16n. `./dev
// complexity` counts instructions instead, of larger trees, which takes minutes and has no noise; here the
// limits leave much room for other work on the machine, and for caches that a small tree fits into and a
// large one does not. What is linear takes 16 times as long, what is quadratic 256 times, and so on.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>
#include <string>

#include "robustness/measured_operations.h"

namespace quxml_test {

namespace {

double processor_seconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// The least time of several runs.
double measure(const MeasuredOperation& operation, std::size_t size, int runs) {
    double least = 1e9;
    for (int run = 0; run < runs; ++run) {
        const std::function<void()> work = operation.prepare(size);
        const double start = processor_seconds();
        work();
        least = std::min(least, processor_seconds() - start);
    }
    return least;
}

class Complexity : public ::testing::TestWithParam<MeasuredOperation> {};

TEST_P(Complexity, stays_within_its_growth) {
    const double noise = 1e-4;
    const double limit = GetParam().growth == Growth::linear ? 192 : 2048;
    const double less = measure(GetParam(), GetParam().size / 64, 8);
    const double more = measure(GetParam(), GetParam().size / 4, 3);
    RecordProperty("times", std::to_string(more / less));
    EXPECT_LE(more, limit * std::max(less, noise)) << less << " s, then " << more << " s";
}

INSTANTIATE_TEST_SUITE_P(Operations, Complexity, ::testing::ValuesIn(measured_operations()),
                         [](const auto& operation) { return std::string(operation.param.name); });

}  // namespace

}  // namespace quxml_test
