#include "source_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <numeric>
#include <regex>
#include <set>
#include <vector>

#include "quxml/quxml.h"

namespace quxml_test {

namespace {

using Names = std::set<std::string>;
using Numbers = std::vector<long long>;

// What the expression's first group finds in each code of a column.
Names find_in_column(const Table& table, std::size_t column, const std::string& expression) {
    Names names;
    for (const auto& row : table.rows)
        for (const std::string& code : row.at(column).code)
            for (const std::string& name : find_all(code, expression))
                names.insert(name);
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

// 12,640 as well as 12640; -1 for a cell without a number.
long long to_number(const Cell& cell) {
    std::string digits;
    std::copy_if(cell.text.begin(), cell.text.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    return digits.empty() ? -1 : std::stoll(digits);
}

Numbers numbers_of_row(const std::vector<Cell>& row, std::size_t first) {
    Numbers numbers;
    std::transform(row.begin() + static_cast<std::ptrdiff_t>(first), row.end(), std::back_inserter(numbers),
                   to_number);
    return numbers;
}

std::string public_part(const std::string& header) {
    const std::string text = read_file("include/quxml/" + header + ".h");
    const std::size_t hidden = text.find("\nprivate:");
    return text.substr(0, hidden) + text.substr(text.find("\n};", hidden));
}

const std::vector<std::string>& classes() {
    static const std::vector<std::string> names = {"Document", "Node",        "Element",       "Attribute",
                                                   "TextNode", "XPathHelper", "DomParserError"};
    return names;
}

// The operations that the headers declare, by their names; constructors and destructors bear those of their classes.
Names declared_operations() {
    static const std::string declaration =
        R"(\n(?:    |QUXML_EXPORT )(?:virtual |explicit )?(?:[A-Za-z:_<>, ]+[&*]? )?~?([A-Za-z_]+)\()";
    Names operations;
    for (const std::string& header : classes())
        for (const std::string& name : find_all(public_part(header), declaration))
            operations.insert(name);
    return operations;
}

// The operations that a table names: `get_name`, `Document(bool)`, `node->write_to_string(out, depth)`.
Names operations_of_table(const Table& table) {
    return find_in_column(table, 0, R"(^(?:[A-Za-z]+(?:::|->|\.))?~?([A-Za-z_]+)(?:\(|$))");
}

// | Operation | ...
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

// | Operation, all of them | Throws | ...
void check_exceptions(const Page& page, const Table& table, const std::string& subject) {
    check_operations(page, table, subject);
    expect_every_operation(table);
    const Names types = to_set(find_all(read_file("docs/errors.md"), "`((?:std|quxml)::[A-Za-z_]+)`"));
    expect_all_of(find_in_column(table, 1, "(.*::.*)"), types);
}

// | Operation, but for constructors all of them | Cost | Check, an operation that is measured
void check_costs(const Page& page, const Table& table, const std::string& subject) {
    check_operations(page, table, subject);
    Names named = operations_of_table(table);
    named.insert(classes().begin(), classes().end());
    expect_all_of(declared_operations(), named);

    const std::string sources = read_file("tests/robustness/measured_operations.cpp");
    EXPECT_EQ(codes_of_column(table, 2),
              to_set(find_all(sources, R"re(measure(?:_[a-z]+)?\(\s*"([a-z_]+)")re")));
    const Names quadratic = to_set(find_all(sources, R"re("([a-z_]+)", Growth::quadratic)re"));
    for (const auto& row : table.rows)
        for (const std::string& check : row[2].code)
            EXPECT_EQ(quadratic.count(check) == 1, row[1].text.find("quadratic") != std::string::npos)
                << check;
}

// | Class, the nodes all of them | ...
void check_classes(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    Names nodes = {"Document", "Node"};
    for (const std::string& header : classes())
        for (const std::string& name :
             find_all(public_part(header), R"(class QUXML_EXPORT ([A-Za-z]+)[a-z ]* : public Node)"))
            nodes.insert(name);
    EXPECT_EQ(codes_of_column(table, 0), nodes);
}

// What is in a folder, but for hidden files.
std::vector<std::filesystem::path> entries_of(const std::string& folder) {
    std::vector<std::filesystem::path> entries;
    for (const auto& entry : std::filesystem::directory_iterator(top + folder))
        if (entry.path().filename().string()[0] != '.')
            entries.push_back(entry.path());
    return entries;
}

// | File of the folder or folder in it, by its path; a header stands for its source as well |
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

// | Folder; of those at the top each is named, or one below it | ...
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

// | [Recipe](#its-heading) | Program, of which the page has a piece |
void check_programs(const Page& page, const Table& table, const std::string& /*subject*/) {
    Names programs;
    for (const Block& block : page.blocks)
        programs.insert(block.marker);
    EXPECT_EQ(codes_of_column(table, 1), programs);
    const std::string count = std::to_string(table.rows.size()) + " recipes";
    EXPECT_NE(read_file("docs/guide.md").find(count), std::string::npos) << count;
    for (const auto& row : table.rows) {
        const std::string title = find_all(row[0].text, R"(^\[(.*)\]\(#)").at(0);
        EXPECT_EQ(std::count(page.prose.begin(), page.prose.end(), "## " + title), 1) << title;
    }
}

// | [Page](file.md) | ...; the tables of the page together name every other page
void check_pages(const Page& page, const Table& table, const std::string& folder) {
    static const std::string link = R"(\]\(([a-z]+\.md)\))";
    for (const auto& row : table.rows)
        EXPECT_FALSE(find_all(row[0].text, link).empty()) << row[0].text;
    std::string all;
    for (const Table& each : page.tables)
        for (const auto& row : each.rows)
            all += row[0].text;
    Names named = to_set(find_all(all, link));
    named.insert(std::filesystem::path(page.name).filename().string());
    for (const auto& entry : entries_of(folder)) {
        if (entry.extension() == ".md") {
            EXPECT_EQ(named.count(entry.filename().string()), 1U) << entry.filename();
        }
    }
}

// The codes in the first column of a table that is run.
Names worked(const Page& page, const std::string& marker) {
    for (const Table& table : page.tables)
        if (table.marker == marker)
            return codes_of_column(table, 0);
    return {};
}

std::string replace_all(const std::string& text, const std::string& expression, const std::string& by) {
    return std::regex_replace(text, std::regex(expression), by);
}

// | Form | ...: for each form there is a worked query like it, or one that ends like it
void check_forms(const Page& page, const Table& table, const std::string& subject) {
    static const std::string name = "[A-Za-z]+";
    const Names paths = worked(page, subject);
    for (const std::string& form : codes_of_column(table, 0)) {
        const std::string end = replace_all(form, name, "x");
        EXPECT_TRUE(std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
            const std::string shape = replace_all(path, name, "x");
            return shape.size() >= end.size() && shape.substr(shape.size() - end.size()) == end;
        })) << form;
    }
}

// | Predicate with k for a number | ...: each is among those that are run
void check_predicate_forms(const Page& page, const Table& table, const std::string& subject) {
    Names shapes;
    for (const std::string& predicate : worked(page, subject))
        shapes.insert(replace_all(predicate, "[0-9]+", "k"));
    for (const std::string& form : codes_of_column(table, 0))
        EXPECT_EQ(shapes.count('[' + form + ']'), 1U) << form;
}

// | How to come by the library | what a project says, as the tests in tests/consumers do or a block of the page |
void check_routes(const Page& page, const Table& table, const std::string& /*subject*/) {
    std::string known = replace_all(read_file("tests/consumers/consumer/CMakeLists.txt"), R"(\$\{sources\})",
                                    "/path/to/quxml");
    for (const Block& block : page.blocks)
        if (block.language == "cmake")
            known += block.text;
    for (const std::string& code : find_in_column(table, 1, R"(^([a-zA-Z_]+\(.*\))$)"))
        EXPECT_NE(known.find(code), std::string::npos) << code;
}

// | Command of gdb | ...
void check_commands_of(const Page& /*page*/, const Table& table, const std::string& script) {
    EXPECT_EQ(find_in_column(table, 0, "^([a-z-]+)"),
              to_set(find_all(read_file(script), R"re("(quxml-[a-z]+)")re")));
}

// | ... | ... | `./dev VERB` and, behind -R, tests that there are |
void check_verbs(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    std::string tests;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top + "tests"))
        if (entry.path().extension() == ".cpp")
            tests += read_file(std::filesystem::relative(entry.path(), top).string());
    for (const auto& row : table.rows) {
        EXPECT_FALSE(row[2].code.empty()) << row[2].text;
        for (const std::string& verb : find_all(row[2].text, R"(`\./dev ([a-z]+))"))
            EXPECT_TRUE(is_file("scripts/" + verb + ".sh")) << verb;
        for (const std::string& name : find_all(row[2].text, "-R ([A-Za-z]+)"))
            EXPECT_TRUE(tests.find(name) != std::string::npos ||
                        std::filesystem::is_directory(top + "tests/" + name))
                << name;
    }
}

