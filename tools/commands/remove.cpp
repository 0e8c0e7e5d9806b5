#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "commands/commands.h"
#include "commands/rewrite_options.h"
#include "paths/selection.h"
#include "terminal/Failure.h"
#include "writing/rewrite.h"

namespace tool {

namespace {

constexpr const char* help_on_remove =
    "Everything in a removed element goes with it. Refused with 3 for the root element. Exits with 1 and\n"
    "writes nothing if PATH selects nothing.\n"
    "\n"
    "Examples:\n"
    "  quxml remove -i \"/settings/host[@name='kitchen']\" settings.xml\n"
    "  quxml remove //price <catalog.xml >free.xml\n"
    "  quxml remove /settings/note/ <settings.xml                  what is in it, its text too";

struct RemoveOptions {
    std::string path;
    RewriteOptions rewrite;
};

/// What is in a removed element goes with it. In document order an element comes before what is in it.
std::vector<quxml::Node*> get_topmost(const std::vector<quxml::Node*>& nodes) {
    std::unordered_set<const quxml::Node*> taken;
    std::vector<quxml::Node*> topmost;
    for (quxml::Node* node : nodes) {
        const quxml::Node* above = node->get_parent();
        while (above != nullptr && taken.count(above) == 0)
            above = above->get_parent();
        if (above == nullptr) {
            taken.insert(node);
            topmost.push_back(node);
        }
    }
    return topmost;
}

ExitCode remove(quxml::Document& document, const RemoveOptions& options) {
    require_no_gap(options.path);
    const std::vector<quxml::Node*> nodes = select(document, options.path, get_path_notes(options.rewrite));
    if (nodes.empty())
        throw Failure(ExitCode::no_match, "nothing matches " + options.path);
    if (nodes.front() == document.get_root_node())
        throw Failure(ExitCode::malformed, "the root element cannot be removed");
    for (quxml::Node* node : get_topmost(nodes))
        node->get_parent()->remove_child(node);
    return ExitCode::done;
}

}  // namespace

void add_remove(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RemoveOptions>();
    CLI::App* command = app.add_subcommand("remove", "Remove the nodes that a path selects");
    add_rewrite_options(*command, options->rewrite);
    command->add_option("PATH", options->path, "What to remove")->required();
    add_file_argument(*command, options->rewrite.file);
    command->footer(help_on_remove);
    command->callback([options, &action] {
        action = [options] {
            write_hints(options->rewrite, {{"PATH", options->path}});
            return rewrite(options->rewrite, Purpose::change,
                           [&](quxml::Document& document) { return remove(document, *options); });
        };
    });
}

}  // namespace tool
