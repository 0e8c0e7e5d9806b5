// SPDX-License-Identifier: MIT
#include "Filling.h"

#include <algorithm>
#include <string>

#include "NodeAccess.h"
#include "ordering.h"

namespace quxml {

/// Nodes without a name stand in front of all others, in an order of their own, whatever the order after
/// them: a new one is linked at its place.
Element* Filling::add_element(Element& parent, std::string_view name, bool keep_sorted) {
    if (name.empty())
        return NodeAccess::add_element(parent, name, keep_sorted);
    auto child = NodeAccess::make_element(name, parent, keep_sorted);
    NodeAccess::link_last(parent, child.get());
    return child.release();
}

TextNode* Filling::add_text(Element& parent, std::string_view text) {
    auto child = NodeAccess::make_text(text, parent);
    link_new_node(parent, child.get());
    return child.release();
}

void Filling::settle(Element& parent) noexcept {
    const NodeList& children = NodeAccess::children(parent);
    if (NodeAccess::keep_sorted(parent) && !std::is_sorted(children.begin(), children.end(), has_lesser_name))
        sort_by_name(parent);
}

void AttributeFilling::set_attribute(std::string_view name, std::string_view value) {
    if (Attribute* present = find(name)) {
        NodeAccess::value(*present) = value;
        return;
    }
    auto attribute = NodeAccess::make_attribute(name, value, element);
    NodeAccess::attributes(element).push_back(attribute.get());
    Attribute* added = attribute.release();
    if (index != nullptr)
        index->emplace(NodeAccess::name(*added), added);
}

/// The attribute of this name, or null.
Attribute* AttributeFilling::find(std::string_view name) {
    constexpr std::size_t few = 64;  // up to these, comparing names takes less time than an index
    const AttributeList& attributes = NodeAccess::attributes(element);
    if (attributes.size() <= few)
        return const_cast<Attribute*>(find_attribute(element, name));
    if (index == nullptr) {
        index = std::make_unique<Index>();
        for (Attribute* attribute : attributes)
            index->emplace(NodeAccess::name(*attribute), attribute);
    }
    const auto found = index->find(name);
    return found == index->end() ? nullptr : found->second;
}

}  // namespace quxml
