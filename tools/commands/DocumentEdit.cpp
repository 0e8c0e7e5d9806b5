// SPDX-License-Identifier: MIT
#include "commands/DocumentEdit.h"

#include <CLI/CLI.hpp>

#include "commands/creation.h"
#include "commands/file_arguments.h"
#include "commands/writing_options.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// The last argument may have been meant for the FILE.
Failure get_refusal_without_file(const std::vector<Argument>& arguments) {
    return {ExitCode::usage, "--in-place needs a FILE; " + quote(arguments.back().value) + " was taken for " +
                                 arguments.back().name};
}

ExitCode run(const DocumentEdit& edit, const WritingOptions& options) {
    const std::string& file = options.file;
    if (options.in_place && file == standard_input)
        throw get_refusal_without_file(edit.get_arguments());
    write_hints(options, edit.get_arguments());
    return change_document(options, [&](const std::string& text) {
        EditedDocument document(file, text);
        edit.apply(document, options.quiet ? PathNotes::silent : PathNotes::written);
        document.require_to_read_back();
        return document.take_bytes();
    });
}

}  // namespace

void DocumentEdit::add_create_option(CLI::App& command) {
    command.add_flag("--create", is_creating, "Make the elements that PATH misses");
}

std::vector<quxml::Element*> DocumentEdit::get_elements(EditedDocument& document, PathNotes notes) const {
    return is_creating ? select_or_create(document, path, notes)
                       : select_elements(document.get_tree(), path, notes);
}

void add_edit_options(CLI::App& command, WritingOptions& options) {
    add_writing_options(command, options);
    command.add_flag("--quiet", options.quiet, "No notes or hints");
}

void add_command(CLI::App& app, Action& action, OwnedEdit owned) {
    const std::shared_ptr<DocumentEdit> edit = std::move(owned);
    const auto options = std::make_shared<WritingOptions>();
    CLI::App* command = app.add_subcommand(edit->get_name(), edit->get_description());
    add_edit_options(*command, *options);
    edit->add_arguments(*command);
    add_file_argument(*command, options->file);
    command->footer(edit->get_help());
    command->callback([edit, options, &action] {
        edit->take_arguments(&options->file);
        require_all_named(edit->get_path().values, {edit->get_path()});
        action = [edit, options] { return run(*edit, *options); };
    });
}

}  // namespace tool
