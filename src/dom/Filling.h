// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_FILLING_H
#define QUXML_DOM_FILLING_H

#include <map>
#include <memory>
#include <string_view>

#include "quxml/Attribute.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"

namespace quxml {

/// Fills elements that have no children yet with elements that arrive one by one, each of them without an item
/// at the moment it is linked, as reading and copying do.
///
/// If such an element is kept sorted, its children are appended first and sorted once, by name, when all have
/// arrived. That gives the tree that linking each of them at its sorted place would give, without a walk for
/// each: an element without an item goes after all its namesakes, so the names alone decide, and namesakes keep
/// the order of their arrival.
struct Filling {
    /// Appends an element; it takes its place in the order with `settle`.
    static Element* add_element(Element& parent, std::string_view name, bool keep_sorted);

    /// Adds text at its place, which is the first in an element that is kept sorted.
    static TextNode* add_text(Element& parent, std::string_view text);

    /// Puts the children in their order if they are kept sorted.
    static void settle(Element& parent) noexcept;
};

/// Gives attributes to an element that has none yet, as `Element::set_attribute` does for each, but without
/// comparing each name with all the others: beyond a few attributes the names are looked up in an index.
class AttributeFilling {
public:
    explicit AttributeFilling(Element& new_element) : element(new_element) {}

    void set_attribute(std::string_view name, std::string_view value);

private:
    using Index = std::map<std::string_view, Attribute*>;

    Attribute* find(std::string_view name);

    Element& element;
    std::unique_ptr<Index> index;  // of every attribute; null as long as there are few
};

}  // namespace quxml

#endif
