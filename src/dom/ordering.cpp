// The canonical order of children: by name, and namesakes by item.
//
// The order is not a strict weak one. An element without an item goes before each of its namesakes, and each
// of them goes before it. That is what puts a new element without an item after all its namesakes, and it is
// why the place of a new child is found by a walk from the front and why sorting must be the stable merge of
// `std::list::sort`: another search or another sort would be as right by the rules of an order, and give
// another result.
//
// As an example, the children x(3) x x(1) a, with their items in parentheses, are sorted in three merges:
//
//     x(3) with x               x goes first, for it has no item      x x(3)
//     x(1) with a               a goes first, by its name             a x(1)
//     x x(3) with a x(1)        a, then x(1), for x has no item       a x(1) x x(3)
//
// A new x(2) passes a, x(1), whose item is less, and x, which has none, and is linked before x(3).

#include "ordering.h"

#include <algorithm>
#include <list>
#include <new>
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
    explicit SortKey(Node* keyed_node) : node(keyed_node) {}

    Node* get_node() const { return node; }

    /// Inlined, so that a key which lives for a single comparison costs nothing: that halves the walk to the place
    /// of a new child.
    [[gnu::always_inline]] bool is_before(SortKey& other) {
        const int order = NodeAccess::name(*node).compare(NodeAccess::name(*other.node));
        if (order != 0)
            return order < 0;
        if (as_element(node) == nullptr || as_element(other.node) == nullptr)
            return false;
        return other.get_item() == nullptr || get_item() == nullptr || is_item_before(other);
    }

private:
    /// Deliberate: the first item is read before the second is looked at, so an item that is not a number
    /// leads to the comparison as text even if the other one is beyond the range of `int`.
    /// Test: Items/ItemRange.is_checked_when_the_item_is_read/the_first_is_a_text_so_the_second_is_not_read_wanted.
    bool is_item_before(SortKey& other) {
        if (get_number() && other.get_number())
            return *number < *other.number;
        return *item < *other.item;
    }

    /// Null if the item is absent or empty, which is the same to the order.
    const std::string* get_item() {
        if (!has_item) {
            item = find_item(*as_element(node));
            if (item != nullptr && item->empty())
                item = nullptr;
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

    Node* node;
    const std::string* item = nullptr;
    std::optional<int> number;
    bool has_item = false;
    bool has_number = false;
};

}  // namespace

bool is_sorted_before(Node* a, Node* b) {
    SortKey key(a);
    SortKey other(b);
    return key.is_before(other);
}

void link_new_node(Node& parent, Node* node) {
    if (!NodeAccess::keep_sorted(parent)) {
        NodeAccess::link_last(parent, node);
        return;
    }
    SortKey key(node);
    NodeList& children = NodeAccess::children(parent);
    const auto is_passed = [&key](Node* child) { return SortKey(child).is_before(key); };
    NodeAccess::link_before(parent, node, std::find_if_not(children.begin(), children.end(), is_passed));
}

namespace {

/// The keys of the nodes, or none if there is no memory for them.
std::list<SortKey> read_keys(const NodeList& nodes) noexcept {
    try {
        return std::list<SortKey>(nodes.begin(), nodes.end());
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/// Sorts keys rather than nodes, so that no item is looked up and read more than once. Without memory for
/// that the nodes themselves are sorted: the same sort, and the same result.
void sort_nodes(NodeList& nodes) {
    std::list<SortKey> keys = read_keys(nodes);
    if (keys.empty()) {
        nodes.sort(is_sorted_before);
        return;
    }
    keys.sort([](SortKey& a, SortKey& b) { return a.is_before(b); });
    std::transform(keys.begin(), keys.end(), nodes.begin(),
                   [](const SortKey& key) { return key.get_node(); });
}

}  // namespace

void Node::sort_children() {
    if (children.size() < 2)
        return;
    sort_nodes(children);
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
