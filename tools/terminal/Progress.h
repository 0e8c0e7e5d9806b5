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

/// How many files there are, and how many of them are done.
struct FileCount {
    std::size_t all = 0;
    std::size_t done = 0;
};

/// While it lives, a bar on standard error shows how far some work has come, if that is a terminal and once the
/// program has been running for a second. Nothing else may be written to standard error meanwhile. If the work is on
/// one of several files, the bar shows how many of them are done.
class Progress {
public:
    /// \param task      such as "reading a.xml"
    /// \param all_work  how much there is to do; 0 if nobody knows, and then the bar only moves
    Progress(std::string task, std::size_t all_work);

    /// Takes the bar away, unless it soon comes again, for the next file.
    ~Progress();

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void set_done(std::size_t work) { done = work; }

private:
    void run();
    bool draw();
    void wait(std::unique_lock<std::mutex>& lock);
    std::string get_bar() const;
    std::string get_percentage() const;
    std::string get_place() const;

    std::string name;
    std::size_t all;
    FileCount files;
    std::atomic<std::size_t> done{0};
    bool is_over = false;
    std::mutex mutex;
    std::condition_variable changed;
    std::thread thread;
};

/// While it lives, what is done is work on one of these files.
class FileProgress {
public:
    FileProgress(std::size_t files_before, std::size_t all_files);
    ~FileProgress();

    FileProgress(const FileProgress&) = delete;
    FileProgress& operator=(const FileProgress&) = delete;
};

/// Takes a bar away that still stands there; whoever writes to a terminal calls it first.
void take_bar_away();

/// Sets the time at which the program began; `main` calls it first.
void start_clock();

}  // namespace tool

#endif
