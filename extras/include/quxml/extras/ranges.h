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
/// sibling or an ancestor of the current node, may be removed meanwhile. What is added beside the current node
/// may be visited or not; values, names and attributes may change freely.
/// \par Lifetime
/// A range borrows the tree and the name that it was given. Names are not copied: a temporary `std::string` is
/// refused by the compiler.
/// \par Complexity
/// Linear in the nodes that are passed, whether they are of the kind that is asked for or not.

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include "Fields.h"
#include "TextView.h"

namespace quxml {
namespace extras {

/// The name of a node without a copy; empty for text.
/// \return borrowed: valid until the name is set or the node destroyed.
inline const std::string& name_of(const Node& node) {
    return Fields::name_of(node);
}

/// Which nodes a range visits: all.
struct AnyNode {
    bool operator()(const Node& /*node*/) const { return true; }
};

/// Which nodes a range visits: elements, those of derived classes included.
struct AnyElement {
    bool operator()(const Node& node) const { return is_element(node); }
};

/// Which nodes a range visits: elements of one name, exactly (bytes, case-sensitive).
struct NamedElement {
    bool operator()(const Node& node) const { return name.equals(Fields::name_of(node)) && is_element(node); }

    TextView name;
};

/// Which nodes a range visits: texts, those of derived classes included.
struct AnyText {
    bool operator()(const Node& node) const { return is_text(node); }
};

/// What `children`, `elements` and `texts` return: the children of one node that pass `Test`.
template <class Visited, class Test>
class Children {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Visited;
        using difference_type = std::ptrdiff_t;
        using pointer = Visited*;
        using reference = Visited&;

        iterator(Node* first, Test visited) : current(nullptr), next(nullptr), test(visited) {
            arrive_from(first);
        }

        Visited& operator*() const { return static_cast<Visited&>(*current); }
        Visited* operator->() const { return static_cast<Visited*>(current); }

        iterator& operator++() {
            arrive_from(next);
            return *this;
        }

        iterator operator++(int) {
            iterator former = *this;
            ++*this;
            return former;
        }

        friend bool operator==(const iterator& a, const iterator& b) { return a.current == b.current; }
        friend bool operator!=(const iterator& a, const iterator& b) { return a.current != b.current; }

    private:
        /// The way on is noted at arrival, since the node may be gone when it is taken.
        void arrive_from(Node* node) {
            while (node != nullptr && !test(*node))
                node = Fields::next_of(*node);
            current = node;
            next = node == nullptr ? nullptr : Fields::next_of(*node);
        }

        Node* current;
        Node* next;
        Test test;
    };

    Children(const Node& parent, Test visited) : first(Fields::first_child_of(parent)), test(visited) {}

    iterator begin() const { return iterator(first, test); }
    iterator end() const { return iterator(nullptr, test); }
    bool empty() const { return begin() == end(); }

private:
    Node* first;
    Test test;
};

/// All children, in order.
inline Children<Node, AnyNode> children(Node& parent) {
    return Children<Node, AnyNode>(parent, AnyNode());
}

inline Children<const Node, AnyNode> children(const Node& parent) {
    return Children<const Node, AnyNode>(parent, AnyNode());
}

/// The children that are elements, in order.
inline Children<Element, AnyElement> elements(Node& parent) {
    return Children<Element, AnyElement>(parent, AnyElement());
}

inline Children<const Element, AnyElement> elements(const Node& parent) {
    return Children<const Element, AnyElement>(parent, AnyElement());
}

/// The children that are elements called `name` (bytes, case-sensitive), in order.
inline Children<Element, NamedElement> elements(Node& parent, LastingName name) {
    return Children<Element, NamedElement>(parent, NamedElement{name});
}

inline Children<const Element, NamedElement> elements(const Node& parent, LastingName name) {
    return Children<const Element, NamedElement>(parent, NamedElement{name});
}

/// The children that are text, in order.
inline Children<TextNode, AnyText> texts(Node& parent) {
    return Children<TextNode, AnyText>(parent, AnyText());
}

inline Children<const TextNode, AnyText> texts(const Node& parent) {
    return Children<const TextNode, AnyText>(parent, AnyText());
}

/// What `descendants` returns: the nodes below one node that pass `Test`, in document order.
template <class Visited, class Test>
class Descendants {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Visited;
        using difference_type = std::ptrdiff_t;
        using pointer = Visited*;
        using reference = Visited&;

        iterator(const Node* above, Node* first, Test visited)
            : top(above),
              current(nullptr),
              previous(nullptr),
              next(nullptr),
              parent(nullptr),
              is_leaf(true),
              test(visited) {
            arrive_from(first);
        }

        Visited& operator*() const { return static_cast<Visited&>(*current); }
        Visited* operator->() const { return static_cast<Visited*>(current); }

