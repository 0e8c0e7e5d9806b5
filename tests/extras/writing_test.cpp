// SPDX-License-Identifier: MIT

// Covers writing with escaped attributes: against the library's own writer, and by reading what was written.

#include "quxml/extras/writing.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "quxml/extras/trees.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::TextNode;

/// An element that writes itself.
class OwnElement : public Element {
public:
    explicit OwnElement(Element* parent) : Element("own", parent, false) {}

    void write_to_string(std::string& out, int depth) const override {
        out += "<own depth='" + std::to_string(depth) + "'/>";
    }
};

/// A text that writes itself.
class OwnText : public TextNode {
public:
    explicit OwnText(Element* parent) : TextNode(parent, "") {}

    void write_to_string(std::string& out, int depth) const override {
        out += "own text at " + std::to_string(depth);
    }
};

/// An attribute that writes itself: nothing, or what XML would not allow in one.
class OwnAttribute : public Attribute {
public:
    explicit OwnAttribute(const char* text) : Attribute("own", text, nullptr) {}

    void write_to_string(std::string& out, int /*depth*/) const override { out += get_value(); }
};

/// Adds a random tree: all layouts of children, texts with characters that are escaped, nodes that write
/// themselves.
void grow(Element& element, std::mt19937& random, int levels) {
    static const char* const contents[] = {"", "text", R"(a<b & "c" > 'd')", "\n", " \t\xC3\xA9", "]]>"};
    for (std::size_t i = random() % 3; i > 0; --i)
        element.set_attribute("a" + std::to_string(random() % 4), "value's > \xC3\xA9");
    for (std::size_t i = random() % 4; i > 0; --i) {
        const auto kind = random() % 8;
        if (kind == 0)
            element.add_new_node(new OwnElement(&element));
        else if (kind == 1)
            element.add_new_node(new OwnText(&element));
        else if (kind < 4)
            element.add_child_text(contents[random() % std::size(contents)]);
        else if (levels > 0)
            grow(*element.add_child("n" + std::to_string(random() % 3)), random, levels - 1);
        else
            element.add_child("leaf");
    }
}

TEST(Writing, is_the_librarys_own_text_unless_there_is_something_to_escape) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::mt19937 random(seed);
        Document document(false);
        grow(*document.create_root_node("root"), random, 5);
        ASSERT_EQ(to_text(document), document.write_to_string()) << seed;
        ASSERT_EQ(to_text(document, Layout()), document.write_to_string_formatted(true)) << seed;
        Layout bare;
        bare.has_declaration = false;
        ASSERT_EQ(to_text(document, bare), document.write_to_string_formatted(false)) << seed;
        std::string part;
        document.get_root_node()->write_to_string(part, -1);
        ASSERT_EQ(to_text(*document.get_root_node()), part) << seed;
    }
}

TEST(Writing, of_a_document_without_a_root_is_the_declaration) {
    const Document document(false);
    EXPECT_EQ(to_text(document), document.write_to_string());
    EXPECT_EQ(to_text(document, Layout()), document.write_to_string_formatted(true));
}

TEST(Writing, of_a_node_that_is_not_an_element_is_the_nodes_own) {
    Document document(false);
    Element* root = build(document, "r(a='1 & 2'){\"x & y\"}");
    EXPECT_EQ(to_text(*root->get_child_text()), "x &amp; y");
    EXPECT_EQ(to_text(*root->get_attribute("a")), " a=\"1 &amp; 2\"");
    EXPECT_EQ(to_text(TextNode(nullptr, "")), "") << "text without a parent writes nothing";
    EXPECT_EQ(to_text(OwnElement(nullptr)), "<own depth='-1'/>");
    EXPECT_EQ(to_text(OwnElement(nullptr), Layout()), "<own depth='0'/>");
    EXPECT_EQ(to_text(OwnAttribute("")), "");
    EXPECT_EQ(to_text(OwnAttribute("own & \"other\"")), "own & \"other\"");
}

TEST(Writing, escapes_what_xml_does_not_allow_in_attributes_and_what_it_reads_as_spaces) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->set_attribute("a", "<\"&'>\t\n\r;&amp;");
    root->set_attribute("b", "\"");
    root->set_attribute("c", "");
    root->add_child_text("\r\n&\r");
    EXPECT_EQ(to_text(*root),
              "<r a=\"&lt;&quot;&amp;'>&#9;&#10;&#13;;&amp;amp;\" b=\"&quot;\" c=\"\">&#13;\n&amp;&#13;</r>");
}

TEST(Writing, copies_names_values_and_texts_of_every_length) {
    static const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    Document document(false);
    Element* root = document.create_root_node("r");
    for (std::size_t length = 1; length <= letters.size(); ++length) {
        Element* child = root->add_child(letters.substr(0, length));
        child->set_attribute(letters.substr(letters.size() - length),
                             letters.substr(letters.size() - length));
        child->add_child_text(letters.substr(0, length));
    }
    EXPECT_EQ(to_text(document), document.write_to_string());
    EXPECT_EQ(to_text(document, Layout()), document.write_to_string_formatted(true));
}

