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

constexpr const char* help_on_set =
    "Every element that PATH selects gets these attributes; what is there already keeps its place. FILE\n"
    "may follow the last NAME=VALUE. Each NAME may be given once. Exits with 1 and writes nothing if PATH\n"
    "selects no element.\n"
    "\n"
    "Examples:\n"
    "  quxml set -i /settings/network dhcp=no address=10.0.0.7 settings.xml\n"
    "  quxml set \"/catalog/book[@id='emma']\" lang=en <catalog.xml >new.xml\n"
    "  quxml set -i --backup /settings volume= settings.xml        an empty value, and settings.xml~";

struct SetOptions {
    std::string path;
    std::vector<std::string> settings;
    RewriteOptions rewrite;
};

ExitCode set(quxml::Document& document, const SetOptions& options) {
    for (quxml::Element* element : select_elements(document, options.path, get_path_notes(options.rewrite))) {
        for (const std::string& setting : options.settings) {
            const auto [name, value] = split_setting(setting);
            element->set_attribute(name, value);
        }
    }
    return ExitCode::done;
}

/// An argument after the settings is the file.
void take_file(SetOptions& options) {
    if (options.settings.size() > 1 && !is_setting(options.settings.back())) {
        options.rewrite.file = options.settings.back();
        options.settings.pop_back();
    }
    for (const std::string& setting : options.settings)
        require_setting("SETTING", setting);
    require_distinct("SETTING", get_setting_names(options.settings));
}

}  // namespace

void add_set(CLI::App& app, Action& action) {
    const auto options = std::make_shared<SetOptions>();
    CLI::App* command = app.add_subcommand("set", "Set attributes of the elements that a path selects");
    add_rewrite_options(*command, options->rewrite);
    command->add_option("PATH", options->path, "Which elements")->required();
    command->add_option("SETTING", options->settings, "NAME=VALUE, one or more")->required();
    add_file_argument(*command, options->rewrite.file);
    command->footer(help_on_set);
    command->callback([options, &action] {
        take_file(*options);
        action = [options] {
            write_hints(options->rewrite, {{"PATH", options->path}});
            return rewrite(options->rewrite, Purpose::change,
                           [&](quxml::Document& document) { return set(document, *options); });
        };
    });
}

}  // namespace tool
