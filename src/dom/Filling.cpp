#include "Filling.h"

#include <memory>
#include <utility>

#include "NodeAccess.h"
#include "ordering.h"

namespace quxml {

Filling::Filling(Element& element)
    : parent(element), is_appending(NodeAccess::keep_sorted(element)), is_in_order(true) {}

Filling::~Filling() {
    settle();
}

Element* Filling::add_element(std::string name) {
    return add_element(std::move(name), NodeAccess::keep_sorted(parent));
}

Element* Filling::add_element(std::string name, bool keep_sorted) {
    auto child = std::make_unique<Element>(std::string(), &parent, keep_sorted);
    NodeAccess::name(*child).swap(name);
    NodeList entry(1, child.get());
    link(entry, NodeAccess::name(*child));
    return child.release();
}

/// Nodes without a name stand in front of all others, in an order of their own, whatever the order behind
/// them: a new one is linked at its place.
void Filling::link(NodeList& entry, const std::string& name) {
    if (!is_appending || name.empty()) {
        link_new_node(parent, entry);
        return;
    }
    const NodeList& children = NodeAccess::children(parent);
    if (!children.empty() && name < NodeAccess::name(*children.back()))
        is_in_order = false;
    NodeAccess::link_last(parent, entry);
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

void AttributeFilling::set_attribute(std::string name, std::string value) {
    if (Attribute* present = find(name)) {
        NodeAccess::value(*present).swap(value);
        return;
    }
    auto attribute = std::make_unique<Attribute>(std::string(), std::string(), &element);
    NodeAccess::name(*attribute).swap(name);
    NodeAccess::value(*attribute).swap(value);
    AttributeList entry(1, attribute.get());
    if (!index.empty())
        index.emplace(NodeAccess::name(*attribute), attribute.get());
    AttributeList& attributes = NodeAccess::attributes(element);
    attributes.splice(attributes.end(), entry);
    attribute.release();
}

/// The attribute of this name, or null.
Attribute* AttributeFilling::find(const std::string& name) {
    constexpr std::size_t few = 16;
    const AttributeList& attributes = NodeAccess::attributes(element);
    if (attributes.size() <= few)
        return element.get_attribute(name);
    if (index.empty()) {
        for (Attribute* attribute : attributes)
            index.emplace(NodeAccess::name(*attribute), attribute);
    }
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

}  // namespace quxml