TEST(Writing, escapes_six_bytes_in_attributes_wherever_they_stand_and_no_other) {
    static const std::map<char, std::string> references = {{'&', "&amp;"}, {'<', "&lt;"},   {'"', "&quot;"},
                                                           {'\t', "&#9;"}, {'\n', "&#10;"}, {'\r', "&#13;"}};
    for (int byte = 0; byte <= UCHAR_MAX; ++byte) {
        const std::string c(1, static_cast<char>(byte));
        const auto found = references.find(c[0]);
        const std::string& written = found == references.end() ? c : found->second;
        Document document(false);
        document.create_root_node("r")->set_attribute("a", c + "value" + c + c + "x" + c);
        EXPECT_EQ(to_text(*document.get_root_node()),
                  "<r a=\"" + written + "value" + written + written + "x" + written + "\"/>")
            << byte;
    }
}

TEST(Writing, gives_text_that_is_read_as_the_same_tree) {
    std::mt19937 random(3);
    static const std::string special = "&<>\"'\t\n\r x;#\xC3\xA9";
    for (int round = 0; round < 500; ++round) {
        Document document(false);
        Element* root = document.create_root_node("r");
        for (const char* name : {"a", "b"}) {
            std::string value;
            for (std::size_t i = random() % 12; i > 0; --i)
                value += special[random() % (special.size() - 2)];
            root->set_attribute(name, value);
            root->add_child(name)->add_child_text("x" + value);
        }
        for (const Layout& layout : {Layout::compact(), Layout()}) {
            const auto again = quxml::from_string(to_text(document, layout), false);
            ASSERT_TRUE(is_same_tree(*again->get_root_node(), *root)) << to_text(document);
        }
    }
}

TEST(Writing, leaves_the_tree_as_it_is) {
    Document document(false);
    Element* root = build(document, "r(a='<\"')");
    to_text(document);
    EXPECT_EQ(root->get_attribute_value("a"), "<\"");
}

TEST(Writing, indents_as_told_to) {
    Document document(false);
    build(document, "r{a{b{\"x\"} c} \"t\"}");
    Layout layout;
    layout.indentation = "\t";
    EXPECT_EQ(to_text(document, layout),
              "<?xml version=\"1.0\"?>\n<r>\n\t<a>\n\t\t<b>x</b>\n\t\t<c/>\n\t</a>\n\tt\n</r>\n");
    layout.indentation = "";
    layout.has_declaration = false;
    EXPECT_EQ(to_text(document, layout), "<r>\n<a>\n<b>x</b>\n<c/>\n</a>\nt\n</r>\n");
}

/// A document of about 400 KB, with texts longer than what is gathered.
void fill(Document& document) {
    Element* root = document.create_root_node("r");
    for (int i = 0; i < 3000; ++i)
        root->add_child("entry", i)->add_child_text(i % 1000 == 0 ? std::string(70000, 'x') : "text");
}

TEST(Writing, to_a_stream_gives_the_same_text) {
    Document document(false);
    fill(document);
    std::ostringstream stream;
    stream << "before";
    write(stream, document);
    write_formatted(stream, document);
    EXPECT_EQ(stream.str(), "before" + document.write_to_string() + document.write_to_string_formatted(true));
}

TEST(Writing, to_a_string_appends) {
    Document document(false);
    build(document, "r{a}");
    std::string text = "before";
    write(text, *document.get_root_node());
    write_formatted(text, *document.get_root_node());
    EXPECT_EQ(text, "before<r><a/></r><r>\n  <a/>\n</r>\n");
}

TEST(Writing, to_a_file_descriptor_gives_the_same_text) {
    Document document(false);
    fill(document);
    std::array<int, 2> ends = {};
    ASSERT_EQ(::pipe(ends.data()), 0);
    std::string seen;
    std::thread reader([&] {
        std::array<char, 4096> piece = {};
        for (ssize_t count = 1; count > 0;) {
            count = ::read(ends[0], piece.data(), piece.size());
            seen.append(piece.data(), static_cast<std::size_t>(count > 0 ? count : 0));
        }
    });
    write_formatted(FileDescriptor(ends[1]), document);
    ::close(ends[1]);
    reader.join();
    ::close(ends[0]);
    EXPECT_EQ(seen, document.write_to_string_formatted(true));
}

TEST(Writing, reports_a_file_that_cannot_be_written) {
    Document document(false);
    build(document, "r");
    const int full = ::open("/dev/full", O_WRONLY);
    ASSERT_GE(full, 0);
    try {
        write(FileDescriptor(full), document);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
    }
    ::close(full);
    EXPECT_THROW(write(FileDescriptor(-1), document), std::system_error);
}

TEST(Writing, leaves_the_mark_of_a_failure_in_the_stream) {
    Document document(false);
    build(document, "r");
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    write(stream, document);
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(stream.str(), "");
}

}  // namespace

}  // namespace quxml_test
