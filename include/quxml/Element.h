// SPDX-License-Identifier: MIT
#ifndef QUXML_ELEMENT_H
#define QUXML_ELEMENT_H

#include <cstddef>
#include <list>
#include <string>

#include "Node.h"
#include "export.h"

namespace quxml {

class Attribute;
class TextNode;

namespace extras {
struct Fields;
}

/// Attributes in the order in which their names were first set. The pointers are borrowed.
using AttributeList = std::list<Attribute*>;

/// A node with attributes: what `<name key="value">...</name>` stands for. It owns its attributes as it owns
/// its children; names of attributes are unique within an element.
///
/// \par Threads
/// As `Node`.
class QUXML_EXPORT Element : public Node {
public:
    /// An element without attributes and children, not linked into `parent`.
    /// \param name copied.
    /// \param parent borrowed; may be null.
    /// \param keep_sorted as for `Node`.
    Element(const std::string& name, Element* parent, bool keep_sorted);

    /// Destroys the attributes, first to last, then the children.
    ~Element() override;

    /// The attribute whose name is exactly `name` (bytes, case-sensitive), or null. Borrowed; valid until the
    /// attribute is removed or the element destroyed.
    /// \par Complexity
    /// linear in the number of attributes; allocates nothing.
    Attribute* get_attribute(const std::string& name) const;

    /// A copy of that attribute's value; empty if there is none. `get_attribute` tells an absent attribute
    /// from an empty one.
    /// \par Complexity
    /// linear in the number of attributes and the length of the value.
    std::string get_attribute_value(const std::string& name) const;

    /// Gives the attribute `name` a value: in its place if there is one, otherwise in a new attribute at the end.
    /// The value is stored as it is and written as it is: escape what XML does not allow in an attribute
    /// before you set it. Setting "item" does not sort the parent again.
    /// \return the attribute, borrowed.
    /// \throws std::bad_alloc nothing has changed.
    /// \par Complexity
    /// linear in the number of attributes.
    Attribute* set_attribute(const std::string& name, const std::string& value);

    /// Destroys the attribute `name`, so that pointers to it dangle; does nothing if there is none.
    /// \par Complexity
    /// linear in the number of attributes.
    void remove_attribute(const std::string& name);

    /// A snapshot of the attributes in order: a new list of the same borrowed pointers.
    /// \par Complexity
    /// linear in the number of attributes, one allocation for each.
    AttributeList get_attributes() const;

    /// Adds a text child holding `text`; it is not merged with text that is already there.
    ///
    /// Deliberate: in an element that is kept sorted the new text goes in front of everything, earlier text
    /// included. Test: AddChildText.goes_in_front_of_everything_if_kept_sorted_which_is_wanted.
    /// \return the new child, borrowed; this element owns it.
    /// \throws std::bad_alloc nothing has been added.
    /// \par Complexity
    /// constant, and one copy of the text.
    TextNode* add_child_text(const std::string& text);

    /// As above without a copy: the text is swapped in, and `text` is left empty.
    TextNode* add_child_text(std::string&& text);

    /// The first child that is text, or null. Borrowed.
    /// \par Complexity
    /// linear in the number of children before it.
    TextNode* get_child_text() const;

    /// Whether any child is text.
    /// \par Complexity
    /// linear in the number of children before the first text.
    bool has_child_text() const;

    /// Appends the element and everything below it; `<name/>` if it has no children. Names and attribute
    /// values are written as they are, only text is escaped. In formatted text an element whose only child is
    /// text stands on one line with it.
    /// \par Complexity
    /// Linear in the length of the text; the stack does not grow with the depth of the tree, except by one
    /// call for each nested node of a class derived from `Element`.
    void write_to_string(std::string& out, int depth) const override;

    /// Appends the opening tag with the attributes. Formatted: 2 * `depth` spaces before it, and a line end
    /// after it unless the only child is text or there are no children.
    void write_opening_tag(std::string& out, int depth) const;

    /// Appends the closing tag. Formatted: a line end after it, and 2 * `depth` spaces before it unless the
    /// only child is text or there are no children.
    void write_closing_tag(std::string& out, int depth) const;

    /// Appends the tag of an element without children, `<name/>`, with the attributes. Formatted: 2 * `depth`
    /// spaces before it and a line end after it.
    void write_shorthand_tag(std::string& out, int depth) const;

    /// Copies this element into `parent`, by `parent->add_new_node`. The copy keeps this element's own
    /// `keep_sorted`. With `deep`, attributes and everything below are copied too; without, the name alone.
    ///
    /// Deliberate: the copy is linked before it gets its attributes, so in a parent that is kept sorted it
    /// goes after all its namesakes, whatever its item; copies made in source order keep the source order.
    /// Test: ElementCopy.goes_after_its_namesakes_whatever_its_item_which_is_wanted.
    /// \throws std::out_of_range ("stoi") if a child of a derived class, which copies itself, causes the
    ///     comparison of an item beyond the range of `int`; what had been copied so far stays in `parent`.
    /// \throws std::bad_alloc what had been copied so far stays in `parent`.
    /// \par Complexity
    /// The size of the copy; in an element that is kept sorted, n log n for n children.
    Node* get_deep_copy_of_node(bool deep, Element* parent) const override;

private:
    friend struct NodeAccess;
    friend struct extras::Fields;

    /// From a name that is not a string yet.
    QUXML_HIDDEN Element(const char* name, std::size_t length, Element* parent, bool keep_sorted);

    AttributeList attributes;
};

}  // namespace quxml

#endif
