#ifndef QUXML_TESTS_TOOLS_TERMINAL_H
#define QUXML_TESTS_TOOLS_TERMINAL_H

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace quxml_test {

/// Runs a shell command whose standard error, and nothing else, is a terminal, and gives what it shows there.
inline std::string run_on_terminal(const std::string& command) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
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
