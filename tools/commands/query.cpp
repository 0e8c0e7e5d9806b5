// SPDX-License-Identifier: MIT
#include <quxml/Document.h>
#include <quxml/Element.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "commands/MatchWriter.h"
#include "commands/QueryInput.h"
#include "commands/argument_checks.h"
#include "commands/commands.h"
#include "commands/each_file.h"
#include "commands/file_arguments.h"
#include "commands/hints.h"
#include "commands/path_arguments.h"
#include "paths/predicate_reasons.h"
#include "paths/selection.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* help_on_query =
    "Matches come in document order, each followed by a line feed, or with --null by a zero byte, which\n"
    "no value can hold. Exits with 1 if there is none. The path starts with the name of the root\n"
    "element; put it in quotes, since the shell has its own use for brackets and stars. Notes on\n"
    "standard error say where the path does something other than it seems to and, if nothing matches,\n"
    "how far it leads and what stands there. \"quxml explain\" says more.\n"
    "\n"
    "CDATA sections, text beside other content and entity references are not read, so queries answer\n"
    "as if they were not there, and a warning says so; --value, --columns and --json refuse with 3 to\n"
    "write the text of an element that holds any. Nothing is said of comments, prefixes and the rest of\n"
    "what \"quxml loss\" lists, since only what is found is written.\n"
    "\n"
    "LIST is NAME,@NAME,. and so on: the text of the first child of that name, an attribute, the text\n"
    "of the match itself; names are compared exactly. Each match is one line, with tabs between the\n"
    "columns. What is absent leaves its column empty. In values tabs, line feeds, carriage returns and\n"
    "backslashes are written \\t, \\n, \\r and \\\\.\n"
    "\n"
    "--json writes an array. With --columns it holds objects, with the columns as keys and null for\n"
    "what is absent; with --value, --attribute or --path strings; otherwise objects with name, path,\n"
    "attributes (an object) and text of each match. Each value is a string, also where it looks like a\n"
    "number. With --count, the number is all that is written.\n"
    "\n"
    "With more than one FILE each match follows the name of its file and a colon; the name is escaped\n"
    "as in messages, but with --null it is as it is, and a zero byte follows it. With --columns it is\n"
    "a column, the first, and in JSON a member of each object, \"file\"; what would be a string is an\n"
    "object with \"value\" then. --count writes a line for each file.\n"
    "\n"
    "Examples:\n"
    "  quxml query '/catalog/book' catalog.xml         all books in the catalog\n"
    "  quxml query '//title' catalog.xml               titles, wherever they are\n"
    "  quxml query \"/catalog/book[@id='2']\" catalog.xml\n"
    "  quxml query \"/catalog/book[title='Emma']\" catalog.xml\n"
    "  quxml query '//book[@isbn=$n]' --arg n=\"$number\" catalog.xml      whatever the number holds\n"
    "  quxml query '/catalog/book[2]' catalog.xml      books whose attribute \"item\" is 2\n"
    "  quxml query '/catalog/book[position()=2]' catalog.xml\n"
    "  quxml query '/catalog/book[last()]' catalog.xml\n"
    "  quxml query --value //title catalog.xml         what the titles are\n"
    "  quxml query --attribute id //book catalog.xml   the books' ids\n"
    "  quxml query --columns @id,title,. //book catalog.xml\n"
    "  quxml query --json --columns @id,title //book catalog.xml\n"
    "  quxml query --null --value //title catalog.xml | xargs -0 -n 1 echo\n"
    "  quxml query --no-filename --attribute id //book *.xml        of all files, without their names";

struct QueryOptions : MatchFormat {
    Path path;
    std::vector<std::string> files{standard_input};
    bool prefix = false;
    std::string column_list;  // as it is written
    bool no_filename = false;
    bool quiet = false;
    bool lossy = false;
};

bool has_attribute(const quxml::Node* match, const std::string& name) {
    const auto* element = dynamic_cast<const quxml::Element*>(match);
    return element != nullptr && element->get_attribute(name) != nullptr;
}

std::vector<quxml::Node*> get_matches(const quxml::Document& document, const QueryOptions& options,
                                      const PathNotes& notes) {
    std::vector<quxml::Node*> matches =
        select(document, options.path, notes, options.prefix ? NameMatch::prefix : NameMatch::whole);
    if (options.attribute.empty() || matches.empty())
        return matches;
    const auto has_none = [&](const quxml::Node* match) { return !has_attribute(match, options.attribute); };
    if (notes && std::all_of(matches.begin(), matches.end(), has_none))
        notes({get_reason_for_no_attribute(options.path.text, matches, options.attribute),
               NoteKind::possible_reason});
    matches.erase(std::remove_if(matches.begin(), matches.end(), has_none), matches.end());
    return matches;
}

