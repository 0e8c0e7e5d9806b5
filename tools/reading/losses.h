// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_LOSSES_H
#define QUXML_TOOLS_READING_LOSSES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "reading/PlaceFinder.h"
#include "reading/loss_kinds.h"

namespace tool {

/// Something in a document that reading drops or writing does not bring back.
struct Loss {
    LossKind kind;
    Place place;
    std::string excerpt;  // of the document, printable
    std::optional<std::size_t>
        element;  // whose content it is, if any: the root is 0, the others follow in order
    /// Its bytes in the document, as UTF-8 without a byte-order mark; none for what stands before that.
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// What would be lost of a well-formed document, in document order, harmless ones included.
std::vector<Loss> find_losses(const std::string& document);

/// Those that are content, so that queries give another answer than the document does.
std::vector<Loss> get_content(const std::vector<Loss>& losses);

/// Such as "queries do not see 1 CDATA section"; empty if there is no content among the losses.
std::string get_note_on_content(const std::vector<Loss>& losses);

/// Whether anything is lost; harmless ones do not count.
bool has_losses(const std::vector<Loss>& losses);

/// How to see them all: "quxml loss FILE" does it.
std::string get_pointer_to_loss(const std::string& file);

/// Such as "1 DOCTYPE, 2 comments"; without harmless ones.
std::string get_summary(const std::vector<Loss>& losses);

}  // namespace tool

#endif
