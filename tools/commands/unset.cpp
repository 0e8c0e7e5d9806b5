// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/argument_checks.h"

namespace tool {

namespace {

constexpr const char* help_on_unset =
    "An attribute that is not there is not a failure. If more than one argument follows PATH, the last\n"
    "is the FILE; a single one is a NAME. Everything else in the document stays as it is, byte for byte.\n"
    "Exits with 1 and writes nothing if PATH selects no element.\n"
    "\n"
    "Refused with 3 for an attribute that the DOCTYPE gives a default, since it would be there for other\n"
    "readers all the same: set it to another value instead.\n"
    "\n"
    "Examples:\n"
    "  quxml unset -i /settings/network address gateway settings.xml\n"
    "  quxml unset //book lang <catalog.xml\n"
    "  quxml unset //book lang id - <catalog.xml";

class Unset : public DocumentEdit {
public:
    const char* get_name() const override { return "unset"; }

    const char* get_description() const override {
        return "Remove attributes of the elements that a path selects";
    }

    const char* get_help() const override { return help_on_unset; }

    void add_arguments(CLI::App& command) override {
        add_path(command, "Which elements");
        command.add_option("NAME", names, "Names of attributes, one or more")->required();
    }

    void take_arguments(std::string* file) override {
        if (file != nullptr && names.size() > 1) {
            *file = names.back();
            names.pop_back();
        }
        for (const std::string& name : names)
            require_name("NAME", name);
    }

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"NAME", names.front()}};
    }

    void apply(EditedDocument& document, PathNotes notes) const override {
        document.unset(select_elements(document.get_tree(), get_path(), notes), names);
    }

private:
    std::vector<std::string> names;
};

}  // namespace

OwnedEdit create_unset() {
    return std::make_unique<Unset>();
}

void add_unset(CLI::App& app, Action& action) {
    add_command(app, action, create_unset());
}

}  // namespace tool
