#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_sort =
    "Children are sorted by name, and namesakes by their attribute \"item\": those with a number first,\n"
    "then those without one, in the order they have. Nothing else changes.\n"
    "\n"
    "Examples:\n"
    "  quxml sort -i settings.xml\n"
    "  quxml sort <settings.xml | diff - sorted.xml";

}  // namespace

void add_sort(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RewriteOptions>();
    options->sorted = true;
    CLI::App* command = app.add_subcommand("sort", "Sort a document by names and items");
    add_rewrite_options(*command, *options);
    add_file_argument(*command, options->file);
    command->footer(help_on_sort);
    command->callback([options, &action] {
        action = [options] {
            write_hints(*options);
            return rewrite(*options, Purpose::change);
        };
    });
}

}  // namespace tool
