// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/argument_checks.h"
#include "commands/creation.h"

namespace tool {

namespace {

constexpr const char* help_on_add =
    "Every element that PATH selects gets a new element, after those it has and indented as they are; it\n"
    "gets the prefix of its parent. Everything else in the document stays as it is, byte for byte. Exits\n"
    "with 1 and writes nothing if PATH selects no element.\n"
    "\n"
    "Refused with 3 for elements that have text or CDATA and no elements, since the text would not be read\n"
    "any more beside an element: remove the text first, with text PATH ''.\n"
    "With --create the elements that PATH misses are made, as set does it, and an element that has such a\n"
    "child already, with these attributes and this text, gets none.\n"
    "\n"
    "With --sorted the new element stands where a document that keeps its children sorted puts it: by name\n"
    "and, among namesakes, by the attribute \"item\", before those with an equal one; without an item it\n"
    "follows its namesakes. Comments directly above the element that comes next stay with that one. Refused\n"
    "with 3 if the elements are not sorted so, have text beside them, or have an item out of range.\n"
    "\n"
    "Examples:\n"
    "  quxml add -i /settings host --attribute name=kitchen --attribute port=80 settings.xml\n"
    "  quxml add -i --create /zone service --attribute name=ssh zone.xml      unless it is there\n"
    "  quxml add /catalog/shelf book --item 3 <catalog.xml\n"
    "  quxml add --sorted --item 3 /catalog/shelf book <catalog.xml\n"
    "  quxml add \"/catalog/book[@id='emma']\" note --text 'lent to Jane' <catalog.xml";

class Add : public DocumentEdit {
public:
    const char* get_name() const override { return "add"; }

    const char* get_description() const override { return "Add an element to those that a path selects"; }

    const char* get_help() const override { return help_on_add; }

    void add_arguments(CLI::App& command) override {
        item = command.add_option("--item", added.item, "The attribute \"item\", which numbers namesakes")
                   ->type_name("N")
                   ->check(CLI::Validator(check_number, ""));
        command.add_option("--text", added.text, "The new element's text")->type_name("TEXT");
        command
            .add_option("--attribute", attributes,
                        "An attribute; may be given several times, for other names")
            ->type_name("NAME=VALUE")
            ->allow_extra_args(false)
            ->check(CLI::Validator(check_setting, ""));
        command.add_flag("--sorted", added.is_sorted, "At its place in the order of names and items");
        add_path(command, "Which elements");
        add_create_option(command);
        command.add_option("NAME", added.name, "The new element's name")
            ->required()
            ->check(CLI::Validator(check_name, ""));
    }

    void take_arguments(std::vector<std::string>* /*files*/) override {
        require_distinct_attributes();
        added.has_item = item->count() != 0;
        added.attributes = split_settings(attributes);
    }

    std::vector<Argument> get_arguments() const override {
        return {{"PATH", get_path().text}, {"NAME", added.name}};
    }

    void apply(EditedDocument& document, const PathNotes& notes) const override {
        std::vector<quxml::Element*> parents = get_elements(document, notes);
        if (creates())
            parents.erase(
                std::remove_if(parents.begin(), parents.end(),
                               [&](const quxml::Element* parent) { return has_such_child(*parent, added); }),
                parents.end());
        if (!parents.empty())
            document.add(parents, added);
    }

private:
    // The item is an attribute too.
    void require_distinct_attributes() const {
        std::vector<std::string> names = get_setting_names(attributes);
        if (item->count() != 0)
            names.emplace_back("item");
        require_distinct("--attribute", names);
    }

    NewElement added;
    std::vector<std::string> attributes;
    const CLI::Option* item = nullptr;
};

}  // namespace

OwnedEdit create_add() {
    return std::make_unique<Add>();
}

void add_add(CLI::App& app, Action& action) {
    add_command(app, action, create_add());
}

}  // namespace tool
