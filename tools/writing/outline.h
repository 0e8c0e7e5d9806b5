// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_OUTLINE_H
#define QUXML_TOOLS_WRITING_OUTLINE_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

enum class PieceKind { document, declaration, remark, element };

/// Something in a document that is not a text: the XML declaration, a remark, which is a comment, a processing instruction
/// or the DOCTYPE, or an element. The document itself is the piece that all others are in. Places are bytes.
///
/// What lays out or sorts a document takes all of its pieces; edits take the `Extent` (markup.h) of each element they
/// change, which says more.
struct Piece {
    PieceKind kind = PieceKind::document;
    std::size_t begin = 0;
    std::size_t content = 0;      // after the start tag; the same as `content_end` if there cannot be any
    std::size_t content_end = 0;  // where the end tag begins
    std::size_t end = 0;          // the byte after the piece
    std::size_t after = 0;        // the index of the first piece after this one that is not in it
    bool is_mixed =
        false;  // something that is not white space stands directly in it, beside other pieces or alone
    bool preserves_space = false;  // its attribute xml:space says so
};

/// The pieces of a document in document order; the first is the document itself. The n-th element is the n-th of the
/// library's tree.
/// \param document  in UTF-8 without a byte-order mark; if it is not well-formed, its own piece ends before it does
/// \throws std::bad_alloc
std::vector<Piece> get_outline(std::string_view document);

/// The child after another one; `pieces[parent].after` if there is none. The first child follows its parent.
inline std::size_t get_next_child(const std::vector<Piece>& pieces, std::size_t child) {
    return pieces[child].after;
}

/// The index of the piece that begins at a place.
std::size_t find_piece(const std::vector<Piece>& pieces, std::size_t begin);

}  // namespace tool

#endif
