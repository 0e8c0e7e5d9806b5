// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/path_arguments.h"
#include "paths/explanation.h"
#include "paths/steps.h"
#include "terminal/output.h"
#include "terminal/terminal.h"

namespace tool {

namespace {

constexpr const char* help_on_explain =
    "Says for each step of PATH which nodes it looks at and what each predicate compares. Lines that\n"
    "begin with \"note:\" say where that may not be what was meant, lines that begin with \"error:\" why\n"
    "queries refuse the path; the exit code is then 4.\n"
    "\n"
    "Examples:\n"
    "  quxml explain '/catalog/book[2]'\n"
    "  quxml explain \"//book[@lang=en]\"\n"
    "  quxml explain '//book[title=$t]' --arg t='AC/DC'";

struct ExplainOptions {
    Path path;
    bool prefix = false;
};

std::string indented(const std::vector<Line>& lines) {
    std::string text;
    for (const Line& line : lines)
        text += "  " + to_printable(line.text) + '\n';
    return text;
}

ExitCode explain(const ExplainOptions& options) {
    const NameMatch names = options.prefix ? NameMatch::prefix : NameMatch::whole;
    std::string text;
    bool is_bad = false;
    int number = 0;
    for (const PathStep& step : get_steps(options.path)) {
        const std::string name = step.text.empty() ? "(empty)" : to_printable(step.text);
        text += "step " + std::to_string(++number) + ": " + name + '\n';
        text += indented(describe(step, names));
        is_bad = is_bad || has_fault(step);
    }
    write_output(text);
    return is_bad ? ExitCode::bad_query : ExitCode::done;
}

}  // namespace

void add_explain(CLI::App& app, Action& action) {
    const auto options = std::make_shared<ExplainOptions>();
    CLI::App* command = app.add_subcommand("explain", "Show how a path is taken, step by step");
    command->add_flag("--prefix", options->prefix, "For \"query --prefix\"");
    add_path_arguments(*command, options->path, "The path");
    command->footer(help_on_explain);
    command->callback([options, &action] {
        require_all_named(options->path.values, {options->path});
        action = [options] { return explain(*options); };
    });
}

}  // namespace tool
