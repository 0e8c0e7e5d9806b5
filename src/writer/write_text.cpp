// Text and its escaping, the only escaping there is.

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

/// Whether `escape_character` changes the byte. The five characters lie between '"' and '>'.
bool needs_escape(char c) {
    return c <= '>' && c >= '"' && (c == '<' || c == '&' || c == '>' || c == '"' || c == '\'');
}

}  // namespace

// Most text has nothing to escape, so what lies between two escaped characters is appended in one piece.
void append_escaped(std::string& out, const std::string& text) {
    std::string::size_type clean = 0;
    for (std::string::size_type i = 0; i < text.size(); ++i) {
        if (!needs_escape(text[i]))
            continue;
        out.append(text, clean, i - clean);
        out += escape_character(text[i]);
        clean = i + 1;
    }
    out.append(text, clean, std::string::npos);
}

void TextNode::write_to_string(std::string& out, int depth) const {
    // Deliberate: detached text has no output at all.
    if (get_parent() == nullptr)
        return;
    const bool is_alone = NodeAccess::children(*get_parent()).size() == 1;
    if (is_formatted(depth) && is_alone) {
        append_escaped(out, content);
        return;
    }
    append_indentation(out, depth);
    append_escaped(out, content);
    append_line_end(out, depth);
}

}  // namespace quxml
