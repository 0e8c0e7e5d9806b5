// SPDX-License-Identifier: MIT

// Writing with escaped attributes.
//
// Texts and attributes write themselves into a string of their own, as they do in the library. What they leave as it
// is and a reader would change is searched for there, and is found only rarely.
//
// Elements are written on a list of open elements instead of by recursion, with the same rules for white space
// as in the library: an element stands on one line if it has no children or nothing but one text.

#include "quxml/extras/writing.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <ostream>
#include <string_view>
#include <system_error>
#include <vector>

#include "TextSink.h"
#include "quxml/Attribute.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "quxml/extras/Fields.h"

namespace quxml {
namespace extras {

namespace {

void write_to_file(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw std::system_error(errno, std::generic_category());
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

void TextSink::hand_on(std::string_view text) {
    if (out.text != nullptr)
        out.text->append(text);
    else if (out.stream != nullptr)
        out.stream->write(text.data(), static_cast<std::streamsize>(text.size()));
    else
        write_to_file(out.file, text);
}

namespace {

/// What stands in an attribute for a byte that XML does not allow there or reads as a space; empty for others.
std::string_view get_reference(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '"':
            return "&quot;";
        case '\t':
            return "&#9;";
        case '\n':
            return "&#10;";
        case '\r':
            return "&#13;";
        default:
            return {};
    }
}

/// Texts have been escaped by the library but for what a reader takes for the end of a line.
std::size_t find_escaped_in_text(std::string_view text) {
    return text.find('\r');
}

/// The bytes that `get_reference` knows.
constexpr std::array<bool, UCHAR_MAX + 1> list_escaped_in_attributes() {
    std::array<bool, UCHAR_MAX + 1> is_escaped = {};
    for (const char c : {'&', '<', '"', '\t', '\n', '\r'})
        is_escaped[static_cast<unsigned char>(c)] = true;
    return is_escaped;
}

bool is_escaped_in_attributes(char c) {
    static constexpr std::array<bool, UCHAR_MAX + 1> is_escaped = list_escaped_in_attributes();
    return is_escaped[static_cast<unsigned char>(c)];
}

std::size_t find_escaped_in_value(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (is_escaped_in_attributes(text[i]))
            return i;
    }
    return std::string_view::npos;
}

/// Puts out a text with the references of what has to be escaped, and what comes after it.
template <class Find, class... Pieces>
void put_escaped(TextSink& out, std::string_view text, Find find_escaped, const Pieces&... after) {
    std::size_t clean = find_escaped(text);
    while (clean != std::string_view::npos) {
        out.put(text.substr(0, clean), get_reference(text[clean]));
        text.remove_prefix(clean + 1);
        clean = find_escaped(text);
    }
    out.put(text, after...);
}

class TreeWriter {
public:
    TreeWriter(TextSink& output, const Layout& text_layout) : out(output), layout(text_layout) {}

    void write(const Node& top) {
        write_node(top);
        while (!open.empty()) {
            OpenElement& current = open.back();
            if (current.next == current.end) {
                write_end();
            } else {
                write_node(**current.next++);
            }
        }
    }

private:
    /// An element whose opening tag has been written, and the first of its children that has not.
    struct OpenElement {
        const Element* element;
        NodeList::const_iterator next;
        NodeList::const_iterator end;
    };

    void write_node(const Node& node) {
        if (is_plain_element(node)) {
            write_start(static_cast<const Element&>(node));
        } else if (is_plain_text(node)) {
            write_text(static_cast<const TextNode&>(node));
        } else if (is_plain_attribute(node)) {
            write_attribute(static_cast<const Attribute&>(node));
        } else {
            out.put(text_of(node, layout.is_formatted ? static_cast<int>(open.size()) : -1));
        }
    }

    void write_start(const Element& element) {
        out.put(indentation(), "<", Fields::name_of(element));
        for (const Attribute* attribute : Fields::attributes_of(element))
            write_attribute(*attribute);
        const NodeList& children = Fields::children_of(element);
        if (children.empty()) {
            out.put("/>", line_end());
        } else if (const Node* text = get_only_text(element)) {
            out.put(">");
            put_escaped(out, text_of(*text, -1), find_escaped_in_text, "</", Fields::name_of(element), ">",
                        line_end());
        } else {
            out.put(">", is_inline(element) ? "" : line_end());
            open.push_back({&element, children.begin(), children.end()});
        }
    }

    /// The text that is the only child of an element and belongs to it; null if there is none. Most elements that have
    /// anything have this.
    static const Node* get_only_text(const Element& element) {
        const NodeList& children = Fields::children_of(element);
        if (children.size() != 1 || !is_plain_text(*children.front()))
            return nullptr;
        return Fields::parent_of(*children.front()) == &element ? children.front() : nullptr;
    }

    void write_end() {
        const Element& element = *open.back().element;
        open.pop_back();
        out.put(is_inline(element) ? "" : indentation(), "</", Fields::name_of(element), ">", line_end());
    }

    /// Whether the element's only child is text, so that its tags and the text share a line.
    static bool is_inline(const Element& element) {
        const NodeList& children = Fields::children_of(element);
        return children.size() == 1 && is_text(*children.front());
    }

    void write_text(const TextNode& node) {
        const Element* parent = node.get_parent();
        if (parent == nullptr)
            return;
        const bool has_line = Fields::children_of(*parent).size() != 1;
        if (has_line)
            out.put(indentation());
        put_escaped(out, text_of(node, -1), find_escaped_in_text, has_line ? line_end() : "");
    }

    void write_attribute(const Attribute& attribute) {
        out.put(" ", Fields::name_of(attribute), "=\"");
        put_escaped(out, Fields::value_of(attribute), find_escaped_in_value, "\"");
    }

    /// What a node writes. Valid until the next call.
    std::string_view text_of(const Node& node, int depth) {
        text_of_node.clear();
        node.write_to_string(text_of_node, depth);
        return text_of_node;
    }

    /// What stands before a line. Valid until the next call.
    std::string_view indentation() {
        if (!layout.is_formatted)
            return {};
        const std::size_t length = open.size() * layout.indentation.size();
        while (deepest_indentation.size() < length)
            deepest_indentation += layout.indentation;
        return std::string_view(deepest_indentation).substr(0, length);
    }

    std::string_view line_end() const { return layout.is_formatted ? "\n" : ""; }

    TextSink& out;
    const Layout& layout;
    std::vector<OpenElement> open;
    std::string text_of_node;
    std::string deepest_indentation;
};

}  // namespace

void write(Output out, const Document& document, const Layout& layout) {
    TextSink sink(out);
    if (layout.has_declaration)
        sink.put(R"(<?xml version="1.0"?>)", layout.is_formatted ? "\n" : "");
    if (const Element* root = document.get_root_node())
        TreeWriter(sink, layout).write(*root);
    sink.flush();
}

void write(Output out, const Node& node, const Layout& layout) {
    TextSink sink(out);
    TreeWriter(sink, layout).write(node);
    sink.flush();
}

std::string to_text(const Document& document) {
    return to_text(document, Layout::compact());
}

std::string to_text(const Node& node) {
    return to_text(node, Layout::compact());
}

std::string to_text(const Document& document, const Layout& layout) {
    std::string text;
    write(text, document, layout);
    return text;
}

std::string to_text(const Node& node, const Layout& layout) {
    std::string text;
    write(text, node, layout);
    return text;
}

}  // namespace extras
}  // namespace quxml
