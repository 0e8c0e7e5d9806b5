// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/DocumentEdit.h"

namespace tool {

namespace {

constexpr const char* help_on_text =
    "Every element that PATH selects gets VALUE as its text; an empty one removes the text. CDATA that is\n"
    "alone in an element stays CDATA. Everything else in the document stays as it is, byte for byte. Exits\n"
    "with 1 and writes nothing if PATH selects no element. A VALUE that begins with -, and neither is - nor\n"
    "goes on with a digit, stands after --, and all options stand before that.\n"
    "\n"
    "Refused with 3 for elements that have elements in them, since text beside these would be lost when\n"
    "the document is read, and for those that hold a comment, a processing instruction or a reference to an\n"
    "entity, which VALUE would take the place of: take it out by hand first. In CDATA a carriage return and\n"
    "what the document's encoding lacks cannot be written: make it plain text by hand first. White space\n"
    "that begins with a line feed is not read as a text.\n"
    "With --create the elements that PATH misses are made, as set does it.\n"
    "With several FILEs, a VALUE that is also a file in the folder of the first is refused with 2: it may\n"
    "be one of them, and VALUE be missing. \"quxml edit -e\" takes it for VALUE.\n"
    "\n"
    "Examples:\n"
    "  quxml text -i /settings/host/name kitchen settings.xml\n"
    "  quxml text -i --create \"/settings/host[@name='kitchen']/address\" 10.0.0.7 settings.xml\n"
    "  quxml text -i -- /settings/options -v settings.xml\n"
    "  quxml text \"/catalog/book[@id='emma']/title\" 'Emma & Co' <catalog.xml";

class Text : public DocumentEdit {
public:
    const char* get_name() const override { return "text"; }

    const char* get_description() const override {
        return "Set the text of the elements that a path selects";
    }

    const char* get_help() const override { return help_on_text; }

    void add_arguments(CLI::App& command) override {
        add_path(command, "Which elements");
        add_create_option(command);
        command.add_option("VALUE", value, "The text")->required();
    }

    void take_arguments(std::vector<std::string>* /*files*/) override {}

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"VALUE", value}};
    }

    void apply(EditedDocument& document, const PathNotes& notes) const override {
        document.set_text(get_elements(document, notes), value);
    }

private:
    std::string value;
};

}  // namespace

OwnedEdit create_text() {
    return std::make_unique<Text>();
}

void add_text(CLI::App& app, Action& action) {
    add_command(app, action, create_text());
}

}  // namespace tool
