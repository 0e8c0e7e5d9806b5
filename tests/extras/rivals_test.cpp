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
using quxml::Node;

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
const char* const text = "<users><user id='7' port='81' on='yes' gain='0.5' name='emma'><title>Dr</title><port>82</port></user>"
                         "<user id='8'/></users>";

/// Writes the names of nodes one after the other.
struct Visitor {
    void operator()(const Node& node) { names += name_of(node) + ' '; }

    std::string names;
};

void read_values(Element& node) {
    int number = 0;
    QUXML_RUN(int port = get<int>(node, "port", 80);)
    QUXML_RUN(double gain = get(node, "gain", 1.5);)
    QUXML_RUN(bool on = get<bool>(node, "on", false);)
    QUXML_RUN(std::string name = get(node, "name", "x");)
    QUXML_RUN(bool ok = try_get(node, "port", number);)
    QUXML_RUN(bool has = find_attribute(node, "on") != nullptr;)
    EXPECT_TRUE(port == 81 && gain == 0.5 && on && name == "emma" && ok && number == 81 && has);
    QUXML_RUN(std::string title = text_of(node, "title", "none");)
    QUXML_RUN(int level = get_text<int>(node, "port", 80);)
    QUXML_RUN(std::string tag = name_of(node);)
    EXPECT_TRUE(title == "Dr" && level == 82 && tag == "user");
}

void set_values(Element& node) {
    QUXML_RUN(set(node, "port", 8080);)
    QUXML_RUN(set_text(node, "title", "x");)
    QUXML_RUN(node.remove_attribute("on");)
    QUXML_RUN(node.set_name("account");)
    EXPECT_EQ(to_text(node), "<account id=\"7\" port=\"8080\" gain=\"0.5\" name=\"emma\"><title>x</title><port>82</port></account>");
    node.set_name("user");
}

void walk(Element& root, Element& node) {
    Visitor visit;
    QUXML_RUN(Element* child = find_child(node, "title");)
    QUXML_RUN(Element* parent = node.get_parent();)
    QUXML_RUN(Node* next = node.get_next_sibling();)
    EXPECT_TRUE(name_of(*child) == "title" && parent == &root && next == root.get_children().back());
    QUXML_RUN(for (Element& user : elements(root, "user")) visit(user);)
    QUXML_RUN(for (Attribute& attribute : attributes(node)) visit(attribute);)
    QUXML_RUN(for (Element& element : descendants(root)) visit(element);)
    QUXML_RUN(for (Element& element : descendants(root, "port")) visit(element);)
    EXPECT_EQ(visit.names, "user user id port on gain name user title port user port ");
}

void find(Element& root, const Element& node) {
    const std::string id = "8";
    QUXML_RUN(Element* first = find_first(root, "users/user");)
    QUXML_RUN(std::vector<Element*> all = find_elements(root, "users/user");)
    QUXML_RUN(Element* found = find_first(root, "users/user", where("id") == id);)
    QUXML_RUN(Element* seven = find_first(root, "users/user", where("id") == "7");)
    QUXML_RUN(std::string path = path_of(node);)
    EXPECT_TRUE(first == &node && found == all.back() && seven == &node && all.size() == 2);
    EXPECT_EQ(path, "/users/user[position()=1]");
}

void change(Element& root, Element& node) {
    Element* other = &*std::next(elements(root).begin());
    QUXML_RUN(root.import_node(&node, true);)
    QUXML_RUN(Element* added = root.add_child("user");)
    QUXML_RUN(root.set_child_first(added);)
    EXPECT_EQ(added, root.get_children().front());
    added->add_child_text("text");
    QUXML_RUN(for (Node& one : children(*added)) added->remove_child(&one);)
    EXPECT_TRUE(children(*added).empty());
    QUXML_RUN(move_to(node, *other);)
    QUXML_RUN(node.remove_child(find_child(node, "port"));)
    EXPECT_EQ(to_text(*other), "<user id=\"8\"><user id=\"7\" port=\"8080\" gain=\"0.5\" name=\"emma\"><title>x</title></user></user>");
    QUXML_RUN(std::size_t removed = remove_matches(root, "users/user");)
    EXPECT_EQ(removed, 3U);
}

std::string read_back(const std::string& file) {
    std::shared_ptr<Document> document;
    QUXML_RUN(document = read_file(file);)
    return to_text(*document);
}

void write(const std::shared_ptr<Document>& document) {
    const std::string file = ::testing::TempDir() + "quxml-rivals-" + std::to_string(::getpid());
    std::ostringstream printed;
    std::streambuf* const former = std::cout.rdbuf(printed.rdbuf());
    QUXML_RUN(write_formatted(std::cout, *document);)
    std::cout.rdbuf(former);
    QUXML_RUN(write_file(file, *document);)
    QUXML_RUN(std::string compact = to_text(*document);)
    std::ostringstream written;
    written << std::ifstream(file).rdbuf();
    EXPECT_EQ(written.str(), printed.str());
    EXPECT_EQ(written.str(), document->write_to_string_formatted(true));
    EXPECT_EQ(compact, document->write_to_string());
    EXPECT_EQ(read_back(file), compact);
    ::unlink(file.c_str());
}

TEST(Rivals, each_line_of_the_table_runs) {
    std::shared_ptr<Document> document;
    QUXML_RUN(document = quxml::from_string(text, false);)
    QUXML_RUN(Element& root = *document->get_root_node();)
    Element& node = *find_child(root, "user");
    read_values(node);
    walk(root, node);
    find(root, node);
    write(document);
    set_values(node);
    change(root, node);

    const std::vector<std::string> table = read_table();
    EXPECT_EQ(table.size(), run_lines.size());
    for (const std::string& line : table)
        EXPECT_EQ(run_lines.count(without_blanks(line)), 1U) << line;
}
// clang-format on

}  // namespace

}  // namespace quxml_test
