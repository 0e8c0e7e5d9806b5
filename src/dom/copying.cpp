// SPDX-License-Identifier: MIT

// Copies of nodes, each attached to its new parent by its own class.
//
// The elements below an element are copied on a list of open elements instead of by recursion: for each, its
// copy and the source's next child. Texts take their place at once. Only elements and texts of the library's own
// classes are handled that way; a node of a derived class is asked to copy itself.

#include <cstddef>
#include <list>
#include <vector>

#include "Filling.h"
#include "NodeAccess.h"
#include "quxml/Document.h"

namespace quxml {

namespace {

/// An element that is being copied.
struct OpenElement {
    NodeList::const_iterator next;
    NodeList::const_iterator end;
    Element* copy;
};

void copy_attributes(const Element& source, Element& copy) {
    AttributeFilling filling(copy);
    for (const Attribute* attribute : NodeAccess::attributes(source))
        filling.set_attribute(NodeAccess::name(*attribute), NodeAccess::value(*attribute));
}

/// Copies an element's attributes and everything below it into an element that has neither attributes nor
/// children.
class ContentCopier {
public:
    ContentCopier() = default;
    ContentCopier(const ContentCopier&) = delete;
    ContentCopier& operator=(const ContentCopier&) = delete;

    /// Puts in order what an exception has left open.
    ~ContentCopier() {
        while (!open.empty())
            close_element();
    }

    void copy(const Element& source, Element& new_element) {
        open_element(source, new_element);
        while (!open.empty()) {
            OpenElement& current = open.back();
            if (current.next == current.end) {
                close_element();
            } else {
                copy_child(**current.next++, *current.copy);
            }
        }
    }

private:
    void open_element(const Element& source, Element& new_element) {
        copy_attributes(source, new_element);
        if (!NodeAccess::children(source).empty())
            open.push_back(
                {NodeAccess::children(source).begin(), NodeAccess::children(source).end(), &new_element});
    }

    void close_element() noexcept {
        if (is_settled()) {
            remaining.pop_back();
        } else {
            Filling::settle(*open.back().copy);
        }
        open.pop_back();
    }

    void copy_child(const Node& child, Element& parent) {
        if (is_plain_element(child)) {
            open_element(static_cast<const Element&>(child), *add_element(child, parent));
        } else if (is_plain_text(child)) {
            Filling::add_text(parent, NodeAccess::content(static_cast<const TextNode&>(child)));
        } else {
            settle_all();
            parent.import_node(&child, true);
        }
    }

    Element* add_element(const Node& child, Element& parent) {
        const bool keep_sorted = NodeAccess::keep_sorted(child);
        const auto add = is_settled() ? NodeAccess::add_element : Filling::add_element;
        return add(parent, NodeAccess::name(child), keep_sorted);
    }

    /// Whether the innermost open element has been settled.
    bool is_settled() const { return remaining.size() == open.size(); }

    /// Prepares for a derived class that looks at sources and copies, and may add to both: the copies are put in
    /// order, into which new elements are linked from now on, and what remains to be copied is noted, so that it
    /// stays what it was.
    void settle_all() {
        for (std::size_t i = remaining.size(); i < open.size(); ++i) {
            const NodeList& noted = remaining.emplace_back(open[i].next, open[i].end);
            open[i].next = noted.begin();
            open[i].end = noted.end();
            Filling::settle(*open[i].copy);
        }
    }

    std::vector<OpenElement> open;
    std::list<NodeList> remaining;  // for each open element, from the first on, that has been settled
};

}  // namespace

Node* Node::import_node(const Node* node, bool deep) {
    return node->get_deep_copy_of_node(deep, static_cast<Element*>(this));
}

Node* Element::get_deep_copy_of_node(bool deep, Element* new_parent) const {
    Element* copy = NodeAccess::add_element(*new_parent, name, keep_sorted);
    if (deep)
        ContentCopier().copy(*this, *copy);
    return copy;
}

Node* Attribute::get_deep_copy_of_node(bool /*deep*/, Element* new_parent) const {
    return new_parent->set_attribute(name, value);
}

Node* TextNode::get_deep_copy_of_node(bool /*deep*/, Element* new_parent) const {
    return new_parent->add_child_text(content);
}

Element* Document::create_root_node_by_import(const Element* source, bool deep) {
    create_root_node(source->get_name());
    if (deep)
        ContentCopier().copy(*source, *root);
    return root;
}

}  // namespace quxml
