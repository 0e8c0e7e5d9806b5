#ifndef QUXML_TOOLS_LOSSES_H
#define QUXML_TOOLS_LOSSES_H

#include <string>
#include <vector>

#include "places.h"

namespace tool {

enum class LossKind {
    encoding,
    doctype,
    comment,
    instruction,
    cdata,
    text,
    blank_text,
    entity,
    prefix,
    declaration,
    // Only notes, since this program escapes what the library alone writes as it stands:
    carriage_return,
    escape,
};

/// Something in a document that reading drops or writing does not bring back.
struct Loss {
    LossKind kind;
    Place place;
    std::string excerpt;  // of the document, printable
};

/// What would be lost of a well-formed document, in document order, notes included.
std::vector<Loss> find_losses(const std::string& document);

bool is_note(const Loss& loss);

/// Whether anything is lost; notes do not count.
bool has_losses(const std::vector<Loss>& losses);

/// Such as "comment".
std::string get_name(LossKind kind);

/// Such as "1 DOCTYPE, 2 comments"; without the notes.
std::string get_summary(const std::vector<Loss>& losses);

}  // namespace tool

#endif
