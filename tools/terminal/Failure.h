// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_FAILURE_H
#define QUXML_TOOLS_TERMINAL_FAILURE_H

#include <stdexcept>
#include <string>

#include "terminal/exit_codes.h"

namespace tool {

/// Ends a command: `main` writes the message to standard error and exits with the code.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exit_code, const std::string& message) : std::runtime_error(message), code(exit_code) {}

    /// Without a message: all that there is to say has been written.
    explicit Failure(ExitCode exit_code) : Failure(exit_code, "") {}

    ExitCode get_code() const { return code; }

private:
    ExitCode code;
};

}  // namespace tool

#endif
