// SPDX-License-Identifier: MIT

// Adding to a sorted element in logarithmic time.
//
// `Node::add_child` walks the children from the front and stops at the first one that does not go before the
// new child. What stops the walk:
//
//     a child with a greater name
//     a namesake that is not an element
//     a namesake whose item is not less than the new child's item, if both have one
//
// Items are compared as numbers if both begin with one, else as texts, so the items of namesakes need not be in
// any order: among 5, 10 and x, a new 7 goes before 10, but a new "1 " goes before 5 and a new "w" before x. An
// item that is a number beyond the range of `int` ends the walk with an exception, if it comes to be read.
//
// So the question is not where a new item belongs in an order, but which is the first of a row of items that
// stops it. That can be asked of any row, in order or not: of a stretch of items it is enough to know the
// greatest number, the greatest text of a number, the greatest text that is not a number, and whether a number
// beyond the range is among them; if none of these stops the new item, nothing in the stretch does. The items
// of namesakes are kept in the order of the children in a search tree that is balanced by random priorities (a
// treap), each node of which knows these four things about everything below it.
//
// A child whose name is less than that of a child before it stops nothing: whoever comes so far has passed the
// greater name. So the children fall into groups of namesakes with ascending names, whatever their order was
// when the adder was made. Elements without an item stop nothing either and appear in no tree.

#include "quxml/extras/SortedChildren.h"

#include <cassert>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <map>
#include <random>
#include <stdexcept>

#include "quxml/extras/Fields.h"

namespace quxml {
namespace extras {

namespace {

/// The item of a child, as the order sees it.
struct Key {
    enum class Kind { text, number, number_beyond_range };

    /// As `std::stoi` reads a number: after white space and a sign, and whatever follows it.
    explicit Key(const std::string& item) : text(item) {
        const int saved_errno = errno;
        errno = 0;
        char* end = nullptr;
        const long value = std::strtol(text.c_str(), &end, 10);
        if (end == text.c_str()) {
            kind = Kind::text;
        } else if (errno == ERANGE || value < INT_MIN || value > INT_MAX) {
            kind = Kind::number_beyond_range;
        } else {
            kind = Kind::number;
            number = static_cast<int>(value);
        }
        errno = saved_errno;
    }

    std::string text;
    Kind kind = Kind::text;
    int number = 0;
};

/// What can stop a new item in a stretch of items.
struct Summary {
    explicit Summary(const Key& key) {
        switch (key.kind) {
            case Key::Kind::text:
                greatest_text = &key;
                break;
            case Key::Kind::number:
                greatest_number = &key;
                greatest_number_text = &key;
                break;
            case Key::Kind::number_beyond_range:
                has_number_beyond_range = true;
                break;
        }
    }

    void include(const Summary& other) {
        if (other.greatest_number != nullptr &&
            (greatest_number == nullptr || greatest_number->number < other.greatest_number->number))
            greatest_number = other.greatest_number;
        include_text(greatest_number_text, other.greatest_number_text);
        include_text(greatest_text, other.greatest_text);
        has_number_beyond_range = has_number_beyond_range || other.has_number_beyond_range;
    }

    bool stops(const Key& key) const {
        if (has_number_beyond_range || is_not_less(greatest_text, key))
            return true;
        switch (key.kind) {
            case Key::Kind::text:
                return is_not_less(greatest_number_text, key);
            case Key::Kind::number:
                return greatest_number != nullptr && greatest_number->number >= key.number;
            default:
                return greatest_number != nullptr;
        }
    }

private:
    static bool is_not_less(const Key* greatest, const Key& key) {
        return greatest != nullptr && greatest->text >= key.text;
    }

    static void include_text(const Key*& greatest, const Key* other) {
        if (other != nullptr && (greatest == nullptr || greatest->text < other->text))
            greatest = other;
    }

    const Key* greatest_number = nullptr;
    const Key* greatest_number_text = nullptr;
    const Key* greatest_text = nullptr;
    bool has_number_beyond_range = false;
};

/// A child that has an item, in the search tree of its namesakes.
struct Entry {
    Entry(const std::string& item, unsigned entry_priority)
        : key(item), priority(entry_priority), own(key), all(own) {}

    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    void summarise() {
        all = own;
        for (const Entry* below : {before, after}) {
            if (below != nullptr)
                all.include(below->all);
        }
    }

    const Key key;
    const unsigned priority;  // none below has a greater one
    const Summary own;
    Summary all;  // of the entry and of everything below it
    NodeList::iterator place;
    Entry* above = nullptr;
    Entry* before = nullptr;
    Entry* after = nullptr;
};

/// The items of namesakes, in the order of the children.
class Items {
public:
    /// The first entry that stops a new item, or null.
    const Entry* find_stopping(const Key& key) const {
        const Entry* entry = top != nullptr && top->all.stops(key) ? top : nullptr;
        while (entry != nullptr) {
            if (entry->before != nullptr && entry->before->all.stops(key)) {
                entry = entry->before;
            } else if (entry->own.stops(key)) {
                break;
            } else {
                entry = entry->after;
            }
        }
        return entry;
    }

    void add_last(Entry& entry) noexcept {
        add(entry, [](const Entry& /*passed*/) { return false; });
    }

    /// Adds an entry before the first that stops it, or as the last one.
    void add_before_stopping(Entry& entry) noexcept {
        add(entry, [&entry](const Entry& passed) {
            return (passed.before != nullptr && passed.before->all.stops(entry.key)) ||
                   passed.own.stops(entry.key);
        });
    }

private:
    template <class GoesBefore>
    void add(Entry& entry, GoesBefore goes_before) noexcept {
        Entry** link = &top;
        while (*link != nullptr) {
            entry.above = *link;
            link = goes_before(**link) ? &(*link)->before : &(*link)->after;
            entry.above->all.include(entry.own);
        }
        *link = &entry;
        while (entry.above != nullptr && entry.above->priority < entry.priority)
            rotate_up(entry);
    }

