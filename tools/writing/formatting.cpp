// SPDX-License-Identifier: MIT

// White space that is all there is in an element is no layout: the library reads it as a text unless it begins with a
// line feed, and others read it always. It stays.

#include "writing/formatting.h"

#include <cstddef>
#include <string>

#include "writing/markup.h"

namespace tool {

namespace {

bool has_lines_inside(const std::vector<Piece>& pieces, std::size_t i) {
    return pieces[i].after > i + 1 && !pieces[i].is_mixed && !pieces[i].preserves_space;
}

/// What is written in a piece itself: all of it, or its tags if only white space stands between the pieces in it.
struct Written {
    std::string_view start;
    std::string_view end;
};

Written get_written(std::string_view document, const std::vector<Piece>& pieces, std::size_t i) {
    const Piece& piece = pieces[i];
    if (piece.kind == PieceKind::document)
        return {};
    if (!has_lines_inside(pieces, i))
        return {document.substr(piece.begin, piece.end - piece.begin), {}};
    return {document.substr(piece.begin, piece.content - piece.begin),
            document.substr(piece.content_end, piece.end - piece.content_end)};
}

class Formatter {
public:
    Formatter(std::string_view text, const std::vector<Piece>& outline, const Layout& chosen)
        : document(text), pieces(outline), layout(chosen), line_end(find_line_end(text)) {}

    std::vector<Patch> run() {
        opened.push_back(0);
        for (std::size_t i = 1; i != pieces.size();) {
            while (pieces[opened.back()].after <= i)
                close();
            replace_space(pieces[i].begin, edge == 0 ? "" : get_separator(opened.size() - 1));
            if (has_lines_inside(pieces, i)) {
                opened.push_back(i);
                edge = pieces[i++].content;
            } else {
                edge = pieces[i].end;
                i = pieces[i].after;
            }
        }
        while (opened.size() > 1)
            close();
        replace_space(document.size(), line_end);
        return std::move(patches);
    }

private:
    void close() {
        const Piece& piece = pieces[opened.back()];
        opened.pop_back();
        replace_space(piece.content_end, get_separator(opened.size() - 1));
        edge = piece.end;
    }

    std::string get_separator(std::size_t level) const {
        std::string separator;
        if (!layout.is_formatted)
            return separator;
        separator.reserve(line_end.size() + level * layout.indentation.size());
        separator = line_end;
        for (std::size_t i = 0; i != level; ++i)
            separator += layout.indentation;
        return separator;
    }

    /// That between the edge and what comes next.
    void replace_space(std::size_t next, std::string space) {
        if (document.substr(edge, next - edge) != space)
            patches.push_back({edge, next, std::move(space)});
    }

    std::string_view document;
    const std::vector<Piece>& pieces;
    const Layout& layout;
    std::string line_end;
    std::vector<std::size_t> opened;  // the pieces that are still open
    std::size_t edge = 0;             // where the last tag or remark ends
    std::vector<Patch> patches;
};

}  // namespace

std::vector<Patch> format(std::string_view document, const std::vector<Piece>& pieces, const Layout& layout) {
    return Formatter(document, pieces, layout).run();
}

bool differ_only_in_layout(std::string_view one, const std::vector<Piece>& pieces, std::string_view other,
                           const std::vector<Piece>& other_pieces) {
    if (pieces.size() != other_pieces.size())
        return false;
    for (std::size_t i = 0; i != pieces.size(); i = has_lines_inside(pieces, i) ? i + 1 : pieces[i].after) {
        const Written written = get_written(one, pieces, i);
        const Written other_written = get_written(other, other_pieces, i);
        const bool is_same = pieces[i].kind == other_pieces[i].kind &&
                             pieces[i].after == other_pieces[i].after &&
                             written.start == other_written.start && written.end == other_written.end;
        if (!is_same)
            return false;
    }
    return true;
}

}  // namespace tool
