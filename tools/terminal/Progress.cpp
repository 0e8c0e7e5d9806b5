// SPDX-License-Identifier: MIT
#include "terminal/Progress.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <new>
#include <utility>

#include "terminal/terminal.h"

namespace tool {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds between_drawings{100};
constexpr std::size_t width = 30;
constexpr const char* erased = "\r\033[K";

Clock::time_point get_start() {
    static const Clock::time_point start = Clock::now();
    return start;
}

}  // namespace

void start_clock() {
    get_start();
}

Progress::Progress(std::string task, std::size_t all_work) : name(std::move(task)), all(all_work) {
    if (!has_terminal())
        return;
    try {
        thread = std::thread([this] { run(); });
    } catch (const std::exception&) {
        // Without a thread there is no bar, and nobody misses it.
        return;
    }
}

Progress::~Progress() {
    if (!thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        is_over = true;
    }
    changed.notify_one();
    thread.join();
    if (drawn > 0)
        std::cerr << erased << std::flush;
}

void Progress::run() {
    std::unique_lock<std::mutex> lock(mutex);
    const auto ends = [this] { return is_over; };
    changed.wait_until(lock, get_start() + patience, ends);
    while (!is_over && draw()) {
        changed.wait_for(lock, between_drawings, ends);
    }
}

// A block that wanders from left to right shows that work goes on, but not how far it has come.
std::string Progress::get_bar(std::size_t ticks) const {
    constexpr std::size_t block = 5;
    std::string bar(width, '.');
    const std::size_t full = all == 0 ? 0 : std::min(width, done * width / all);
    std::fill_n(bar.begin(), full, '#');
    if (all == 0)
        bar.replace(ticks % (width - block), block, block, '#');
    return bar;
}

/// False if there is no memory for it: nothing may leave a thread as an exception.
bool Progress::draw() {
    constexpr std::size_t hundred = 100;
    try {
        std::cerr << erased << to_printable(name) << " [" << get_bar(drawn) << ']';
        if (all != 0)
            std::cerr << ' ' << std::min(hundred, done * hundred / all) << '%';
        std::cerr << std::flush;
        ++drawn;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace tool
