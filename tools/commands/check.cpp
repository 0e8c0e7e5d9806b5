// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"
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

void write_unless(bool quiet, const std::string& message) {
    if (!quiet && !message.empty())
        write_failure(message);
}

ExitCode check(const std::string& file, bool quiet) {
    try {
        parse_document(file, read_text(file), quiet ? Errors::silent : Errors::written);
        return ExitCode::done;
    } catch (const Failure& failure) {
        write_unless(quiet, failure.what());
        return failure.get_code();
    }
}

ExitCode check(const CheckOptions& options) {
    if (!options.quiet && options.files == std::vector<std::string>{standard_input})
        write_hints(standard_input);
    ExitCode worst = ExitCode::done;
    for (const std::string& file : options.files)
        worst = std::max(worst, check(file, options.quiet));
    return worst;
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
