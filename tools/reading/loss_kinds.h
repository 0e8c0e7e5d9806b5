// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_LOSS_KINDS_H
#define QUXML_TOOLS_READING_LOSS_KINDS_H

#include <cstddef>
#include <string>

namespace tool {

/// What there is in a document that reading drops or writing does not bring back.
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
    /// Harmless, since this program escapes what the library alone writes as it stands:
    carriage_return,
    escape,
    spelling,  // what only the canonical form writes differently
};

constexpr std::size_t number_of_loss_kinds = 18;

/// Whether it is noted only, and nothing is lost.
bool is_harmless(LossKind kind);

/// Whether it is content, so that queries give another answer than the document does.
bool is_content(LossKind kind);

/// Such as "comment".
std::string get_name(LossKind kind);

/// Such as "2 comments".
std::string count_in_words(LossKind kind, std::size_t count);

}  // namespace tool

#endif
