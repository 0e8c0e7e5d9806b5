// SPDX-License-Identifier: MIT

// An element and the remarks that belong to it are one unit. The units of a parent change places with each other; what
// stands between two places, white space and remarks that belong to no element, stays there.
//
// A unit that moves may have units in it that move as well. So the text is put together from a list of what is still to
// be written; a part of the document in which units change places is replaced in that list by its pieces.

#include "writing/moving.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace tool {

namespace {

struct Stretch {
    std::size_t begin;
    std::size_t end;
};

/// The units of a parent, from the first to the last, and the order that they get.
struct UnitGroup {
    std::vector<Stretch> units;
    const std::vector<std::size_t>& order;

    std::size_t get_begin() const { return units.front().begin; }
    std::size_t get_end() const { return units.back().end; }
};

class UnitFinder {
public:
    UnitFinder(std::string_view text, const std::vector<Piece>& outline) : document(text), pieces(outline) {}

    std::vector<Stretch> find(std::size_t parent) {
        edge = pieces[parent].content;
        for (std::size_t i = parent + 1; i != pieces[parent].after; i = get_next_child(pieces, i)) {
            if (pieces[i].kind == PieceKind::element) {
                add_unit(pieces[i]);
            } else {
                remarks.push_back({pieces[i].begin, pieces[i].end});
            }
        }
        give_to_last_unit(count_remarks_on_line());
        return std::move(units);
    }

private:
    void add_unit(const Piece& element) {
        const std::size_t on_line = count_remarks_on_line();
        const bool share_line = on_line == remarks.size() && !has_line_end_before(element.begin);
        const std::size_t given = share_line ? 0 : on_line;
        give_to_last_unit(given);
        std::size_t begin = element.begin;
        while (remarks.size() > given && count_line_ends(remarks.back().end, begin) < 2) {
            begin = remarks.back().begin;
            remarks.pop_back();
        }
        units.push_back({begin, element.end});
        remarks.clear();
        edge = element.end;
    }

    /// How many of the remarks stand on the line of what is before them.
    std::size_t count_remarks_on_line() const {
        std::size_t end = edge;
        std::size_t count = 0;
        while (count != remarks.size() && count_line_ends(end, remarks[count].begin) == 0)
            end = remarks[count++].end;
        return count;
    }

    bool has_line_end_before(std::size_t next) const {
        return count_line_ends(remarks.empty() ? edge : remarks.back().end, next) != 0;
    }

    /// The first remarks; before the first unit they belong to the parent.
    void give_to_last_unit(std::size_t count) {
        if (count != 0 && !units.empty())
            units.back().end = remarks[count - 1].end;
    }

    std::size_t count_line_ends(std::size_t begin, std::size_t end) const {
        const std::string_view space = document.substr(begin, end - begin);
        std::size_t count = 0;
        for (std::size_t i = 0; i != space.size(); ++i) {
            if (space[i] == '\n' || (space[i] == '\r' && space.substr(i + 1, 1) != "\n"))
                ++count;
        }
        return count;
    }

    std::string_view document;
    const std::vector<Piece>& pieces;
    std::size_t edge = 0;          // where the parent's start tag or the last unit's element ends
    std::vector<Stretch> remarks;  // since then
    std::vector<Stretch> units;
};

class Mover {
public:
    Mover(std::string_view text, std::vector<UnitGroup> found) : document(text), groups(std::move(found)) {}

    std::vector<Patch> run() {
        std::vector<Patch> patches;
        std::size_t done = 0;
        for (const UnitGroup& group : groups) {
            if (group.get_begin() < done)
                continue;
            done = group.get_end();
            patches.push_back({group.get_begin(), done, write(group)});
        }
        return patches;
    }

private:
    std::string write(const UnitGroup& group) {
        std::string text;
        text.reserve(group.get_end() - group.get_begin());
        add_parts(group);
        while (!pending.empty()) {
            const Stretch stretch = pending.back();
            pending.pop_back();
            const UnitGroup* const inner = find_group_in(stretch);
            text += document.substr(stretch.begin,
                                    (inner == nullptr ? stretch.end : inner->get_begin()) - stretch.begin);
            if (inner == nullptr)
                continue;
            pending.push_back({inner->get_end(), stretch.end});
            add_parts(*inner);
        }
        return text;
    }

    /// The last to be written comes first.
    void add_parts(const UnitGroup& group) {
        const std::vector<Stretch>& units = group.units;
        for (std::size_t place = units.size(); place != 0;) {
            --place;
            pending.push_back(units[group.order[place]]);
            if (place != 0)
                pending.push_back({units[place - 1].end, units[place].begin});
        }
    }

    /// The first one; it begins within an element, and so after the beginning of the stretch.
    const UnitGroup* find_group_in(const Stretch& stretch) const {
        const auto found = std::upper_bound(
            groups.begin(), groups.end(), stretch.begin,
            [](std::size_t place, const UnitGroup& group) { return place < group.get_begin(); });
        return found != groups.end() && found->get_begin() < stretch.end ? &*found : nullptr;
    }

    std::string_view document;
    std::vector<UnitGroup> groups;  // in document order
    std::vector<Stretch> pending;
};

std::vector<UnitGroup> find_groups(std::string_view document, const std::vector<Piece>& pieces,
                                   const std::vector<Order>& orders) {
    std::vector<UnitGroup> groups;
    groups.reserve(orders.size());
    std::size_t number = 0;
    for (std::size_t i = 0; i != pieces.size() && groups.size() != orders.size(); ++i) {
        const Order& next = orders[groups.size()];
        if (pieces[i].kind == PieceKind::element && number++ == next.element)
            groups.push_back({UnitFinder(document, pieces).find(i), next.children});
    }
    return groups;
}

}  // namespace

std::vector<Patch> move_elements(std::string_view document, const std::vector<Piece>& pieces,
                                 const std::vector<Order>& orders) {
    return Mover(document, find_groups(document, pieces, orders)).run();
}

std::vector<std::size_t> find_units(std::string_view document, const std::vector<Piece>& pieces,
                                    std::size_t parent) {
    std::vector<std::size_t> begins;
    for (const Stretch& unit : UnitFinder(document, pieces).find(parent))
        begins.push_back(unit.begin);
    return begins;
}

}  // namespace tool
