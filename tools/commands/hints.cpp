// SPDX-License-Identifier: MIT
#include "commands/hints.h"

#include <unistd.h>

#include "terminal/files.h"
#include "terminal/messages.h"
#include "terminal/words.h"

namespace tool {

void write_hints(const std::string& file, const std::vector<Argument>& arguments) {
    if (file != standard_input)
        return;
    for (const Argument& argument : arguments) {
        if (is_file(argument.value))
            write_hint("reading standard input; " + quote(argument.value) + " is taken for " + argument.name +
                       ", though it is also a file");
    }
    write_terminal_hint("FILE");
}

void write_terminal_hint(const std::string& missing) {
    if (isatty(STDIN_FILENO) == 1)
        write_hint("reading standard input from the terminal, since no " + missing +
                   " is given; Ctrl-D ends it");
}

}  // namespace tool
