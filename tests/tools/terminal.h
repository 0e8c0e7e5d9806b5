// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_TOOLS_TERMINAL_H
#define QUXML_TESTS_TOOLS_TERMINAL_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace quxml_test {

/// Opens a pseudo-terminal and gives its master's end; -1 where there is none, such as in a chroot without /dev/pts.
inline int open_terminal() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0)
        return -1;
    if (grantpt(master) == 0 && unlockpt(master) == 0 && access(ptsname(master), R_OK | W_OK) == 0)
        return master;
    close(master);
    return -1;
}

/// Skips a test where it cannot have a terminal.
inline void skip_without_terminal() {
    const int master = open_terminal();
    if (master < 0)
        GTEST_SKIP() << "there is no pseudo-terminal; is /dev/pts mounted?";
    close(master);
}

/// Runs a shell command whose standard error, and nothing else, is a terminal, and gives what it shows there.
inline std::string run_on_terminal(const std::string& command) {
    const int master = open_terminal();
    if (master < 0)
        throw std::runtime_error("there is no pseudo-terminal");
    const std::string script = "exec 2>'" + std::string(ptsname(master)) + "'\n" + command;
    const pid_t process = fork();
    if (process == 0) {
        close(master);
        execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
        _exit(127);
    }
    std::string shown;
    std::array<char, 4096> block{};
    int status = 0;
    bool ended = false;
    // Reading fails while nobody has the terminal open, so at first as well.
    while (true) {
        const ssize_t count = ::read(master, block.data(), block.size());
        if (count > 0)
            shown.append(block.data(), static_cast<std::size_t>(count));
        else if (ended)
            break;
        else
            ended = waitpid(process, &status, WNOHANG) == process;
        if (count <= 0)
            usleep(1000);
    }
    close(master);
    return shown;
}

}  // namespace quxml_test

#endif
