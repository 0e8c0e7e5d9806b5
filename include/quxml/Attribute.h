// SPDX-License-Identifier: MIT
#ifndef QUXML_ATTRIBUTE_H
#define QUXML_ATTRIBUTE_H

#include <cstddef>
#include <string>

#include "Node.h"
#include "export.h"

namespace quxml {

namespace extras {
struct Fields;
}

/// A name and a value, owned by one element. Attributes are created by `Element::set_attribute`; they are
/// never children, have no siblings and are never kept sorted.
///
/// \par Threads
/// As `Node`.
class QUXML_EXPORT Attribute : public Node {
public:
    /// An attribute that is not linked into `parent`: `Element::set_attribute` creates and links.
    /// \param name copied.
    /// \param value copied.
    /// \param parent borrowed; may be null.
    Attribute(const std::string& name, const std::string& value, Element* parent);

    ~Attribute() override;

    /// A copy of the value as stored, without any escaping.
    std::string get_value() const;

    /// Assigns the value, as it is. Changing an "item" does not sort anything again.
    /// \throws std::bad_alloc the value is as it was.
    void set_value(const std::string& value);

    /// Appends a space, the name, `="`, the value and `"`. The depth is not looked at.
    ///
    /// Deliberate: the value is written as it is, whatever it holds. A value with a double quote, "<" or "&"
    /// gives text that XML parsers refuse, unless the caller stored it escaped.
    /// Test: WriteAttribute.value_with_double_quotes_is_written_as_it_is_which_is_wanted.
    void write_to_string(std::string& out, int depth) const override;

    /// Sets the attribute of this name on `parent` to this value.
    /// \param deep not looked at.
    /// \param parent owns the result; not null.
    /// \return the attribute of `parent`, new or overwritten in its place; borrowed.
    Node* get_deep_copy_of_node(bool deep, Element* parent) const override;

private:
    friend struct NodeAccess;
    friend struct extras::Fields;  // with which the extras write values without a copy

    /// From a name and a value that are not strings yet.
    QUXML_HIDDEN Attribute(const char* name, std::size_t name_length, const char* value,
                           std::size_t value_length, Element* parent);

    std::string value;
};

}  // namespace quxml

#endif
