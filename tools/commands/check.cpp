// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/each_file.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "reading/input.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* help_on_check =
    "Nothing is written about a file that can be read. All files are checked; the exit code is the\n"
    "highest that any of them gives.\n"
    "\n"
    "Examples:\n"
    "  quxml check settings.xml\n"
    "  quxml check --quiet /etc/device/*.xml || echo 'something is broken'";

struct CheckOptions {
    std::vector<std::string> files{standard_input};
    bool quiet = false;
};

ExitCode check(const CheckOptions& options) {
    if (!options.quiet && is_standard_input(options.files))
        write_hints(standard_input);
    FileTask task;
    task.act = [&](const std::string& file, const PathNotes&) {
        parse_document(file, read_text(file), options.quiet ? Errors::silent : Errors::written);
        return true;
    };
    task.having = "well-formed";
    task.quiet = task.silent = options.quiet;
    return do_with_each(options.files, task);
}

}  // namespace

void add_check(CLI::App& app, Action& action) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* command = app.add_subcommand("check", "Check whether documents are well-formed");
    command->add_flag("--quiet", options->quiet, "Only exit with the code");
    add_files_argument(*command, options->files);
    command->footer(help_on_check);
    command->callback([options, &action] { action = [options] { return check(*options); }; });
}

}  // namespace tool
