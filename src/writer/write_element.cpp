// Elements and attributes as XML text.
//
// Where white space goes in formatted text, for a node at level n; compact text has none:
//
//     what is written                                      before it     behind it
//     shorthand tag (no children)                          2n spaces     line end
//     opening tag                                          2n spaces     line end
//     opening tag, the only child is text                  2n spaces     nothing
//     text that is the only child                          nothing       nothing
//     text that has siblings                               2n spaces     line end
//     closing tag                                          2n spaces     line end
//     closing tag, the only child is text                  nothing       line end
//
// The elements below an element are written on a list of open elements instead of by recursion. Only nodes of
// the library's own classes are written that way; a node of a derived class is asked to write itself.

#include <vector>

#include "dom/NodeAccess.h"
#include "layout.h"

namespace quxml {

namespace {

/// Counts the children first, so that a long list of them is not searched for text.
bool is_only_child_text(const Element& element) {
    return NodeAccess::children(element).size() == 1 && first_text(element) != nullptr;
}

/// "<", the name and the attributes.
void append_tag_start(std::string& out, const Element& element) {
    out += '<';
    out += NodeAccess::name(element);
    for (const Attribute* attribute : NodeAccess::attributes(element))
        attribute->write_to_string(out, -1);
}

}  // namespace

// Deliberate: names and values are written as they are, whatever they hold.
void Attribute::write_to_string(std::string& out, int /*depth*/) const {
    out += ' ';
    out += name;
    out += "=\"";
    out += value;
    out += '"';
}

void Element::write_shorthand_tag(std::string& out, int depth) const {
    append_indentation(out, depth);
    append_tag_start(out, *this);
    out += "/>";
    append_line_end(out, depth);
}

void Element::write_opening_tag(std::string& out, int depth) const {
    append_indentation(out, depth);
    append_tag_start(out, *this);
    out += '>';
    if (!children.empty() && !is_only_child_text(*this))
        append_line_end(out, depth);
}

void Element::write_closing_tag(std::string& out, int depth) const {
    if (!children.empty() && !is_only_child_text(*this))
        append_indentation(out, depth);
    out += "</";
    out += name;
    out += '>';
    append_line_end(out, depth);
}

namespace {

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
    }

private:
    /// An element whose opening tag has been written, and the first of its children that has not.
    struct OpenElement {
        const Element* element;
        NodeList::const_iterator next;
        NodeList::const_iterator end;
    };

    void write_start(const Element& element) {
        const NodeList& children = NodeAccess::children(element);
        if (children.empty()) {
            element.write_shorthand_tag(out, depth);
            return;
        }
        element.write_opening_tag(out, depth);
        open.push_back({&element, children.begin(), children.end()});
        depth = get_child_depth(depth);
    }

    void write_child(const Node& child) {
        if (is_plain_element(child)) {
            write_start(static_cast<const Element&>(child));
        } else {
            child.write_to_string(out, depth);
        }
    }

    void write_end() {
        if (is_formatted(depth))
            --depth;
        open.back().element->write_closing_tag(out, depth);
        open.pop_back();
    }

    std::string& out;
    int depth;  // of what is written next
    std::vector<OpenElement> open;
};

}  // namespace

void Element::write_to_string(std::string& out, int depth) const {
    ElementWriter(out, depth).write(*this);
}

}  // namespace quxml