Names fuzz_targets() {
    Names targets;
    for (const auto& entry : entries_of("fuzz"))
        for (const std::string& name : find_all(entry.filename().string(), R"(^fuzz_([a-z_]+)\.cpp$)"))
            targets.insert(name);
    return targets;
}

// | Target | executions |
void check_runs(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    EXPECT_EQ(codes_of_column(table, 0), fuzz_targets());
}

// | Target | input and its length | ...
void check_targets(const Page& page, const Table& table, const std::string& subject) {
    check_runs(page, table, subject);
    for (const auto& row : table.rows) {
        const std::string source = read_file("fuzz/fuzz_" + row[0].code.at(0) + ".cpp");
        EXPECT_EQ(find_all(source, "longest_input = ([0-9]+);").at(0),
                  replace_all(find_all(row[1].text, "at most ([0-9,]+)").at(0), ",", ""))
            << row[0].text;
    }
}

Names architectures() {
    Names names;
    for (const auto& entry : entries_of("cmake/toolchains"))
        if (entry.stem() != "debian")
            names.insert(entry.stem().string());
    return names;
}

// | Architecture | machine | tests | passed | failed | skipped |
void check_architectures(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    EXPECT_EQ(codes_of_column(table, 0), architectures());
    for (const auto& row : table.rows) {
        const Numbers counts = numbers_of_row(row, 2);
        EXPECT_EQ(counts.at(0), counts.at(1) + counts.at(3)) << row[0].text;
        EXPECT_EQ(counts.at(2), 0) << row[0].text;
    }
}

