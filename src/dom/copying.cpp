// Copies of nodes, each attached to its new parent by its own class.
//
// The elements below an element are copied on a list of open elements instead of by recursion: for each, its
// copy and the source's next child. Only elements and texts of the library's own classes are handled that
// way; a node of a derived class is asked to copy itself.

#include <algorithm>
#include <cstddef>
#include <deque>
#include <memory>

#include "Filling.h"
#include "NodeAccess.h"
#include "quxml/Document.h"

namespace quxml {

namespace {

/// An element that is being copied.
struct OpenElement {
    OpenElement(const Element& source, Element& copy_of_source)
        : next(NodeAccess::children(source).begin()),
          end(NodeAccess::children(source).end()),
          copy(copy_of_source),
          filling(copy) {}

    /// Prepares for a derived class that looks at source and copy, and may add to both: the copy is put in
    /// order, and what remains to be copied is noted, so that it stays what it was.
    void settle() {
        remaining.assign(next, end);
        next = remaining.begin();
        end = remaining.end();
        filling.settle();
    }

    NodeList remaining;  // used once settled
    NodeList::const_iterator next;
    NodeList::const_iterator end;
    Element& copy;
    Filling filling;
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
    void copy(const Element& source, Element& new_element) {
        open_element(source, new_element);
        while (!open.empty()) {
            OpenElement& current = open.back();
            if (current.next == current.end) {
                close_element();
            } else {
                copy_child(**current.next++, current);
            }
        }
    }

private:
    void open_element(const Element& source, Element& new_element) {
        copy_attributes(source, new_element);
        if (!NodeAccess::children(source).empty())
            open.emplace_back(source, new_element);
    }

    void close_element() {
        open.pop_back();
        settled = std::min(settled, open.size());
    }

    void copy_child(const Node& child, OpenElement& current) {
        if (is_plain_element(child)) {
            const auto& element = static_cast<const Element&>(child);
            open_element(element, *current.filling.add_element(NodeAccess::name(child),
                                                               NodeAccess::keep_sorted(child)));
            return;
        }
        if (!is_plain_text(child))
            settle_all();
        current.copy.import_node(&child, true);
    }

    void settle_all() {
        for (; settled < open.size(); ++settled)
            open[settled].settle();
    }

    std::deque<OpenElement> open;
    std::size_t settled = 0;  // how many of the open elements, from the first on, have been settled
};

}  // namespace

Node* Node::import_node(const Node* node, bool deep) {
    return node->get_deep_copy_of_node(deep, static_cast<Element*>(this));
}

Node* Element::get_deep_copy_of_node(bool deep, Element* new_parent) const {
    auto copy = std::make_unique<Element>(name, new_parent, keep_sorted);
    new_parent->add_new_node(copy.get());
    Element* linked = copy.release();
    if (deep)
        ContentCopier().copy(*this, *linked);
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
        ContentCopier().copy(*source, *root);
    return root;
}

}  // namespace quxml
