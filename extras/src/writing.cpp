// SPDX-License-Identifier: MIT

// Writing with escaped attributes.
//
// Texts and attributes append themselves to what has been gathered, as they do in the library. What they leave
// as it is and a reader would change is searched for in what they appended, and is there only rarely.
//
// Elements are written on a list of open elements instead of by recursion, with the same rules for white space
// as in the library: an element stands on one line if it has no children or nothing but one text.

#include "quxml/extras/writing.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

void TextSink::flush() {
    if (out.stream != nullptr)
        out.stream->write(gathered.data(), static_cast<std::streamsize>(gathered.size()));
    else if (out.text == nullptr)
        write_to_file(out.file, gathered);
    gathered.clear();
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
bool is_escaped_in_texts(char c) {
    return c == '\r';
}

bool is_escaped_in_attributes(char c) {
    // Ordered so that most bytes take one comparison.
    return c <= '<' && (c == '&' || c == '<' || c == '"' || c == '\t' || c == '\n' || c == '\r');
}

/// Escapes what has been appended to `text` at `begin`, most often nothing.
template <class IsEscaped>
void escape_from(std::string& text, std::size_t begin, IsEscaped is_escaped) {
    const auto first =
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), is_escaped);
    if (first == text.end())
        return;
    const std::string rest(first, text.end());
    text.erase(first, text.end());
    auto clean = rest.begin();
    for (auto at = clean; at != rest.end(); at = std::find_if(clean, rest.end(), is_escaped)) {
        text.append(clean, at).append(get_reference(*at));
        clean = at + 1;
    }
    text.append(clean, rest.end());
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
            out.settle();
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
        } else if (const auto* attribute = dynamic_cast<const Attribute*>(&node)) {
            write_attribute(*attribute);
        } else {
            node.write_to_string(out.text(), layout.is_formatted ? static_cast<int>(open.size()) : -1);
        }
    }

    void write_start(const Element& element) {
        indent();
        out.text().append(1, '<').append(Fields::name_of(element));
        for (const Attribute* attribute : Fields::attributes_of(element))
            write_attribute(*attribute);
        const NodeList& children = Fields::children_of(element);
        if (children.empty()) {
            out.text() += "/>";
            end_line();
            return;
        }
        out.text() += '>';
        if (!is_inline(element))
            end_line();
        open.push_back({&element, children.begin(), children.end()});
    }

    void write_end() {
        const Element& element = *open.back().element;
        open.pop_back();
        if (!is_inline(element))
            indent();
        out.text().append("</").append(Fields::name_of(element)).append(1, '>');
        end_line();
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
            indent();
        const std::size_t begin = out.text().size();
        node.write_to_string(out.text(), -1);
        escape_from(out.text(), begin, is_escaped_in_texts);
        if (has_line)
            end_line();
    }

    void write_attribute(const Attribute& attribute) {
        constexpr std::size_t around_name = 3;  // a space, and an equals sign with a quote
        const std::size_t begin = out.text().size();
        attribute.write_to_string(out.text(), -1);
        out.text().pop_back();  // the closing quote
        escape_from(out.text(), begin + around_name + Fields::name_of(attribute).size(),
                    is_escaped_in_attributes);
        out.text() += '"';
    }

    void indent() {
        if (!layout.is_formatted)
            return;
        for (std::size_t level = 0; level < open.size(); ++level)
            out.text() += layout.indentation;
    }

    void end_line() {
        if (layout.is_formatted)
            out.text() += '\n';
    }

    TextSink& out;
    const Layout& layout;
    std::vector<OpenElement> open;
};

}  // namespace

void write(Output out, const Document& document, const Layout& layout) {
    TextSink sink(out);
    if (layout.has_declaration)
        sink.text() += layout.is_formatted ? "<?xml version=\"1.0\"?>\n" : R"(<?xml version="1.0"?>)";
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