// | Architecture | flags | ...; tests/size measures the lines of the machine.
// The shared library shall not take more than 64 KiB of a small device.
void check_sizes(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    constexpr std::size_t limit = 65536;
    Names lines;
    for (const auto& row : table.rows) {
        const std::string line = row[0].code.at(0) + ' ' + row[1].code.at(0);
        lines.insert(line);
        if (line == "armhf -Os") {
            EXPECT_LE(numbers_of_row(row, 2).at(0), limit);
        }
    }
    Names expected = {"amd64 -Os", "amd64 -O2"};
    for (const std::string& name : architectures()) {
        expected.insert(name + " -Os");
        expected.insert(name + " -O2");
    }
    EXPECT_EQ(lines, expected);
}

// | Category | files | accepted | refused | read back |, and in the last row their sums
void check_counts(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    Numbers sums(4);
    for (const auto& row : table.rows) {
        const Numbers counts = numbers_of_row(row, 1);
        EXPECT_EQ(counts.at(0), counts.at(1) + counts.at(2)) << row[0].text;
        EXPECT_LE(counts.at(3), counts.at(1)) << row[0].text;
        if (&row == &table.rows.back()) {
            EXPECT_EQ(counts, sums);
        }
        std::transform(sums.begin(), sums.end(), counts.begin(), sums.begin(), std::plus<>());
    }
}

