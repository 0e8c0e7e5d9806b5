// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "reading/input.h"
#include "reading/losses.h"
#include "reading/spelling.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* help_on_loss =
    "Lists what \"format --canonical\" leaves out, and what a program drops that reads and writes a\n"
    "document with the library. All other commands keep it.\n"
    "One line for each: FILE:LINE:COLUMN: what it is: what stands there. Exits with 1 if anything would\n"
    "be lost. Lines that say \"note\" do not count: attribute values that need escapes are written so\n"
    "that they read back, but only by this program and not by the library alone. Where nothing else is\n"
    "listed, a note \"spelling\" shows the first place that \"format --canonical\" writes differently\n"
    "and \"format\" as it stands: quotes, references, spaces in tags, <a></a>, the XML declaration. If\n"
    "nothing at all is listed, both write the same bytes. Indentation is not listed. Line ends other\n"
    "than line feeds are listed once, where the first stands. Names whose prefix is not declared keep\n"
    "it. What a DOCTYPE declares goes with it: attributes that it gives a default, for example.\n"
    "\n"
    "Examples:\n"
    "  quxml loss settings.xml\n"
    "  quxml loss settings.xml || echo 'keep this one from programs that drop things'";

std::string get_line(const std::string& file, const Loss& loss) {
    return get_label(file) + ':' + std::to_string(loss.place.line) + ':' + std::to_string(loss.place.column) +
           (is_harmless(loss.kind) ? ": note: " : ": ") + get_name(loss.kind) + ": " + loss.excerpt + '\n';
}

ExitCode loss(const std::string& file) {
    write_hints(file);
    const std::string document = read_text(file);
    parse_document(file, document);
    std::vector<Loss> losses = find_losses(document);
    if (losses.empty())
        losses = find_spelling(document);
    std::string text;
    for (const Loss& one : losses)
        text += get_line(file, one);
    write_output(text);
    return has_losses(losses) ? ExitCode::no_match : ExitCode::done;
}

}  // namespace

void add_loss(CLI::App& app, Action& action) {
    const auto file = std::make_shared<std::string>(standard_input);
    CLI::App* command =
        app.add_subcommand("loss", "List what is lost when a document is read and written again");
    add_file_argument(*command, *file);
    command->footer(help_on_loss);
    command->callback([file, &action] { action = [file] { return loss(*file); }; });
}

}  // namespace tool
