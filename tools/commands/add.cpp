#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/argument_checks.h"
#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "paths/selection.h"
#include "terminal/Failure.h"
#include "trees/node_paths.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_add =
    "Every element that PATH selects gets a new element, after those it has. Refused with 3 for\n"
    "elements that have text, since the text would be lost. Exits with 1 and writes nothing if PATH\n"
    "selects no element.\n"
    "\n"
    "Examples:\n"
    "  quxml add -i /settings host --attribute name=kitchen --attribute port=80 settings.xml\n"
    "  quxml add /catalog/shelf book --item 3 <catalog.xml\n"
    "  quxml add \"/catalog/book[@id='emma']\" note --text 'lent to Jane' <catalog.xml";

struct AddOptions {
    std::string path;
    std::string name;
    std::string item;
    bool has_item = false;
    std::string text;
    std::vector<std::string> attributes;
    RewriteOptions rewrite;
};

void add(quxml::Element& parent, const AddOptions& options) {
    if (parent.has_child_text())
        throw Failure(ExitCode::malformed,
                      NodePaths().get(parent) + " has text, which would be lost beside an element");
    quxml::Element* const added =
        options.has_item ? parent.add_child(options.name, options.item) : parent.add_child(options.name);
    for (const std::string& attribute : options.attributes) {
        const auto [name, value] = split_setting(attribute);
        added->set_attribute(name, value);
    }
    if (!options.text.empty())
        added->add_child_text(options.text);
}

ExitCode add(quxml::Document& document, const AddOptions& options) {
    for (quxml::Element* parent : select_elements(document, options.path, get_path_notes(options.rewrite)))
        add(*parent, options);
    return ExitCode::done;
}

/// The item is an attribute too.
void require_distinct_attributes(const AddOptions& options) {
    std::vector<std::string> names = get_setting_names(options.attributes);
    if (options.has_item)
        names.emplace_back("item");
    require_distinct("--attribute", names);
}

}  // namespace

void add_add(CLI::App& app, Action& action) {
    const auto options = std::make_shared<AddOptions>();
    CLI::App* command = app.add_subcommand("add", "Add an element to those that a path selects");
    add_rewrite_options(*command, options->rewrite);
    CLI::Option* item =
        command->add_option("--item", options->item, "The attribute \"item\", which numbers namesakes")
            ->type_name("N")
            ->check(CLI::Validator(check_number, ""));
    command->add_option("--text", options->text, "The new element's text")->type_name("TEXT");
    command
        ->add_option("--attribute", options->attributes,
                     "An attribute; may be given several times, for other names")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(check_setting, ""));
    command->add_option("PATH", options->path, "Which elements")->required();
    command->add_option("NAME", options->name, "The new element's name")
        ->required()
        ->check(CLI::Validator(check_name, ""));
    add_file_argument(*command, options->rewrite.file);
    command->footer(help_on_add);
    command->callback([options, item, &action] {
        options->has_item = item->count() != 0;
        require_distinct_attributes(*options);
        action = [options] {
            write_hints(options->rewrite, {{"PATH", options->path}, {"NAME", options->name}});
            return rewrite(options->rewrite, Purpose::change,
                           [&](quxml::Document& document) { return add(document, *options); });
        };
    });
}

}  // namespace tool
