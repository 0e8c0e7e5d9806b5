// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "commands/DocumentEdit.h"
#include "terminal/Failure.h"

namespace tool {

namespace {

constexpr const char* help_on_remove =
    "Everything in a removed element goes with it, and so do its lines if nothing else is on them. An\n"
    "element that is left with white space only loses that, unless it begins with a line feed. Everything\n"
    "else in the document stays as it is, byte for byte. Exits with 1 and writes nothing if PATH selects\n"
    "nothing.\n"
    "\n"
    "Refused with 3 for the root element, and where text stands beside what is to be removed and nothing\n"
    "else does: it would be read as the value of its element from then on. Remove that element as a whole,\n"
    "or give it elements or a text of its own first.\n"
    "\n"
    "Examples:\n"
    "  quxml remove -i \"/settings/host[@name='kitchen']\" settings.xml\n"
    "  quxml remove //price <catalog.xml >free.xml\n"
    "  quxml remove /settings/note/ <settings.xml                  what is in it, its text too";

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

class Remove : public DocumentEdit {
public:
    const char* get_name() const override { return "remove"; }

    const char* get_description() const override { return "Remove the nodes that a path selects"; }

    const char* get_help() const override { return help_on_remove; }

    void add_arguments(CLI::App& command) override { add_path(command, "What to remove"); }

    void take_arguments(std::vector<std::string>* /*files*/) override {}

    std::vector<Argument> get_arguments() const override { return {{"PATH", get_path().text}}; }

    void apply(EditedDocument& document, const PathNotes& notes) const override {
        require_no_gap(get_path());
        const std::vector<quxml::Node*> nodes = select(document.get_tree(), get_path(), notes);
        if (nodes.empty())
            throw Failure(ExitCode::no_match, "nothing matches " + get_path().text);
        if (nodes.front() == document.get_tree().get_root_node())
            throw Failure(ExitCode::malformed, "the root element cannot be removed");
        document.remove(get_topmost(nodes));
    }
};

}  // namespace

OwnedEdit create_remove() {
    return std::make_unique<Remove>();
}

void add_remove(CLI::App& app, Action& action) {
    add_command(app, action, create_remove());
}

}  // namespace tool
