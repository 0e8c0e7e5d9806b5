// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/argument_checks.h"
#include "commands/file_arguments.h"
#include "terminal/files.h"

namespace tool {

namespace {

constexpr const char* help_on_unset =
    "An attribute that is not there is not a failure. Everything else in the document stays as it is, byte\n"
    "for byte. Exits with 1 and writes nothing if PATH selects no element.\n"
    "The first argument after PATH is a NAME. FILEs begin with a later one that has a dot or a slash, or\n"
    "with the last one. A NAME that is also a file is refused with 2, the first only if it has a dot: write\n"
    "./NAME for the file.\n"
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

    void take_arguments(std::vector<std::string>* files) override {
        if (files != nullptr && names.size() > 1)
            take_files_of_names(*files);
        for (const std::string& name : names)
            require_name("NAME", name);
    }

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"NAME", names.front()}};
    }

    void apply(EditedDocument& document, const PathNotes& notes) const override {
        document.unset(select_elements(document.get_tree(), get_path(), notes), names);
    }

private:
    /// What could be both a name and a file is taken for neither, but for the first: that is a name unless it looks like a
    /// file.
    void take_files_of_names(std::vector<std::string>& files) {
        files = take_files(names, [](const std::string&) { return false; });
        for (const std::string& name : names) {
            if (&name != &names.front() || looks_like_file(name))
                require_no_file({"NAME", name}, get_advice_on_files(name));
        }
    }

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
