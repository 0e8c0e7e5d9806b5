// SPDX-License-Identifier: MIT
#include "terminal/output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "terminal/Progress.h"

namespace tool {

namespace {

OutputFailure get_failure(int error) {
    return {ExitCode::io, "standard output: " + std::generic_category().message(error)};
}

}  // namespace

bool write_output(std::string& text) {
    take_bar_away();
    const bool written =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    const int error = errno;
    text.clear();
    if (!written && error != EPIPE)
        throw get_failure(error);
    return written;
}

void close_output() {
    // Standard output that was closed from the start matters to those who wrote to it, and they know already.
    if (std::fclose(stdout) != 0 && errno != EPIPE && errno != EBADF)
        throw get_failure(errno);
}

}  // namespace tool
