#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/hints.h"
#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/messages.h"
#include "terminal/output.h"

namespace tool {

namespace {

constexpr const char* help_on_loss =
    "One line for each: FILE:LINE:COLUMN: what it is: what stands there. Exits with 1 if anything would\n"
    "be lost. Lines that say \"note\" do not count: attribute values that need escapes are written so\n"
    "that they read back, but only by this program and not by the library alone. Indentation is not\n"
    "listed. Line ends other than line feeds are listed once, where the first stands. An XML version\n"
    "other than 1.0 and \"standalone\" are lost by \"format\" and where the encoding is not UTF-8; the\n"
    "other commands keep the XML declaration. Names whose prefix is not declared keep it. What a\n"
    "DOCTYPE declares goes with it: attributes that it gives a default, for example.\n"
    "\n"
    "Examples:\n"
    "  quxml loss settings.xml\n"
    "  quxml loss settings.xml || echo 'edit this one by hand'";

std::string get_line(const std::string& file, const Loss& loss) {
    return get_label(file) + ':' + std::to_string(loss.place.line) + ':' + std::to_string(loss.place.column) +
           (is_note(loss) ? ": note: " : ": ") + get_name(loss.kind) + ": " + loss.excerpt + '\n';
}

ExitCode loss(const std::string& file) {
    write_hints(file);
    const std::string document = read_text(file);
    parse_document(file, document, false);
    const std::vector<Loss> losses = find_losses(document);
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
    command->add_option("FILE", *file, "The document; standard input if it is - or missing");
    command->footer(help_on_loss);
    command->callback([file, &action] { action = [file] { return loss(*file); }; });
}

}  // namespace tool
