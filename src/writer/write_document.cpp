// SPDX-License-Identifier: MIT

// The entry points of the writer: a document as compact or as formatted text.

#include <string>
#include <string_view>

#include "quxml/Document.h"
#include "quxml/Element.h"

namespace quxml {

namespace {

constexpr std::string_view xml_declaration = "<?xml version=\"1.0\"?>";

}  // namespace

std::string Document::write_to_string() const {
    std::string out(xml_declaration);
    if (root != nullptr)
        root->write_to_string(out, -1);
    return out;
}

// Deliberate: only formatted text can be had without the declaration.
// Test: WriteDocument.compact_text_always_has_the_declaration_and_formatted_text_on_request_which_is_wanted.
std::string Document::write_to_string_formatted(bool include_declaration) const {
    std::string out;
    if (include_declaration)
        out.append(xml_declaration).append(1, '\n');
    if (root != nullptr)
        root->write_to_string(out, 0);
    return out;
}

}  // namespace quxml
