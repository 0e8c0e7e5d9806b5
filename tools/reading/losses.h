#ifndef QUXML_TOOLS_READING_LOSSES_H
#define QUXML_TOOLS_READING_LOSSES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "reading/places.h"

namespace tool {

enum class LossKind {
    encoding,
    byte_order_mark,
    version,
    standalone,
    line_ends,
    doctype,
    comment,
    instruction,
    cdata,
    text,
    blank_text,
    entity,
    prefix,
    namespace_declaration,
    replaced_attribute,  // by another of its element, once that has lost its prefix
    /// Only notes, since this program escapes what the library alone writes as it stands:
    carriage_return,
    escape,
    spelling,  // what only the canonical form writes in another way
};

/// Something in a document that reading drops or writing does not bring back.
struct Loss {
    LossKind kind;
    Place place;
    std::string excerpt;  // of the document, printable
    std::optional<std::size_t>
        element;  // whose content it is, if any: the root is 0, the others follow in order
};

/// What would be lost of a well-formed document, in document order, notes included.
std::vector<Loss> find_losses(const std::string& document);

bool is_note(const Loss& loss);

/// Whether it is content, so that queries give another answer than the document does.
bool is_content(const Loss& loss);

/// Those that are content.
std::vector<Loss> get_content(const std::vector<Loss>& losses);

/// Whether anything is lost; notes do not count.
bool has_losses(const std::vector<Loss>& losses);

/// How to see them all: "quxml loss FILE" does it.
std::string get_advice(const std::string& file);

/// Such as "comment".
std::string get_name(LossKind kind);

/// Such as "1 DOCTYPE, 2 comments"; without the notes.
std::string get_summary(const std::vector<Loss>& losses);

}  // namespace tool

#endif
