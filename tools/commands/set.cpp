// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/argument_checks.h"

namespace tool {

namespace {

constexpr const char* help_on_set =
    "Every element that PATH selects gets these attributes; what is there already keeps its place, its\n"
    "prefix and its quotes. FILE may follow the last NAME=VALUE. A NAME may stand there once. Everything\n"
    "else in the document stays as it is, byte for byte. Exits with 1 and writes nothing if PATH selects no\n"
    "element.\n"
    "\n"
    "A character that the document's encoding lacks is written as a reference; in a name, where no\n"
    "reference can stand, it is refused with 3. So is what would not be read back as it is: control\n"
    "characters, or a value that the DOCTYPE declares to be a list of words and that has more than one\n"
    "blank between them. Write such a value differently. A document in an encoding that cannot be\n"
    "converted to UTF-8 and back is refused with 3, too: convert the file to UTF-8 first.\n"
    "\n"
    "With --create an element is made for each step of PATH that selects nothing: with the name, and with\n"
    "the attributes, the item and the texts of children that [@name='value'], [2] and [name='text'] ask\n"
    "for, after the children that are there. The path then selects it, so that doing it again changes\n"
    "nothing. Refused with 4 is a path with //, *, position() or anything else that does not say what to\n"
    "make, and one that does not say where: the steps before must select one element.\n"
    "\n"
    "Examples:\n"
    "  quxml set -i /settings/network dhcp=no address=10.0.0.7 settings.xml\n"
    "  quxml set \"/catalog/book[@id='emma']\" lang=en <catalog.xml >new.xml\n"
    "  quxml set '//mime-type[@type=$t]' --arg t=text/plain icon=text <types.xml\n"
    "  quxml set -i --create \"/settings/host[@name='kitchen']/network\" dhcp=no settings.xml\n"
    "  quxml set -i --backup /settings volume= settings.xml        an empty value, and settings.xml~";

class Set : public DocumentEdit {
public:
    const char* get_name() const override { return "set"; }

    const char* get_description() const override {
        return "Set attributes of the elements that a path selects";
    }

    const char* get_help() const override { return help_on_set; }

    void add_arguments(CLI::App& command) override {
        add_path(command, "Which elements");
        add_create_option(command);
        command.add_option("SETTING", settings, "NAME=VALUE, one or more")->required();
    }

    void take_arguments(std::string* file) override {
        if (file != nullptr && settings.size() > 1 && !is_setting(settings.back())) {
            *file = settings.back();
            settings.pop_back();
        }
        for (const std::string& setting : settings)
            require_setting("SETTING", setting);
        require_distinct("SETTING", get_setting_names(settings));
    }

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"SETTING", settings.back()}};
    }

    void apply(EditedDocument& document, PathNotes notes) const override {
        document.set(get_elements(document, notes), split_settings(settings));
    }

private:
    std::vector<std::string> settings;
};

}  // namespace

OwnedEdit create_set() {
    return std::make_unique<Set>();
}

void add_set(CLI::App& app, Action& action) {
    add_command(app, action, create_set());
}

}  // namespace tool
