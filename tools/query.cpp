#include <quxml/Document.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <stdexcept>
#include <string>

#include "Failure.h"
#include "commands.h"
#include "document_order.h"
#include "input.h"
#include "output.h"

namespace tool {

namespace {

constexpr const char* help_on_query =
    "Matches come in document order, each as XML text that begins a line and ends with a line feed.\n"
    "Exits with 1 if there is none. The path starts with the name of the root element; quote it.\n"
    "\n"
    "Examples:\n"
    "  quxml query '/catalog/book' catalog.xml         all books in the catalog\n"
    "  quxml query '//title' catalog.xml               titles, wherever they are\n"
    "  quxml query \"/catalog/book[@id='2']\" catalog.xml\n"
    "  quxml query \"/catalog/book[title='Emma']\" catalog.xml\n"
    "  quxml query '/catalog/book[2]' catalog.xml      books whose attribute \"item\" is 2\n"
    "  quxml query '/catalog/book[position()=2]' catalog.xml\n"
    "  quxml query '/catalog/book[last()]' catalog.xml";

// Output is passed on when this much has gathered.
constexpr std::size_t block_size = 65536;

struct QueryOptions {
    std::string path;
    std::string file = standard_input;
    bool prefix = false;
};

quxml::NodeSet find(quxml::Node* root, const QueryOptions& options) {
    return options.prefix ? root->find_substring_match(options.path) : root->find_exact_match(options.path);
}

Failure bad_query(const QueryOptions& options, const std::string& reason) {
    return {ExitCode::bad_query, name_of(options.file) + ": bad query \"" + options.path + "\": " + reason};
}

// As `find`, with messages that make sense to somebody who does not see how the library reads its numbers.
quxml::NodeSet get_matches(quxml::Node* root, const QueryOptions& options) {
    try {
        return find(root, options);
    } catch (const std::invalid_argument& error) {
        const std::string reason = error.what();
        throw bad_query(options, reason == "stoi"
                                     ? "A number is missing or can not be read; <= and >= are not known"
                                     : reason);
    } catch (const std::out_of_range&) {
        throw bad_query(options, "A number is out of range");
    }
}

// Text is written compact: formatted text has a line feed behind it or not, depending on its siblings.
void write_match(const quxml::Node& match, std::string& out) {
    if (dynamic_cast<const quxml::TextNode*>(&match)) {
        match.write_to_string(out, -1);
        out += '\n';
    } else {
        match.write_to_string(out, 0);
    }
}

void write_matches(const std::vector<quxml::Node*>& matches) {
    std::string text;
    for (const quxml::Node* match : matches) {
        write_match(*match, text);
        if (text.size() >= block_size && !write_output(text))
            return;
    }
    write_output(text);
}

ExitCode query(const QueryOptions& options) {
    const std::shared_ptr<quxml::Document> document = read_document(options.file, false);
    quxml::Node* const root = document->get_root_node();
    const quxml::NodeSet matches = get_matches(root, options);
    escape_attributes(root);
    write_matches(in_document_order(root, matches));
    return matches.empty() ? ExitCode::no_match : ExitCode::done;
}

}  // namespace

void add_query(CLI::App& app, Action& action) {
    const auto options = std::make_shared<QueryOptions>();
    CLI::App* command = app.add_subcommand("query", "Write the nodes that a path selects");
    command->add_flag("--prefix", options->prefix,
                      "A name in the path also stands for all that begin with it");
    command->add_option("PATH", options->path, "What to look for")->required();
    command->add_option("FILE", options->file, "The document; standard input if it is - or missing");
    command->footer(help_on_query);
    command->callback([options, &action] { action = [options] { return query(*options); }; });
}

}  // namespace tool
