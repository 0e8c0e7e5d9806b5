// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_FIELDS_H
#define QUXML_EXTRAS_FIELDS_H

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/Node.h>
#include <quxml/TextNode.h>

#include <string>
#include <typeinfo>

namespace quxml {
namespace extras {

/// What nodes hold, by reference: for the other headers and sources of the extras, not for their users.
///
/// It derives from `Node` only so that it may name that class's protected members; there are no objects of it.
struct Fields : Node {
    Fields() = delete;

    static NodeList& children_of(Node& node) { return node.*(&Fields::children); }
    static const NodeList& children_of(const Node& node) { return node.*(&Fields::children); }
    static bool is_kept_sorted(const Node& node) { return node.*(&Fields::keep_sorted); }
    static const std::string& name_of(const Node& node) { return node.*(&Fields::name); }
    static Element*& parent_of(Node& node) { return node.*(&Fields::parent); }
    static Element* parent_of(const Node& node) { return node.*(&Fields::parent); }
    static Node*& previous_of(Node& node) { return node.*(&Fields::previous_sibling); }
    static Node* previous_of(const Node& node) { return node.*(&Fields::previous_sibling); }
    static Node*& next_of(Node& node) { return node.*(&Fields::next_sibling); }
    static Node* next_of(const Node& node) { return node.*(&Fields::next_sibling); }
    static const AttributeList& attributes_of(const Element& element) { return element.attributes; }
    static const std::string& value_of(const Attribute& attribute) { return attribute.value; }

    /// The first child by the sibling links, or null. After a sort that failed the links keep their order
    /// while the list has lost it, and the links are what is followed.
    static Node* first_child_of(const Node& node) {
        const NodeList& list = children_of(node);
        if (list.empty())
            return nullptr;
        Node* first = list.front();
        while (previous_of(*first) != nullptr)
            first = previous_of(*first);
        return first;
    }
};

/// Whether the node's class is exactly `Element`; where it has several type descriptions, the answer is "no".
inline bool is_plain_element(const Node& node) {
    return &typeid(node) == &typeid(Element);
}

/// The same for `TextNode`.
inline bool is_plain_text(const Node& node) {
    return &typeid(node) == &typeid(TextNode);
}

/// The same for `Attribute`.
inline bool is_plain_attribute(const Node& node) {
    return &typeid(node) == &typeid(Attribute);
}

/// Whether the node is an `Element`, or of a class derived from it. Most nodes are of the library's own
/// classes, and those take no dynamic cast.
inline bool is_element(const Node& node) {
    if (is_plain_element(node))
        return true;
    return !is_plain_text(node) && dynamic_cast<const Element*>(&node) != nullptr;
}

/// The same for `TextNode`.
inline bool is_text(const Node& node) {
    if (is_plain_text(node))
        return true;
    return !is_plain_element(node) && dynamic_cast<const TextNode*>(&node) != nullptr;
}

}  // namespace extras
}  // namespace quxml

#endif
