// SPDX-License-Identifier: MIT

// The canonical order of children: by name, and namesakes by item.
//
// The order is not a strict weak one. An element without an item goes before each of its namesakes, and each
// of them goes before it. That is what puts a new element without an item after all its namesakes, and it is
// why the place of a new child is found by a walk from the front and why sorting is one particular merge sort:
// a different search or sort would be equally valid, but give a different result.
//
// That sort is the stable one which libstdc++'s lists have. It sorts the first part of the nodes, then the
// rest, and merges the two; the first part is as many nodes as the largest power of two that leaves a rest.
// While merging, a node of the rest goes first exactly if it is before the next node of the first part. Both
// ways of sorting below, with keys and without, make the same comparisons in the same order.
//
// Keys are what is sorted as long as there is memory for them: an array of what the order looks at, in which
// nothing is looked up or read twice. Neighbouring namesakes share one name, so that most names are compared
// by their addresses. Nodes that are in order are not moved.
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
#include <cstddef>
#include <iterator>
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
    SortKey() = default;

    explicit SortKey(Node* keyed_node) : node(keyed_node), name(&NodeAccess::name(*keyed_node)) {}

    Node* get_node() const { return node; }

    /// Takes over the name of a node with the same one.
    void share_name(const SortKey& other) {
        if (*name == *other.name)
            name = other.name;
    }

    /// Inlined, so that a key which lives for a single comparison costs nothing: that halves the walk to the
    /// place of a new child.
    [[gnu::always_inline]] bool is_before(SortKey& other) {
        if (name != other.name) {
            const int order = name->compare(*other.name);
            if (order != 0)
                return order < 0;
        }
        return is_before_namesake(other);
    }

private:
    /// What is known of the item: nothing, that the node has none because it is not an element, that it is
    /// absent or empty, which is the same to the order, that it is there, or how it is compared.
    enum class Item : unsigned char { unknown, impossible, absent, unread, number, text };

    [[gnu::always_inline]] bool is_before_namesake(SortKey& other) {
        if (kind != Item::number || other.kind != Item::number) {
            find();
            other.find();
            if (kind == Item::impossible || other.kind == Item::impossible)
                return false;
            if (kind == Item::absent || other.kind == Item::absent)
                return true;
            if (!read() || !other.read())
                return *item < *other.item;
        }
        return number < other.number;
    }

    void find() {
        if (kind != Item::unknown)
            return;
        const Element* element = as_element(node);
        item = element == nullptr ? nullptr : find_item(*element);
        if (element == nullptr) {
            kind = Item::impossible;
        } else {
            kind = item == nullptr || item->empty() ? Item::absent : Item::unread;
        }
    }

    /// Deliberate: the first item is read before the second is looked at, so an item that is not a number
    /// leads to the comparison as text even if the other one is beyond the range of `int`.
    /// Test: Items/ItemRange.is_checked_when_the_item_is_read/the_first_is_a_text_so_the_second_is_not_read_wanted.
    /// \return whether the item is a number.
    /// \throws std::out_of_range ("stoi")
    bool read() {
        if (kind == Item::unread) {
            const std::optional<int> value = read_integer(*item);
            kind = value ? Item::number : Item::text;
            number = value.value_or(0);
        }
        return kind == Item::number;
    }

    Node* node = nullptr;
    const std::string* name = nullptr;
    const std::string* item = nullptr;  // read by `find`
    int number = 0;                     // read by `read`
    Item kind = Item::unknown;
};

}  // namespace

bool is_sorted_before(Node* a, Node* b) {
    SortKey key(a);
    SortKey other(b);
    return key.is_before(other);
}

void link_sorted(Node& parent, Node* node) {
    SortKey key(node);
    NodeList& children = NodeAccess::children(parent);
    const auto is_passed = [&key](Node* child) { return SortKey(child).is_before(key); };
    NodeAccess::link_before(parent, node, std::find_if_not(children.begin(), children.end(), is_passed));
}

