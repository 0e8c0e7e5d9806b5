#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <stdexcept>
#include <string>

#include "Failure.h"
#include "commands.h"
#include "input.h"
#include "output.h"
#include "sorting.h"

namespace tool {

namespace {

constexpr const char* help_on_format =
    "Comments, CDATA sections, prefixes, the DOCTYPE and text between elements are left out.\n"
    "\n"
    "Examples:\n"
    "  quxml format catalog.xml\n"
    "  quxml format --sorted --compact <catalog.xml >sorted.xml";

struct FormatOptions {
    std::string file = standard_input;
    bool compact = false;
    bool sorted = false;
    bool no_declaration = false;
};

std::shared_ptr<quxml::Document> read_sorted_document(const std::string& file) {
    std::shared_ptr<quxml::Document> document = read_document(file, true);
    try {
        sort_by_item(document->get_root_node());
    } catch (const std::out_of_range&) {
        throw Failure(ExitCode::malformed,
                      name_of(file) + ": can not be sorted: an item is a number out of range");
    }
    return document;
}

std::string get_compact_text(const quxml::Document& document, bool include_declaration) {
    if (include_declaration)
        return document.write_to_string() + '\n';
    std::string text;
    document.get_root_node()->write_to_string(text, -1);
    return text + '\n';
}

ExitCode format(const FormatOptions& options) {
    const bool include_declaration = !options.no_declaration;
    const std::shared_ptr<quxml::Document> document =
        options.sorted ? read_sorted_document(options.file) : read_document(options.file, false);
    escape_attributes(document->get_root_node());
    std::string text = options.compact ? get_compact_text(*document, include_declaration)
                                       : document->write_to_string_formatted(include_declaration);
    write_output(text);
    return ExitCode::done;
}

}  // namespace

void add_format(CLI::App& app, Action& action) {
    const auto options = std::make_shared<FormatOptions>();
    CLI::App* command = app.add_subcommand("format", "Write a document anew, an element a line");
    command->add_flag("--compact", options->compact, "Everything on one line, closed by a line feed");
    command->add_flag("--sorted", options->sorted,
                      "Children by name, namesakes by their attribute \"item\", else as they stand");
    command->add_flag("--no-declaration", options->no_declaration, "Leave out <?xml version=\"1.0\"?>");
    command->add_option("FILE", options->file, "The document; standard input if it is - or missing");
    command->footer(help_on_format);
    command->callback([options, &action] { action = [options] { return format(*options); }; });
}

}  // namespace tool
