// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_FINDING_H
#define QUXML_EXTRAS_FINDING_H

/// \file
/// Queries whose results are elements in document order: parents before their children, first to last. The
/// paths are those of `Node::find_exact_match`, which see; nodes that are not elements are left out.
///
/// A value that comes from outside never goes into a path. It is compared:
///
///     find_elements(root, "catalog/book", where("id") == id)
///
/// \par Lifetime
/// Results are borrowed pointers: valid until the element, or one above it, is removed.
/// \par Errors
/// Those of `Node::find_exact_match` for a path that cannot be read, `std::invalid_argument` and
/// `std::out_of_range`; `std::bad_alloc`; what a condition throws leaves too. Nothing has changed after any.
/// \par Complexity
/// The query, and a walk from the start node along the branches that lead to its results.

#include <quxml/Element.h>

#include <functional>
#include <string>
#include <vector>

#include "TextView.h"
#include "Value.h"
#include "values.h"

namespace quxml {
namespace extras {

/// What an element has to fulfil. It must not change the tree.
using Condition = std::function<bool(const Element&)>;

/// The elements that a path selects, starting at `start`.
/// \param start at which the path begins, see `Node::find_exact_match`.
/// \param path of which a value from outside is never a part.
/// \return in document order; borrowed pointers, never null.
std::vector<Element*> find_elements(Node& start, const std::string& path);

/// Those of them that fulfil `condition`, which is asked in document order.
std::vector<Element*> find_elements(Node& start, const std::string& path, const Condition& condition);

/// The first of the elements that a path selects, or null. Borrowed. All of them are looked for.
Element* find_first(Node& start, const std::string& path);

/// The first of them that fulfils `condition`, or null. Borrowed.
Element* find_first(Node& start, const std::string& path, const Condition& condition);

/// The nodes of a query's result in document order.
/// \param top the node at which the query was made, or any node above.
/// \param nodes of which `top` may be one; those that are neither it nor below it are left out.
/// \return borrowed pointers, never null.
/// \throws std::bad_alloc
std::vector<Node*> in_document_order(Node& top, const NodeSet& nodes);

/// A value of an element that is compared in a condition: see `where` and `where_text`. Comparing makes a copy
/// of both names and values, so a condition may be kept. An element that does not have the value fulfils no
/// comparison, `!=` included.
class Selected {
public:
    /// Reads the value of an element; false if it has none.
    using Read = std::function<bool(const Element&, std::string&)>;

    /// \param reader kept by each condition that is made.
    explicit Selected(Read reader) : read(std::move(reader)) {}

    /// Whether the element's value equals: text in any form as text, byte for byte; other values as values of type `T`,
    /// so "07" equals 7. What cannot be read as a `T` fulfils no comparison.
    /// \throws std::bad_alloc as the others
    template <class T>
    Condition operator==(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other == held; });
    }

    /// Whether the element has another value.
    template <class T>
    Condition operator!=(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other != held; });
    }

    /// Whether the element's value is less.
    template <class T>
    Condition operator<(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other < held; });
    }

    /// Whether the element's value is less or equal.
    template <class T>
    Condition operator<=(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other <= held; });
    }

    /// Whether the element's value is greater.
    template <class T>
    Condition operator>(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other > held; });
    }

    /// Whether the element's value is greater or equal.
    template <class T>
    Condition operator>=(const T& value) const {
        const Held<T> held(value);
        return compare<Held<T>>([held](const Held<T>& other) { return other >= held; });
    }

    /// Whether the element has the value at all.
    Condition exists() const;

private:
    template <class T, class Compare>
    Condition compare(Compare fulfils) const {
        const Read reader = read;
        return [reader, fulfils](const Element& element) {
            std::string text;
            T value = T();
            return reader(element, text) && Value<T>::read(text, value) && fulfils(value);
        };
    }

    Read read;
};

/// The value of an attribute. Keeps a copy of its name.
/// \throws std::bad_alloc
/// \par Complexity
/// Each comparison is linear in the attributes of the element and in the length of the value.
Selected where(const std::string& attribute_name);

/// The first text of the first child element called `child`; empty if that has no text. Keeps a copy of the name.
/// \throws std::bad_alloc
/// \par Complexity
/// Each comparison is linear in the children of the element and in the length of the text.
Selected where_text(const std::string& child);

}  // namespace extras
}  // namespace quxml

#endif
