// SPDX-License-Identifier: MIT

// The order is the library's own: two elements are compared by adding them to an element that keeps its children sorted.
// That takes no longer than linear, where adding each child in turn to such an element would take the square of it.

#include "trees/sorted_place.h"

#include <quxml/Document.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace tool {

namespace {

constexpr const char* item_name = "item";

/// What the order depends on.
struct Key {
    std::string name;
    std::string item;
};

std::vector<Key> get_keys(const quxml::Element& parent) {
    std::vector<Key> keys;
    for (const quxml::Node* child : parent.get_children()) {
        if (const auto* element = dynamic_cast<const quxml::Element*>(child))
            keys.push_back({element->get_name(), element->get_attribute_value(item_name)});
    }
    return keys;
}

/// Unlike `Node::add_child`, it leaves nothing behind if the place is not found.
const quxml::Node* add(quxml::Element& parent, const Key& key) {
    auto element = std::make_unique<quxml::Element>(key.name, &parent, false);
    element->set_attribute(item_name, key.item);
    parent.add_new_node(element.get());
    return element.release();
}

/// Whether one that is added after another gets its place before it.
bool goes_before(const Key& added, const Key& child) {
    quxml::Document document(true);
    quxml::Element& parent = *document.create_root_node("");
    add(parent, child);
    const quxml::Node* const element = add(parent, added);
    return parent.get_children().front() == element;
}

bool is_sorted(const std::vector<Key>& keys) {
    const auto is_out_of_order = [](const Key& one, const Key& next) {
        return goes_before(next, one) && !goes_before(one, next);
    };
    return std::adjacent_find(keys.begin(), keys.end(), is_out_of_order) == keys.end();
}

std::vector<Key> get_those_with_items(const std::vector<Key>& keys) {
    std::vector<Key> found;
    std::copy_if(keys.begin(), keys.end(), std::back_inserter(found),
                 [](const Key& key) { return !key.item.empty(); });
    return found;
}

}  // namespace

std::optional<std::size_t> find_sorted_place(const quxml::Element& parent, const std::string& name,
                                             const std::string& item) {
    const std::vector<Key> keys = get_keys(parent);
    if (!is_sorted(keys) || !is_sorted(get_those_with_items(keys)))
        return std::nullopt;
    const auto next = std::find_if(keys.begin(), keys.end(), [&](const Key& key) {
        return goes_before({name, item}, key);
    });
    return static_cast<std::size_t>(next - keys.begin());
}

}  // namespace tool
