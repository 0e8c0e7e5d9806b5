// SPDX-License-Identifier: MIT
#include "commands/writing_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>

#include "commands/each_file.h"
#include "commands/file_arguments.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr std::size_t widest_indent = 16;

std::string check_indent(const std::string& value) {
    const bool is_number = !value.empty() && value.size() <= 2 &&
                           value.find_first_not_of("0123456789") == std::string::npos &&
                           std::stoul(value) <= widest_indent;
    return is_number || value == "tab" ? "" : "expected a number up to 16 or \"tab\", not " + value;
}

std::string check_backup(const std::string& suffix) {
    const bool is_suffix = !suffix.empty() && suffix.find('/') == std::string::npos;
    return is_suffix ? "" : "expected a suffix for a file name, not \"" + suffix + '"';
}

/// The last argument may have been meant for the FILE.
Failure get_refusal_without_file(const std::vector<Argument>& arguments) {
    const std::string taken =
        arguments.empty() ? ""
                          : "; " + quote(arguments.back().value) + " was taken for " + arguments.back().name;
    return {ExitCode::usage, "--in-place needs a FILE" + taken};
}

/// Each result needs a place: one after the other they are not a document.
void require_places(const WritingOptions& options, const std::vector<Argument>& arguments) {
    const std::vector<std::string>& files = options.files;
    if (options.in_place && is_standard_input(files))
        throw get_refusal_without_file(arguments);
    if (options.in_place && std::count(files.begin(), files.end(), standard_input) != 0)
        throw Failure(ExitCode::usage, "--in-place cannot change standard input");
    if (files.size() > 1 && !options.in_place && !options.diff)
        throw Failure(ExitCode::usage,
                      "with more than one FILE, -i changes the files, and --diff shows what would "
                      "change; one of them is needed");
    require_distinct_files(files);
}

FileTask describe(const WritingOptions& options) {
    FileTask task;
    task.quiet = options.quiet;
    task.if_any = options.diff ? ExitCode::no_match : ExitCode::done;
    task.having = options.diff ? "would change" : "changed";
    task.lacking = options.diff ? "would not" : "unchanged";
    return task;
}

}  // namespace

void add_writing_options(CLI::App& command, WritingOptions& options) {
    CLI::Option* in_place =
        command.add_flag("-i,--in-place", options.in_place, "Change FILE itself, and only as a whole");
    command
        .add_flag("--backup{~}", options.backup,
                  "With -i: keep the old text as FILE~, or with another SUFFIX given by --backup=SUFFIX")
        ->check(CLI::Validator(check_backup, ""))
        ->needs(in_place);
    command
        .add_flag("--diff", options.diff,
                  "Only show what would change, as \"patch\" reads it; exit with 1 if anything would")
        ->excludes(in_place);
}

void add_rewrite_options(CLI::App& command, RewriteOptions& options) {
    add_writing_options(command, options);
    CLI::Option* canonical = command.add_flag("--canonical", options.canonical,
                                              "As the library writes it, without what it does not keep");
    command.add_flag("--lossy", options.lossy, "With -i: change FILE even if something of it is lost")
        ->needs("--in-place")
        ->needs(canonical);
    command.add_flag("--quiet", options.quiet, "No warnings, notes, hints or summary");
}

void add_layout_options(CLI::App& command, RewriteOptions& options) {
    CLI::Option* compact =
        command.add_flag("--compact", options.compact, "Everything on one line, with a line feed at its end");
    command.add_option("--indent", options.indent, "Blanks for each level, up to 16, or \"tab\"")
        ->type_name("N|tab")
        ->check(CLI::Validator(check_indent, ""))
        ->excludes(compact);
    command.add_flag("--no-declaration", options.no_declaration, "Leave out the XML declaration");
}

ExitCode change_documents(const WritingOptions& options, const std::vector<Argument>& arguments,
                          const FileChange& change) {
    require_places(options, arguments);
    if (!options.quiet && !options.in_place && is_standard_input(options.files))
        write_hints(standard_input, arguments);
    FileTask task = describe(options);
    task.act = [&](const std::string& file, const PathNotes& notes) {
        return change_document(options, file,
                               [&](const std::string& text) { return change(file, text, notes); });
    };
    return do_with_each(options.files, task);
}

ExitCode rewrite_documents(const RewriteOptions& options) {
    return change_documents(options, {},
                            [&](const std::string& file, const std::string& text, const PathNotes&) {
                                return rewrite(options, file, text);
                            });
}

}  // namespace tool
