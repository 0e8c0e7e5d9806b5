// SPDX-License-Identifier: MIT
#include "quxml/extras/trees.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <map>
#include <stdexcept>
#include <tuple>
#include <typeinfo>
#include <unordered_set>
#include <vector>

#include "document_order.h"
#include "quxml/extras/Fields.h"
#include "quxml/extras/ranges.h"
#include "quxml/extras/values.h"

namespace quxml {
namespace extras {

// ---- Comparing ----

namespace {

bool has_same_attributes(const Element& one, const Element& other) {
    const AttributeList& mine = Fields::attributes_of(one);
    const AttributeList& others = Fields::attributes_of(other);
    return std::equal(mine.begin(), mine.end(), others.begin(), others.end(),
                      [](const Attribute* a, const Attribute* b) {
                          return name_of(*a) == name_of(*b) && Fields::value_of(*a) == Fields::value_of(*b);
                      });
}

/// Compares all but the children.
bool is_same_node(const Node& one, const Node& other) {
    if (is_element(one) && is_element(other))
        return name_of(one) == name_of(other) &&
               has_same_attributes(static_cast<const Element&>(one), static_cast<const Element&>(other));
    if (is_text(one) && is_text(other))
        return static_cast<const TextNode&>(one).get_content() ==
               static_cast<const TextNode&>(other).get_content();
    return typeid(one) == typeid(other) && name_of(one) == name_of(other);
}

/// Two nodes at the same place of two trees; both null after the last one.
struct Place {
    const Node* one;
    const Node* other;

    bool is_both() const { return one != nullptr && other != nullptr; }
    bool is_neither() const { return one == nullptr && other == nullptr; }
};

Place get_first_children(const Place& place) {
    return {Fields::first_child_of(*place.one), Fields::first_child_of(*place.other)};
}

Place get_next_siblings(const Place& place) {
    return {place.one->get_next_sibling(), place.other->get_next_sibling()};
}

/// The next place in document order; only one of its nodes is null if just one of the trees goes on.
Place get_next(Place place, const Node& top) {
    const Place below = get_first_children(place);
    if (!below.is_neither())
        return below;
    while (place.is_both() && place.one != &top) {
        const Place beside = get_next_siblings(place);
        if (!beside.is_neither())
            return beside;
        place = {place.one->get_parent(), place.other->get_parent()};
    }
    return {nullptr, nullptr};
}

}  // namespace

bool is_same_tree(const Node& one, const Node& other) {
    Place place = {&one, &other};
    while (place.is_both()) {
        if (!is_same_node(*place.one, *place.other))
            return false;
        place = get_next(place, one);
    }
    return place.is_neither();
}

// ---- Merging ----

namespace {

/// What tells a child from its siblings: its name, and its key if it has one.
struct Identity {
    Identity(const Element& element, const std::string& key)
        : name(name_of(element)), has_key(try_get(element, key, value)) {}

    bool operator<(const Identity& other) const {
        return std::tie(name, has_key, value) < std::tie(other.name, other.has_key, other.value);
    }

    std::string name;
    std::string value;
    bool has_key;
};

/// The children of an element that nothing has been laid over yet.
class Counterparts {
public:
    Counterparts(Element& parent, const std::string& key_name) : key(key_name) {
        for (Element& child : elements(parent))
            children[Identity(child, key)].push_back(&child);
    }