    /// Exchanges an entry with the one above it; the order of all entries stays.
    void rotate_up(Entry& entry) noexcept {
        Entry& lowered = *entry.above;
        Entry*& inner = lowered.before == &entry ? entry.after : entry.before;
        Entry*& outer = lowered.before == &entry ? lowered.before : lowered.after;
        outer = inner;
        if (inner != nullptr)
            inner->above = &lowered;
        inner = &lowered;
        entry.above = lowered.above;
        lowered.above = &entry;
        link_above(entry, lowered);
        entry.all = lowered.all;
        lowered.summarise();
    }

    void link_above(Entry& entry, const Entry& former) noexcept {
        if (entry.above == nullptr) {
            top = &entry;
        } else if (entry.above->before == &former) {
            entry.above->before = &entry;
        } else {
            entry.above->after = &entry;
        }
    }

    Entry* top = nullptr;
};

/// Namesakes among the children.
struct Group {
    explicit Group(NodeList::iterator first_child) : first(first_child) {}

    NodeList::iterator first;
    NodeList::iterator wall;  // the first that is not an element, if there is one; nothing is added after it
    bool has_wall = false;
    Items items;
};

using Groups = std::map<std::string, Group>;

}  // namespace

class SortedChildren::Index {
public:
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the search tree's shape follows from the additions
    explicit Index(Element& indexed_parent) : parent(indexed_parent), children(Fields::children_of(parent)) {
        if (!Fields::is_kept_sorted(parent))
            return;
        for (auto child = children.begin(); child != children.end(); ++child)
            take_up_former(child);
        size = children.size();
    }

    Element* add(const std::string& name, const std::string* item) {
        if (!Fields::is_kept_sorted(parent))
            return item == nullptr ? parent.add_child(name) : parent.add_child(name, *item);
        assert(size == children.size() && "somebody else has added or removed children");
        auto child = std::make_unique<Element>(name, &parent, true);
        if (item != nullptr)
            child->set_attribute("item", *item);
        link(child.get(), item == nullptr || item->empty() ? nullptr : &make_entry(*item));
        ++size;
        return child.release();
    }

private:
    Entry& make_entry(const std::string& item) {
        return entries.emplace_back(item, static_cast<unsigned>(random()));
    }

    /// Takes up a child that was there before, after all that have been taken up.
    void take_up_former(NodeList::iterator child) {
        const std::string& name = Fields::name_of(**child);
        if (!groups.empty() && name < groups.rbegin()->first)
            return;
        Group& group = groups.emplace_hint(groups.end(), name, child)->second;
        if (group.has_wall)
            return;
        const auto* element = dynamic_cast<const Element*>(*child);
        if (element == nullptr) {
            group.wall = child;
            group.has_wall = true;
            return;
        }
        const std::string item = element->get_attribute_value("item");
        if (item.empty())
            return;
        Entry& entry = make_entry(item);
        entry.place = child;
        group.items.add_last(entry);
    }

    /// Links a new child at its place. If that fails, the entry is dropped and nothing has changed.
    /// \param entry of the child, the last that was made; null if it has no item.
    void link(Element* child, Entry* entry) {
        const std::string& name = Fields::name_of(*child);
        auto group = groups.lower_bound(name);
        const bool is_new = group == groups.end() || group->first != name;
        try {
            const auto place = is_new ? get_first(group) : find_place(group, entry);
            if (is_new)
                group = groups.emplace_hint(group, name, place);
            parent.insert_node(child, place);
            take_up(group->second, place, entry);
        } catch (...) {
            if (is_new && group != groups.end() && group->first == name)
                groups.erase(group);
            if (entry != nullptr)
                entries.pop_back();
            throw;
        }
    }

    /// The first child of a group; the end of the children after the last group.
    NodeList::iterator get_first(Groups::iterator group) {
        return group == groups.end() ? children.end() : group->second.first;
    }

    /// \throws std::out_of_range if an item has to be read that is a number beyond the range of `int`.
    NodeList::iterator find_place(Groups::iterator group, const Entry* entry) {
        const Entry* stopping = entry == nullptr ? nullptr : group->second.items.find_stopping(entry->key);
        if (stopping == nullptr)
            return group->second.has_wall ? group->second.wall : get_first(std::next(group));
        const bool is_read = stopping->key.kind != Key::Kind::text;
        if (stopping->key.kind == Key::Kind::number_beyond_range ||
            (is_read && entry->key.kind == Key::Kind::number_beyond_range))
            throw std::out_of_range("stoi");
        return stopping->place;
    }

    /// \param next the child after the new one.
    static void take_up(Group& group, NodeList::iterator next, Entry* entry) noexcept {
        const auto place = std::prev(next);
        if (group.first == next)
            group.first = place;
        if (entry != nullptr) {
            entry->place = place;
            group.items.add_before_stopping(*entry);
        }
    }

    Element& parent;
    NodeList& children;
    std::size_t size = 0;
    Groups groups;
    std::deque<Entry> entries;
    std::minstd_rand random;
};

SortedChildren::SortedChildren(Element& parent) : index(std::make_unique<Index>(parent)) {}

SortedChildren::~SortedChildren() = default;

Element* SortedChildren::add(const std::string& name) {
    return index->add(name, nullptr);
}

Element* SortedChildren::add(const std::string& name, const std::string& item) {
    return index->add(name, &item);
}

Element* SortedChildren::add(const std::string& name, int item) {
    return add(name, std::to_string(item));
}

}  // namespace extras
}  // namespace quxml
