// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_EDITOR_H
#define QUXML_TOOLS_WRITING_EDITOR_H

#include <quxml/Element.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reading/default_attributes.h"
#include "reading/start_tag.h"
#include "writing/markup.h"
#include "writing/patches.h"

namespace tool {

// Edits of single elements as patches of the document's text. An edit that cannot be made throws a `Failure`
// (malformed) that names the element; the tree still has to be as the text is.

/// A name and its value.
using Setting = std::pair<std::string, std::string>;

/// An element that is to be added.
struct NewElement {
    std::string name;
    bool has_item = false;
    std::string item;
    std::vector<Setting> attributes;
    std::string text;
    bool is_sorted = false;  // it stands where a parent that keeps its children sorted would put it
};

/// An element of a document, and where it stands in its text.
struct Located {
    const quxml::Element& element;
    const Extent& extent;
};

class Editor {
public:
    Editor(std::string_view text, const Markup& extents) : document(text), markup(extents) {}

    /// Gives the attributes their values; new ones stand after the others.
    void set(const Located& located, const std::vector<Setting>& settings);

    /// Takes out attributes, and all that are read under the same name.
    /// \param defaults  those that would be there nevertheless
    void unset(const Located& located, const std::vector<std::string>& names,
               const std::set<AttributeName>& defaults);

    /// Replaces all content by a text.
    void set_text(const Located& located, const std::string& value);

    /// Puts an element after everything in its parent.
    void append(const Located& parent, const NewElement& added);

    /// Puts an element before what begins at `place`, a child of its parent or a remark.
    void insert(const Located& parent, std::size_t place, const NewElement& added);

    /// Takes out some children, given from first to last.
    void remove(const Located& parent, const std::vector<const Extent*>& children);

    /// Takes out all content.
    void clear(const Extent& extent) { patches.push_back({extent.tag_end, extent.content_end, ""}); }

    std::vector<Patch>& get_patches() { return patches; }

private:
    /// What stands before a first child, and before the end tag after it, for the document's layout to go on.
    struct Lines {
        std::string inner{};
        std::string outer{};
    };

    Lines get_lines(const Extent& parent) const;
    void fill_white_space(const Extent& parent, const Lines& lines, const std::string& element);
    void append_to_last_child(const Extent& parent, const Lines& lines, const std::string& element);
    void set_value(const Located& located, const AttributeExtent& attribute, const Setting& setting);
    void fill_empty_tag(const Extent& extent, const std::string& content);
    std::string write(const Extent& parent, const NewElement& added) const;

    std::string_view document;
    const Markup& markup;
    std::vector<Patch> patches;
};

}  // namespace tool

#endif
