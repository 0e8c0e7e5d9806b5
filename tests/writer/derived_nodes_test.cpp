// SPDX-License-Identifier: MIT

// Covers the calls that nodes of derived classes get when a tree is written, and long pieces of text beside them, by
// example and against the plain procedure.

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;
using quxml_test::build;

const std::string declaration = R"(<?xml version="1.0"?>)";

std::string write(const Node& node, int depth) {
    std::string out;
    node.write_to_string(out, depth);
    return out;
}

/// What nodes of derived classes were called with: name, depth, and the text that stood there at that moment.
using Calls = std::vector<std::string>;

std::string call_of(const std::string& name, int depth, const std::string& out) {
    return name + "@" + std::to_string(depth) + "[" + out + "]";
}

class LoggedElement : public Element {
public:
    LoggedElement(const std::string& element_name, Element* owner, Calls& log)
        : Element(element_name, owner, false), calls(log) {}

    void write_to_string(std::string& out, int depth) const override {
        calls.push_back(call_of(name, depth, out));
        Element::write_to_string(out, depth);
    }

private:
    Calls& calls;
};

class LoggedText : public TextNode {
public:
    LoggedText(const std::string& text, Element* owner, Calls& log) : TextNode(owner, ""), calls(log) {
        set_content(text);
    }

    void write_to_string(std::string& out, int depth) const override {
        calls.push_back(call_of("'" + get_content() + "'", depth, out));
        TextNode::write_to_string(out, depth);
    }

private:
    Calls& calls;
};

/// A third kind of child, neither an element nor text.
class Comment : public Node {
public:
    Comment(const std::string& comment, Element* owner) : Node("", owner, false), text(comment) {}

    void write_to_string(std::string& out, int depth) const override {
        if (depth > 0)
            out.append(2 * static_cast<std::size_t>(depth), ' ');
        out += "<!--" + text + "-->";
        if (depth >= 0)
            out += "\n";
    }

    Node* get_deep_copy_of_node(bool /*deep*/, Element* owner) const override {
        return link(*owner, std::make_unique<Comment>(text, owner));
    }

    static Node* link(Element& owner, std::unique_ptr<Comment> comment) {
        owner.add_new_node(comment.get());
        return comment.release();
    }

private:
    std::string text;
};

class Refusing : public TextNode {
public:
    explicit Refusing(Element* owner) : TextNode(owner, "") {}

    void write_to_string(std::string& /*out*/, int /*depth*/) const override {
        throw std::runtime_error("refused");
    }
};

template <class Derived, class... Arguments>
Derived* add(Element& parent, Arguments&&... arguments) {
    auto node = std::make_unique<Derived>(std::forward<Arguments>(arguments)...);
    parent.add_new_node(node.get());
    return node.release();
}

TEST(DerivedNodes, are_asked_in_child_order_with_the_depth_one_below) {
    Calls calls;
    Document document(false);
    Element* root = document.create_root_node("r");
    add<LoggedElement>(*root, "a", root, calls);
    add<LoggedText>(*root, "t", root, calls);
    add<LoggedElement>(*root, "b", root, calls);
    EXPECT_EQ(write(*root, 0), "<r>\n  <a/>\n  t\n  <b/>\n</r>\n");
    EXPECT_EQ(calls, (Calls{"a@1[<r>\n]", "'t'@1[<r>\n  <a/>\n]", "b@1[<r>\n  <a/>\n  t\n]"}));
}

TEST(DerivedNodes, get_minus_one_whatever_negative_depth_the_writing_began_with) {
    for (const int depth : {-1, -2, -5, INT_MIN}) {
        SCOPED_TRACE(depth);
        Calls calls;
        Document document(false);
        Element* root = document.create_root_node("r");
        Element* plain = root->add_child("p");
        add<LoggedElement>(*plain, "a", plain, calls);
        add<LoggedText>(*root, "t", root, calls);
        EXPECT_EQ(write(*root, depth), "<r><p><a/></p>t</r>");
        EXPECT_EQ(calls, (Calls{"a@-1[<r><p>]", "'t'@-1[<r><p><a/></p>]"}));
    }
}

