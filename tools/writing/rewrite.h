#ifndef QUXML_TOOLS_WRITING_REWRITE_H
#define QUXML_TOOLS_WRITING_REWRITE_H

#include <string>

#include "terminal/exit_codes.h"
#include "writing/destination.h"

namespace tool {

/// What the commands that read a document and write it again have in common.
struct RewriteOptions : Destination {
    bool lossy = false;
    bool quiet = false;
    bool compact = false;
    bool no_declaration = false;
    std::string indent;  // a number or "tab"; empty for what the purpose brings
    bool sorted = false;
};

enum class Purpose {
    layout,  // only the layout changes
    change,  // the tree is sorted, and the layout stays as far as it can be guessed
};

/// Does the work of such a command: reads, sorts if that is wanted, and writes. Warns of a document of which something
/// would be lost and, in place, refuses it. Refuses one that would not be read back as it is.
/// \throws Failure
ExitCode rewrite(const RewriteOptions& options, Purpose purpose);

}  // namespace tool

#endif