    /// The next counterpart of `child`, or null if there is none left.
    Element* take(const Element& child) {
        const auto found = children.find(Identity(child, key));
        if (found == children.end() || found->second.empty())
            return nullptr;
        Element* counterpart = found->second.front();
        found->second.pop_front();
        return counterpart;
    }

private:
    const std::string& key;
    std::map<Identity, std::list<Element*>> children;
};

struct Overlay {
    Element* onto;
    const Element* from;
};

void merge_attributes(Element& onto, const Element& from) {
    for (const Attribute& attribute : attributes(from))
        onto.set_attribute(name_of(attribute), attribute.get_value());
}

/// Lays `from` over `onto`; the children that have to be laid over each other are added to `pending`.
void merge_element(Element& onto, const Element& from, const std::string& key,
                   std::vector<Overlay>& pending) {
    merge_attributes(onto, from);
    if (!texts(from).empty())
        set_text(onto, text_of(from));
    if (elements(from).empty())
        return;
    Counterparts counterparts(onto, key);
    for (const Element& child : elements(from)) {
        if (Element* counterpart = counterparts.take(child))
            pending.push_back({counterpart, &child});
        else
            onto.import_node(&child, true);
    }
}

}  // namespace

void merge(Element& onto, const Element& from, const std::string& key) {
    std::vector<Overlay> pending = {{&onto, &from}};
    while (!pending.empty()) {
        const Overlay overlay = pending.back();
        pending.pop_back();
        merge_element(*overlay.onto, *overlay.from, key, pending);
    }
}

// ---- Moving ----

namespace {

/// Makes two nodes neighbours, either of which may be null.
void join(Node* before, Node* after) noexcept {
    if (before != nullptr)
        Fields::next_of(*before) = after;
    if (after != nullptr)
        Fields::previous_of(*after) = before;
}

/// Takes a node out of its parent's children, as long as it lives; then it puts the node back, unless it has
/// been told that the node has found another place.
class TakenOut {
public:
    explicit TakenOut(Node& taken)
        : node(taken),
          parent(Fields::parent_of(taken)),
          previous(taken.get_previous_sibling()),
          next(taken.get_next_sibling()) {
        NodeList& children = Fields::children_of(*parent);
        const auto found = std::find(children.begin(), children.end(), &node);
        if (found == children.end())
            throw std::invalid_argument("Only a child can be moved");
        place = std::next(found);
        entry.splice(entry.begin(), children, found);
        join(previous, next);
        Fields::previous_of(node) = nullptr;
        Fields::next_of(node) = nullptr;
    }

    ~TakenOut() {
        if (entry.empty())
            return;
        Fields::parent_of(node) = parent;
        Fields::children_of(*parent).splice(place, entry);
        join(previous, &node);
        join(&node, next);
    }

    TakenOut(const TakenOut&) = delete;
    TakenOut& operator=(const TakenOut&) = delete;

    void keep_out() noexcept { entry.clear(); }

private:
    Node& node;
    Element* parent;
    Node* previous;
    Node* next;
    NodeList::iterator place;  // of the node after this one
    NodeList entry;            // of this one, for its return
};

bool is_at_or_below(const Node& node, const Node& top) {
    const Node* step = &node;
    while (step != nullptr && step != &top)
        step = step->get_parent();
    return step != nullptr;
}

}  // namespace

void move_to(Node& node, Element& parent) {
    if (node.get_parent() == nullptr)
        throw std::invalid_argument("Only a child can be moved");
    if (is_at_or_below(parent, node))
        throw std::invalid_argument("A node cannot be moved below itself");
    TakenOut taken(node);
    Fields::parent_of(node) = &parent;
    parent.add_new_node(&node);
    taken.keep_out();
}

// ---- Removing ----
//
// `Node::remove_child` searches the children for the one that goes. Here all that go from one element are taken
// out in one walk over its children.

namespace {

using NodesToRemove = std::unordered_set<const Node*>;

/// Moves the entries of the children that go to `removed`.
void take_out(Element& parent, const NodesToRemove& nodes, NodeList& removed) noexcept {
    NodeList& children = Fields::children_of(parent);
    for (auto next = children.begin(); next != children.end();) {
        const auto child = next++;
        if (nodes.count(*child) == 0)
            continue;
        join((*child)->get_previous_sibling(), (*child)->get_next_sibling());
        removed.splice(removed.end(), children, child);
    }
}

}  // namespace

std::size_t remove_matches(Node& start, const std::string& path) {
    const std::vector<Node*> outermost = find_outermost(start, start.find_exact_match(path));
    const NodesToRemove nodes(outermost.begin(), outermost.end());
    std::unordered_set<Element*> parents;
    for (const Node* node : outermost)
        parents.insert(node->get_parent());
    NodeList removed;
    for (Element* parent : parents)
        take_out(*parent, nodes, removed);
    for (Node* node : removed) {
        Fields::previous_of(*node) = nullptr;
        delete node;
    }
    return outermost.size();
}

}  // namespace extras
}  // namespace quxml
