// SPDX-License-Identifier: MIT
#include "commands/writing_options.h"

#include <CLI/CLI.hpp>
#include <cstddef>

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
    command.add_flag("--quiet", options.quiet, "No warnings, notes or hints");
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

void write_hints(const WritingOptions& options, const std::vector<Argument>& arguments) {
    if (!options.quiet && !options.in_place)
        write_hints(options.file, arguments);
}

}  // namespace tool
