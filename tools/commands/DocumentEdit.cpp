// SPDX-License-Identifier: MIT
#include "commands/DocumentEdit.h"

#include <CLI/CLI.hpp>

#include "commands/creation.h"
#include "commands/file_arguments.h"
#include "commands/writing_options.h"
#include "terminal/files.h"

namespace tool {

namespace {

/// Several files mostly come from a pattern of the shell, of which the first is taken for something else if that has been
/// forgotten.
void require_no_file_in(const std::vector<Argument>& arguments, const std::vector<std::string>& files) {
    for (const Argument& argument : arguments) {
        if (files.size() > 1 && looks_like_file(argument.value) &&
            is_in_same_folder(argument.value, files[0]))
            require_no_file(argument, std::string("perhaps ") + argument.name + " is missing");
    }
}

ExitCode run(const DocumentEdit& edit, const WritingOptions& options) {
    require_no_file_in(edit.get_arguments(), options.files);
    if (options.files.size() > 1)
        edit.require_good_path();
    return change_documents(options, edit.get_arguments(),
                            [&](const std::string& file, const std::string& text, const PathNotes& notes) {
                                EditedDocument document(file, text);
                                edit.apply(document, notes);
                                document.require_to_read_back();
                                return document.take_bytes();
                            });
}

}  // namespace

void DocumentEdit::add_create_option(CLI::App& command) {
    command.add_flag("--create", is_creating, "Make the elements that PATH misses");
}

void DocumentEdit::require_good_path() const {
    require_no_gap(path);
    require_no_fault(path, get_steps(path));
    if (is_creating)
        require_makeable(path);
}

std::vector<quxml::Element*> DocumentEdit::get_elements(EditedDocument& document,
                                                        const PathNotes& notes) const {
    return is_creating ? select_or_create(document, path, notes)
                       : select_elements(document.get_tree(), path, notes);
}

void add_edit_options(CLI::App& command, WritingOptions& options) {
    add_writing_options(command, options);
    command.add_flag("--quiet", options.quiet, "No notes, hints or summary");
}

void add_command(CLI::App& app, Action& action, OwnedEdit owned) {
    const std::shared_ptr<DocumentEdit> edit = std::move(owned);
    const auto options = std::make_shared<WritingOptions>();
    CLI::App* command = app.add_subcommand(edit->get_name(), edit->get_description());
    add_edit_options(*command, *options);
    edit->add_arguments(*command);
    add_files_argument(*command, options->files);
    command->footer(edit->get_help());
    command->callback([edit, options, &action] {
        edit->take_arguments(&options->files);
        require_all_named(edit->get_path().values, {edit->get_path()});
        action = [edit, options] { return run(*edit, *options); };
    });
}

}  // namespace tool
