#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "paths/selection.h"
#include "terminal/Failure.h"
#include "trees/node_paths.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_text =
    "Every element that PATH selects gets VALUE as its text; an empty one removes the text. Refused\n"
    "with 3 for elements that have elements in them, since text beside these would be lost. Exits with\n"
    "1 and writes nothing if PATH selects no element. A VALUE that begins with - has to\n"
    "come after --, and all options before that, unless it is - alone or a negative number.\n"
    "\n"
    "Examples:\n"
    "  quxml text -i /settings/host/name kitchen settings.xml\n"
    "  quxml text -i -- /settings/options -v settings.xml\n"
    "  quxml text \"/catalog/book[@id='emma']/title\" 'Emma & Co' <catalog.xml";

struct TextOptions {
    std::string path;
    std::string value;
    RewriteOptions rewrite;
};

void set_text(quxml::Element& element, const std::string& value) {
    for (quxml::Node* child : element.get_children()) {
        if (dynamic_cast<const quxml::Element*>(child) != nullptr)
            throw Failure(ExitCode::malformed,
                          NodePaths().get(element) + " has elements in it; text beside them would be lost");
        element.remove_child(child);
    }
    if (!value.empty())
        element.add_child_text(value);
}

ExitCode text(quxml::Document& document, const TextOptions& options) {
    for (quxml::Element* element : select_elements(document, options.path, get_path_notes(options.rewrite)))
        set_text(*element, options.value);
    return ExitCode::done;
}

}  // namespace

void add_text(CLI::App& app, Action& action) {
    const auto options = std::make_shared<TextOptions>();
    CLI::App* command = app.add_subcommand("text", "Set the text of the elements that a path selects");
    add_rewrite_options(*command, options->rewrite);
    command->add_option("PATH", options->path, "Which elements")->required();
    command->add_option("VALUE", options->value, "The text")->required();
    add_file_argument(*command, options->rewrite.file);
    command->footer(help_on_text);
    command->callback([options, &action] {
        action = [options] {
            write_hints(options->rewrite, {{"PATH", options->path}});
            return rewrite(options->rewrite, Purpose::change,
                           [&](quxml::Document& document) { return text(document, *options); });
        };
    });
}

}  // namespace tool
