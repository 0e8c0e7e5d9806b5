// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_WALKS_H
#define QUXML_EXTRAS_WALKS_H

/// \file
/// How ranges go from node to node: for ranges.h, not for its users. `Range` says what a walk has to have.

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/Node.h>

#include <algorithm>

#include "Fields.h"
#include "TextView.h"

namespace quxml {
namespace extras {

/// Which nodes a walk visits: all.
struct AnyNode {
    bool operator()(const Node& /*node*/) const { return true; }
};

/// Which nodes a walk visits: elements, those of derived classes included.
struct AnyElement {
    bool operator()(const Node& node) const { return is_element(node); }
};

/// Which nodes a walk visits: elements of one name, exactly (bytes, case-sensitive).
struct NamedElement {
    bool operator()(const Node& node) const { return name.equals(Fields::name_of(node)) && is_element(node); }

    TextView name;
};

/// Which nodes a walk visits: texts, those of derived classes included.
struct AnyText {
    bool operator()(const Node& node) const { return is_text(node); }
};

/// The walk over the children of a node that pass `Test`.
template <class Test>
class ChildrenWalk {
public:
    ChildrenWalk(const Node& above, Test visited)
        : parent(&above), current(nullptr), next(nullptr), test(visited) {}

    void begin() { arrive_from(Fields::first_child_of(*parent)); }
    void go_on() { arrive_from(next); }
    Node* get() const { return current; }

private:
    /// The way on is noted at arrival, since the node may be gone when it is taken.
    void arrive_from(Node* node) {
        while (node != nullptr && !test(*node))
            node = Fields::next_of(*node);
        current = node;
        next = node == nullptr ? nullptr : Fields::next_of(*node);
    }

    const Node* parent;
    Node* current;
    Node* next;
    Test test;
};

/// The walk over the nodes below a node that pass `Test`, in document order.
template <class Test>
class DescendantsWalk {
public:
    DescendantsWalk(const Node& above, Test visited)
        : top(&above),
          current(nullptr),
          previous(nullptr),
          next(nullptr),
          parent(nullptr),
          is_leaf(true),
          test(visited) {}

    void begin() { arrive_from(Fields::first_child_of(*top)); }

    void go_on() {
        Node* below = is_leaf || !is_still_there() ? nullptr : Fields::first_child_of(*current);
        arrive_from(below != nullptr ? below : next != nullptr ? next : next_above(parent));
    }

    Node* get() const { return current; }

private:
    /// The way around the node is noted at arrival, since the node may be gone when it is taken.
    void arrive_from(Node* node) {
        while (node != nullptr && !test(*node))
            node = after(*node);
        current = node;
        if (node == nullptr)
            return;
        previous = Fields::previous_of(*node);
        next = Fields::next_of(*node);
        parent = Fields::parent_of(*node);
        is_leaf = Fields::children_of(*node).empty();
    }

    Node* after(const Node& node) const {
        if (Node* below = Fields::first_child_of(node))
            return below;
        if (Node* beside = Fields::next_of(node))
            return beside;
        return next_above(Fields::parent_of(node));
    }

    /// The first node after everything below `node`, or null if that is beyond the range.
    Node* next_above(const Node* node) const {
        for (; node != nullptr && node != top; node = Fields::parent_of(*node)) {
            if (Node* beside = Fields::next_of(*node))
                return beside;
        }
        return nullptr;
    }

    /// Whether the current node has not been removed, asked of the nodes that were beside it. It is looked
    /// for among all its siblings only if it has got new neighbours on this side, or gone with them there.
    bool is_still_there() const {
        if (parent == nullptr)
            return false;
        const NodeList& siblings = Fields::children_of(*parent);
        const Node* last = siblings.empty() ? nullptr : siblings.back();
        const Node* neighbour = next != nullptr ? Fields::previous_of(*next) : last;
        if (neighbour == current || neighbour == previous)
            return neighbour == current;
        return std::find(siblings.begin(), siblings.end(), current) != siblings.end();
    }

    const Node* top;
    Node* current;
    const Node* previous;
    Node* next;
    const Node* parent;
    bool is_leaf;
    Test test;
};

/// The walk over the elements above a node.
class AncestorsWalk {
public:
    explicit AncestorsWalk(const Node& below) : node(&below), current(nullptr), next(nullptr) {}

    void begin() { arrive_at(node->get_parent()); }
    void go_on() { arrive_at(next); }
    Element* get() const { return current; }

private:
    void arrive_at(Element* element) {
        current = element;
        next = element == nullptr ? nullptr : element->get_parent();
    }

    const Node* node;
    Element* current;
    Element* next;
};

/// The walk over the attributes of an element.
class AttributesWalk {
public:
    explicit AttributesWalk(const Element& element)
        : list(&Fields::attributes_of(element)), current(nullptr), next(list->end()) {}

    void begin() {
        next = list->begin();
        go_on();
    }

    void go_on() { current = next == list->end() ? nullptr : *next++; }
    Attribute* get() const { return current; }

private:
    const AttributeList* list;
    Attribute* current;
    AttributeList::const_iterator next;
};

}  // namespace extras
}  // namespace quxml

#endif
