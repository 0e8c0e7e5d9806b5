// SPDX-License-Identifier: MIT

// Checks the tables of the documentation, each as the comment above it says. Most are run, for example that of
// `<!-- queries on examples/catalog.xml -->`: each row says what to do and what comes of it. Others are compared with the
// sources (`source_tables.h`). A table without a comment has to be named here, with the reason.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "markdown.h"
#include "quxml/quxml.h"
#include "source_tables.h"

namespace {

using quxml_test::Cell;
using quxml_test::Page;
using quxml_test::Table;

using Row = std::vector<Cell>;
using Names = std::vector<std::string>;

std::shared_ptr<quxml::Document> read(const std::string& file) {
    return quxml::from_string(quxml_test::read_repository_file(file), false);
}

std::string write(const quxml::Node& node) {
    std::string out;
    node.write_to_string(out, -1);
    return out;
}

/// What a table calls a node: an element with an id by that, one with elements below it by its opening tag, any other node by
/// its text.
std::string name_of(const quxml::Node& node) {
    const auto* element = dynamic_cast<const quxml::Element*>(&node);
    if (element == nullptr)
        return write(node);
    if (element->get_attribute("id") != nullptr)
        return element->get_attribute_value("id");
    const quxml::NodeList children = element->get_children();
    if (std::all_of(children.begin(), children.end(), [](const quxml::Node* child) {
            return dynamic_cast<const quxml::TextNode*>(child) != nullptr;
        }))
        return write(node);
    std::string tag;
    element->write_opening_tag(tag, -1);
    return tag;
}

void add_names_in_document_order(quxml::Node& node, const quxml::NodeSet& found, Names& names) {
    if (found.count(&node) == 1)
        names.push_back(name_of(node));
    for (quxml::Node* child : node.get_children())
        add_names_in_document_order(*child, found, names);
}

std::string type_of(const std::exception& error) {
    if (typeid(error) == typeid(std::invalid_argument))
        return "std::invalid_argument";
    if (typeid(error) == typeid(std::out_of_range))
        return "std::out_of_range";
    if (typeid(error) == typeid(std::bad_function_call))
        return "std::bad_function_call";
    return typeid(error) == typeid(quxml::DomParserError) ? "quxml::DomParserError" : typeid(error).name();
}

using Search = quxml::NodeSet (quxml::Node::*)(const std::string&);

/// The names of the nodes that a path selects, or the type and the message of an exception.
Names select(quxml::Node& root, const std::string& path, Search search) {
    try {
        Names names;
        add_names_in_document_order(root, (root.*search)(path), names);
        return names;
    } catch (const std::exception& error) {
        return {type_of(error), error.what()};
    }
}

void expect_words_for_nothing(const Cell& cell) {
    if (cell.code.empty()) {
        EXPECT_EQ(cell.text.rfind("nothing", 0), 0U) << cell.text;
    }
}

/// | Path | Selects | ...
void check_queries(const Table& table, const std::string& file, Search search) {
    const auto document = read(file);
    for (const Row& row : table.rows) {
        ASSERT_FALSE(row[0].code.empty());
        for (const std::string& path : row[0].code)
            EXPECT_EQ(select(*document->get_root_node(), path, search), row[1].code) << path;
        expect_words_for_nothing(row[1]);
    }
}

/// | Predicate | what it selects after catalog/book | and after //book |
void check_predicates(const Table& table, const std::string& file) {
    const auto document = read(file);
    quxml::Node& root = *document->get_root_node();
    for (const Row& row : table.rows) {
        const std::string predicate = row[0].code.at(0);
        EXPECT_EQ(select(root, "catalog/book" + predicate, &quxml::Node::find_exact_match), row[1].code)
            << predicate;
        EXPECT_EQ(select(root, "//book" + predicate, &quxml::Node::find_exact_match), row[2].code)
            << predicate;
        expect_words_for_nothing(row[1]);
        expect_words_for_nothing(row[2]);
    }
}

std::string with_line_feeds(std::string text) {
    for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos;)
        text.replace(at, 2, "\n");
    return text;
}

/// | Text | Tree, written compactly |
void check_reading(const Table& table) {
    for (const Row& row : table.rows) {
        const auto document = quxml::from_string(with_line_feeds(row[0].code.at(0)), false);
        EXPECT_EQ(write(*document->get_root_node()), with_line_feeds(row[1].code.at(0))) << row[0].text;
    }
}

/// | Text | Tree after sorting, or after reading it sorted |
void check_sorting(const Table& table, bool keep_sorted) {
    for (const Row& row : table.rows) {
        const auto document = quxml::from_string(row[0].code.at(0), keep_sorted);
        if (!keep_sorted)
            document->get_root_node()->sort_children();
        EXPECT_EQ(write(*document->get_root_node()), row[1].code.at(0)) << row[0].text;
    }
}

