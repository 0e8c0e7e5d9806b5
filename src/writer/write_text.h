#ifndef QUXML_WRITER_WRITE_TEXT_H
#define QUXML_WRITER_WRITE_TEXT_H

#include "TextBuffer.h"
#include "quxml/TextNode.h"

namespace quxml {

/// Appends a text node in its place, see `TextNode::write_to_string`.
void append_text_node(TextBuffer& out, const TextNode& node, int depth);

}  // namespace quxml

#endif
