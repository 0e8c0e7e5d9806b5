// SPDX-License-Identifier: MIT

// Elements and attributes as XML text.
//
// Where white space goes in formatted text, for a node at level n; compact text has none:
//
//     what is written                                      before it     after it
//     shorthand tag (no children)                          2n spaces     line end
//     opening tag                                          2n spaces     line end
//     opening tag, the only child is text                  2n spaces     nothing
//     text that is the only child                          nothing       nothing
//     text that has siblings                               2n spaces     line end
//     closing tag                                          2n spaces     line end
//     closing tag, the only child is text                  nothing       line end
//
// The elements below an element are written on a list of open elements instead of by recursion. Only nodes of
// the library's own classes are written that way; a node of a derived class is asked to write itself. Whether
// the tags of an element stand on lines of their own is decided once, for both tags. Once a node of a derived
// class has been asked, it is decided again for each closing tag, since that node may have changed the children.
// An element whose only child is text, the commonest kind that has any, does not go onto the list.

#include <vector>

#include "dom/NodeAccess.h"
#include "layout.h"
#include "write_text.h"

namespace quxml {

namespace {

/// Counts the children first, so that a long list of them is not searched for text.
bool is_only_child_text(const Element& element) {
    return NodeAccess::children(element).size() == 1 && first_text(element) != nullptr;
}

/// Whether the tags of the element stand on lines of their own.
bool has_lines_between_tags(const Element& element, int depth) {
    return is_formatted(depth) && !NodeAccess::children(element).empty() && !is_only_child_text(element);
}

// Deliberate: names and values are written as they are, whatever they hold.
// Test: WriteAttribute.no_byte_of_a_value_or_name_is_escaped_which_is_wanted.
void append_attribute(TextBuffer& out, const Attribute& attribute) {
    out.append(" ", NodeAccess::name(attribute), "=\"", NodeAccess::value(attribute), "\"");
}

/// "<", the name and the attributes.
void append_tag_start(TextBuffer& out, const Element& element, int depth) {
    append_indentation(out, depth);
    out.append("<", NodeAccess::name(element));
    for (const Attribute* attribute : NodeAccess::attributes(element))
        append_attribute(out, *attribute);
}

void append_shorthand_tag(TextBuffer& out, const Element& element, int depth) {
    append_tag_start(out, element, depth);
    out.append("/>");
    append_line_end(out, depth);
}

void append_opening_tag(TextBuffer& out, const Element& element, int depth, bool has_lines) {
    append_tag_start(out, element, depth);
    out.append('>');
    if (has_lines)
        append_line_end(out, depth);
}

void append_closing_tag(TextBuffer& out, const Element& element, int depth, bool has_lines) {
    if (has_lines)
        append_indentation(out, depth);
    out.append("</", NodeAccess::name(element), ">");
    append_line_end(out, depth);
}

/// The text that is the only child of an element and belongs to it; null if there is none.
const TextNode* get_only_text(const Element& element) {
    const NodeList& children = NodeAccess::children(element);
    if (children.size() != 1 || !is_plain_text(*children.front()))
        return nullptr;
    return NodeAccess::parent(*children.front()) == &element ? static_cast<const TextNode*>(children.front())
                                                             : nullptr;
}

void append_element_with_text(TextBuffer& out, const Element& element, const TextNode& text, int depth) {
    append_opening_tag(out, element, depth, false);
    append_escaped(out, NodeAccess::content(text));
    append_closing_tag(out, element, depth, false);
}

/// Writes an element and everything below it.
class ElementWriter {
public:
    ElementWriter(std::string& text, int first_depth) : out(text), depth(first_depth) {}

    void write(const Element& top) {
        write_start(top);
        while (!open.empty()) {
            OpenElement& current = open.back();
            if (current.next == current.end) {
                write_end();
            } else {
                write_child(**current.next++);
            }
        }
        out.flush();
    }

private:
    /// An element whose opening tag has been written, and the first of its children that has not.
    struct OpenElement {
        const Element* element;
        NodeList::const_iterator next;
        NodeList::const_iterator end;
        bool has_lines;  // between its tags
    };

    void write_start(const Element& element) {
        const NodeList& children = NodeAccess::children(element);
        if (children.empty()) {
            append_shorthand_tag(out, element, depth);
        } else if (const TextNode* text = get_only_text(element)) {
            append_element_with_text(out, element, *text, depth);
        } else {
            const bool has_lines = has_lines_between_tags(element, depth);
            append_opening_tag(out, element, depth, has_lines);
            open.push_back({&element, children.begin(), children.end(), has_lines});
            depth = get_child_depth(depth);
        }
    }

    void write_child(const Node& child) {
        if (is_plain_element(child)) {
            write_start(static_cast<const Element&>(child));
        } else if (is_plain_text(child)) {
            append_text_node(out, static_cast<const TextNode&>(child), depth);
        } else {
            children_may_differ = true;
            child.write_to_string(out.flushed(), depth);
        }
    }

    void write_end() {
        if (is_formatted(depth))
            --depth;
        const OpenElement& closed = open.back();
        append_closing_tag(
            out, *closed.element, depth,
            children_may_differ ? has_lines_between_tags(*closed.element, depth) : closed.has_lines);
        open.pop_back();
    }

    TextBuffer out;
    int depth;  // of what is written next
    std::vector<OpenElement> open;
    bool children_may_differ = false;  // from what they were when the opening tags were written
};

/// Calls one of the functions above with a buffer for `out`.
template <typename Append, typename... Arguments>
void append_buffered(std::string& out, Append append, const Arguments&... arguments) {
    TextBuffer buffer(out);
    append(buffer, arguments...);
    buffer.flush();
}

}  // namespace

void Attribute::write_to_string(std::string& out, int /*depth*/) const {
    append_buffered(out, append_attribute, *this);
}

void Element::write_shorthand_tag(std::string& out, int depth) const {
    append_buffered(out, append_shorthand_tag, *this, depth);
}

void Element::write_opening_tag(std::string& out, int depth) const {
    append_buffered(out, append_opening_tag, *this, depth, has_lines_between_tags(*this, depth));
}

void Element::write_closing_tag(std::string& out, int depth) const {
    append_buffered(out, append_closing_tag, *this, depth, has_lines_between_tags(*this, depth));
}

void Element::write_to_string(std::string& out, int depth) const {
    ElementWriter(out, depth).write(*this);
}

}  // namespace quxml
