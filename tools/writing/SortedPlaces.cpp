// SPDX-License-Identifier: MIT
#include "writing/SortedPlaces.h"

#include <quxml/extras/paths.h>

#include <stdexcept>
#include <string>

#include "terminal/Failure.h"
#include "trees/sorted_place.h"
#include "writing/moving.h"

namespace tool {

namespace {

Failure refusal(const quxml::Element& element, const std::string& reason) {
    return {ExitCode::malformed, quxml::extras::path_of(element) + ' ' + reason + "leave out --sorted"};
}

std::string get_item(const NewElement& added) {
    if (added.has_item)
        return added.item;
    for (const auto& [name, value] : added.attributes) {
        if (name == "item")
            return value;
    }
    return "";
}

std::size_t find_child(const quxml::Element& parent, const NewElement& added) {
    try {
        if (const auto found = find_sorted_place(parent, added.name, get_item(added)))
            return *found;
    } catch (const std::out_of_range&) {
        throw refusal(parent, "has an element with an item that is a number out of range; ");
    }
    throw refusal(parent,
                  "has elements that are not sorted, so there is no sorted place for another; sort the "
                  "document first, or ");
}

}  // namespace

std::optional<SortedPlace> SortedPlaces::find(const Located& parent, const NewElement& added) const {
    const std::size_t piece = find_piece(pieces, parent.extent.begin);
    if (pieces[piece].is_mixed && parent.extent.elements != 0)
        throw refusal(parent.element, "has text beside its elements, which are then never sorted; ");
    const std::size_t child = find_child(parent.element, added);
    const std::vector<std::size_t> begins = find_units(document, pieces, piece);
    if (child == begins.size())
        return std::nullopt;
    return SortedPlace{child, begins.at(child)};
}

}  // namespace tool
