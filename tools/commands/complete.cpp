// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "paths/completions.h"
#include "reading/input.h"
#include "terminal/output.h"

namespace tool {

namespace {

struct CompleteOptions {
    std::string path;
    std::string file;
};

ExitCode complete(const CompleteOptions& options) {
    const std::shared_ptr<quxml::Document> document =
        parse_document(options.file, read_text(options.file), Errors::silent);
    std::string text;
    for (const std::string& completion : get_completions(*document, options.path))
        text += completion + '\n';
    const bool has_any = !text.empty();
    write_output(text);
    return has_any ? ExitCode::done : ExitCode::no_match;
}

}  // namespace

// No help names it, since shells call it and nobody else.
void add_complete(CLI::App& app, Action& action) {
    const auto options = std::make_shared<CompleteOptions>();
    CLI::App* command =
        app.add_subcommand("complete", "List how the beginning of a path may go on")->group("");
    command->add_option("PATH", options->path, "The beginning of a path")->required();
    command->add_option("FILE", options->file, "The document")->required();
    command->callback([options, &action] { action = [options] { return complete(*options); }; });
}

}  // namespace tool
