// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_NODE_ACCESS_H
#define QUXML_DOM_NODE_ACCESS_H

// The library's own view of the nodes: fields by reference, and the class of a node. The getters of the
// public interface return copies, which suits users and would cost the library a copy for every look.
//
// What links children is defined in Node.cpp, beside the operations of the interface that do the same;
// `find_attribute` and `first_text` are defined in Element.cpp.

#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>

#include "quxml/Attribute.h"
#include "quxml/Element.h"
#include "quxml/Node.h"
#include "quxml/TextNode.h"

namespace quxml {

struct NodeAccess {
    static const NodeList& children(const Node& node) { return node.children; }
    static NodeList& children(Node& node) { return node.children; }
    static const Element* parent(const Node& node) { return node.parent; }
    static const std::string& name(const Node& node) { return node.name; }
    static std::string& name(Node& node) { return node.name; }
    static bool keep_sorted(const Node& node) { return node.keep_sorted; }
    static const AttributeList& attributes(const Element& element) { return element.attributes; }
    static const std::string& value(const Attribute& attribute) { return attribute.value; }
    static std::string& value(Attribute& attribute) { return attribute.value; }
    static AttributeList& attributes(Element& element) { return element.attributes; }
    static const std::string& content(const TextNode& text) { return text.content; }

    /// What the constructors without strings make.
    static std::unique_ptr<Element> make_element(std::string_view name, Element& parent, bool keep_sorted) {
        return std::unique_ptr<Element>(new Element(name.data(), name.size(), &parent, keep_sorted));
    }
    static std::unique_ptr<Attribute> make_attribute(std::string_view name, std::string_view value,
                                                     Element& parent) {
        return std::unique_ptr<Attribute>(
            new Attribute(name.data(), name.size(), value.data(), value.size(), &parent));
    }
    static std::unique_ptr<TextNode> make_text(std::string_view text, Element& parent) {
        return std::unique_ptr<TextNode>(new TextNode(&parent, text.data(), text.size()));
    }

    /// Creates an element and links it at the place of a new child, see `link_new_node`.
    static Element* add_element(Element& parent, std::string_view name, bool keep_sorted);

    /// Links `node` as the last child.
    /// \throws std::bad_alloc nothing has changed.
    static void link_last(Node& parent, Node* node);

    /// Links `node` before `position`, see `Node::insert_node`.
    /// \throws std::bad_alloc nothing has changed.
    static void link_before(Node& parent, Node* node, NodeList::iterator position);

    /// Makes the sibling links follow the list of children, of which there is one at least, again.
    static void relink_children(Node& parent) noexcept;
};

/// Whether the node's class is exactly `Element`, so that no operation of a derived class is passed over when
/// the library handles the node without a virtual call. Comparing addresses is enough: where one class has
/// several type descriptions the answer is "no", and the virtual call is made.
inline bool is_plain_element(const Node& node) {
    return &typeid(node) == &typeid(Element);
}

/// The same for `TextNode`.
inline bool is_plain_text(const Node& node) {
    return &typeid(node) == &typeid(TextNode);
}

/// The node as an element, or null.
inline const Element* as_element(const Node* node) {
    if (is_plain_element(*node))
        return static_cast<const Element*>(node);
    return is_plain_text(*node) ? nullptr : dynamic_cast<const Element*>(node);
}

/// The node as text, or null.
inline const TextNode* as_text(const Node* node) {
    if (is_plain_text(*node))
        return static_cast<const TextNode*>(node);
    return is_plain_element(*node) ? nullptr : dynamic_cast<const TextNode*>(node);
}

/// Whether a name is the one wanted. Names of one length mostly differ in their last byte, so that is looked at
/// before all bytes are compared by a call.
inline bool is_name(const std::string& name, std::string_view wanted) noexcept {
    return name.size() == wanted.size() &&
           (wanted.empty() || (name.back() == wanted.back() && name == wanted));
}

/// The element's attribute of exactly this name, or null.
const Attribute* find_attribute(const Element& element, std::string_view name) noexcept;

/// The element's item, which is the value of its attribute "item", or null. Repeats the loop of
/// `find_attribute` where the compiler can put it in place: with a name and a length that are known it takes
/// half the time, and sorting looks for an item in every element.
inline const std::string* find_item(const Element& element) noexcept {
    for (const Attribute* attribute : NodeAccess::attributes(element)) {
        if (std::string_view(NodeAccess::name(*attribute)) == "item")
            return &NodeAccess::value(*attribute);
    }
    return nullptr;
}

/// The first child that is text, or null.
const TextNode* first_text(const Node& node) noexcept;

}  // namespace quxml

#endif
