// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>

#include "commands/commands.h"
#include "commands/file_arguments.h"
#include "commands/writing_options.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_sort =
    "Children are sorted by name, and namesakes by their attribute \"item\": those with a number first,\n"
    "then those without an item, in the order they have. Elements move with all their bytes, and nothing\n"
    "else changes. With an element go the comments and processing instructions directly above it, with no\n"
    "blank line between, and those after it on its last line; all others stay in their places, and so\n"
    "does white space. The content of an element that has text beside its elements keeps its order.\n"
    "Refused with 3 if an item that has to be compared is beyond the numbers from -2147483648 to "
    "2147483647.\n"
    "With --canonical the sorted document is written as \"format --canonical\" writes it.\n"
    "\n"
    "Examples:\n"
    "  quxml sort -i settings.xml\n"
    "  quxml sort --diff settings.xml        only show what would change\n"
    "  quxml sort <settings.xml | diff - sorted.xml";

}  // namespace

void add_sort(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RewriteOptions>();
    options->sorted = true;
    CLI::App* command = app.add_subcommand("sort", "Sort a document by names and items");
    add_rewrite_options(*command, *options);
    add_files_argument(*command, options->files);
    command->footer(help_on_sort);
    command->callback([options, &action] { action = [options] { return rewrite_documents(*options); }; });
}

}  // namespace tool