/// | Text | Message |
void check_refused(const Table& table) {
    for (const Row& row : table.rows) {
        try {
            quxml::from_string(with_line_feeds(row[0].code.at(0)), false);
            ADD_FAILURE() << row[0].text;
        } catch (const quxml::DomParserError& error) {
            EXPECT_EQ(error.what(), row[1].code.at(0));
        }
    }
}

/// | Node, as a path | Argument | Result | ...
void check_subpaths(const Table& table, const std::string& file) {
    const auto document = read(file);
    for (const Row& row : table.rows) {
        const quxml::NodeSet found = document->get_root_node()->find_exact_match(row[0].code.at(0));
        ASSERT_EQ(found.size(), 1U) << row[0].text;
        const std::string result = (*found.begin())->get_subpath_for(row[1].code.at(0));
        EXPECT_EQ(result, row[2].code.empty() ? "" : row[2].code[0]) << row[1].text;
    }
}

/// What is in a text before or after a piece of it, in words.
std::string name_gap(const std::string& gap) {
    if (gap.empty())
        return "nothing";
    return gap == "\n" ? "a line end" : std::to_string(gap.size()) + " blanks";
}

std::string get_blanks_at_end(std::string text) {
    std::string blanks;
    for (; !text.empty() && text.back() == ' '; text.pop_back())
        blanks += ' ';
    return blanks;
}

/// | Piece of the text | Before it | After it | ...
void check_white_space(const Table& table, const std::string& file) {
    const std::string text = quxml_test::read_repository_file(file);
    for (const Row& row : table.rows) {
        const std::string piece = row[0].code.at(0);
        const std::size_t at = text.find(piece);
        ASSERT_NE(at, std::string::npos) << piece;
        EXPECT_EQ(row[1].text, name_gap(get_blanks_at_end(text.substr(0, at)))) << piece;
        EXPECT_EQ(row[2].text, name_gap(text[at + piece.size()] == '\n' ? "\n" : "")) << piece;
    }
}

/// What leads to each row of docs/errors.md; null for what a test elsewhere brings about, since it takes too much memory.
const std::vector<std::function<void(quxml::Element&)>> failures = {
    [](quxml::Element&) { quxml::from_string("", false); },
    nullptr,
    [](quxml::Element&) { quxml::from_string("<a></b>", false); },
    [](quxml::Element& empty) { empty.remove_child(nullptr); },
    [](quxml::Element& empty) { empty.remove_child(&empty); },
    [](quxml::Element& empty) { empty.find_exact_match("a/b[@c=d=e]"); },
    [](quxml::Element& empty) { empty.find_exact_match("a/b[c=d=e]"); },
    [](quxml::Element& empty) { empty.find_exact_match("a/b[position()<=2]"); },
    [](quxml::Element& empty) { empty.find_exact_match("a/b[99999999999]"); },
    [](quxml::Element& empty) {
        empty.add_child("b", "99999999999");
        empty.add_child("b", "1");
        empty.sort_children();
    },
    [](quxml::Element& empty) { quxml::XPathHelper(quxml::StringComparator()).find(&empty, "a"); },
    nullptr,
};

/// | Message | Type | ...
void check_errors(const Table& table) {
    ASSERT_EQ(table.rows.size(), failures.size());
    for (std::size_t i = 0; i < failures.size(); ++i) {
        if (!failures[i])
            continue;
        quxml::Document document(false);
        try {
            failures[i](*document.create_root_node("a"));
            ADD_FAILURE() << "nothing is thrown: " << table.rows[i][0].text;
        } catch (const std::exception& error) {
            EXPECT_EQ(error.what(), table.rows[i][0].code.at(0));
            EXPECT_EQ(type_of(error), table.rows[i][1].code.at(0));
        }
    }
}

/// | What | code of one program | code of another | ...; `files` are their names
void check_lines(const Table& table, const std::string& files) {
    const std::vector<std::string> programs = quxml_test::find_all(files, "([^ ,]+)");
    for (const Row& row : table.rows) {
        ASSERT_EQ(row.size(), programs.size() + 1);
        for (std::size_t i = 0; i < programs.size(); ++i) {
            EXPECT_FALSE(row[i + 1].code.empty());
            for (const std::string& line : row[i + 1].code)
                EXPECT_NE(quxml_test::read_repository_file(programs[i]).find(line), std::string::npos)
                    << line;
        }
    }
}

std::string word(const std::string& marker, const std::string& expression) {
    const std::vector<std::string> found = quxml_test::find_all(marker, expression);
    return found.empty() ? "" : found[0];
}

