// SPDX-License-Identifier: MIT
#include "source_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <set>
#include <vector>

#include "quxml/quxml.h"

namespace quxml_test {

namespace {

using Names = std::set<std::string>;

/// What the expression's first group finds in each code of a column.
Names find_in_column(const Table& table, std::size_t column, const std::string& expression) {
    Names names;
    for (const auto& row : table.rows) {
        for (const std::string& code : row.at(column).code) {
            for (const std::string& name : find_all(code, expression))
                names.insert(name);
        }
    }
    return names;
}

Names codes_of_column(const Table& table, std::size_t column) {
    return find_in_column(table, column, "(.+)");
}

Names to_set(const std::vector<std::string>& names) {
    return {names.begin(), names.end()};
}

void expect_all_of(const Names& some, const Names& all) {
    for (const std::string& name : some)
        EXPECT_EQ(all.count(name), 1U) << name;
}

/// 12,640 as well as 12640; -1 for a cell without a number.
long long to_number(const Cell& cell) {
    std::string digits;
    std::copy_if(cell.text.begin(), cell.text.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    return digits.empty() ? -1 : std::stoll(digits);
}

std::string public_part(const std::string& header) {
    const std::string text = read_repository_file("include/quxml/" + header + ".h");
    const std::size_t hidden = text.find("\nprivate:");
    return text.substr(0, hidden) + text.substr(text.find("\n};", hidden));
}

const std::vector<std::string>& classes() {
    static const std::vector<std::string> names = {"Document", "Node",        "Element",       "Attribute",
                                                   "TextNode", "XPathHelper", "DomParserError"};
    return names;
}

/// The operations that the headers declare, by their names; constructors and destructors have those of their classes.
Names declared_operations() {
    static const std::string declaration =
        R"(\n(?:    |QUXML_EXPORT )(?:virtual |explicit )?(?:[A-Za-z:_<>, ]+[&*]? )?~?([A-Za-z_]+)\()";
    Names operations;
    for (const std::string& header : classes()) {
        for (const std::string& name : find_all(public_part(header), declaration))
            operations.insert(name);
    }
    return operations;
}

/// The operations that a table names: `get_name`, `Document(bool)`, `node->write_to_string(out, depth)`.
Names operations_of_table(const Table& table) {
    return find_in_column(table, 0, R"(^(?:[A-Za-z]+(?:::|->|\.))?~?([A-Za-z_]+)(?:\(|$))");
}

/// | Operation | ...
void check_operations(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    const Names declared = declared_operations();
    const Names named = operations_of_table(table);
    EXPECT_FALSE(named.empty());
    expect_all_of(named, declared);
}

void expect_every_operation(const Table& table) {
    const Names declared = declared_operations();
    ASSERT_GT(declared.size(), 60U);
    expect_all_of(declared, operations_of_table(table));
}

/// | Operation, all of them | Throws | ...
void check_exceptions(const Page& page, const Table& table, const std::string& subject) {
    check_operations(page, table, subject);
    expect_every_operation(table);
    const Names types =
        to_set(find_all(read_repository_file("docs/errors.md"), "`((?:std|quxml)::[A-Za-z_]+)`"));
    expect_all_of(find_in_column(table, 1, "(.*::.*)"), types);
}

/// | Operation, all of them except constructors | Cost | Check, an operation that is measured
void check_costs(const Page& page, const Table& table, const std::string& subject) {
    check_operations(page, table, subject);
    Names named = operations_of_table(table);
    named.insert(classes().begin(), classes().end());
    expect_all_of(declared_operations(), named);

    const std::string sources = read_repository_file("tests/robustness/measured_operations.cpp");
    EXPECT_EQ(codes_of_column(table, 2),
              to_set(find_all(sources, R"re(measure(?:_[a-z]+)?\(\s*"([a-z_]+)")re")));
    const Names quadratic = to_set(find_all(sources, R"re("([a-z_]+)", Growth::quadratic)re"));
    for (const auto& row : table.rows) {
        for (const std::string& check : row[2].code)
            EXPECT_EQ(quadratic.count(check) == 1, row[1].text.find("quadratic") != std::string::npos)
                << check;
    }
}

/// | Class, the nodes all of them | ...
void check_classes(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    Names nodes = {"Document", "Node"};
    for (const std::string& header : classes()) {
        for (const std::string& name :
             find_all(public_part(header), R"(class QUXML_EXPORT ([A-Za-z]+)[a-z ]* : public Node)"))
            nodes.insert(name);
    }
    EXPECT_EQ(codes_of_column(table, 0), nodes);
}

/// What is in a folder, except hidden files.
std::vector<std::filesystem::path> entries_of(const std::string& folder) {
    std::vector<std::filesystem::path> entries;
    for (const auto& entry : std::filesystem::directory_iterator(top + folder)) {
        if (entry.path().filename().string()[0] != '.')
            entries.push_back(entry.path());
    }
    return entries;
}

/// | File of the folder or folder in it, by its path; a header stands for its source as well |
void check_files(const Page& /*page*/, const Table& table, const std::string& folder) {
    Names stems;
    for (const std::string& file : codes_of_column(table, 0)) {
        EXPECT_TRUE(std::filesystem::exists(top + file)) << file;
        EXPECT_EQ(std::filesystem::path(file).parent_path().string(), folder);
        stems.insert(std::filesystem::path(file).stem().string());
    }
    for (const auto& entry : entries_of(folder))
        EXPECT_EQ(stems.count(entry.stem().string()), 1U) << entry.filename();
}

bool is_of_a_build(const std::filesystem::path& folder) {
    return folder.filename() == "build" || std::filesystem::exists(folder / "CMakeCache.txt");
}

/// | Folder; of those at the top each is named, or one below it | ...
void check_folders(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    for (const std::string& folder : codes_of_column(table, 0))
        EXPECT_TRUE(std::filesystem::is_directory(top + folder)) << folder;
    const Names named = find_in_column(table, 0, "^([a-z]+)/");
    for (const auto& entry : entries_of("")) {
        if (std::filesystem::is_directory(entry) && !is_of_a_build(entry)) {
            EXPECT_EQ(named.count(entry.filename().string()), 1U) << entry.filename();
        }
    }
}

/// | [Page](file.md) | ...; the tables of the page together name every other page
void check_pages(const Page& page, const Table& table, const std::string& folder) {
    static const std::string link = R"(\]\(([a-z]+\.md)\))";
    for (const auto& row : table.rows)
        EXPECT_FALSE(find_all(row[0].text, link).empty()) << row[0].text;
    std::string all;
    for (const Table& each : page.tables) {
        for (const auto& row : each.rows)
            all += row[0].text;
    }
    Names named = to_set(find_all(all, link));
    named.insert(std::filesystem::path(page.name).filename().string());
    for (const auto& entry : entries_of(folder)) {
        if (entry.extension() == ".md") {
            EXPECT_EQ(named.count(entry.filename().string()), 1U) << entry.filename();
        }
    }
}

/// | Command of gdb | ...
void check_commands_of(const Page& /*page*/, const Table& table, const std::string& script) {
    EXPECT_EQ(find_in_column(table, 0, "^([a-z-]+)"),
              to_set(find_all(read_repository_file(script), R"re("(quxml-[a-z]+)")re")));
}

Names fuzz_targets() {
    Names targets;
    for (const auto& entry : entries_of("fuzz")) {
        for (const std::string& name : find_all(entry.filename().string(), R"(^fuzz_([a-z_]+)\.cpp$)"))
            targets.insert(name);
    }
    return targets;
}

/// | Target | executions |
void check_runs(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    EXPECT_EQ(codes_of_column(table, 0), fuzz_targets());
}

/// | Target | input and its length | ...
void check_targets(const Page& page, const Table& table, const std::string& subject) {
    check_runs(page, table, subject);
    for (const auto& row : table.rows) {
        const std::string source = read_repository_file("fuzz/fuzz_" + row[0].code.at(0) + ".cpp");
        const Cell length{find_all(row[1].text, "at most ([0-9,]+)").at(0), {}};
        EXPECT_EQ(to_number(length), std::stoll(find_all(source, "longest_input = ([0-9]+);").at(0)))
            << row[0].text;
    }
}

/// | Architecture | flags | bytes of the shared library, of which a small device has few, and its payload | ...
void check_sizes(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    constexpr long long limit = 51000;
    const auto small = std::find_if(table.rows.begin(), table.rows.end(), [](const std::vector<Cell>& row) {
        return row[0].code.at(0) == "armhf" && row[1].code.at(0) == "-Os";
    });
    ASSERT_NE(small, table.rows.end());
    EXPECT_LE(std::stoll(find_all(small->at(2).text, "^([0-9]+) ").at(0)), limit);
}

/// The column of this machine, of | ... | 32 bits | 64 bits |.
constexpr std::size_t own_column = sizeof(void*) == 4 ? 1 : 2;

/// glibc's block for a size: its length stands in front of it, and it is a multiple of two pointers.
long long block_for(std::size_t size) {
    constexpr std::size_t unit = 2 * sizeof(void*);
    const std::size_t units = (size + sizeof(void*) + unit - 1) / unit;
    return static_cast<long long>(units) * static_cast<long long>(unit);
}

#ifdef _GLIBCXX_DEBUG
constexpr bool has_ordinary_lists = false;
#else
constexpr bool has_ordinary_lists = true;
#endif

/// | Node | bytes of the node and of the entry in its parent's list | ... | blocks |
void check_node_memory(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    const std::map<std::string, std::size_t> sizes = {{"element", sizeof(quxml::Element)},
                                                      {"attribute", sizeof(quxml::Attribute)},
                                                      {"text", sizeof(quxml::TextNode)}};
    EXPECT_EQ(table.rows.size(), sizes.size());
    if (!has_ordinary_lists)  // those that check themselves are larger
        return;
    for (const auto& row : table.rows)
        EXPECT_EQ(to_number(row.at(own_column)),
                  block_for(sizes.at(row[0].text)) + block_for(3 * sizeof(void*)))
            << row[0].text;
}

}  // namespace

const std::map<std::string, SourceCheck>& source_checks() {
    static const std::map<std::string, SourceCheck> checks = {
        {"operations", check_operations}, {"exceptions", check_exceptions},
        {"costs", check_costs},           {"classes", check_classes},
        {"files", check_files},           {"folders", check_folders},
        {"pages", check_pages},           {"commands", check_commands_of},
        {"fuzz targets", check_targets},  {"fuzz runs", check_runs},
        {"sizes", check_sizes},           {"node memory", check_node_memory},
    };
    return checks;
}

}  // namespace quxml_test