        iterator& operator++() {
            Node* below = is_leaf || !is_still_there() ? nullptr : Fields::first_child_of(*current);
            arrive_from(below != nullptr ? below : next != nullptr ? next : next_above(parent));
            return *this;
        }

        iterator operator++(int) {
            iterator former = *this;
            ++*this;
            return former;
        }

        friend bool operator==(const iterator& a, const iterator& b) { return a.current == b.current; }
        friend bool operator!=(const iterator& a, const iterator& b) { return a.current != b.current; }

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

    Descendants(const Node& above, Test visited)
        : top(&above), first(Fields::first_child_of(above)), test(visited) {}

    iterator begin() const { return iterator(top, first, test); }
    iterator end() const { return iterator(top, nullptr, test); }
    bool empty() const { return begin() == end(); }

private:
    const Node* top;
    Node* first;
    Test test;
};

/// The elements below `top`, which is not among them, in document order: parents before their children, first
/// to last.
inline Descendants<Element, AnyElement> descendants(Node& top) {
    return Descendants<Element, AnyElement>(top, AnyElement());
}

inline Descendants<const Element, AnyElement> descendants(const Node& top) {
    return Descendants<const Element, AnyElement>(top, AnyElement());
}

/// The elements below `top` that are called `name` (bytes, case-sensitive), in document order.
inline Descendants<Element, NamedElement> descendants(Node& top, LastingName name) {
    return Descendants<Element, NamedElement>(top, NamedElement{name});
}

inline Descendants<const Element, NamedElement> descendants(const Node& top, LastingName name) {
    return Descendants<const Element, NamedElement>(top, NamedElement{name});
}

/// All nodes below `top`, text included, in document order.
inline Descendants<Node, AnyNode> all_descendants(Node& top) {
    return Descendants<Node, AnyNode>(top, AnyNode());
}

inline Descendants<const Node, AnyNode> all_descendants(const Node& top) {
    return Descendants<const Node, AnyNode>(top, AnyNode());
}

/// What `ancestors` returns: the elements above a node.
template <class Visited>
class Ancestors {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Visited;
        using difference_type = std::ptrdiff_t;
        using pointer = Visited*;
        using reference = Visited&;

        explicit iterator(Element* first) : current(nullptr), next(nullptr) { arrive_at(first); }

        Visited& operator*() const { return *current; }
        Visited* operator->() const { return current; }

        iterator& operator++() {
            arrive_at(next);
            return *this;
        }

        iterator operator++(int) {
            iterator former = *this;
            ++*this;
            return former;
        }

        friend bool operator==(const iterator& a, const iterator& b) { return a.current == b.current; }
        friend bool operator!=(const iterator& a, const iterator& b) { return a.current != b.current; }

    private:
        void arrive_at(Element* element) {
            current = element;
            next = element == nullptr ? nullptr : element->get_parent();
        }

        Element* current;
        Element* next;
    };

    explicit Ancestors(const Node& node) : first(node.get_parent()) {}

    iterator begin() const { return iterator(first); }
    iterator end() const { return iterator(nullptr); }
    bool empty() const { return first == nullptr; }

private:
    Element* first;
};

/// The elements above `node`, from its parent to the root.
inline Ancestors<Element> ancestors(Node& node) {
    return Ancestors<Element>(node);
}

inline Ancestors<const Element> ancestors(const Node& node) {
    return Ancestors<const Element>(node);
}

/// What `attributes` returns: the attributes of an element.
template <class Visited>
class Attributes {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Visited;
        using difference_type = std::ptrdiff_t;
        using pointer = Visited*;
        using reference = Visited&;

        iterator(AttributeList::const_iterator first, AttributeList::const_iterator last)
            : current(first), next(first), end(last) {
            if (next != end)
                ++next;
        }

        Visited& operator*() const { return **current; }
        Visited* operator->() const { return *current; }

        iterator& operator++() {
            current = next;
            if (next != end)
                ++next;
            return *this;
        }

        iterator operator++(int) {
            iterator former = *this;
            ++*this;
            return former;
        }

        friend bool operator==(const iterator& a, const iterator& b) { return a.current == b.current; }
        friend bool operator!=(const iterator& a, const iterator& b) { return a.current != b.current; }

    private:
        AttributeList::const_iterator current;
        AttributeList::const_iterator next;
        AttributeList::const_iterator end;
    };

    explicit Attributes(const Element& element) : list(&Fields::attributes_of(element)) {}

    iterator begin() const { return iterator(list->begin(), list->end()); }
    iterator end() const { return iterator(list->end(), list->end()); }
    bool empty() const { return list->empty(); }

private:
    const AttributeList* list;
};

/// The attributes, in the order in which their names were first set.
inline Attributes<Attribute> attributes(Element& element) {
    return Attributes<Attribute>(element);
}

inline Attributes<const Attribute> attributes(const Element& element) {
    return Attributes<const Attribute>(element);
}

}  // namespace extras
}  // namespace quxml

#endif
