#ifndef QUXML_TOOLS_WRITING_OUTLINE_H
#define QUXML_TOOLS_WRITING_OUTLINE_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

enum class ItemKind { document, declaration, remark, element };

/// Something in a document that is no text: the XML declaration, a remark, which is a comment, a processing instruction
/// or the DOCTYPE, or an element. The document itself is the item that all others are in. Places are bytes.
struct Item {
    ItemKind kind = ItemKind::document;
    std::size_t begin = 0;
    std::size_t content = 0;      // after the start tag; the same as `content_end` if there cannot be any
    std::size_t content_end = 0;  // where the end tag begins
    std::size_t end = 0;          // the byte after the item
    std::size_t after = 0;        // the index of the first item after this one that is not in it
    bool is_mixed =
        false;  // something that is not white space stands directly in it, beside other items or alone
    bool preserves_space = false;  // its attribute xml:space says so
};

/// The items of a document in document order; the first is the document itself. The n-th element is the n-th of the
/// library's tree.
/// \param document  in UTF-8 without a byte-order mark; if it is not well-formed, its own item ends before it does
/// \throws std::bad_alloc
std::vector<Item> get_outline(std::string_view document);

/// The child after another one; `items[parent].after` if there is none. The first child follows its parent.
inline std::size_t get_next_child(const std::vector<Item>& items, std::size_t child) {
    return items[child].after;
}

/// The index of the item that begins at a place.
std::size_t find_item(const std::vector<Item>& items, std::size_t begin);

}  // namespace tool

#endif
