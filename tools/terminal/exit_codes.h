#ifndef QUXML_TOOLS_TERMINAL_EXIT_CODES_H
#define QUXML_TOOLS_TERMINAL_EXIT_CODES_H

namespace tool {

/// How the program ends; there is no other status.
enum class ExitCode {
    done = 0,       // a match, or the work is done
    no_match = 1,   // a path selects nothing, documents differ, or one has losses
    usage = 2,      // the command line cannot be understood
    malformed = 3,  // the input is not well-formed XML, or the work would lose or spoil something
    bad_query = 4,  // a path cannot be understood
    io = 5,         // reading, writing or memory failed
};

}  // namespace tool

#endif
