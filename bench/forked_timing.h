// SPDX-License-Identifier: MIT
#ifndef QUXML_BENCH_FORKED_TIMING_H
#define QUXML_BENCH_FORKED_TIMING_H

#include <cstddef>
#include <functional>
#include <string>

namespace bench {

/// A piece of work that can be done any number of times.
struct Run {
    std::function<void()> before;  // done before each run, untimed; may be empty
    std::function<void()> work;    // what is timed
    std::function<std::string()>
        outcome;  // what the last run made, in words that are the same for all libraries
};

/// What `job` returns in a forked child, where nothing that ran before has left its traces in the heap.
/// \throws std::runtime_error the child failed.
std::string in_child(const std::function<std::string()>& job);

/// Nanoseconds of processor time that one run takes. The first run is not timed; then runs are, until they
/// have taken the least time that is asked for, or 20 times as much with what comes before each.
double time_per_run(const Run& run, double least_nanoseconds);

/// By how many bytes the memory of this process grows at most while `work` runs, its pages counted.
/// \throws std::runtime_error the system does not say.
std::size_t peak_of(const std::function<void()>& work);

}  // namespace bench

#endif
