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

/// What one bar leaves for the next. No two of them live at once.
struct Bars {
    FileCount files;
    bool is_shown = false;
    std::size_t drawn = 0;
    Clock::time_point last;  // when one was drawn
};

Bars& get_bars() {
    static Bars bars;
    return bars;
}

}  // namespace

void start_clock() {
    get_start();
}

void take_bar_away() {
    if (std::exchange(get_bars().is_shown, false))
        std::cerr << erased << std::flush;
}

FileProgress::FileProgress(std::size_t files_before, std::size_t all_files) {
    get_bars().files = {all_files, files_before};
}

FileProgress::~FileProgress() {
    const FileCount files = std::exchange(get_bars().files, {});
    if (files.done + 1 == files.all)
        take_bar_away();
}

Progress::Progress(std::string task, std::size_t all_work)
    : name(std::move(task)), all(all_work), files(get_bars().files) {
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
    if (files.all <= 1)
        take_bar_away();
}

void Progress::run() {
    std::unique_lock<std::mutex> lock(mutex);
    do {
        wait(lock);
    } while (!is_over && draw());
}

/// Work on many small files does not make the bar flicker.
void Progress::wait(std::unique_lock<std::mutex>& lock) {
    const Clock::time_point next = std::max(get_start() + patience, get_bars().last + between_drawings);
    changed.wait_until(lock, next, [this] { return is_over; });
}

// A block that wanders from left to right shows that work goes on, but not how far it has come.
std::string Progress::get_bar() const {
    constexpr std::size_t block = 5;
    const std::size_t ticks = get_bars().drawn;
    std::string bar(width, '.');
    if (files.all > 1) {
        const std::size_t full = files.done * width / files.all;
        std::fill_n(bar.begin(), full, '#');
        bar[full + ticks % (width - full)] = '#';
    } else if (all != 0) {
        std::fill_n(bar.begin(), std::min(width, done * width / all), '#');
    } else {
        bar.replace(ticks % (width - block), block, block, '#');
    }
    return bar;
}

std::string Progress::get_percentage() const {
    constexpr std::size_t hundred = 100;
    if (files.all > 1)
        return ' ' + std::to_string(files.done * hundred / files.all) + '%';
    return all == 0 ? "" : ' ' + std::to_string(std::min(hundred, done * hundred / all)) + '%';
}

std::string Progress::get_place() const {
    return files.all > 1
               ? "file " + std::to_string(files.done + 1) + " of " + std::to_string(files.all) + ", "
               : "";
}

/// False if there is no memory for it: nothing may leave a thread as an exception.
bool Progress::draw() {
    try {
        std::cerr << erased << get_place() << to_printable(name) << " [" << get_bar() << ']'
                  << get_percentage() << std::flush;
    } catch (const std::bad_alloc&) {
        return false;
    }
    Bars& bars = get_bars();
    bars.is_shown = true;
    ++bars.drawn;
    bars.last = Clock::now();
    return true;
}

}  // namespace tool
