// SPDX-License-Identifier: MIT
#ifndef QUXML_WRITER_WRITE_TEXT_H
#define QUXML_WRITER_WRITE_TEXT_H

#include <string_view>

#include "TextBuffer.h"
#include "quxml/TextNode.h"

namespace quxml {

/// Appends text, escaped.
void append_escaped(TextBuffer& out, std::string_view text);

/// Appends a text node in its place, see `TextNode::write_to_string`.
void append_text_node(TextBuffer& out, const TextNode& node, int depth);

}  // namespace quxml

#endif
