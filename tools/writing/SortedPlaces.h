// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_SORTED_PLACES_H
#define QUXML_TOOLS_WRITING_SORTED_PLACES_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "writing/Editor.h"
#include "writing/outline.h"

namespace tool {

/// A child of an element, and where it begins in the text, with the remarks that belong to it.
struct SortedPlace {
    std::size_t child;
    std::size_t begin;
};

/// The places in a document for elements that are added in sorted order.
class SortedPlaces {
public:
    /// \param text  of the document, which stays as it is
    explicit SortedPlaces(std::string_view text) : document(text), pieces(get_outline(text)) {}

    /// The child before which an element is to be added; nothing if that is after all of them.
    /// \throws Failure  (malformed) if the elements of the parent are not sorted, or stand beside text
    std::optional<SortedPlace> find(const Located& parent, const NewElement& added) const;

private:
    std::string_view document;
    std::vector<Piece> pieces;
};

}  // namespace tool

#endif
