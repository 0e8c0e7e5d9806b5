// SPDX-License-Identifier: MIT
#ifndef QUXML_PLAYGROUND_SESSION_H
#define QUXML_PLAYGROUND_SESSION_H

#include <quxml/Document.h>
#include <quxml/Element.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "paths/Note.h"
#include "paths/names.h"

namespace playground {

/// What the page asks for, done by the library and by the program's own code, and answered in JSON. A session has the
/// document that was last read, and the nodes that were last selected in it.
///
/// The tree is drawn in rows, one for each element in document order; a text stands in the row of its element, since the
/// reader keeps it only where it is alone there. What is drawn, listed or shown at once is bounded, whatever the document.
class Session {
public:
    /// Reads a text. If it is refused, the former document stays.
    /// \return {"rows": NUMBER}, or {"line": NUMBER, "column": NUMBER, "message": TEXT, "more": NUMBER} for the first error
    /// and the number of others.
    std::string read(const std::string& text, bool keep_sorted);

    /// What reading the text has dropped, or writing does not bring back, as the program's `loss` lists it. The text is that
    /// which was last read.
    /// \return {"count": NUMBER, "harmless": how many there are that are noted only, "unseen": the note on what queries do not
    /// see, or empty, "losses": [{"kind", "line", "column", "excerpt", "harmless", "begin", "length"}]}; the last two as
    /// JavaScript counts characters.
    static std::string list_losses(const std::string& text);

    /// The path that selects the element of a row, for one that stays when the text changes.
    /// \return {"path": TEXT}
    std::string get_path(std::size_t row) const;

    /// The row of the element that a path selects.
    /// \return {"row": NUMBER, or null if there is none}
    std::string find_row(const std::string& path) const;

    /// Selects the nodes that are drawn as matches from then on.
    /// \param start  the row of the element at which the path begins
    /// \return {"count", "rows": [the row of each match], "names": [the first matches as text], "notes": [{"text", "kind"}]}
    /// with the kinds "surprise", "reason" and "information"; or {"error": why the path is refused, "exception": what the
    /// library throws}.
    std::string query(const std::string& path, std::size_t start, tool::NameMatch names);

    /// How a path is taken, as the program's `explain` says it.
    /// \return [{"step": TEXT, "lines": [{"text", "kind": that of a note, "error", or empty}]}]
    static std::string explain(const std::string& path, tool::NameMatch names);

    /// Some of the rows.
    /// \return [{"depth", "name", "attributes": [[NAME, VALUE]], "more": whether there are others, "text": TEXT or null,
    /// "match", "text_match": its number among the matches, from 1, or 0}]
    std::string get_rows(std::size_t first, std::size_t count) const;

    /// The document as the library writes it.
    /// \return {"size": in bytes, "text": the beginning of it}
    std::string write(bool formatted) const;

private:
    struct Row {
        quxml::Element* element;
        std::size_t depth;
    };

    /// A node that was selected: the element of a row, or the text in it.
    struct Match {
        std::size_t row;
        bool is_text;
        std::size_t key() const { return 2 * row + (is_text ? 1 : 0); }
    };

    void number_rows();
    void number_matches(const std::vector<quxml::Node*>& nodes);
    std::string describe_matches(const std::vector<tool::Note>& notes) const;
    std::size_t get_number(Match match) const;
    std::string describe_row(std::size_t row) const;

    std::shared_ptr<quxml::Document> document;
    std::vector<Row> rows;
    std::vector<Match> matches;
};

/// The answer to what could not be done.
std::string make_error(std::string_view message);

}  // namespace playground

#endif
