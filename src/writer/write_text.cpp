// SPDX-License-Identifier: MIT

// Text and its escaping, the only escaping there is.

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
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

/// Whether `escape_character` changes a byte. Each of the 32 bytes from the blank on has a bit in the mask. Only for
/// these is the exclusive or with the blank below 32, and it is then the distance from the blank.
constexpr bool needs_escape(char c) {
    constexpr unsigned first = ' ';
    constexpr std::uint32_t mask = 1U << ('"' - first) | 1U << ('&' - first) | 1U << ('\'' - first) |
                                   1U << ('<' - first) | 1U << ('>' - first);
    const unsigned bit = static_cast<unsigned char>(c) ^ first;
    return bit < 32 && (mask >> bit & 1U) != 0;
}

/// As many bytes as the machine handles at once.
using Word = std::size_t;

/// A word of equal bytes.
constexpr Word repeat(unsigned char byte) {
    return ~Word{0} / UCHAR_MAX * byte;
}

/// Whether `escape_character` changes any byte of the word, or one of them is a "#". With one bit of each byte
/// set, `<` and `>` are the same byte; with two, so are `"`, `&`, `'` and "#". What differs from them leaves at
/// least one of the seven lower bits, and adding all seven carries into the highest one, which no byte looked
/// for has itself. So a byte whose highest bit stays clear is a find.
constexpr bool may_need_escape(Word word) {
    constexpr Word lower = repeat(SCHAR_MAX);
    const Word angles = ((word & lower) | repeat('<' ^ '>')) ^ repeat('>');
    const Word quotes = ((word & lower) | repeat('"' ^ '\'')) ^ repeat('\'');
    const Word others = ((angles + lower) & (quotes + lower)) | word;
    return (others | lower) != ~Word{0};
}

bool may_need_escape(const char* c) {
    Word word = 0;
    std::memcpy(&word, c, sizeof word);
    return may_need_escape(word);
}

const char* find_escaped_byte(const char* c, const char* end) {
    while (c != end && !needs_escape(*c))
        ++c;
    return c;
}

/// The first byte that has to be escaped, or the end. Whole words are looked at first, which halves the time of
/// writing text; the last word may overlap the one before it.
const char* find_escaped(const char* c, const char* end) {
    constexpr std::ptrdiff_t length = sizeof(Word);
    if (end - c < length)
        return find_escaped_byte(c, end);
    const char* const last = end - length;
    for (; c < last; c += length) {
        if (!may_need_escape(c))
            continue;
        const char* const found = find_escaped_byte(c, c + length);
        if (found != c + length)
            return found;
    }
    return may_need_escape(last) ? find_escaped_byte(c, end) : end;
}

}  // namespace

/// Byte by byte: an "&" that already begins a reference is escaped as any other. Most text has nothing to
/// escape, so what lies between two escaped characters is appended in one piece.
void append_escaped(TextBuffer& out, std::string_view text) {
    const char* clean = text.data();
    const char* const end = clean + text.size();
    for (const char* c = find_escaped(clean, end); c != end; c = find_escaped(clean, end)) {
        out.append(std::string_view(clean, static_cast<std::size_t>(c - clean)), escape_character(*c));
        clean = c + 1;
    }
    out.append(std::string_view(clean, static_cast<std::size_t>(end - clean)));
}

void append_text_node(TextBuffer& out, const TextNode& node, int depth) {
    // Deliberate: detached text has no output at all.
    // Test: TextPlace.detached_text_writes_nothing_at_any_depth_which_is_wanted.
    const Element* parent = NodeAccess::parent(node);
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
