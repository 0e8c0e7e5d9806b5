// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "commands/DocumentEdit.h"
#include "commands/commands.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "commands/writing_options.h"
#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* help_on_edit =
    "Makes several edits, one after the other, or none: if one of them fails, nothing is written and the\n"
    "message names it. Each sees what those before it have made. An edit is set, unset, text, add or\n"
    "remove, with what follows that word on a command line, but for FILE and the options on what becomes of\n"
    "the result. Words are split as a shell does it, with single and double quotes and backslashes. Without\n"
    "-e the edits are read from standard input, one per line; empty lines and lines that begin with # do\n"
    "not count. An --arg counts for all edits, or stands in one of them. Of several FILEs each gets all\n"
    "edits or none.\n"
    "\n"
    "Examples:\n"
    "  quxml edit -i -e 'set /settings/network dhcp=no' -e 'remove //gateway' settings.xml\n"
    "  quxml edit --diff settings.xml <edits.txt";

/// An edit, and how it was written.
struct WrittenEdit {
    std::string text;
    OwnedEdit edit;
};

struct EditsOptions : WritingOptions {
    std::vector<std::string> lines;
    Values values;
};

Failure with_name(const std::string& edit, std::size_t number, const Failure& failure) {
    return {failure.get_code(), "edit " + std::to_string(number) + ", " + edit + ": " + failure.what()};
}

/// Splits a line into words as a shell does.
class WordSplitter {
public:
    explicit WordSplitter(std::string_view text) : line(text) {}

    std::vector<std::string> split() {
        while (skip_blanks())
            words.push_back(take_word());
        return words;
    }

private:
    bool skip_blanks() {
        position = std::min(line.find_first_not_of(white_space, position), line.size());
        return position != line.size();
    }

    std::string take_word() {
        std::string word;
        while (position != line.size() && white_space.find(line[position]) == std::string_view::npos) {
            const char character = line[position++];
            if (character == '\'' || character == '"') {
                take_quoted(character, word);
            } else {
                word += character == '\\' ? take_escaped() : character;
            }
        }
        return word;
    }

    /// Between double quotes, a backslash escapes only another and a double quote.
    void take_quoted(char quote, std::string& word) {
        while (position != line.size() && line[position] != quote) {
            const std::string_view next = line.substr(position, 2);
            if (quote == '"' && (next == "\\\"" || next == "\\\\"))
                ++position;
            word += line[position++];
        }
        if (position == line.size())
            throw Failure(ExitCode::usage, std::string("there is no second ") + quote);
        ++position;
    }

    char take_escaped() {
        if (position == line.size())
            throw Failure(ExitCode::usage, "there is nothing after the \\ at the end");
        return line[position++];
    }

    std::string_view line;
    std::size_t position = 0;
    std::vector<std::string> words;
};

OwnedEdit create_edit(const std::string& name) {
    for (const auto create : {create_set, create_unset, create_text, create_add, create_remove}) {
        OwnedEdit edit = create();
        if (edit->get_name() == name)
            return edit;
    }
    throw Failure(ExitCode::usage, quote(name) + " is not set, unset, text, add or remove");
}

OwnedEdit parse_edit(const std::string& line) {
    std::vector<std::string> words = WordSplitter(line).split();
    if (words.empty())
        throw Failure(ExitCode::usage, "it is empty");
    OwnedEdit edit = create_edit(words.front());
    CLI::App app;
    app.set_help_flag();
    edit->add_arguments(app);
    words.erase(words.begin());
    std::reverse(words.begin(), words.end());  // as CLI11 wants them
    try {
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitCode::usage, error.what());
    }
    edit->take_arguments(nullptr);
    require_all_named(edit->get_path().values, {edit->get_path()});
    return edit;
}

std::vector<WrittenEdit> parse_edits(const std::vector<std::string>& lines) {
    std::vector<WrittenEdit> edits;
    for (const std::string& line : lines) {
        try {
            edits.push_back({line, parse_edit(line)});
        } catch (const Failure& failure) {
            throw with_name(line, edits.size() + 1, failure);
        }
    }
    return edits;
}

/// Gives values to all edits.
void give(const std::vector<WrittenEdit>& edits, const Values& values) {
    std::vector<Path> paths;
    for (const WrittenEdit& one : edits) {
        one.edit->give(values);
        paths.push_back(one.edit->get_path());
    }
    require_all_named(values, paths);
}

void require_good_paths(const std::vector<WrittenEdit>& edits) {
    std::size_t number = 0;
    for (const WrittenEdit& one : edits) {
        try {
            ++number;
            one.edit->require_good_path();
        } catch (const Failure& failure) {
            throw with_name(one.text, number, failure);
        }
    }
}

std::vector<std::string> read_lines() {
    std::vector<std::string> lines;
    std::istringstream text(read_text(standard_input));
    for (std::string line; std::getline(text, line);) {
        const std::size_t begin = line.find_first_not_of(white_space);
        if (begin != std::string::npos && line[begin] != '#')
            lines.push_back(line);
    }
    return lines;
}

enum class Check { once, each };

std::string apply(const std::vector<WrittenEdit>& edits, const std::string& file, const std::string& text,
                  const PathNotes& notes, Check check) {
    EditedDocument document(file, text);
    std::size_t number = 0;
    for (const WrittenEdit& one : edits) {
        try {
            ++number;
            one.edit->apply(document, notes);
            if (check == Check::each)
                document.require_to_read_back();
        } catch (const Failure& failure) {
            throw with_name(one.text, number, failure);
        }
    }
    document.require_to_read_back();
    return document.take_bytes();
}

/// If the result is not read back as it should be, all is done once more to find out which edit it is.
std::string apply(const std::vector<WrittenEdit>& edits, const std::string& file, const std::string& text,
                  const PathNotes& notes) {
    try {
        return apply(edits, file, text, notes, Check::once);
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed || std::string_view(failure.what()).empty())
            throw;
    }
    return apply(edits, file, text, {}, Check::each);
}

bool reads_standard_input(const std::vector<std::string>& files) {
    return std::find(files.begin(), files.end(), standard_input) != files.end();
}

ExitCode edit(const EditsOptions& options) {
    const bool is_input_taken = options.lines.empty();
    if (is_input_taken && reads_standard_input(options.files))
        throw Failure(ExitCode::usage, "standard input has the edits, so a FILE is needed");
    if (is_input_taken && !options.quiet)
        write_terminal_hint("-e");
    const std::vector<WrittenEdit> edits = parse_edits(is_input_taken ? read_lines() : options.lines);
    give(edits, options.values);
    if (options.files.size() > 1)
        require_good_paths(edits);
    return change_documents(options, {},
                            [&](const std::string& file, const std::string& text, const PathNotes& notes) {
                                return apply(edits, file, text, notes);
                            });
}

}  // namespace

void add_edit(CLI::App& app, Action& action) {
    const auto options = std::make_shared<EditsOptions>();
    CLI::App* command = app.add_subcommand("edit", "Make several edits, all or none");
    add_edit_options(*command, *options);
    command->add_option("-e,--edit", options->lines, "An edit; may be given several times")
        ->type_name("EDIT")
        ->allow_extra_args(false);
    add_values_option(*command, options->values);
    add_files_argument(*command, options->files);
    command->footer(help_on_edit);
    command->callback([options, &action] { action = [options] { return edit(*options); }; });
}

}  // namespace tool
