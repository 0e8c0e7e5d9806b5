// SPDX-License-Identifier: MIT
#include <quxml/Document.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "paths/completions.h"
#include "reading/input.h"
#include "reading/skeleton.h"
#include "terminal/output.h"

namespace tool {

namespace {

struct CompleteOptions {
    std::string path;
    std::string file;
};

std::shared_ptr<quxml::Document> read_what_matters(const CompleteOptions& options) {
    const std::string text = read_text(options.file);
    const NeededParts needed = get_needed_parts(options.path);
    std::shared_ptr<quxml::Document> document;
    if (needed != NeededParts::everything)
        document = read_skeleton(
            text, needed == NeededParts::names ? AttributeValues::dropped : AttributeValues::kept);
    return document != nullptr ? document : parse_document(options.file, text, Errors::silent);
}

ExitCode complete(const CompleteOptions& options) {
    const std::shared_ptr<quxml::Document> document = read_what_matters(options);
    std::string text;
    for (const std::string& completion : get_completions(*document, options.path))
        text += completion + '\n';
    const bool has_any = !text.empty();
    write_output(text);
    close_output();
    // Somebody waits at a keyboard, and taking the tree apart would be a tenth of the time.
    std::_Exit(static_cast<int>(has_any ? ExitCode::done : ExitCode::no_match));
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
