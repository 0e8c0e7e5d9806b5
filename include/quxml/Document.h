// SPDX-License-Identifier: MIT
#ifndef QUXML_DOCUMENT_H
#define QUXML_DOCUMENT_H

#include <memory>
#include <string>

#include "export.h"

/// All of the library.
namespace quxml {

class Element;

/// The owner of one tree. It can be moved, but not copied.
///
/// \par Threads
/// Different documents may be used on different threads at once; one document may not.
/// \par Memory
/// What needs memory may throw `std::bad_alloc`. Unless its description says otherwise, nothing has changed
/// then.
class QUXML_EXPORT Document {
public:
    /// A document without a root.
    /// \param keep_sorted given to every root element that this document creates; elements created below
    ///     inherit it. True: each new child is inserted at its sorted place. See `Node::sort_children`.
    explicit Document(bool keep_sorted);

    /// Takes the root, leaving `other` without one; `other` keeps its own `keep_sorted`.
    Document(Document&& other) noexcept;

    /// Exchanges the roots and copies `keep_sorted`; self-assignment does nothing.
    ///
    /// Deliberate: `other` now owns this document's former tree and destroys it with itself.
    /// Test: MoveAssignment.exchanges_the_roots_which_is_wanted.
    Document& operator=(Document&& other) noexcept;

    /// Destroys the tree.
    /// \par Complexity
    /// The size of the tree.
    ~Document();

    /// The root element, or null. Borrowed; valid until the root is replaced or the document destroyed.
    Element* get_root_node() const;

    /// Makes `root` the root element and takes ownership of it.
    ///
    /// Deliberate: that is all. The former root is not destroyed, the caller now owns it; the new root's
    /// parent is left as it is. Tests: SetRootNode.leaves_the_former_root_to_the_caller_which_is_wanted,
    /// SetRootNode.does_not_touch_the_parent_of_the_new_root_which_is_wanted.
    /// \param root null, or an element that nothing else owns.
    void set_root_node(Element* root);

    /// Destroys the tree and creates a root element called `name`.
    /// \return the new root, borrowed.
    /// \throws std::bad_alloc the document has no root.
    /// \par Complexity
    /// The size of the tree that is destroyed.
    Element* create_root_node(const std::string& name);

    /// Destroys the tree and copies `source` as the new root, which takes this document's `keep_sorted`;
    /// everything below keeps the `keep_sorted` of what it copies.
    /// \param source borrowed, not null. Not part of this document: its tree is destroyed before `source` is
    ///     read.
    /// \param deep whether attributes and everything below are copied, or the name alone.
    /// \return the new root, borrowed.
    /// \throws std::out_of_range ("stoi") if a node of a derived class, which copies itself, causes the
    ///     comparison of an item beyond the range of `int`; the document holds what had been copied so far.
    /// \throws std::bad_alloc the document holds what had been copied so far, or no root.
    /// \par Complexity
    /// The size of both trees; for an element that is kept sorted, n log n for n children.
    Element* create_root_node_by_import(const Element* source, bool deep);

    /// The whole document as compact text: `<?xml version="1.0"?>` and the root on one line, without a line
    /// end.
    /// \par Complexity
    /// Linear in the length of the text, like the next one.
    std::string write_to_string() const;

    /// The whole document as formatted text: one element per line, two spaces per level, every line ended by
    /// a line feed.
    /// \param include_declaration whether the line `<?xml version="1.0"?>` comes first.
    std::string write_to_string_formatted(bool include_declaration) const;

private:
    Element* root;
    bool keep_sorted;
};

/// Reads XML text with libxml2.
///
/// Kept are elements, their attributes, and text that is the only content of its element. Dropped are text
/// with any sibling (so the white space between elements), text of white space only that begins with a line
/// feed, CDATA sections, comments, processing instructions, references to entities of a DTD, namespace
/// declarations and the prefixes they declare; of two attributes that differ only in their prefix, the last
/// value stays. Entities of a DTD are not substituted in text. An attribute's value ends at the first reference
/// to one; a value that begins with one becomes that entity's text. Nothing outside `text` is ever loaded.
/// Names and texts are converted to UTF-8.
///
/// libxml2's generic error handler for the calling thread is replaced by a silent one, and stays replaced; a
/// structured one of the program's own is still called. The record of libxml2's last error is reset. Read on a
/// stack of 64 KiB or more: a DTD can make libxml2 use more than 16.
/// \param text at most `INT_MAX` bytes, in an encoding that it declares itself or UTF-8.
/// \param keep_sorted for the new document: children are then sorted by name. Deliberate: namesakes stay in
///     the order of the text, whatever their items, because an element is linked before it gets its attributes;
///     `Node::sort_children_recursively` orders them by item.
///     Test: Sorted/SortedReading.inserts_each_child_in_order_as_it_is_read/items_do_not_matter_since_they_are_set_afterwards_which_is_wanted.
/// \return the document; shared ownership, never null.
/// \throws DomParserError if libxml2 cannot read the text: it is not well-formed, its encoding is not known,
///     it exceeds libxml2's limits of depth and size, or libxml2 runs out of memory. The message has the last
///     error of libxml2 with its code, line and column. "Empty document." if the text has no bytes,
///     "Document too large." if it has too many.
/// \throws std::bad_alloc nothing is left behind.
QUXML_EXPORT std::shared_ptr<Document> from_string(const std::string& text, bool keep_sorted);

}  // namespace quxml

#endif