/// Runs a table; false if its comment does not say how.
bool run(const Table& table) {
    const std::string file = word(table.marker, " on (.*)");
    const std::string kind = word(table.marker, "^(.*?)(?: (?:on|of) .*)?$");
    const std::map<std::string, std::function<void()>> checks = {
        {"queries", [&] { check_queries(table, file, &quxml::Node::find_exact_match); }},
        {"prefix queries", [&] { check_queries(table, file, &quxml::Node::find_substring_match); }},
        {"predicates", [&] { check_predicates(table, file); }},
        {"reading", [&] { check_reading(table); }},
        {"sorting", [&] { check_sorting(table, false); }},
        {"reading sorted", [&] { check_sorting(table, true); }},
        {"refused", [&] { check_refused(table); }},
        {"sub-paths", [&] { check_subpaths(table, file); }},
        {"white space", [&] { check_white_space(table, file); }},
        {"errors", [&] { check_errors(table); }},
        {"lines", [&] { check_lines(table, word(table.marker, " of (.*)")); }},
    };
    const auto found = checks.find(kind);
    if (found == checks.end())
        return false;
    found->second();
    return true;
}

/// Compares a table with the sources; false if its comment does not say how.
bool compare(const Page& page, const Table& table) {
    const auto found = quxml_test::source_checks().find(word(table.marker, "^(.*?)(?:: .*)?$"));
    if (found == quxml_test::source_checks().end())
        return false;
    found->second(page, table, word(table.marker, ": (.*)"));
    return true;
}

/// A table that no test can check.
struct Exemption {
    std::string page;
    std::string head;
    std::string reason;
    std::size_t tables = 1;  // how many there are
};

/// How many the benchmarks write tables for.
constexpr std::size_t architectures = 2;

const std::vector<Exemption> exemptions = {
    {"README.md", "| The library is |", "tests/consumers builds a project in each of these ways"},
    {"docs/architectures.md", "| Architecture | Machine |", "a description"},
    {"docs/cookbook.md", "| Recipe |", "its links are followed, its programs run"},
    {"docs/devices.md", "| Part | 32-bit ARM |",
     "what the table above it comes to for a file, and what was measured"},
    {"docs/extras.md", "| Header |", "what the headers say of themselves"},
    {"docs/extras.md", "| Type | What is read |", "tests/extras reads each of these"},
    {"docs/extras.md", "| pugixml |", "tests/extras runs the last column"},
    {"docs/paths.md", "| | Is |", "a grammar; what it allows is run by the tables below it"},
    {"docs/paths.md", "| Form |", "forms of the queries that are run below"},
    {"docs/paths.md", "| Predicate among children |", "forms of the predicates that are run above"},
    {"docs/performance.md", "| Work | In all |", "counted by valgrind"},
    {"docs/performance.md", "| Work | beside | ratio |", "measured and written by `./dev bench --write`",
     architectures},
    {"docs/performance.md", "| Input, beside libxml2 |", "measured and written by `./dev bench --write`",
     architectures},
    {"docs/performance.md", "| Path | ms |", "measured and written by `./dev bench --write`", architectures},
    {"docs/performance.md", "| Work | of input | millions |", "counted by `./dev bench --arch armhf`"},
    {"docs/performance.md", "| Heap", "measured and written by `./dev bench --write`", architectures},
    {"docs/reading.md", "| Of libxml2 |", "says itself which test checks each row"},
    {"docs/reliability.md", "| Promise |", "says itself what checks each row"},
    {"docs/sizes.md", "| Architecture | `libtinyxml2.so.9` |", "sizes of files in Debian's packages"},
    {"docs/sizes.md", "| File |", "measured and written by `./dev playground --write`"},
    {"docs/sizes.md", "| | Code |", "measured and written by `./dev size --write`"},
    {"docs/sizes.md", "| Function |", "measured and written by `./dev size --write`"},
    {"docs/security.md", "| What is defended |", "its rows name the tests"},
    {"docs/security.md", "| What | Limit |", "tests/robustness and tests/reader go up to these limits"},
};

bool is_exempt(const Exemption& exemption, const Page& page, const Table& table) {
    return page.name == exemption.page && table.head.rfind(exemption.head, 0) == 0;
}

bool is_exempt(const Page& page, const Table& table) {
    return std::any_of(exemptions.begin(), exemptions.end(),
                       [&](const Exemption& exemption) { return is_exempt(exemption, page, table); });
}

TEST(Tables, say_what_the_library_does_and_what_the_sources_are) {
    std::size_t run_rows = 0;
    for (const Page& page : quxml_test::read_pages()) {
        for (const Table& table : page.tables) {
            SCOPED_TRACE(page.name + ": " + table.head);
            if (run(table))
                run_rows += table.rows.size();
            else
                EXPECT_NE(compare(page, table), is_exempt(page, table))
                    << "nobody knows how to check this table";
        }
    }
    EXPECT_GE(run_rows, 140U);
}

TEST(Tables, are_exempt_from_checks_only_while_they_are_there) {
    const std::vector<Page> pages = quxml_test::read_pages();
    for (const Exemption& exemption : exemptions) {
        std::size_t found = 0;
        for (const Page& page : pages)
            found += static_cast<std::size_t>(
                std::count_if(page.tables.begin(), page.tables.end(),
                              [&](const Table& table) { return is_exempt(exemption, page, table); }));
        EXPECT_EQ(found, exemption.tables) << exemption.page << ": " << exemption.head;
        EXPECT_NE(exemption.reason, "");
    }
}

}  // namespace