namespace {

/// The largest power of two that leaves something of `count`, which is 2 or more.
std::size_t get_first_part(std::size_t count) {
    std::size_t part = 1;
    while (part < count - part)
        part *= 2;
    return part;
}

/// Sorts keys. Both arrays stay for the next nodes to sort.
class KeySorter {
public:
    /// Sorts two nodes or more, or says that there is no memory for their keys.
    /// \throws std::out_of_range the nodes are as they were.
    bool sort(NodeList& nodes) {
        if (!has_room(nodes.size()))
            return false;
        std::transform(nodes.begin(), nodes.end(), keys.begin(), [](Node* node) { return SortKey(node); });
        for (std::size_t i = 1; i < nodes.size(); ++i)
            keys[i].share_name(keys[i - 1]);
        sort(keys.data(), nodes.size());
        std::transform(nodes.begin(), nodes.end(), keys.begin(), nodes.begin(),
                       [](Node* /*node*/, const SortKey& key) { return key.get_node(); });
        return true;
    }

private:
    /// Makes room for the keys.
    bool has_room(std::size_t count) noexcept {
        try {
            if (keys.size() < count)
                keys.resize(count);
            if (first_part.size() < get_first_part(count))
                first_part.resize(get_first_part(count));
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    // NOLINTNEXTLINE(misc-no-recursion): as deep as the logarithm of the count.
    void sort(SortKey* begin, std::size_t count) {
        if (count < 2)
            return;
        SortKey* const middle = begin + get_first_part(count);
        SortKey* const end = begin + count;
        sort(begin, static_cast<std::size_t>(middle - begin));
        sort(middle, static_cast<std::size_t>(end - middle));
        while (begin != middle && !middle->is_before(*begin))
            ++begin;
        if (begin != middle)
            merge(begin, middle, end);
    }

    /// Merges two parts of which the second is known to have the first node.
    void merge(SortKey* begin, SortKey* middle, SortKey* end) {
        SortKey* first = first_part.data();
        SortKey* const first_end = std::copy(begin, middle, first);
        *begin++ = *middle++;
        while (first != first_end && middle != end)
            *begin++ = middle->is_before(*first) ? *middle++ : *first++;
        std::copy(first, first_end, begin);
    }

    std::vector<SortKey> keys;
    std::vector<SortKey> first_part;  // room for it while it is merged
};

/// Sorts `count` entries of a list, from `begin` on, without any memory.
/// \return where they begin now.
// NOLINTNEXTLINE(misc-no-recursion): as deep as the logarithm of the count.
NodeList::iterator sort_entries(NodeList& nodes, NodeList::iterator begin, std::size_t count,
                                bool (*is_before)(Node* a, Node* b)) {
    if (count < 2)
        return begin;
    const std::size_t part = get_first_part(count);
    auto middle = std::next(begin, static_cast<std::ptrdiff_t>(part));
    const auto end = std::next(middle, static_cast<std::ptrdiff_t>(count - part));
    auto first = sort_entries(nodes, begin, part, is_before);
    middle = sort_entries(nodes, middle, count - part, is_before);
    begin = first;
    while (first != middle && middle != end) {
        if (!is_before(*middle, *first)) {
            ++first;
            continue;
        }
        if (begin == first)
            begin = middle;
        nodes.splice(first, nodes, middle++);
    }
    return begin;
}

}  // namespace

bool has_lesser_name(Node* a, Node* b) noexcept {
    return NodeAccess::name(*a) < NodeAccess::name(*b);
}

void sort_by_name(Node& parent) noexcept {
    NodeList& children = NodeAccess::children(parent);
    sort_entries(children, children.begin(), children.size(), has_lesser_name);
    NodeAccess::relink_children(parent);
}

namespace {

void sort_children_of(Node& parent, KeySorter& sorter) {
    NodeList& children = NodeAccess::children(parent);
    if (children.size() < 2)
        return;
    if (!sorter.sort(children))
        sort_entries(children, children.begin(), children.size(), is_sorted_before);
    NodeAccess::relink_children(parent);
}

}  // namespace

void Node::sort_children() {
    KeySorter sorter;
    sort_children_of(*this, sorter);
}

void Node::sort_children_recursively() {
    KeySorter sorter;
    std::vector<Node*> unsorted(1, this);
    while (!unsorted.empty()) {
        Node* node = unsorted.back();
        unsorted.pop_back();
        sort_children_of(*node, sorter);
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child) {
            if (!(*child)->children.empty())
                unsorted.push_back(*child);
        }
    }
}

}  // namespace quxml