// | Work | in all | and the parts of it |
void check_parts(const Page& /*page*/, const Table& table, const std::string& /*subject*/) {
    for (const auto& row : table.rows) {
        Numbers parts = numbers_of_row(row, 2);
        parts.erase(std::remove(parts.begin(), parts.end(), -1), parts.end());
        EXPECT_EQ(to_number(row[1]), std::accumulate(parts.begin(), parts.end(), 0LL)) << row[0].text;
    }
}

// The column of this machine, of | ... | 32 bits | 64 bits |.
constexpr std::size_t own_column = sizeof(void*) == 4 ? 1 : 2;

// glibc's block for a size: its length stands in front of it, and it is a multiple of two pointers.
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

// | Node | bytes of the node and of the entry in its parent's list | ... | blocks |
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

long long count_attributes(const quxml::NodeSet& nodes) {
    return std::accumulate(nodes.begin(), nodes.end(), 0LL, [](long long count, const quxml::Node* node) {
        const auto* element = dynamic_cast<const quxml::Element*>(node);
        return element == nullptr ? count : count + static_cast<long long>(element->get_attributes().size());
    });
}

// | 55 elements | bytes | bytes |, the same for attributes and texts, and the sums of the columns; then what was measured
void check_reckoning(const Page& page, const Table& table, const std::string& file) {
    const auto document = quxml::from_string(read_file(file), false);
    const quxml::NodeSet nodes = document->get_root_node()->find_exact_match("//*");
    const auto texts = std::count_if(nodes.begin(), nodes.end(), [](const quxml::Node* node) {
        return dynamic_cast<const quxml::TextNode*>(node) != nullptr;
    });
    const Numbers counts = {static_cast<long long>(nodes.size()) - texts, count_attributes(nodes), texts};
    const auto one = std::find_if(page.tables.begin(), page.tables.end(),
                                  [](const Table& other) { return other.marker == "node memory"; });
    ASSERT_NE(one, page.tables.end());
    for (std::size_t column = 1; column < 3; ++column) {
        long long sum = 0;
        for (std::size_t kind = 0; kind < counts.size(); ++kind) {
            const long long bytes = to_number(table.rows.at(kind).at(column));
            EXPECT_EQ(to_number(table.rows[kind][0]), counts[kind]);
            EXPECT_EQ(bytes, counts[kind] * to_number(one->rows.at(kind).at(column)));
            sum += bytes;
        }
        EXPECT_EQ(to_number(table.rows.at(3).at(column)), sum);
        EXPECT_GE(to_number(table.rows.at(4).at(column)), sum);
    }
}

}  // namespace

const std::map<std::string, SourceCheck>& source_checks() {
    static const std::map<std::string, SourceCheck> checks = {
        {"operations", check_operations}, {"exceptions", check_exceptions},
        {"costs", check_costs},           {"classes", check_classes},
        {"files", check_files},           {"folders", check_folders},
        {"programs", check_programs},     {"pages", check_pages},
        {"forms", check_forms},           {"forms of predicates", check_predicate_forms},
        {"routes", check_routes},         {"commands", check_commands_of},
        {"verbs", check_verbs},           {"fuzz targets", check_targets},
        {"fuzz runs", check_runs},        {"architectures", check_architectures},
        {"sizes", check_sizes},           {"counts", check_counts},
        {"parts", check_parts},           {"node memory", check_node_memory},
        {"reckoning", check_reckoning},
    };
    return checks;
}

}  // namespace quxml_test
