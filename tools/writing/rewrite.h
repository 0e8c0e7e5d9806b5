#ifndef QUXML_TOOLS_WRITING_REWRITE_H
#define QUXML_TOOLS_WRITING_REWRITE_H

#include <quxml/Document.h>

#include <functional>
#include <string>

#include "terminal/exit_codes.h"
#include "terminal/messages.h"

namespace tool {

/// What the commands that read a document and write it again have in common.
struct RewriteOptions {
    std::string file = standard_input;
    bool in_place = false;
    std::string backup;  // what a file's name gets for a copy of the old text; empty for none
    bool lossy = false;
    bool quiet = false;
    bool compact = false;
    bool no_declaration = false;
    std::string indent;  // a number or "tab"; empty for what the purpose brings
    bool sorted = false;
};

enum class Purpose {
    layout,  // only the layout changes
    change,  // the tree is changed, and the layout stays as far as it can be guessed
};

/// Changes the tree and returns what to exit with; nothing is written unless that is `done`.
using Change = std::function<ExitCode(quxml::Document&)>;

/// Does the work of such a command: reads, changes, and writes to standard output or in place. Warns of a document
/// of which something would be lost and, in place, refuses it. Refuses a change whose result would not be
/// read back as it is. In place, nothing is written if the text, or for a change the tree, is as it was.
/// \throws Failure
ExitCode rewrite(const RewriteOptions& options, Purpose purpose, const Change& change);

/// The same with nothing to change but what the options say.
ExitCode rewrite(const RewriteOptions& options, Purpose purpose);

}  // namespace tool

#endif
