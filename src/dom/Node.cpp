// SPDX-License-Identifier: MIT

// The tree: linking, unlinking and destroying nodes.
//
// Children stand in a list, and a second time in the sibling links, which every operation here keeps in step.
// What can fail, the allocation of the list's entry, is done before any sibling link is changed, so a failure
// leaves the tree as it was.
//
// Destruction does not recurse. A node that is destroyed takes its children from its list one by one and
// destroys each. A child that is destroyed this way does not destroy its own children: it moves them to the
// front of the list it came from, where they are next. So destructors begin in the same order as with
// recursion, parents before their children and first to last, on a stack of constant height, and nothing is
// allocated.
//
// As an example, `a` with the children `b` (which has `c` and `d`) and `e` is destroyed:
//
//     what happens                                  list of a     list of b
//     the destructor of a begins                    b e           c d
//     it takes b; the destructor of b begins        e             c d
//     b moves its children to the front, and ends   c d e
//     a takes c, which ends                         d e
//     a takes d, which ends                         e
//     a takes e, which ends; then a ends

#include "quxml/Node.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "NodeAccess.h"
#include "failure.h"
#include "integer.h"
#include "ordering.h"

namespace quxml {

Node::Node() : Node(std::string(), nullptr, false) {}

Node::Node(Element* owner) : Node(std::string(), owner, owner->keep_sorted) {}

Node::Node(const std::string& node_name) : Node(node_name, nullptr, false) {}

Node::Node(const std::string& node_name, Element* owner, bool sorted)
    : Node(node_name.data(), node_name.size(), owner, sorted) {}

Node::Node(const char* node_name, std::size_t length, Element* owner, bool sorted)
    : keep_sorted(sorted),
      name(node_name, length),
      parent(owner),
      previous_sibling(nullptr),
      next_sibling(nullptr) {}

Node::~Node() {
    // A node that is its own previous sibling is being destroyed by the loop below, in the node that its
    // other link names. No node of a tree is ever linked like that.
    if (previous_sibling == this) {
        next_sibling->children.splice(next_sibling->children.begin(), children);
        return;
    }
    while (!children.empty()) {
        Node* child = children.front();
        children.pop_front();
        if (child == nullptr)
            continue;
        child->parent = nullptr;
        child->previous_sibling = child;
        child->next_sibling = this;
        delete child;
    }
}

std::string Node::get_name() const {
    return name;
}

void Node::set_name(const std::string& new_name) {
    name = new_name;
}

Element* Node::get_parent() const {
    return parent;
}

Node* Node::get_previous_sibling() const {
    return previous_sibling;
}

Node* Node::get_next_sibling() const {
    return next_sibling;
}

NodeList Node::get_children() const {
    return children;
}

Node* Node::get_child(const std::string& child_name) const {
    for (Node* child : children) {
        if (is_name(child->name, child_name))
            return child;
    }
    return nullptr;
}

void NodeAccess::link_last(Node& parent, Node* node) {
    Node* last = parent.children.empty() ? nullptr : parent.children.back();
    parent.children.push_back(node);
    if (last != nullptr) {
        node->previous_sibling = last;
        last->next_sibling = node;
    }
}

void NodeAccess::link_before(Node& parent, Node* node, NodeList::iterator position) {
    if (parent.children.empty() || position == parent.children.end()) {
        link_last(parent, node);
        return;
    }
    parent.children.insert(position, node);
    Node* next = *position;
    if (Node* previous = next->previous_sibling) {
        previous->next_sibling = node;
        node->previous_sibling = previous;
    }
    next->previous_sibling = node;
    node->next_sibling = next;
}

void NodeAccess::relink_children(Node& parent) noexcept {
    Node* previous = nullptr;
    for (Node* child : parent.children) {
        child->previous_sibling = previous;
        if (previous != nullptr)
            previous->next_sibling = child;
        previous = child;
    }
    parent.children.back()->next_sibling = nullptr;
}

Element* NodeAccess::add_element(Element& parent, std::string_view name, bool keep_sorted) {
    auto child = make_element(name, parent, keep_sorted);
    link_new_node(parent, child.get());
    return child.release();
}

Element* Node::add_child(const std::string& child_name) {
    return NodeAccess::add_element(*static_cast<Element*>(this), child_name, keep_sorted);
}

Element* Node::add_child(const std::string& child_name, const std::string& item) {
    auto child = NodeAccess::make_element(child_name, *static_cast<Element*>(this), keep_sorted);
    child->set_attribute("item", item);
    try {
        link_new_node(*this, child.get());
    } catch (const std::out_of_range&) {
        // Deliberate: a child whose place cannot be found is not freed.
        // Test: AddChildDeathTest.with_an_item_beyond_the_range_leaves_the_new_child_unlinked_which_is_wanted.
        static_cast<void>(child.release());
        throw;
    }
    return child.release();
}

Element* Node::add_child(const std::string& child_name, int item) {
    return add_child(child_name, write_integer(item));
}

void Node::add_new_node(Node* node) {
    link_new_node(*this, node);
}

void Node::insert_node(Node* node, NodeList::iterator position) {
    NodeAccess::link_before(*this, node, position);
}

namespace {

/// The entry of `child`, or the end; the last child is found without a walk.
NodeList::iterator find_entry(NodeList& children, Node* child) {
    if (!children.empty() && children.back() == child)
        return std::prev(children.end());
    return std::find(children.begin(), children.end(), child);
}

/// Removes every entry equal to `child`. The links show that the first or the last child stands in the list
/// only once, so removing at either end does not walk the list.
void remove_entries(NodeList& children, Node* child) {
    if (children.front() == child && child->get_previous_sibling() == nullptr) {
        children.pop_front();
    } else if (children.back() == child && child->get_next_sibling() == nullptr) {
        children.pop_back();
    } else {
        children.remove(child);
    }
}

}  // namespace

void Node::remove_child(Node* child) {
    if (child == nullptr)
        throw_invalid_argument("Can not remove nullptr pointer from Node");
    if (children.empty())
        throw_invalid_argument("Can not remove when Node has no children");
    // Deliberate: nothing checks that `child` is a child of this node; the caller vouches for it.
    // Test: RemoveChild.takes_a_foreign_node_out_of_its_own_siblings_though_its_parent_still_lists_it_which_is_wanted.
    if (children.size() > 1) {
        if (child != children.front())
            child->previous_sibling->next_sibling = child->next_sibling;
        if (child != children.back())
            child->next_sibling->previous_sibling = child->previous_sibling;
    }
    remove_entries(children, child);
    child->previous_sibling = nullptr;
    delete child;
}

void Node::set_child_first(Node* child) {
    if (child->previous_sibling == nullptr)
        return;
    auto entry = find_entry(children, child);
    Node* first = children.empty() ? nullptr : children.front();
    // Deliberate: membership is not checked; a node from elsewhere is put at the front all the same.
    // Test: SetChildFirst.takes_a_foreign_node_to_the_front_though_its_parent_still_lists_it_which_is_wanted.
    if (entry == children.end())
        entry = children.insert(entry, child);
    child->previous_sibling->next_sibling = child->next_sibling;
    if (child->next_sibling != nullptr)
        child->next_sibling->previous_sibling = child->previous_sibling;
    child->previous_sibling = nullptr;
    child->next_sibling = first;
    if (first != nullptr)
        first->previous_sibling = child;
    children.splice(children.begin(), children, entry);
}

}  // namespace quxml
