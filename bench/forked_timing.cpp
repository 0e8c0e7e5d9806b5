// SPDX-License-Identifier: MIT
#include "forked_timing.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

constexpr std::size_t block_size = 65536;

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

using File = std::unique_ptr<std::FILE, FileCloser>;

[[noreturn]] void run_as_child(const std::function<std::string()>& job, int pipe_end) {
    int status = EXIT_FAILURE;
    try {
        const std::string result = job();
        const File pipe(fdopen(pipe_end, "w"));
        const bool is_written = std::fwrite(result.data(), 1, result.size(), pipe.get()) == result.size();
        status = is_written && std::fflush(pipe.get()) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    _exit(status);
}

std::string read_all(int pipe_end) {
    std::string all;
    const File pipe(fdopen(pipe_end, "r"));
    std::array<char, block_size> block{};
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe.get()))
        all.append(block.data(), size);
    return all;
}

double processor_time() {
    constexpr double nanoseconds_per_second = 1e9;
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * nanoseconds_per_second + static_cast<double>(now.tv_nsec);
}

/// The time that it takes to read the clock twice.
double time_of_clock() {
    constexpr int looks = 100;
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < looks; ++i) {
        const double start = processor_time();
        least = std::min(least, processor_time() - start);
    }
    return least;
}

/// Runs that take far less than what has to be done before each are ended before they take long enough:
/// microseconds after milliseconds would take minutes.
double time_of_each(const Run& run, double least_nanoseconds) {
    constexpr double most_preparation = 20;
    const double clock = time_of_clock();
    const double end = processor_time() + most_preparation * least_nanoseconds;
    double total = 0;
    std::size_t runs = 0;
    do {
        run.before();
        const double start = processor_time();
        run.work();
        total += processor_time() - start - clock;
        ++runs;
    } while (total < least_nanoseconds && processor_time() < end);
    return total / static_cast<double>(runs);
}

/// Doubles the number of runs between two readings of the clock until they take long enough.
double time_of_many(const Run& run, double least_nanoseconds) {
    for (std::size_t runs = 1;; runs *= 2) {
        const double start = processor_time();
        for (std::size_t i = 0; i < runs; ++i)
            run.work();
        const double total = processor_time() - start;
        if (total >= least_nanoseconds)
            return total / static_cast<double>(runs);
    }
}

}  // namespace

std::string in_child(const std::function<std::string()>& job) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        run_as_child(job, ends[1]);
    }
    close(ends[1]);
    std::string result = read_all(ends[0]);
    int status = EXIT_FAILURE;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("a forked child failed");
    return result;
}

double time_per_run(const Run& run, double least_nanoseconds) {
    if (run.before)
        run.before();
    run.work();
    return run.before ? time_of_each(run, least_nanoseconds) : time_of_many(run, least_nanoseconds);
}

namespace {

/// A line of the kernel's about this process, in bytes.
std::size_t bytes_in_status(const std::string& field) {
    constexpr std::size_t bytes_per_kilobyte = 1024;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, field.size(), field) == 0)
            return std::stoul(line.substr(field.size())) * bytes_per_kilobyte;
    }
    throw std::runtime_error("/proc/self/status has no " + field);
}

}  // namespace

std::size_t peak_of(const std::function<void()>& work) {
    std::ofstream("/proc/self/clear_refs") << "5";  // forgets the peak so far
    const std::size_t before = bytes_in_status("VmRSS:");
    work();
    return bytes_in_status("VmHWM:") - before;
}

}  // namespace bench
