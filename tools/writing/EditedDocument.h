// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_EDITED_DOCUMENT_H
#define QUXML_TOOLS_WRITING_EDITED_DOCUMENT_H

#include <quxml/Document.h>
#include <quxml/Element.h>

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "writing/Editor.h"
#include "writing/EncodedText.h"

namespace tool {

/// A document that is edited: its tree, and its text, of which each edit changes only the bytes concerned. Edits
/// take nodes of the tree in document order, and see what earlier ones have made.
///
/// Each edit throws a `Failure` (malformed) if it is refused; then the document is not to be used any more.
class EditedDocument {
public:
    /// Reads the text of a file.
    /// \throws Failure  (malformed, io)
    EditedDocument(std::string name_of_file, std::string text);

    const quxml::Document& get_tree() const { return *tree; }

    /// Sets attributes; what is there already keeps its place.
    void set(const std::vector<quxml::Element*>& elements, const std::vector<Setting>& settings);

    /// Removes attributes, and all that are read under the same name.
    void unset(const std::vector<quxml::Element*>& elements, const std::vector<std::string>& names);

    void set_text(const std::vector<quxml::Element*>& elements, const std::string& value);

    /// Adds an element to each of these, after the others or at its sorted place.
    void add(const std::vector<quxml::Element*>& parents, const NewElement& added);

    /// Removes elements, and texts, none of which is in another of them. The root element stays.
    void remove(const std::vector<quxml::Node*>& nodes);

    /// The bytes of the document, as it has been edited; it is not to be used any more.
    std::string take_bytes() { return text.take_bytes(); }

    /// Makes sure that the library reads these bytes as the tree that there is by now.
    /// \throws Failure  (malformed) with the reason
    void require_to_read_back() const;

private:
    struct Selected {
        std::vector<quxml::Element*> elements;  // in document order
        Markup markup;
    };

    Selected locate(const std::unordered_set<quxml::Element*>& elements) const;
    Selected locate(const std::vector<quxml::Element*>& elements) const;

    std::vector<Patch> make_removal(const Selected& selected,
                                    const std::unordered_set<const quxml::Node*>& removed) const;

    void require_characters_of_attributes(const std::vector<Setting>& attributes) const;
    void require_characters_of_name(const std::string& name) const;
    void require_characters_of_value(const std::string& value) const;
    void require_characters_of_section(const quxml::Element& element, const std::string& value) const;

    std::string file;
    EncodedText text;
    std::shared_ptr<quxml::Document> tree;
};

}  // namespace tool

#endif
