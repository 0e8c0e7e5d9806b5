#include "Filling.h"

#include <memory>
#include <string>

#include "NodeAccess.h"
#include "ordering.h"

namespace quxml {

Filling::Filling(Element& element)
    : parent(element), is_appending(NodeAccess::keep_sorted(element)), is_in_order(true) {}

Filling::~Filling() {
    settle();
}

Element* Filling::add_element(std::string_view name) {
    return add_element(name, NodeAccess::keep_sorted(parent));
}

Element* Filling::add_element(std::string_view name, bool keep_sorted) {
    // Without a name at first: a view would have to become a string to be handed on, and be copied once more.
    // What is assigned below is moved.
    auto child = std::make_unique<Element>(std::string(), &parent, keep_sorted);
    NodeAccess::name(*child) = std::string(name);
    link(child.get());
    return child.release();
}

/// Nodes without a name stand in front of all others, in an order of their own, whatever the order after
/// them: a new one is linked at its place.
void Filling::link(Element* child) {
    const std::string& name = NodeAccess::name(*child);
    if (!is_appending || name.empty()) {
        link_new_node(parent, child);
        return;
    }
    const NodeList& children = NodeAccess::children(parent);
    if (!children.empty() && name < NodeAccess::name(*children.back()))
        is_in_order = false;
    NodeAccess::link_last(parent, child);
}

void Filling::settle() noexcept {
    if (!is_in_order) {
        const auto has_lesser_name = [](const Node* a, const Node* b) {
            return NodeAccess::name(*a) < NodeAccess::name(*b);
        };
        NodeAccess::children(parent).sort(has_lesser_name);
        NodeAccess::relink_children(parent);
        is_in_order = true;
    }
    is_appending = false;
}

void AttributeFilling::set_attribute(std::string_view name, std::string_view value) {
    if (Attribute* present = find(name)) {
        NodeAccess::value(*present) = value;
        return;
    }
    auto attribute = std::make_unique<Attribute>(std::string(), std::string(), &element);
    NodeAccess::name(*attribute) = std::string(name);
    NodeAccess::value(*attribute) = std::string(value);
    NodeAccess::attributes(element).push_back(attribute.get());
    Attribute* added = attribute.release();
    if (!index.empty())
        index.emplace(NodeAccess::name(*added), added);
}

/// The attribute of this name, or null.
Attribute* AttributeFilling::find(std::string_view name) {
    constexpr std::size_t few = 16;
    const AttributeList& attributes = NodeAccess::attributes(element);
    if (attributes.size() <= few)
        return const_cast<Attribute*>(find_attribute(element, name));
    if (index.empty()) {
        for (Attribute* attribute : attributes)
            index.emplace(NodeAccess::name(*attribute), attribute);
    }
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

}  // namespace quxml
