// SPDX-License-Identifier: MIT

// Covers the calls that nodes of derived classes get when a tree is written, and long pieces of text beside them.

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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
            out.append(static_cast<std::size_t>(2 * depth), ' ');
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

}  // namespace
