// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_VALUES_H
#define QUXML_EXTRAS_VALUES_H

/// \file
/// Typed values of attributes and of texts. Value.h says what is read and written for each type.
///
/// What is absent gives the default. What is there but is not a value of the type is an error of the document
/// and throws `ValueError`, also where there is a default: a typing mistake in a settings file does not go
/// unseen. `try_get` and `try_get_text` throw nothing of the kind.
///
/// \par Names
/// Compared exactly: bytes, case-sensitive. Of several children of a name the first counts.
/// \par Lifetime
/// Pointers are borrowed: valid until the attribute or the child is removed. Everything else is a copy.
/// \par Errors
/// `ValueError` where it is said; `std::bad_alloc` from whatever copies text or is about to throw a `ValueError`.
/// Nothing has changed after an exception unless it is said.
/// \par Complexity
/// Linear in the attributes of the element, or in its children up to the one that is asked for, and in the length
/// of the value. A `ValueError` takes what `path_of` takes.

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <string>
#include <utility>
#if __cplusplus >= 201703L
#include <optional>
#endif

#include "TextView.h"
#include "Value.h"
#include "ValueError.h"

namespace quxml {
namespace extras {

/// The attribute of exactly this name, or null: `Element::get_attribute` without a `std::string` for the name.
/// Borrowed.
const Attribute* find_attribute(const Element& element, TextView name) noexcept;

/// The same for an element that is not constant.
Attribute* find_attribute(Element& element, TextView name) noexcept;

/// The first child that is an element of exactly this name, or null. Borrowed.
const Element* find_child(const Node& parent, TextView name) noexcept;

/// The same for a parent that is not constant.
Element* find_child(Node& parent, TextView name) noexcept;

/// The first child that is an element of exactly this name, which has to be there. Borrowed.
/// \throws ValueError if it is not there.
const Element& require_child(const Element& parent, TextView name);

/// The same for a parent that is not constant.
Element& require_child(Element& parent, TextView name);

/// For the templates below, as the three that follow.
/// \throws ValueError "... is missing".
[[noreturn]] void throw_missing_attribute(const Element& element, TextView name);

/// \param element has the attribute.
/// \param name of the attribute.
/// \param expected what `Value::describe` says.
/// \throws ValueError "... is ..., which is not ...".
[[noreturn]] void throw_wrong_attribute(const Element& element, TextView name, const std::string& expected);

/// \throws ValueError "... is missing".
[[noreturn]] void throw_missing_child(const Element& element, TextView child);

/// \param element whose text is not what had been expected.
/// \param expected what `Value::describe` says.
/// \throws ValueError "... is ..., which is not ...".
[[noreturn]] void throw_wrong_text(const Element& element, const std::string& expected);

/// The first text of an element; empty if it has none. A copy.
std::string text_of(const Element& element);

/// The first text of the first child element called `child`; empty if there is no such child, or no text in it.
std::string text_of(const Element& element, TextView child);

/// The same, but `fallback` if there is no such child. A child without text gives the empty string.
std::string text_of(const Element& element, TextView child, TextView fallback);

/// Reads an attribute. Does not throw a `ValueError`.
/// \param element whose attribute it is.
/// \param name of the attribute.
/// \param value unchanged unless the result is true.
/// \return whether the attribute is there and is a value of the type.
template <class T>
bool try_get(const Element& element, TextView name, T& value) {
    const Attribute* attribute = find_attribute(element, name);
    return attribute != nullptr && Value<T>::read(attribute->get_value(), value);
}

/// The value of an attribute, or `fallback` if there is no such attribute. The type is that of `fallback`, and
/// `std::string` where that is text in any form, such as a literal.
/// \throws ValueError if the attribute is there and is not a value of the type.
template <class T>
Held<T> get(const Element& element, TextView name, T fallback) {
    Held<T> value(std::move(fallback));
    const Attribute* attribute = find_attribute(element, name);
    if (attribute != nullptr && !Value<Held<T>>::read(attribute->get_value(), value))
        throw_wrong_attribute(element, name, Value<Held<T>>::describe());
    return value;
}

/// The same for enumerations.
/// \throws ValueError if the attribute is there and its value is not in the table.
template <class Enum>
Enum get(const Element& element, TextView name, Enum fallback, const EnumTable<Enum>& table) {
    const Attribute* attribute = find_attribute(element, name);
    if (attribute != nullptr && !table.read(attribute->get_value(), fallback))
        throw_wrong_attribute(element, name, table.describe());
    return fallback;
}

#if __cplusplus >= 201703L
/// The value of an attribute, or nothing if there is no such attribute.
/// \throws ValueError if the attribute is there and is not a value of the type.
template <class T>
std::optional<T> get(const Element& element, TextView name) {
    if (find_attribute(element, name) == nullptr)
        return std::nullopt;
    return get<T>(element, name, T());
}
#endif

/// The value of an attribute that has to be there.
/// \throws ValueError if it is not there, or is not a value of the type.
template <class T>
T require(const Element& element, TextView name) {
    if (find_attribute(element, name) == nullptr)
        throw_missing_attribute(element, name);
    return get<T>(element, name, T());
}

/// The same for enumerations.
/// \throws ValueError if it is not there, or its value is not in the table.
template <class Enum>
Enum require(const Element& element, TextView name, const EnumTable<Enum>& table) {
    if (find_attribute(element, name) == nullptr)
        throw_missing_attribute(element, name);
    return get(element, name, Enum(), table);
}

/// Sets an attribute to a value of any type of Value.h or to text in any form, as `Element::set_attribute`: in its
/// place if it is there.
/// \return the attribute, borrowed.
/// \throws std::invalid_argument for a number that is not finite; nothing has changed.
/// \throws std::bad_alloc nothing has changed.
template <class T>
Attribute* set(Element& element, const std::string& name, const T& value) {
    return element.set_attribute(name, Value<Held<T>>::write(Held<T>(value)));
}

/// The same for enumerations.
/// \throws std::invalid_argument if the value is not in the table; nothing has changed.
template <class Enum>
Attribute* set(Element& element, const std::string& name, Enum value, const EnumTable<Enum>& table) {
    return element.set_attribute(name, table.write(value));
}

/// Reads the text of the first child element called `child`; without text it counts as empty. Does not throw a
/// `ValueError`.
/// \param element whose child it is.
/// \param child the name of the child.
/// \param value unchanged unless the result is true.
/// \return whether the child is there and its text is a value of the type.
template <class T>
bool try_get_text(const Element& element, TextView child, T& value) {
    const Element* found = find_child(element, child);
    return found != nullptr && Value<T>::read(text_of(*found), value);
}

/// The value in the text of the first child element called `child`, or `fallback` if there is no such child. Types
/// as for `get`.
/// \throws ValueError if the child is there and its text is not a value of the type.
template <class T>
Held<T> get_text(const Element& element, TextView child, T fallback) {
    Held<T> value(std::move(fallback));
    const Element* found = find_child(element, child);
    if (found != nullptr && !Value<Held<T>>::read(text_of(*found), value))
        throw_wrong_text(*found, Value<Held<T>>::describe());
    return value;
}

/// The same for enumerations.
/// \throws ValueError if the child is there and its text is not in the table.
template <class Enum>
Enum get_text(const Element& element, TextView child, Enum fallback, const EnumTable<Enum>& table) {
    const Element* found = find_child(element, child);
    if (found != nullptr && !table.read(text_of(*found), fallback))
        throw_wrong_text(*found, table.describe());
    return fallback;
}

/// The value in the text of a child element that has to be there.
/// \throws ValueError if it is not there, or its text is not a value of the type.
template <class T>
T require_text(const Element& element, TextView child) {
    if (find_child(element, child) == nullptr)
        throw_missing_child(element, child);
    return get_text<T>(element, child, T());
}

/// Makes `text` the only text of the element: in the place of its first text if it has one, else as a new
/// child, and all further texts are removed. Elements stay.
/// \throws std::bad_alloc nothing has changed.
void set_text(Element& element, const std::string& text);

/// The same for a child element called `child`, which is created, with `Node::add_child`, if there is none.
/// \return the child, borrowed.
/// \throws std::bad_alloc the texts are as they were; the child may have been created.
Element* set_text(Element& element, const std::string& child, const std::string& text);

/// The same for values of any type of Value.h and for text in any form.
/// \throws std::invalid_argument for a number that is not finite; nothing has changed.
/// \throws std::bad_alloc the texts are as they were; the child may have been created.
template <class T>
Element* set_text(Element& element, const std::string& child, const T& value) {
    return set_text(element, child, Value<Held<T>>::write(Held<T>(value)));
}

}  // namespace extras
}  // namespace quxml

#endif
