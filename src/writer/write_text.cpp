// Text and its escaping, the only escaping there is.

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "dom/NodeAccess.h"
#include "layout.h"
#include "write_text.h"

namespace quxml {

namespace {

/// The entity reference that stands for a byte; empty if the byte stands for itself.
std::string_view escape_character(char c) {
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
            return {};
    }
}

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

/// As many bytes as the machine handles at once.
using Word = std::size_t;

/// A word of equal bytes.
constexpr Word repeat(unsigned char byte) {
    return ~Word{0} / UCHAR_MAX * byte;
}

/// All bits of each byte but the highest, and the highest.
constexpr Word low_bits = repeat(SCHAR_MAX);
constexpr Word high_bits = ~low_bits;

/// Whether any byte of the word is this one. Where it is, the difference is zero, and only a zero has no high
/// bit after its low bits have been added to all low bits.
constexpr bool has_byte(Word word, char byte) {
    const Word difference = word ^ repeat(static_cast<unsigned char>(byte));
    const Word sum = (difference & low_bits) + low_bits;
    return ((sum | difference) & high_bits) != high_bits;
}

/// Whether `escape_character` changes any byte of the word. `"` and `&` differ in one bit, and so do `<` and
/// `>`.
constexpr bool needs_escape(Word word) {
    return has_byte(word | repeat('"' ^ '&'), '&') || has_byte(word | repeat('<' ^ '>'), '>') ||
           has_byte(word, '\'');
}

/// The first byte that has to be escaped, or the end. Looking at single bytes would double the time of
/// writing text.
const char* find_escaped(const char* c, const char* end) {
    for (Word word = 0; static_cast<std::size_t>(end - c) >= sizeof word; c += sizeof word) {
        std::memcpy(&word, c, sizeof word);
        if (needs_escape(word))
            break;
    }
    return std::find_if(
        c, end, [](char byte) { return escape_table.needs_escape[static_cast<unsigned char>(byte)]; });
}

/// Byte by byte: an "&" that already begins a reference is escaped as any other. Most text has nothing to
/// escape, so what lies between two escaped characters is appended in one piece.
void append_escaped(TextBuffer& out, const std::string& text) {
    const char* clean = text.data();
    const char* const end = clean + text.size();
    for (const char* c = find_escaped(clean, end); c != end; c = find_escaped(clean, end)) {
        out.append(std::string_view(clean, static_cast<std::size_t>(c - clean)), escape_character(*c));
        clean = c + 1;
    }
    out.append(std::string_view(clean, static_cast<std::size_t>(end - clean)));
}

}  // namespace

void append_text_node(TextBuffer& out, const TextNode& node, int depth) {
    // Deliberate: detached text has no output at all.
    // Test: TextPlace.detached_text_writes_nothing_at_any_depth_which_is_wanted.
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
