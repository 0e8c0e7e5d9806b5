#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_sort =
    "Children get the order of their names, and namesakes that of their attribute \"item\": numbers\n"
    "first, and behind them those without one, in the order they have. Nothing else changes.\n"
    "\n"
    "Examples:\n"
    "  quxml sort -i settings.xml\n"
    "  quxml sort <settings.xml | diff - sorted.xml";

}  // namespace

void add_sort(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RewriteOptions>();
    options->sorted = true;
    CLI::App* command = app.add_subcommand("sort", "Put a document in the order of names and items");
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
