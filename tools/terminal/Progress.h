// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_PROGRESS_H
#define QUXML_TOOLS_TERMINAL_PROGRESS_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

namespace tool {

/// While it lives, a bar on standard error shows how far some work has come, if that is a terminal and once the
/// program has been running for a second. Nothing else may be written to standard error meanwhile.
class Progress {
public:
    /// \param task      such as "reading a.xml"
    /// \param all_work  how much there is to do; 0 if nobody knows, and then the bar only moves
    Progress(std::string task, std::size_t all_work);

    /// Takes the bar away.
    ~Progress();

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void set_done(std::size_t work) { done = work; }

private:
    void run();
    bool draw();
    std::string get_bar(std::size_t ticks) const;

    std::string name;
    std::size_t all;
    std::atomic<std::size_t> done{0};
    std::size_t drawn = 0;
    bool is_over = false;
    std::mutex mutex;
    std::condition_variable changed;
    std::thread thread;
};

/// Sets the time at which the program began; `main` calls it first.
void start_clock();

}  // namespace tool

#endif
