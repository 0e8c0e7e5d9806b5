// SPDX-License-Identifier: MIT

// Between pieces there is nothing but text. So it is enough to know where the pieces are: an element is mixed if anything
// but white space stands between two of them, be it text, a section of CDATA or a reference.

#include "writing/outline.h"

#include <algorithm>

#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// Whether an element's attribute xml:space is "preserve". One that the DOCTYPE gives is taken to be.
bool preserves_space(std::string_view document, const Event& event) {
    constexpr std::string_view name = "xml:space";
    const std::vector<std::string>& names = event.prefixed_attributes;
    if (std::find(names.begin(), names.end(), name) == names.end())
        return false;
    const std::vector<AttributeExtent> attributes = get_attributes(document, event.begin);
    const auto found = std::find_if(attributes.begin(), attributes.end(), [&](const AttributeExtent& one) {
        return get_name(document, one) == name;
    });
    return found == attributes.end() || get_value(document, *found) == "preserve";
}

class OutlineReader {
public:
    explicit OutlineReader(std::string_view text) : document(text) {
        add(PieceKind::document, 0, 0);
        opened.push_back(0);
        const bool has_declaration = begins_with(document, "<?xml") && is_white_space(document.substr(5, 1));
        if (has_declaration)
            add(PieceKind::declaration, 0, document.find("?>") + 2);
    }

    void take(const Event& event) {
        switch (event.kind) {
            case EventKind::start_tag:
                open(event);
                break;
            case EventKind::end_tag:
                note_text_before(event.begin);
                close(event.begin, event.end);
                break;
            case EventKind::doctype:
            case EventKind::comment:
            case EventKind::instruction:
                note_text_before(event.begin);
                add(PieceKind::remark, event.begin, event.end);
                break;
            default:
                break;
        }
    }

    std::vector<Piece> finish(bool is_well_formed) {
        if (is_well_formed && opened.size() == 1) {
            note_text_before(document.size());
            close(document.size(), document.size());
        }
        return std::move(pieces);
    }

private:
    void add(PieceKind kind, std::size_t begin, std::size_t end) {
        pieces.push_back({kind, begin, end, end, end, pieces.size() + 1});
        edge = end;
    }

    void open(const Event& event) {
        note_text_before(event.begin);
        const std::size_t tag_end = event.end + (document[event.end] == '/' ? 2 : 1);
        opened.push_back(pieces.size());
        add(PieceKind::element, event.begin, tag_end);
        pieces.back().preserves_space = tool::preserves_space(document, event);
    }

    void close(std::size_t content_end, std::size_t end) {
        Piece& piece = pieces[opened.back()];
        opened.pop_back();
        piece.content_end = content_end;
        piece.end = end;
        piece.after = pieces.size();
        edge = end;
    }

    void note_text_before(std::size_t begin) {
        if (!is_white_space(document.substr(edge, begin - edge)))
            pieces[opened.back()].is_mixed = true;
    }

    std::string_view document;
    std::vector<Piece> pieces;
    std::vector<std::size_t> opened;  // the pieces that are still open
    std::size_t edge = 0;             // where the last tag or remark ends
};

}  // namespace

std::vector<Piece> get_outline(std::string_view document) {
    OutlineReader reader(document);
    const std::vector<Problem> problems =
        read_events(document, [&](const Event& event) { reader.take(event); });
    const bool is_well_formed = std::none_of(problems.begin(), problems.end(),
                                             [](const Problem& problem) { return problem.is_fatal; });
    return reader.finish(is_well_formed);
}

/// The document's own piece can begin where another does.
std::size_t find_piece(const std::vector<Piece>& pieces, std::size_t begin) {
    const auto found =
        std::lower_bound(pieces.begin() + 1, pieces.end(), begin,
                         [](const Piece& piece, std::size_t place) { return piece.begin < place; });
    return static_cast<std::size_t>(found - pieces.begin());
}

}  // namespace tool
