// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_EXIT_CODES_H
#define QUXML_TOOLS_TERMINAL_EXIT_CODES_H

namespace tool {

/// How the program ends; there is no other status.
enum class ExitCode {
    done = 0,       // a match, or the work is done
    no_match = 1,   // a path selects nothing, documents differ, or one has losses
    usage = 2,      // the command line cannot be understood
    malformed = 3,  // the input is not well-formed XML, or the work would lose, spoil or leave out something
    bad_query = 4,  // a path cannot be understood
    io = 5,         // reading, writing or memory failed
};

/// The same for users.
constexpr const char* help_on_exit_codes =
    "Exit codes:\n"
    "  0  done, or at least one match\n"
    "  1  no match, a difference between documents, or something would be lost (loss)\n"
    "  2  the command line cannot be understood\n"
    "  3  the document is not well-formed XML, or the work would lose, spoil or leave out something\n"
    "  4  the path cannot be understood\n"
    "  5  reading, writing or memory failed; a reader that closes the pipe is not a failure";

}  // namespace tool

#endif
