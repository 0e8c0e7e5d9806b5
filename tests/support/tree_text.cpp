// SPDX-License-Identifier: MIT
#include "support/tree_text.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "quxml/Attribute.h"
#include "quxml/TextNode.h"

namespace quxml_test {

namespace {

using quxml::Attribute;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;

const char* const special = " \n\\\"'(){},=";

std::string quoted(const std::string& text, char quote) {
    std::string out(1, quote);
    for (const char c : text) {
        if (c == quote || c == '\\')
            out += '\\';
        out += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return out + quote;
}

std::string word(const std::string& text) {
    const bool plain = !text.empty() && text.find_first_of(special) == std::string::npos;
    return plain ? text : quoted(text, '\'');
}

std::string pair(const Attribute& attribute) {
    return word(attribute.get_name()) + "=" + word(attribute.get_value());
}

std::string element_line(const Element& element) {
    std::string attributes;
    for (const Attribute* attribute : element.get_attributes())
        attributes += (attributes.empty() ? "" : ",") + pair(*attribute);
    std::string children;
    for (const Node* child : element.get_children())
        children += (children.empty() ? "" : " ") + to_line(child);
    return word(element.get_name()) + (attributes.empty() ? "" : "(" + attributes + ")") +
           (children.empty() ? "" : "{" + children + "}");
}

/// Reads a line from its front.
class LineReader {
public:
    explicit LineReader(const std::string& tree_line) : line(tree_line), at(0) {}

    std::string take_word() { return is_next('\'') ? take_quoted() : take_plain(); }

    void take_content(Element& element) {
        if (skip('('))
            take_attributes(element);
        if (skip('{'))
            take_children(element);
    }

    void expect_end() const {
        if (at != line.size())
            fail("the end");
    }

private:
    bool is_next(char c) const { return at < line.size() && line[at] == c; }

    bool skip(char c) {
        const bool found = is_next(c);
        at += found ? 1U : 0U;
        return found;
    }

    void expect(char c) {
        if (!skip(c))
            fail(std::string(1, c));
    }

    [[noreturn]] void fail(const std::string& expected) const {
        throw std::invalid_argument("expected " + expected + " at " + std::to_string(at) + " in " + line);
    }

    std::string take_plain() {
        const std::size_t end = std::min(line.find_first_of(special, at), line.size());
        if (end == at)
            fail("a name or a value");
        const std::size_t begin = std::exchange(at, end);
        return line.substr(begin, end - begin);
    }

    std::string take_quoted() {
        const char quote = line[at++];
        std::string taken;
        while (!skip(quote)) {
            const bool escaped = skip('\\');
            if (at == line.size())
                fail("a closing quote");
            taken += escaped && line[at] == 'n' ? '\n' : line[at];
            ++at;
        }
        return taken;
    }

    void take_attributes(Element& element) {
        do {
            const std::string name = take_word();
            expect('=');
            element.set_attribute(name, take_word());
        } while (skip(','));
        expect(')');
    }

    void take_children(Element& element) {
        do {
            if (is_next('"')) {
                element.add_child_text(take_quoted());
            } else {
                take_content(*element.add_child(take_word()));
            }
        } while (skip(' '));
        expect('}');
    }

    const std::string& line;
    std::size_t at;
};

}  // namespace

std::string to_line(const Node* node) {
    if (node == nullptr)
        return "null";
    if (const auto* element = dynamic_cast<const Element*>(node))
        return element_line(*element);
    if (const auto* text = dynamic_cast<const TextNode*>(node))
        return quoted(text->get_content(), '"');
    if (const auto* attribute = dynamic_cast<const Attribute*>(node))
        return "@" + pair(*attribute);
    return "<" + node->get_name() + ">";
}

Element* build(quxml::Document& document, const std::string& line) {
    LineReader reader(line);
    Element* root = document.create_root_node(reader.take_word());
    reader.take_content(*root);
    reader.expect_end();
    return root;
}

Element* build_child(Element& parent, const std::string& line) {
    LineReader reader(line);
    Element* child = parent.add_child(reader.take_word());
    reader.take_content(*child);
    reader.expect_end();
    return child;
}

Element* build_chain(quxml::Document& document, const std::string& name, std::size_t levels) {
    Element* lowest = document.create_root_node(name);
    for (std::size_t level = 1; level < levels; ++level)
        lowest = lowest->add_child(name);
    return lowest;
}

}  // namespace quxml_test