/// Writes the matches in a file.
void query(const QueryOptions& options, const std::string& file, const PathNotes& notes,
           MatchWriter& writer) {
    const QueryInput input = read_query_input(file);
    if (!options.quiet)
        warn_of_unseen(input);
    const std::vector<quxml::Node*> matches = get_matches(*input.document, options, notes);
    if (!options.lossy)
        require_whole_values(input, options, matches);
    writer.write(file, matches);
    if (matches.empty())
        throw Failure(ExitCode::no_match);
}

ExitCode query(const QueryOptions& options) {
    if (!options.quiet && is_standard_input(options.files))
        write_hints(standard_input, {{"PATH", options.path.text}});
    if (options.several)
        require_no_fault(options.path, get_steps(options.path));
    MatchWriter writer(options);
    FileTask task;
    task.act = [&](const std::string& file, const PathNotes& notes) {
        if (writer.has_reader())
            query(options, file, notes, writer);
        return true;
    };
    task.having = "with a match";
    task.quiet = options.quiet;
    const ExitCode code = do_with_each(options.files, task);
    writer.close();
    return code;
}

std::string check_attribute(const std::string& name) {
    return name.empty() ? "expected a name" : "";
}

void add_output_options(CLI::App& command, QueryOptions& options) {
    const std::vector<CLI::Option*> kinds{
        command.add_flag("--value", options.value, "The text in each match instead of its XML"),
        command
            .add_option("--attribute", options.attribute,
                        "The value of this attribute, of matches that have it")
            ->type_name("NAME")
            ->check(CLI::Validator(check_attribute, "")),
        command.add_flag("--path", options.node_path, "A path to each match that selects nothing else"),
        command.add_flag("--count", options.count, "How many matches there are"),
        command
            .add_option("--columns", options.column_list,
                        "Several values of each match: texts of children, attributes, and . for its own text")
            ->type_name("LIST")
            ->check(CLI::Validator(check_columns, "")),
    };
    for (auto one = kinds.begin(); one != kinds.end(); ++one) {
        for (auto other = std::next(one); other != kinds.end(); ++other)
            (*one)->excludes(*other);
    }
    CLI::Option* json = command.add_flag("--json", options.json, "An array of JSON, of objects or strings");
    command.add_flag("--header", options.header, "With --columns: a first line that names them")
        ->needs(kinds.back())
        ->excludes(json);
    CLI::Option* with = command.add_flag("--with-filename", options.with_filename,
                                         "The file before each match, even if there is only one");
    command.add_flag("--no-filename", options.no_filename, "No files before matches")->excludes(with);
}

/// The first column, or the first member in JSON, has the name "file".
void require_no_column_of_files(const QueryOptions& options) {
    const bool has_column =
        std::find(options.columns.begin(), options.columns.end(), "file") != options.columns.end();
    if (options.with_filename && has_column && (options.json || options.header))
        throw Failure(ExitCode::usage,
                      "--columns: \"file\" is also what the files of matches are called; --no-filename "
                      "leaves these out");
}

/// What follows from the options and arguments together.
void settle(QueryOptions& options) {
    if (!options.column_list.empty())
        options.columns = split_at_commas(options.column_list);
    require_distinct("--columns", options.columns);
    require_all_named(options.path.values, {options.path});
    options.several = options.files.size() > 1;
    options.with_filename = options.with_filename || (options.several && !options.no_filename);
    require_no_column_of_files(options);
}

}  // namespace

void add_query(CLI::App& app, Action& action) {
    const auto options = std::make_shared<QueryOptions>();
    CLI::App* command = app.add_subcommand("query", "Write the nodes that a path selects");
    command->add_flag("--prefix", options->prefix,
                      "A name in the path also stands for all that begin with it");
    command->add_flag("-0,--null", options->null,
                      "A zero byte at the end of each match, or of JSON, instead of a line feed");
    add_output_options(*command, *options);
    command->add_flag("--lossy", options->lossy,
                      "With --value, --columns or --json: write what is seen of a value");
    command->add_flag("--quiet", options->quiet,
                      "No notes on the path or on content that queries do not see, and no summary");
    add_path_arguments(*command, options->path, "What to look for");
    add_files_argument(*command, options->files);
    command->footer(help_on_query);
    command->callback([options, &action] {
        settle(*options);
        action = [options] { return query(*options); };
    });
}

}  // namespace tool
