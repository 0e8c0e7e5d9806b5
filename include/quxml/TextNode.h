// SPDX-License-Identifier: MIT
#ifndef QUXML_TEXT_NODE_H
#define QUXML_TEXT_NODE_H

#include <cstddef>
#include <string>

#include "Node.h"
#include "export.h"

namespace quxml {

/// Character data inside an element, created by `Element::add_child_text`. Its name is empty, it has no
/// children and is never kept sorted.
///
/// \par Threads
/// As `Node`.
class QUXML_EXPORT TextNode : public Node {
public:
    /// A text node without content that is not linked into `parent`.
    /// \param parent borrowed; may be null.
    /// \param name the node's name, not its text: that is set with `set_content`.
    TextNode(Element* parent, const std::string& name);

    ~TextNode() override;

    /// A copy of the text as stored, without any escaping.
    std::string get_content() const;

    /// Assigns a copy of `content`.
    /// \throws std::bad_alloc the text is as it was.
    void set_content(const std::string& content);

    /// Exchanges the text with `content`.
    ///
    /// Deliberate: the argument is left holding the previous text, so nothing is freed and nothing is lost.
    /// Test: SetContent.exchanges_a_text_that_is_handed_over_which_is_wanted.
    void set_content(std::string&& content);

    /// Appends the text with `&`, `<`, `>`, the quote and the apostrophe written as `&amp;`, `&lt;`, `&gt;`,
    /// `&quot;` and `&apos;`, and every other byte as it is. Formatted: on a line of its own with 2 * `depth`
    /// spaces before it, but with nothing around it if it is its parent's only child.
    ///
    /// Deliberate: text without a parent appends nothing.
    /// Test: TextPlace.detached_text_writes_nothing_at_any_depth_which_is_wanted.
    void write_to_string(std::string& out, int depth) const override;

    /// Adds a text child with this content, and the empty name, to `parent`.
    /// \param deep not looked at.
    /// \param parent owns the copy; not null.
    /// \return the copy, borrowed.
    Node* get_deep_copy_of_node(bool deep, Element* parent) const override;

private:
    friend struct NodeAccess;

    /// A text node without a name that holds a text which is not a string yet.
    QUXML_HIDDEN TextNode(Element* parent, const char* text, std::size_t length);

    std::string content;
};

}  // namespace quxml

#endif
