// SPDX-License-Identifier: MIT
#include "quxml/TextNode.h"

namespace quxml {

TextNode::TextNode(Element* owner, const std::string& node_name) : Node(node_name, owner, false) {}

TextNode::TextNode(Element* owner, const char* text, std::size_t length)
    : Node("", 0, owner, false), content(text, length) {}

TextNode::~TextNode() = default;

std::string TextNode::get_content() const {
    return content;
}

void TextNode::set_content(const std::string& new_content) {
    content = new_content;
}

// Deliberate: an exchange, not a move.
// Test: SetContent.exchanges_a_text_that_is_handed_over_which_is_wanted.
void TextNode::set_content(std::string&& other) {
    content.swap(other);
}

}  // namespace quxml
