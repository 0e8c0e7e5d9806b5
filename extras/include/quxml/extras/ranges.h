// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_RANGES_H
#define QUXML_EXTRAS_RANGES_H

/// \file
/// Ranges over parts of a tree, for `for (Element& user : elements(users, "user"))` and for the standard
/// algorithms. They copy nothing, allocate nothing, follow the links between nodes and need no stack. From a
/// node that is const they give nodes that are const.
///
/// \par What may change while a range is walked
/// In the body of the loop the current node (or attribute) may be removed with everything below it, and
/// whatever lies below it may be changed or removed. Nothing else that the range has yet to visit, nor a
/// sibling or an ancestor of the current node, may be removed meanwhile: the iterator would be left with a
/// pointer to what is gone. What is added beside the current node may be visited or not; values, names and
/// attributes may change freely.
/// \par Lifetime
/// A range borrows the node and the name that it was given, and can be walked any number of times while they
/// are there; the tree may change between two walks. Names are not copied: a temporary `std::string` is refused
/// by the compiler.
/// \par Errors
/// None: nothing here throws.
/// \par Complexity
/// Linear in the nodes that are passed, whether they are of the kind that is asked for or not.

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

#include "Fields.h"
#include "TextView.h"

namespace quxml {
namespace extras {

/// The name of a node without a copy; empty for text.
/// \return borrowed: valid until the name is set or the node destroyed.
inline const std::string& name_of(const Node& node) {
    return Fields::name_of(node);
}

/// What a range visits, `Wanted`, and as a constant if what it is made from, `Given`, is one. There is no such
/// type, and so no range, if `Given` is not a `Base`.
template <class Given, class Wanted, class Base = Node>
using Like = typename std::enable_if<
    std::is_base_of<Base, Given>::value,
    typename std::conditional<std::is_const<Given>::value, const Wanted, Wanted>::type>::type;

/// What the functions below return: the nodes that a walk visits. A `Walk` can be copied and has three functions:
///
///     void begin();    // goes to the first node
///     void go_on();    // goes to the next one; the current node may be gone
///     ... get() const; // the current node; null at the end, and before the beginning
template <class Visited, class Walk>
class Range {
public:
    /// An input iterator: it goes forward once.
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Visited;
        using difference_type = std::ptrdiff_t;
        using pointer = Visited*;
        using reference = Visited&;

        /// An iterator that is where `start` is.
        explicit iterator(const Walk& start) : walk(start) {}

        /// The current node. The iterator must not be at the end.
        reference operator*() const { return static_cast<Visited&>(*walk.get()); }

        /// The same as a pointer.
        pointer operator->() const { return &**this; }

        /// Goes on to the next node, also if the current one has been removed.
        iterator& operator++() {
            walk.go_on();
            return *this;
        }

        /// The same. \return where the iterator was.
        iterator operator++(int) {
            iterator former = *this;
            ++*this;
            return former;
        }

        /// Whether both are at the same node, or at the end.
        friend bool operator==(const iterator& a, const iterator& b) { return a.walk.get() == b.walk.get(); }
        friend bool operator!=(const iterator& a, const iterator& b) { return !(a == b); }

    private:
        Walk walk;
    };

    /// \param start has not begun.
    Range(const Walk& start) : walk(start) {}

    /// Looks for the first node.
    iterator begin() const {
        Walk begun = walk;
        begun.begin();
        return iterator(begun);
    }

    iterator end() const { return iterator(walk); }

    /// Looks for the first node, as `begin`.
    bool empty() const { return begin() == end(); }

private:
    Walk walk;
};

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

/// All children, in order.
template <class Parent>
Range<Like<Parent, Node>, ChildrenWalk<AnyNode>> children(Parent& parent) {
    return ChildrenWalk<AnyNode>(parent, AnyNode());
}

/// The children that are elements, in order.
template <class Parent>
Range<Like<Parent, Element>, ChildrenWalk<AnyElement>> elements(Parent& parent) {
    return ChildrenWalk<AnyElement>(parent, AnyElement());
}

/// The children that are elements called `name` (bytes, case-sensitive), in order.
/// \param name borrowed for as long as the range.
template <class Parent>
Range<Like<Parent, Element>, ChildrenWalk<NamedElement>> elements(Parent& parent, LastingName name) {
    return ChildrenWalk<NamedElement>(parent, NamedElement{name});
}

/// The children that are text, in order.
template <class Parent>
Range<Like<Parent, TextNode>, ChildrenWalk<AnyText>> texts(Parent& parent) {
    return ChildrenWalk<AnyText>(parent, AnyText());
}

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

/// The elements below `top`, which is not among them, in document order: parents before their children, first
/// to last.
template <class Top>
Range<Like<Top, Element>, DescendantsWalk<AnyElement>> descendants(Top& top) {
    return DescendantsWalk<AnyElement>(top, AnyElement());
}

/// The elements below `top` that are called `name` (bytes, case-sensitive), in document order.
/// \param name borrowed for as long as the range.
template <class Top>
Range<Like<Top, Element>, DescendantsWalk<NamedElement>> descendants(Top& top, LastingName name) {
    return DescendantsWalk<NamedElement>(top, NamedElement{name});
}

/// All nodes below `top`, text included, in document order.
template <class Top>
Range<Like<Top, Node>, DescendantsWalk<AnyNode>> all_descendants(Top& top) {
    return DescendantsWalk<AnyNode>(top, AnyNode());
}

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

/// The elements above `node`, from its parent to the root.
template <class Below>
Range<Like<Below, Element>, AncestorsWalk> ancestors(Below& node) {
    return AncestorsWalk(node);
}

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

/// The attributes, in the order in which their names were first set.
template <class Owner>
Range<Like<Owner, Attribute, Element>, AttributesWalk> attributes(Owner& element) {
    return AttributesWalk(element);
}

}  // namespace extras
}  // namespace quxml

#endif
