// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/argument_checks.h"
#include "commands/file_arguments.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* help_on_set =
    "Every element that PATH selects gets these attributes; what is there already keeps its place, its\n"
    "prefix and its quotes. A NAME may stand there once. Everything else in the document stays as it is,\n"
    "byte for byte. Exits with 1 and writes nothing if PATH selects no element.\n"
    "FILEs follow the last NAME=VALUE. They begin with a word that has a dot or a slash and is not\n"
    "NAME=VALUE, or with the last word if that is not NAME=VALUE. A FILE with = in its name is written\n"
    "with a slash, as in ./k=v.xml. A NAME=VALUE that is also a file, or that follows one, is refused\n"
    "with 2.\n"
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
    "  quxml set -i //listen port=8080 /etc/device/*.xml           all files that have a listen\n"
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

    void take_arguments(std::vector<std::string>* files) override {
        std::vector<std::string> taken;
        if (files != nullptr)
            taken = take_files(settings, is_setting);
        for (const std::string& setting : settings)
            require_setting("SETTING", setting);
        require_distinct("SETTING", get_setting_names(settings));
        if (files == nullptr || taken.empty())
            return;
        require_no_doubt(taken);
        *files = std::move(taken);
    }

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"SETTING", settings.back()}};
    }

    void apply(EditedDocument& document, const PathNotes& notes) const override {
        document.set(get_elements(document, notes), split_settings(settings));
    }

private:
    /// What could be both a setting and a file is taken for neither.
    void require_no_doubt(const std::vector<std::string>& files) const {
        for (const std::string& setting : settings)
            require_no_file({"SETTING", setting}, get_advice_on_files(setting));
        const auto late = std::find_if(files.begin(), files.end(), is_setting);
        if (late != files.end())
            throw Failure(ExitCode::usage, "SETTING: " + quote(*late) +
                                               " stands after a FILE; put it before that; " +
                                               get_advice_on_files(*late));
    }

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
