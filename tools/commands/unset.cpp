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
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_unset =
    "An attribute that is not there is not a failure. If more than one argument follows PATH, the last\n"
    "is the FILE; a single one is a NAME. Exits with 1 and writes nothing if PATH selects no element.\n"
    "\n"
    "Examples:\n"
    "  quxml unset -i /settings/network address gateway settings.xml\n"
    "  quxml unset //book lang <catalog.xml\n"
    "  quxml unset //book lang id - <catalog.xml";

struct UnsetOptions {
    std::string path;
    std::vector<std::string> names;
    RewriteOptions rewrite;
};

ExitCode unset(quxml::Document& document, const UnsetOptions& options) {
    for (quxml::Element* element : select_elements(document, options.path, get_path_notes(options.rewrite))) {
        for (const std::string& name : options.names)
            element->remove_attribute(name);
    }
    return ExitCode::done;
}

void take_file(UnsetOptions& options) {
    if (options.names.size() > 1) {
        options.rewrite.file = options.names.back();
        options.names.pop_back();
    }
    for (const std::string& name : options.names)
        require_name("NAME", name);
}

}  // namespace

void add_unset(CLI::App& app, Action& action) {
    const auto options = std::make_shared<UnsetOptions>();
    CLI::App* command = app.add_subcommand("unset", "Remove attributes of the elements that a path selects");
    add_rewrite_options(*command, options->rewrite);
    command->add_option("PATH", options->path, "Which elements")->required();
    command->add_option("NAME", options->names, "Names of attributes, one or more")->required();
    add_file_argument(*command, options->rewrite.file);
    command->footer(help_on_unset);
    command->callback([options, &action] {
        take_file(*options);
        action = [options] {
            write_hints(options->rewrite, {{"PATH", options->path}, {"NAME", options->names.front()}});
            return rewrite(options->rewrite, Purpose::change,
                           [&](quxml::Document& document) { return unset(document, *options); });
        };
    });
}

}  // namespace tool
