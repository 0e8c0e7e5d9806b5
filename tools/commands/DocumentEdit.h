// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_DOCUMENT_EDIT_H
#define QUXML_TOOLS_COMMANDS_DOCUMENT_EDIT_H

#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/hints.h"
#include "commands/path_arguments.h"
#include "paths/selection.h"
#include "writing/EditedDocument.h"
#include "writing/destination.h"

namespace tool {

/// One of the edits of a document, as its words on a command line say it.
class DocumentEdit {
public:
    DocumentEdit() = default;
    virtual ~DocumentEdit() = default;
    DocumentEdit(const DocumentEdit&) = delete;
    DocumentEdit& operator=(const DocumentEdit&) = delete;

    virtual const char* get_name() const = 0;
    virtual const char* get_description() const = 0;
    virtual const char* get_help() const = 0;

    /// Adds to a command what the edit takes: PATH, and more.
    virtual void add_arguments(CLI::App& command) = 0;

    /// Looks at what the arguments are by now.
    /// \param files  gets the last of them if these are FILEs of the command line; null if there are none.
    /// \throws Failure  (usage)
    virtual void take_arguments(std::vector<std::string>* files) = 0;

    /// What of the arguments could be taken for something else.
    virtual std::vector<Argument> get_arguments() const = 0;

    /// Makes the edit.
    /// \throws Failure
    virtual void apply(EditedDocument& document, const PathNotes& notes) const = 0;

    /// Refuses a path that is bad with every document.
    /// \throws Failure  (bad_query)
    void require_good_path() const;

    const Path& get_path() const { return path; }

    /// Gives values for names in the path, but for those that have one.
    void give(const Values& values) { path.values.insert(values.begin(), values.end()); }

protected:
    void add_path(CLI::App& command, const char* description) {
        add_path_arguments(command, path, description);
    }

    /// Adds the option to make elements that the path misses.
    void add_create_option(CLI::App& command);

    bool creates() const { return is_creating; }

    /// The elements that the path selects, made if that is wanted.
    /// \throws Failure
    std::vector<quxml::Element*> get_elements(EditedDocument& document, const PathNotes& notes) const;

private:
    Path path;
    bool is_creating = false;
};

using OwnedEdit = std::unique_ptr<DocumentEdit>;

// Each of these makes one edit, in a file of its own.
OwnedEdit create_add();
OwnedEdit create_remove();
OwnedEdit create_set();
OwnedEdit create_text();
OwnedEdit create_unset();

/// Adds to a command the options about what becomes of an edited document.
void add_edit_options(CLI::App& command, WritingOptions& options);

/// Adds the command that makes just this edit.
void add_command(CLI::App& app, Action& action, OwnedEdit edit);

}  // namespace tool

#endif
