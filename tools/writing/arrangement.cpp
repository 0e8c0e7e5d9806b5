// SPDX-License-Identifier: MIT

// What the library reads of a sorted document is compared as the text that is written of it: so no two trees are held
// at once. A document that is only laid out needs no tree: where the same pieces have the same bytes, the same is read.

#include "writing/arrangement.h"

#include <quxml/Element.h>
#include <quxml/extras/writing.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "writing/EncodedText.h"
#include "writing/formatting.h"
#include "writing/moving.h"
#include "writing/outline.h"
#include "writing/read_back.h"

namespace tool {

namespace {

std::vector<Piece> find_pieces(const std::string& file, const EncodedText& text) {
    const Progress progress("looking for elements", 0);
    std::vector<Piece> pieces = get_outline(text.get_text());
    if (pieces.front().end != text.get_text().size())
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not all of its elements are found in its text");
    return pieces;
}

/// Elements in mixed content stay where they are, and so does what is in them.
std::vector<bool> find_fixed_elements(const std::vector<Piece>& pieces) {
    std::vector<bool> fixed;
    std::size_t fixed_up_to = 0;
    for (std::size_t i = 0; i != pieces.size(); ++i) {
        if (pieces[i].is_mixed)
            fixed_up_to = std::max(fixed_up_to, pieces[i].after);
        if (pieces[i].kind == PieceKind::element)
            fixed.push_back(i < fixed_up_to);
    }
    return fixed;
}

/// Sorts the tree and the text, and compares them.
void sort(const std::string& file, std::shared_ptr<quxml::Document> document, EncodedText& text) {
    quxml::Element* const root = document->get_root_node();
    const std::vector<Piece> pieces = find_pieces(file, text);
    const std::vector<Order> orders = sort_tree(file, root, find_fixed_elements(pieces));
    if (orders.empty())
        return;
    const std::string wanted = quxml::extras::to_text(*root);
    document.reset();  // what follows needs the memory
    text.apply(move_elements(text.get_text(), pieces, orders));
    require_to_read_back(file, text.get_bytes(),
                         [&](quxml::Element& read) { return quxml::extras::to_text(read) == wanted; });
}

/// The encoding must not follow from the declaration alone.
void remove_declaration(const std::string& file, EncodedText& text) {
    const std::vector<Piece> pieces = find_pieces(file, text);
    if (pieces[1].kind != PieceKind::declaration)
        return;
    const std::string rest(text.get_text().substr(pieces[2].begin));
    text.apply({{0, pieces[2].begin, ""}});
    text = EncodedText(file, text.take_bytes());
    if (text.get_text() != rest)
        refuse_to_write(file);
}

/// Lays out the text, and compares it with the old one, as it is taken for by then.
void format(const std::string& file, EncodedText& text, const Layout& layout) {
    if (!layout.has_declaration)
        remove_declaration(file, text);
    const std::vector<Piece> pieces = find_pieces(file, text);
    std::vector<Patch> patches = tool::format(text.get_text(), pieces, layout);
    if (patches.empty())
        return;
    const std::string before(text.get_text());
    text.apply(std::move(patches));
    text = EncodedText(file, text.take_bytes());
    if (!differ_only_in_layout(before, pieces, text.get_text(), find_pieces(file, text)))
        refuse_to_write(file);
}

}  // namespace

std::vector<Order> sort_tree(const std::string& file, quxml::Node* root, const std::vector<bool>& fixed) {
    try {
        const Progress progress("sorting", 0);
        return sort_by_item(root, fixed);
    } catch (const std::out_of_range&) {
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": cannot be sorted: an item is a number out of range");
    }
}

std::string arrange(const RewriteOptions& options, const std::string& file, const std::string& bytes) {
    std::shared_ptr<quxml::Document> document = parse_document(file, bytes);
    if (!options.sorted)
        document.reset();
    EncodedText text(file, bytes);  // a copy only now: most memory is needed for parsing
    if (options.sorted)
        sort(file, std::move(document), text);
    if (options.formatted)
        format(file, text, get_layout(options));
    return text.take_bytes();
}

}  // namespace tool