TEST(DerivedNodes, keep_their_levels_when_they_alternate_with_plain_ones) {
    Calls calls;
    Document document(false);
    Element* root = document.create_root_node("r");
    Element* plain = root->add_child("p");
    auto* outer = add<LoggedElement>(*plain, "o", plain, calls);
    Element* inner_plain = outer->add_child("q");
    auto* inner = add<LoggedElement>(*inner_plain, "i", inner_plain, calls);
    add<LoggedText>(*inner, "t", inner, calls);
    root->add_child("z");
    const std::string start = "  <r>\n    <p>\n      <o>\n        <q>\n";
    EXPECT_EQ(write(*root, 1),
              start + "          <i>t</i>\n        </q>\n      </o>\n    </p>\n    <z/>\n  </r>\n");
    EXPECT_EQ(calls,
              (Calls{"o@3[  <r>\n    <p>\n]", "i@5[" + start + "]", "'t'@6[" + start + "          <i>]"}));
}

TEST(DerivedNodes, root_is_asked_with_zero_or_minus_one_by_the_document) {
    Calls calls;
    Document document(false);
    document.set_root_node(new LoggedElement("r", nullptr, calls));
    EXPECT_EQ(document.write_to_string(), declaration + "<r/>");
    EXPECT_EQ(document.write_to_string_formatted(true), declaration + "\n<r/>\n");
    EXPECT_EQ(document.write_to_string_formatted(false), "<r/>\n");
    EXPECT_EQ(calls, (Calls{"r@-1[" + declaration + "]", "r@0[" + declaration + "\n]", "r@0[]"}));
}

TEST(DerivedNodes, lone_text_of_a_derived_class_stands_on_the_line_of_its_element) {
    Calls calls;
    Element element("e", nullptr, false);
    add<LoggedText>(element, "a<b", &element, calls);
    EXPECT_EQ(write(element, 1), "  <e>a&lt;b</e>\n");
    EXPECT_EQ(calls, (Calls{"'a<b'@2[  <e>]"}));
}

TEST(DerivedNodes, lone_child_that_is_neither_element_nor_text_stands_on_a_line_of_its_own) {
    Element element("e", nullptr, false);
    Comment::link(element, std::make_unique<Comment>("c", &element));
    EXPECT_EQ(write(element, 1), "  <e>\n    <!--c-->\n  </e>\n");
    EXPECT_EQ(write(element, -1), "<e><!--c--></e>");
}

TEST(DerivedNodes, may_write_something_else_altogether) {
    class Silent : public Element {
    public:
        using Element::Element;
        void write_to_string(std::string& /*out*/, int /*depth*/) const override {}
    };
    Element element("e", nullptr, false);
    add<Silent>(element, "gone", &element, false)->add_child("below");
    element.add_child("kept");
    EXPECT_EQ(write(element, 0), "<e>\n  <kept/>\n</e>\n");
}

TEST(DerivedNodes, without_an_override_are_written_as_their_base) {
    class Derived : public Element {
    public:
        using Element::Element;
    };
    Element element("e", nullptr, false);
    add<Derived>(element, "d", &element, false)->add_child("below")->add_child_text("t");
    EXPECT_EQ(write(element, 0), "<e>\n  <d>\n    <below>t</below>\n  </d>\n</e>\n");
}

TEST(DerivedNodes, exception_of_a_node_comes_through_and_what_was_appended_stays) {
    Document document(false);
    Element* root = build(document, "r{a b{c}}");
    auto* b = static_cast<Element*>(root->get_child("b"));
    add<Refusing>(*b, b);
    std::string out = "+";
    EXPECT_THROW(root->write_to_string(out, 0), std::runtime_error);
    EXPECT_EQ(out, "+<r>\n  <a/>\n  <b>\n    <c/>\n");
    b->remove_child(b->get_child_text());
    EXPECT_EQ(write(*root, -1), "<r><a/><b><c/></b></r>");
}

TEST(LongPieces, of_every_length_up_to_some_thousands_are_written_whole) {
    for (int length = 0; length < 2100; ++length) {
        const std::string piece(static_cast<std::size_t>(length), 'x');
        Element element("n" + piece, nullptr, false);
        element.set_attribute("a" + piece, piece);
        element.add_child_text(piece + "&" + piece);
        ASSERT_EQ(write(element, -1), "<n" + piece + " a" + piece + "=\"" + piece + "\">" + piece + "&amp;" +
                                          piece + "</n" + piece + ">")
            << length;
    }
}

