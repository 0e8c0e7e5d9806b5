// Text and its escaping, the only escaping there is.

#include <array>
#include <cstddef>

#include "dom/NodeAccess.h"
#include "escape.h"
#include "layout.h"

namespace quxml {

std::string escape_character(char c) {
    switch (c) {
        case '"':
            return "&quot;";
        case '&':
            return "&amp;";
        case '\'':
            return "&apos;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        default:
            return std::string(1, c);
    }
}

namespace {

/// Whether `escape_character` changes a byte. Five comparisons in a row would make up half the cost of
/// writing text.
struct EscapeTable {
    std::array<bool, 256> needs_escape = {};

    constexpr EscapeTable() {
        for (const char c : {'"', '&', '\'', '<', '>'})
            needs_escape[static_cast<unsigned char>(c)] = true;
    }
};

constexpr EscapeTable escape_table;

/// Byte by byte: an "&" that already begins a reference is escaped as any other. Most text has nothing to
/// escape, so what lies between two escaped characters is appended in one piece.
void append_escaped(TextBuffer& out, const std::string& text) {
    const char* clean = text.data();
    const char* const end = clean + text.size();
    for (const char* c = clean; c != end; ++c) {
        if (!escape_table.needs_escape[static_cast<unsigned char>(*c)])
            continue;
        out.append(clean, static_cast<std::size_t>(c - clean));
        out.append(escape_character(*c));
        clean = c + 1;
    }
    out.append(clean, static_cast<std::size_t>(end - clean));
}

}  // namespace

void append_text_node(TextBuffer& out, const TextNode& node, int depth) {
    // Deliberate: detached text has no output at all.
    const Element* parent = node.get_parent();
    if (parent == nullptr)
        return;
    const bool is_inline = !is_formatted(depth) || NodeAccess::children(*parent).size() == 1;
    if (!is_inline)
        append_indentation(out, depth);
    append_escaped(out, NodeAccess::content(node));
    if (!is_inline)
        append_line_end(out, depth);
}

void TextNode::write_to_string(std::string& out, int depth) const {
    TextBuffer buffer(out);
    append_text_node(buffer, *this, depth);
    buffer.flush();
}

}  // namespace quxml
