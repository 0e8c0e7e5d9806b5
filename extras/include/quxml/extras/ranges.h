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

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

#include "Fields.h"
#include "TextView.h"
#include "walks.h"

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

/// What the functions below return: the nodes that a walk visits. A `Walk` can be copied and has three functions
/// that do not throw:
///
///     void begin();    // goes to the first node
///     void go_on();    // goes to the next one; the current node may be gone
///     ... get() const; // the current node; null at the end, and before the beginning
template <class Visited, class Walk>
class Range {
public:
    /// An input iterator. Valid until the current node's next sibling or an ancestor of it is removed, see above.
    class iterator {
    public:
        /// It goes forward, once.
        using iterator_category = std::input_iterator_tag;
        /// What is visited: nodes, elements, texts or attributes, and whether they are constant.
        using value_type = Visited;
        /// The standard library asks for it; iterators cannot be subtracted.
        using difference_type = std::ptrdiff_t;
        /// What `->` gives: borrowed.
        using pointer = Visited*;
        /// What `*` gives: borrowed.
        using reference = Visited&;

        /// An iterator that is where `start` is.
        explicit iterator(const Walk& start) : walk(start) {}

        /// The current node, borrowed. The iterator must not be at the end.
        reference operator*() const { return static_cast<Visited&>(*walk.get()); }

        /// The same as a pointer.
        pointer operator->() const { return &**this; }

        /// Goes on to the next node, also if the current one has been removed. The iterator must not be at the end.
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
        /// Whether they are not.
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

    /// Where all walks end; constant.
    iterator end() const { return iterator(walk); }

    /// Looks for the first node, as `begin`.
    bool empty() const { return begin() == end(); }

private:
    Walk walk;
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
template <class Parent>
Range<Like<Parent, Element>, ChildrenWalk<NamedElement>> elements(Parent& parent, LastingName name) {
    return ChildrenWalk<NamedElement>(parent, NamedElement{name});
}

/// The children that are text, in order.
template <class Parent>
Range<Like<Parent, TextNode>, ChildrenWalk<AnyText>> texts(Parent& parent) {
    return ChildrenWalk<AnyText>(parent, AnyText());
}

/// The elements below `top`, which is not among them, in document order: parents before their children, first
/// to last.
template <class Top>
Range<Like<Top, Element>, DescendantsWalk<AnyElement>> descendants(Top& top) {
    return DescendantsWalk<AnyElement>(top, AnyElement());
}

/// The elements below `top` that are called `name` (bytes, case-sensitive), in document order.
template <class Top>
Range<Like<Top, Element>, DescendantsWalk<NamedElement>> descendants(Top& top, LastingName name) {
    return DescendantsWalk<NamedElement>(top, NamedElement{name});
}

/// All nodes below `top`, text included, in document order.
template <class Top>
Range<Like<Top, Node>, DescendantsWalk<AnyNode>> all_descendants(Top& top) {
    return DescendantsWalk<AnyNode>(top, AnyNode());
}

/// The elements above `node`, from its parent to the root.
template <class Below>
Range<Like<Below, Element>, AncestorsWalk> ancestors(Below& node) {
    return AncestorsWalk(node);
}

/// The attributes, in the order in which their names were first set.
template <class Owner>
Range<Like<Owner, Attribute, Element>, AttributesWalk> attributes(Owner& element) {
    return AttributesWalk(element);
}

}  // namespace extras
}  // namespace quxml

#endif
