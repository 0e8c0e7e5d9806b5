#include <CLI/CLI.hpp>
#include <memory>

#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_format =
    "Comments, CDATA sections, prefixes, the DOCTYPE and text between elements are left out, and so are\n"
    "\"standalone\" and XML versions other than 1.0; a warning says so.\n"
    "\n"
    "Examples:\n"
    "  quxml format catalog.xml\n"
    "  quxml format --sorted --compact <catalog.xml >sorted.xml\n"
    "  quxml format -i --indent tab catalog.xml";

}  // namespace

void add_format(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RewriteOptions>();
    CLI::App* command = app.add_subcommand("format", "Write a document again, one element per line");
    add_rewrite_options(*command, *options);
    command->add_flag("--sorted", options->sorted,
                      "Children by name, namesakes by their attribute \"item\", else as they stand");
    add_file_argument(*command, options->file);
    command->footer(help_on_format);
    command->callback([options, &action] {
        action = [options] {
            write_hints(*options);
            return rewrite(*options, Purpose::layout);
        };
    });
}

}  // namespace tool
