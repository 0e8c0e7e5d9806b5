#ifndef QUXML_WRITER_ESCAPE_H
#define QUXML_WRITER_ESCAPE_H

#include <string>

#include "TextBuffer.h"
#include "quxml/TextNode.h"

namespace quxml {

/// One byte of text as XML character data: an entity reference for `& < > " '`, else the byte itself.
std::string escape_character(char c);

/// Appends a text node in its place, see `TextNode::write_to_string`.
void append_text_node(TextBuffer& out, const TextNode& node, int depth);

}  // namespace quxml

#endif
