// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>

#include "commands/commands.h"
#include "commands/file_arguments.h"
#include "commands/writing_options.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_format =
    "Changes only white space between elements. Tags, references, CDATA sections and texts stay as they\n"
    "are written, and so do the XML declaration, the encoding and the kind of line ends. Comments,\n"
    "processing instructions and the DOCTYPE get lines of their own. An element with text beside other\n"
    "content is left as it is, with all that is in it, and so is one with xml:space=\"preserve\". Lines\n"
    "inside of tags and comments stay where they are. Formatting again changes nothing.\n"
    "With --canonical the document is written as the library writes it: comments, CDATA sections,\n"
    "prefixes, the DOCTYPE and whatever else \"quxml loss\" lists are left out; a warning says so, and\n"
    "-i wants --lossy. If \"quxml loss\" lists nothing, both forms are the same. The result is read\n"
    "back before it is written, and refused with 3 if the library reads something else.\n"
    "\n"
    "Examples:\n"
    "  quxml format catalog.xml\n"
    "  quxml format --sorted --compact <catalog.xml >sorted.xml\n"
    "  quxml format -i --indent tab catalog.xml\n"
    "  quxml format --diff settings.xml        only show what would change";

}  // namespace

void add_format(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RewriteOptions>();
    options->formatted = true;
    CLI::App* command = app.add_subcommand("format", "Lay out a document, one element per line");
    add_rewrite_options(*command, *options);
    add_layout_options(*command, *options);
    command->add_flag("--sorted", options->sorted,
                      "Children by name, namesakes by their attribute \"item\", else as they stand");
    add_files_argument(*command, options->files);
    command->footer(help_on_format);
    command->callback([options, &action] { action = [options] { return rewrite_documents(*options); }; });
}

}  // namespace tool