TEST(LongPieces, stay_in_their_place_beside_nodes_of_derived_classes) {
    for (const int length : {1, 1023, 1024, 1025, 5000}) {
        SCOPED_TRACE(length);
        const std::string piece(static_cast<std::size_t>(length), 'x');
        Calls calls;
        Element element("e", nullptr, false);
        element.add_child_text(piece);
        add<LoggedText>(element, "t", &element, calls);
        element.add_child_text(piece);
        add<LoggedElement>(element, "d", &element, calls);
        element.add_child_text(piece);
        const std::string first = "+<e>" + piece;
        const std::string second = first + "t" + piece;
        std::string out = "+";
        element.write_to_string(out, -1);
        EXPECT_EQ(out, second + "<d/>" + piece + "</e>");
        EXPECT_EQ(calls, (Calls{"'t'@-1[" + first + "]", "d@-1[" + second + "]"}));
    }
}

// ---- Against the plain procedure ----

std::string escape_plainly(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '"':
                escaped += "&quot;";
                break;
            case '&':
                escaped += "&amp;";
                break;
            case '\'':
                escaped += "&apos;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string indent(int depth) {
    return std::string(depth > 0 ? 2 * static_cast<std::size_t>(depth) : 0, ' ');
}

void write_text_plainly(const TextNode& text, std::string& out, int depth) {
    const bool is_inline = depth < 0 || text.get_parent()->get_children().size() == 1;
    out += is_inline ? escape_plainly(text.get_content())
                     : indent(depth) + escape_plainly(text.get_content()) + "\n";
}

/// Writes by recursion; nodes of derived classes are asked to write themselves.
void write_plainly(const Node& node, std::string& out, int depth) {
    if (typeid(node) == typeid(TextNode))
        return write_text_plainly(dynamic_cast<const TextNode&>(node), out, depth);
    if (typeid(node) != typeid(Element))
        return node.write_to_string(out, depth);
    const auto& element = dynamic_cast<const Element&>(node);
    const quxml::NodeList children = element.get_children();
    const char* const line_end = depth < 0 ? "" : "\n";
    out += indent(depth) + "<" + element.get_name();
    for (const quxml::Attribute* attribute : element.get_attributes())
        out += " " + attribute->get_name() + "=\"" + attribute->get_value() + "\"";
    if (children.empty()) {
        out += std::string("/>") + line_end;
        return;
    }
    const bool has_lines = depth >= 0 && (children.size() > 1 || !element.has_child_text());
    out += has_lines ? ">\n" : ">";
    for (const Node* child : children)
        write_plainly(*child, out, depth < 0 ? -1 : depth + 1);
    out += (has_lines ? indent(depth) : "") + "</" + element.get_name() + ">" + line_end;
}

/// Grows children of all kinds, and sometimes one that refuses to be written.
void grow(Element& parent, std::mt19937& random, int levels, Calls& calls) {
    const std::vector<std::string> texts = {"", "t", "a<b", "'\"&>", std::string(700, 'x')};
    for (std::size_t count = random() % 5; count > 0; --count) {
        const std::string& text = texts[random() % texts.size()];
        Element* child = nullptr;
        switch (random() % 24) {
            case 0:
                add<Refusing>(parent, &parent);
                break;
            case 1:
            case 2:
            case 3:
                add<LoggedText>(parent, text, &parent, calls);
                break;
            case 4:
            case 5:
                add<Comment>(parent, "c", &parent);
                break;
            case 6:
            case 7:
            case 8:
            case 9:
                child = add<LoggedElement>(parent, "d", &parent, calls);
                break;
            case 10:
            case 11:
            case 12:
            case 13:
                parent.add_child_text(text);
                break;
            default:
                child = parent.add_child("e");
        }
        if (child == nullptr)
            continue;
        if (random() % 2 == 0)
            child->set_attribute("a", text);
        if (levels > 0)
            grow(*child, random, levels - 1, calls);
    }
}

/// What a way of writing appends, whether an exception ended it, and what the logged nodes saw on the way.
template <class Write>
Calls observe(Calls& calls, Write write_tree) {
    calls.clear();
    std::string out = "+";
    try {
        write_tree(out);
    } catch (const std::runtime_error& error) {
        out += error.what();
    }
    Calls seen = calls;
    seen.push_back(out);
    return seen;
}

TEST(DerivedNodes, are_written_as_by_the_plain_procedure) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        std::mt19937 random(seed);
        Calls calls;
        Element root("r", nullptr, false);
        grow(root, random, 4, calls);
        for (const int depth : {-1, 0, 3}) {
            const Calls plain = observe(calls, [&](std::string& out) { write_plainly(root, out, depth); });
            ASSERT_EQ(observe(calls, [&](std::string& out) { root.write_to_string(out, depth); }), plain)
                << "seed " << seed << ", depth " << depth;
        }
    }
}

}  // namespace
