// SPDX-License-Identifier: MIT

// Runs each line of the table for those who come from other libraries, in docs/extras.md.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "quxml/extras/extras.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Attribute;
using quxml::Document;
using quxml::Element;

/// The last column of the table after the mark "rivals", without the marks of code.
std::vector<std::string> read_table() {
    std::ifstream page(QUXML_EXTRAS_PAGE);
    std::vector<std::string> lines;
    bool is_in_table = false;
    for (std::string line; std::getline(page, line);) {
        is_in_table = is_in_table || line == "<!-- rivals -->";
        const std::size_t cell = line.rfind("| `");
        if (is_in_table && cell != std::string::npos && line.size() > cell + 6)
            lines.push_back(line.substr(cell + 3, line.size() - cell - 6));
    }
    return lines;
}

std::string without_blanks(const std::string& text) {
    std::string dense;
    for (const char c : text)
        dense += c == ' ' ? "" : std::string(1, c);
    return dense;
}

std::set<std::string> run_lines;

/// Runs a line and notes it.
#define QUXML_RUN(...)                              \
    run_lines.insert(without_blanks(#__VA_ARGS__)); \
    __VA_ARGS__

// clang-format off
TEST(Rivals, each_line_of_the_table_runs) {
    const std::string file = ::testing::TempDir() + "quxml-rivals-" + std::to_string(::getpid());
    std::ofstream(file) << "<users><user id='7' port='81' on='yes' name='emma'><title>Dr</title><port>82</port></user>"
                           "<user id='8'/></users>";
    std::shared_ptr<Document> document;
    QUXML_RUN(document = read_file(file);)
    Element& root = *document->get_root_node();
    Element& node = *find_child(root, "user");
    Element* other = &*std::next(elements(root).begin());
    const std::string id = "8";
    std::string visited;
    const auto visit = [&visited](const quxml::Node& one) { visited += name_of(one) + ' '; };
    QUXML_RUN(int port = get<int>(node, "port", 80);)
    QUXML_RUN(bool on = get<bool>(node, "on", false);)
    QUXML_RUN(std::string name = get(node, "name", "x");)
    QUXML_RUN(std::string title = text_of(node, "title", "none");)
    QUXML_RUN(int number = get_text<int>(node, "port", 80);)
    QUXML_RUN(Element* child = find_child(node, "title");)
    EXPECT_EQ(std::to_string(port) + name + title + std::to_string(number) + (on ? "on" : ""), "81emmaDr82on");
    EXPECT_EQ(name_of(*child), "title");
    QUXML_RUN(set(node, "port", 8080);)
    QUXML_RUN(set_text(node, "title", "x");)
    QUXML_RUN(for (Element& user : elements(root, "user")) visit(user);)
    QUXML_RUN(for (Attribute& attribute : attributes(node)) visit(attribute);)
    QUXML_RUN(for (Element& element : descendants(root)) visit(element);)
    EXPECT_EQ(visited, "user user id port on name user title port user ");
    QUXML_RUN(Element* first = find_first(root, "users/user");)
    QUXML_RUN(std::vector<Element*> all = find_elements(root, "users/user");)
    QUXML_RUN(Element* found = find_first(root, "users/user", where("id") == id);)
    QUXML_RUN(Element* seven = find_first(root, "users/user", where("id") == "7");)
    EXPECT_TRUE(first == &node && found == other && seven == &node && all.size() == 2);
    QUXML_RUN(std::string path = path_of(node);)
    EXPECT_EQ(path, "/users/user[position()=1]");
    QUXML_RUN(move_to(node, *other);)
    std::ostringstream printed;
    std::streambuf* const former = std::cout.rdbuf(printed.rdbuf());
    QUXML_RUN(write_formatted(std::cout, *document);)
    std::cout.rdbuf(former);
    QUXML_RUN(write_file(file, *document);)
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    ::unlink(file.c_str());
    EXPECT_EQ(text.str(), printed.str());
    EXPECT_EQ(text.str(),
              "<?xml version=\"1.0\"?>\n<users>\n  <user id=\"8\">\n    <user id=\"7\" port=\"8080\" on=\"yes\" "
              "name=\"emma\">\n      <title>x</title>\n      <port>82</port>\n    </user>\n  </user>\n</users>\n");
    QUXML_RUN(std::size_t removed = remove_matches(root, "users/user");)
    EXPECT_EQ(removed, 1U);

    const std::vector<std::string> table = read_table();
    EXPECT_EQ(table.size(), run_lines.size());
    for (const std::string& line : table)
        EXPECT_EQ(run_lines.count(without_blanks(line)), 1U) << line;
}
// clang-format on

}  // namespace

}  // namespace quxml_test
