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
    "One line for each: FILE:LINE:COLUMN: what it is: what stands there. Exits with 1 if anything of\n"
    "any FILE would be lost. Lines that say \"note\" do not count: attribute values that need escapes\n"
    "are written so that they read back, but only by this program and not by the library alone. Where\n"
    "nothing else is listed, a note \"spelling\" shows the first place that \"format --canonical\" writes\n"
    "differently and \"format\" as it stands: quotes, references, spaces in tags, <a></a>, the XML\n"
    "declaration. If nothing at all is listed, both write the same bytes. Indentation is not listed.\n"
    "Line ends other than line feeds are listed once, where the first stands. Names whose prefix is\n"
    "not declared keep it. What a DOCTYPE declares goes with it: attributes that it gives a default,\n"
    "for example.\n"
    "\n"
    "Examples:\n"
    "  quxml loss settings.xml\n"
    "  quxml loss settings.xml || echo 'keep this one from programs that drop things'";

std::string get_line(const std::string& file, const Loss& loss) {
    return get_label(file) + ':' + std::to_string(loss.place.line) + ':' + std::to_string(loss.place.column) +
           (is_harmless(loss.kind) ? ": note: " : ": ") + get_name(loss.kind) + ": " + loss.excerpt + '\n';
}

bool write_losses(const std::string& file) {
    const std::string document = read_text(file);
    parse_document(file, document);
    std::vector<Loss> losses = find_losses(document);
    if (losses.empty())
        losses = find_spelling(document);
    std::string text;
    for (const Loss& one : losses)
        text += get_line(file, one);
    write_output(text);
    return has_losses(losses);
}

ExitCode loss(const std::vector<std::string>& files) {
    if (is_standard_input(files))
        write_hints(standard_input);
    FileTask task;
    task.act = [](const std::string& file, const PathNotes&) { return write_losses(file); };
    task.if_any = ExitCode::no_match;
    task.having = "would lose something";
    task.lacking = "would lose nothing";
    return do_with_each(files, task);
}

}  // namespace

void add_loss(CLI::App& app, Action& action) {
    const auto files = std::make_shared<std::vector<std::string>>(1, standard_input);
    CLI::App* command =
        app.add_subcommand("loss", "List what is lost when documents are read and written again");
    add_files_argument(*command, *files);
    command->footer(help_on_loss);
    command->callback([files, &action] { action = [files] { return loss(*files); }; });
}

}  // namespace tool
