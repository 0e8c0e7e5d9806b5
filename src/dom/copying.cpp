// Copies of nodes, each attached to its new parent by its own class.
//
// The elements below an element are copied on a list of open elements instead of by recursion: for each, its
// copy and the source's next child. Only elements and texts of the library's own classes are handled that
// way; a node of a derived class is asked to copy itself.

#include <deque>
#include <utility>

#include "Filling.h"
#include "NodeAccess.h"
#include "quxml/Document.h"

namespace quxml {

namespace {

/// An element that is being copied.
struct OpenElement {
    OpenElement(const Element& source, Element& copy_of_source)
        : children(NodeAccess::children(source)),
          next(children.begin()),
          copy(copy_of_source),
          filling(copy) {}

    const NodeList& children;
    NodeList::const_iterator next;
    Element& copy;
    Filling filling;
};

void copy_attributes(const Element& source, Element& copy) {
    for (const Attribute* attribute : NodeAccess::attributes(source)) {
        copy.set_attribute(NodeAccess::name(*attribute), NodeAccess::value(*attribute));
    }
}

/// Copies attributes and everything below `source` into `copy`, which has no children.
void copy_content(const Element& source, Element& copy) {
    std::deque<OpenElement> open;
    copy_attributes(source, copy);
    open.emplace_back(source, copy);
    while (!open.empty()) {
        OpenElement& current = open.back();
        if (current.next == current.children.end()) {
            open.pop_back();
            continue;
        }
        const Node& child = **current.next++;
        if (is_plain_element(child)) {
            const auto& element = static_cast<const Element&>(child);
            Element* child_copy =
                current.filling.add_element(NodeAccess::name(child), NodeAccess::keep_sorted(child));
            copy_attributes(element, *child_copy);
            open.emplace_back(element, *child_copy);
        } else {
            if (!is_plain_text(child))
                current.filling.settle();
            current.copy.import_node(&child, true);
        }
    }
}

}  // namespace

Node* Node::import_node(const Node* node, bool deep) {
    return node->get_deep_copy_of_node(deep, static_cast<Element*>(this));
}

Node* Element::get_deep_copy_of_node(bool deep, Element* new_parent) const {
    auto copy = std::make_unique<Element>(name, new_parent, keep_sorted);
    new_parent->add_new_node(copy.get());
    Element* linked = copy.release();
    if (deep)
        copy_content(*this, *linked);
    return linked;
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
        copy_content(*source, *root);
    return root;
}

}  // namespace quxml
