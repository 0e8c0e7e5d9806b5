// The canonical order of children: by name, and namesakes by item.
//
// The order is not a strict weak one. An element without an item goes before each of its namesakes, and each
// of them goes before it. That is what puts a new element without an item behind all its namesakes, and it is
// why the place of a new child is found by a walk from the front and why sorting must be the stable merge of
// `std::list::sort`: another search or another sort would be as right by the rules of an order, and give
// another result.

#include "ordering.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "NodeAccess.h"
#include "integer.h"

namespace quxml {

namespace {

/// What the order looks at in one node, each thing read when it is first needed and then kept.
class SortKey {
public:
    explicit SortKey(const Node& node) : name(&NodeAccess::name(node)), element(as_element(&node)) {}

    bool is_before(SortKey& other) {
        const int order = name->compare(*other.name);
        if (order != 0)
            return order < 0;
        if (element == nullptr || other.element == nullptr)
            return false;
        return get_item() == nullptr || other.get_item() == nullptr || is_item_before(other);
    }

private:
    /// Deliberate: the first item is read before the second is looked at, so an item that is no number leads
    /// to the comparison as text even if the other one is beyond the range of `int`.
    bool is_item_before(SortKey& other) {
        if (get_number() && other.get_number())
            return *number < *other.number;
        return *item < *other.item;
    }

    /// Null if the item is absent or empty, which is the same to the order.
    const std::string* get_item() {
        if (!has_item) {
            const Attribute* attribute = find_attribute(*element, "item");
            if (attribute != nullptr && !NodeAccess::value(*attribute).empty())
                item = &NodeAccess::value(*attribute);
            has_item = true;
        }
        return item;
    }

    /// \throws std::out_of_range ("stoi")
    const std::optional<int>& get_number() {
        if (!has_number)
            number = read_integer(*get_item());
        has_number = true;
        return number;
    }

    const std::string* name;
    const Element* element;
    const std::string* item = nullptr;
    std::optional<int> number;
    bool has_item = false;
    bool has_number = false;
};

}  // namespace

bool is_sorted_before(Node* a, Node* b) {
    SortKey key(*a);
    SortKey other(*b);
    return key.is_before(other);
}

void link_new_node(Node& parent, NodeList& entry) {
    if (!NodeAccess::keep_sorted(parent)) {
        NodeAccess::link_last(parent, entry);
        return;
    }
    SortKey key(*entry.front());
    NodeList& children = NodeAccess::children(parent);
    const auto is_passed = [&key](const Node* child) { return SortKey(*child).is_before(key); };
    NodeAccess::link_before(parent, entry, std::find_if_not(children.begin(), children.end(), is_passed));
}

void Node::sort_children() {
    if (children.size() < 2)
        return;
    children.sort(is_sorted_before);
    NodeAccess::relink_children(*this);
}

void Node::sort_children_recursively() {
    std::vector<Node*> unsorted(1, this);
    while (!unsorted.empty()) {
        Node* node = unsorted.back();
        unsorted.pop_back();
        node->sort_children();
        unsorted.insert(unsorted.end(), node->children.rbegin(), node->children.rend());
    }
}

}  // namespace quxml
