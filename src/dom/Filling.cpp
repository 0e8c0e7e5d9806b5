#include "Filling.h"

#include <memory>
#include <utility>

#include "NodeAccess.h"
#include "ordering.h"

namespace quxml {

Filling::Filling(Element& element)
    : parent(element), appending(NodeAccess::keep_sorted(element)), in_order(true) {}

Filling::~Filling() {
    settle();
}

Element* Filling::add_element(std::string name) {
    return add_element(std::move(name), NodeAccess::keep_sorted(parent));
}

Element* Filling::add_element(std::string name, bool keep_sorted) {
    // An element without a name has its place among the texts, whose order is another one.
    if (appending && name.empty())
        settle();
    auto child = std::make_unique<Element>(std::string(), &parent, keep_sorted);
    NodeAccess::name(*child).swap(name);
    NodeList entry(1, child.get());
    if (appending) {
        const NodeList& children = NodeAccess::children(parent);
        if (!children.empty() && NodeAccess::name(*child) < NodeAccess::name(*children.back()))
            in_order = false;
        NodeAccess::link_last(parent, entry);
    } else {
        link_new_node(parent, entry);
    }
    return child.release();
}

void Filling::settle() noexcept {
    if (!in_order) {
        const auto has_lesser_name = [](const Node* a, const Node* b) {
            return NodeAccess::name(*a) < NodeAccess::name(*b);
        };
        NodeAccess::children(parent).sort(has_lesser_name);
        NodeAccess::relink_children(parent);
        in_order = true;
    }
    appending = false;
}

}  // namespace quxml
