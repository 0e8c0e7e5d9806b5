#ifndef QUXML_DOM_FILLING_H
#define QUXML_DOM_FILLING_H

#include <map>
#include <string_view>

#include "quxml/Attribute.h"
#include "quxml/Element.h"

namespace quxml {

/// Fills an element that has no children yet with elements that arrive one by one, each of them without an
/// item at the moment it is linked, as reading and copying do.
///
/// If the element is kept sorted, its children are appended first and sorted once, by name, when the filling
/// ends. That gives the tree that linking each of them at its sorted place would give, without a walk for
/// each: an element without an item goes after all its namesakes, so the names alone decide, and namesakes
/// keep the order of their arrival.
class Filling {
public:
    explicit Filling(Element& parent);

    /// Ends the filling.
    ~Filling();

    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

    /// Adds an element that inherits `keep_sorted`, as `Node::add_child` does.
    Element* add_element(std::string_view name);

    /// Adds an element with a `keep_sorted` of its own.
    Element* add_element(std::string_view name, bool keep_sorted);

    /// Puts the children in their order now. From here on each new one is linked at its sorted place, so that
    /// anybody may look at the element and add to it.
    void settle() noexcept;

private:
    void link(Element* child);

    Element& parent;
    bool is_appending;  // kept sorted, and new elements are appended out of order
    bool is_in_order;
};

/// Gives attributes to an element that has none yet, as `Element::set_attribute` does for each, but without
/// comparing each name with all the others: beyond a few attributes the names are looked up in an index.
class AttributeFilling {
public:
    explicit AttributeFilling(Element& new_element) : element(new_element) {}

    void set_attribute(std::string_view name, std::string_view value);

private:
    Attribute* find(std::string_view name);

    Element& element;
    std::map<std::string_view, Attribute*> index;  // of every attribute; empty as long as there are few
};

}  // namespace quxml

#endif
