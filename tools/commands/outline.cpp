// SPDX-License-Identifier: MIT
#include <quxml/Document.h>
#include <quxml/Element.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/each_file.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/colours.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "terminal/words.h"
#include "trees/distinct_paths.h"

namespace tool {

namespace {

constexpr const char* help_on_outline =
    "Elements with the same names from the root element down to them are one path. Each path comes\n"
    "once, with the number of its elements, their attributes, and the first value of each attribute\n"
    "and the first text that are not empty. Several documents give one outline of all of them; one\n"
    "that cannot be read is reported and left out, and the exit code is the highest that any gives.\n"
    "On a terminal, and with --tree, the outline is a tree. Otherwise, and with --paths, each path is\n"
    "a line of four columns with tabs between them, in order of first appearance:\n"
    "  /catalog/book   2   @id=\"1\" @lang=\"en\"   \"text\"\n"
    "The last two are empty if there is nothing. Values are cut after 50 bytes, and \"...\" follows\n"
    "then; in them, line feeds are written \\n, quotes \\\", backslashes \\\\ and other control\n"
    "characters such as \\t or \\x1b. \"quxml query\" understands the paths, but compares names without\n"
    "regard to case, so that one query can find what are two paths here.\n"
    "CDATA sections, text beside other content and entity references are not read, and a warning says\n"
    "so.\n"
    "\n"
    "Examples:\n"
    "  quxml outline settings.xml\n"
    "  quxml outline --tree /etc/device/*.xml | less\n"
    "  quxml outline settings.xml | cut -f 1        all paths";

struct OutlineOptions {
    std::vector<std::string> files{standard_input};
    bool tree = false;
    bool paths = false;
    bool quiet = false;
};

void warn_of_omitted(const std::string& file, const std::string& text) {
    const std::vector<Loss> omitted = get_content(find_losses(text));
    if (!omitted.empty())
        write_warning(file,
                      "the outline leaves out " + get_summary(omitted) + "; " + get_pointer_to_loss(file));
}

void add_document(DistinctPaths& paths, const std::string& file, bool quiet) {
    const std::string text = read_text(file);
    paths.add(*parse_document(file, text)->get_root_node());
    if (!quiet)
        warn_of_omitted(file, text);
}

/// The attributes with their examples, and the example of the text.
struct Examples {
    std::string attributes;
    std::string text;
};

Examples get_examples(const std::vector<DistinctPath>& paths, const DistinctPath& path) {
    Examples examples{"", path.example};
    for (const std::size_t number : path.attributes) {
        const DistinctPath& attribute = paths[number];
        examples.attributes += (examples.attributes.empty() ? "" : " ") + attribute.name + '=' +
                               (attribute.example.empty() ? "\"\"" : attribute.example);
    }
    return examples;
}

std::string get_whole_path(const std::vector<DistinctPath>& paths, std::size_t number) {
    std::vector<std::string> names;
    for (; number != 0; number = paths[number].parent)
        names.push_back(paths[number].name);
    std::string whole;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        whole += '/' + *name;
    return whole;
}

void write_paths(const std::vector<DistinctPath>& paths) {
    std::string text;
    for (std::size_t number = 1; number < paths.size(); ++number) {
        const DistinctPath& path = paths[number];
        if (is_attribute(path))
            continue;
        const Examples examples = get_examples(paths, path);
        text += get_whole_path(paths, number) + '\t' + std::to_string(path.count) + '\t' +
                examples.attributes + '\t' + examples.text + '\n';
    }
    write_output(text);
}

std::string get_dimmed(const std::string& text) {
    return has_colours(STDOUT_FILENO) ? in_colour(Colour::dim, text) : text;
}

std::string get_branch(const std::vector<DistinctPath>& paths, const DistinctPath& path) {
    constexpr std::size_t blanks_per_level = 2;
    std::string line((path.depth - 1) * blanks_per_level, ' ');
    line += path.name + ' ' + get_dimmed(std::to_string(path.count));
    const Examples examples = get_examples(paths, path);
    for (const std::string& part : {examples.attributes, examples.text})
        line += (part.empty() ? "" : " ") + part;
    return line + '\n';
}

/// What appears late in a document may belong to an early branch, so the order is that of the branches.
void write_tree(const std::vector<DistinctPath>& paths) {
    std::string text;
    std::vector<std::size_t> pending(paths[0].children.rbegin(), paths[0].children.rend());
    while (!pending.empty()) {
        const DistinctPath& path = paths[pending.back()];
        pending.pop_back();
        text += get_branch(paths, path);
        pending.insert(pending.end(), path.children.rbegin(), path.children.rend());
    }
    write_output(text);
}

ExitCode outline(const OutlineOptions& options) {
    if (!options.quiet && is_standard_input(options.files))
        write_hints(standard_input);
    DistinctPaths paths;
    FileTask task;
    task.act = [&](const std::string& file, const PathNotes&) {
        add_document(paths, file, options.quiet);
        return true;
    };
    const ExitCode worst = do_with_each(options.files, task);
    const bool is_tree = options.tree || (!options.paths && isatty(STDOUT_FILENO) == 1);
    (is_tree ? write_tree : write_paths)(paths.get());
    return worst;
}

}  // namespace

void add_outline(CLI::App& app, Action& action) {
    const auto options = std::make_shared<OutlineOptions>();
    CLI::App* command =
        app.add_subcommand("outline", "Show which elements and attributes there are in documents");
    command->add_flag("--tree", options->tree, "A tree, also where no terminal shows it");
    command->add_flag("--paths", options->paths, "A path on each line, also on a terminal")
        ->excludes("--tree");
    command->add_flag("--quiet", options->quiet, "No warning of content that the outline leaves out");
    add_files_argument(*command, options->files);
    command->footer(help_on_outline);
    command->callback([options, &action] { action = [options] { return outline(*options); }; });
}

}  // namespace tool
