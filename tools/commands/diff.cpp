// SPDX-License-Identifier: MIT
#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "commands/commands.h"
#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "terminal/words.h"
#include "trees/differences.h"

namespace tool {

namespace {

constexpr const char* help_on_diff =
    "Compares what the library reads of two documents. The order of attributes does not count, nor\n"
    "does that of children with different names or attributes \"item\". Exits with 1 if they differ,\n"
    "with --quiet also with 3 if they seem equal but hold CDATA sections, text beside other content or\n"
    "entity references, which are not compared.\n"
    "The lines say:\n"
    "  - PATH                 only in A        - PATH/@NAME=\"VALUE\"   an attribute only in A\n"
    "  + PATH                 only in B        + PATH/@NAME=\"VALUE\"   an attribute only in B\n"
    "  ! PATH: \"A\" -> \"B\"     another text     ! PATH/@NAME: \"A\" -> \"B\"\n"
    "\"quxml query\" understands these paths, up to the @. Each difference is one line: in values, line\n"
    "feeds are written \\n, quotes \\\", backslashes \\\\ and other control characters such as \\t or "
    "\\x1b.\n"
    "\n"
    "Examples:\n"
    "  quxml diff settings.xml settings.xml~\n"
    "  quxml diff --quiet old.xml new.xml && echo 'nothing has changed'";

struct DiffOptions {
    std::string one;
    std::string other;
    bool quiet = false;
    bool lossy = false;
};

struct DiffInput {
    std::string file;
    std::shared_ptr<quxml::Document> document;
    std::vector<Loss> losses;
};

DiffInput read(const std::string& file) {
    const std::string text = read_text(file);
    std::shared_ptr<quxml::Document> document = parse_document(file, text);
    return {file, std::move(document), find_losses(text)};
}

void warn_of_losses(const DiffInput& input) {
    if (has_losses(input.losses))
        write_warning(input.file, "this is not compared: " + get_summary(input.losses));
}

/// Documents without a difference may differ in content that is not compared, and nobody reads a warning of a quiet
/// command.
void require_all_compared(const DiffInput& input) {
    const std::vector<Loss> unseen = get_content(input.losses);
    if (!unseen.empty())
        throw Failure(ExitCode::malformed, get_label(input.file) + ": this is not compared: " +
                                               get_summary(unseen) + "; --lossy compares the rest");
}

ExitCode diff(const DiffOptions& options) {
    if (options.one == standard_input && options.other == standard_input)
        throw Failure(ExitCode::usage, "only one of A and B can be standard input");
    const DiffInput one = read(options.one);
    const DiffInput other = read(options.other);
    if (!options.quiet) {
        warn_of_losses(one);
        warn_of_losses(other);
    }
    std::string text;
    bool is_different = false;
    find_differences(*one.document->get_root_node(), *other.document->get_root_node(),
                     [&](const std::string& line) {
                         is_different = true;
                         text += line + '\n';
                         return !options.quiet;
                     });
    if (!options.quiet)
        write_output(text);
    if (options.quiet && !is_different && !options.lossy) {
        require_all_compared(one);
        require_all_compared(other);
    }
    return is_different ? ExitCode::no_match : ExitCode::done;
}

}  // namespace

void add_diff(CLI::App& app, Action& action) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* command = app.add_subcommand("diff", "Show how two documents differ");
    command->add_flag("--quiet", options->quiet,
                      "Only exit with the code; errors in documents are still reported");
    command->add_flag("--lossy", options->lossy,
                      "With --quiet: compare the rest if something cannot be compared");
    command->add_option("A", options->one, "A document; standard input if it is -")->required();
    command->add_option("B", options->other, "The other document; standard input if it is -")->required();
    command->footer(help_on_diff);
    command->callback([options, &action] { action = [options] { return diff(*options); }; });
}

}  // namespace tool
