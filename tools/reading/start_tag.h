// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_START_TAG_H
#define QUXML_TOOLS_READING_START_TAG_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Where an attribute or a namespace declaration stands in a text, in bytes.
struct AttributeExtent {
    std::size_t begin;  // of the white space before it
    std::size_t name;
    std::size_t name_end;
    std::size_t value;  // after the quote
    std::size_t value_end;

    std::size_t get_end() const { return value_end + 1; }
};

/// The byte after the name of a start tag.
/// \param tag  where a start tag or the XML declaration begins in `text`; it is known to be well-formed
std::size_t get_name_end(std::string_view text, std::size_t tag);

/// What is in a start tag, from left to right.
/// \param tag  as above
/// \throws std::bad_alloc
std::vector<AttributeExtent> get_attributes(std::string_view text, std::size_t tag);

/// The name of an attribute as it is written.
std::string_view get_name(std::string_view text, const AttributeExtent& attribute);

/// What stands between the quotes of an attribute.
std::string_view get_value(std::string_view text, const AttributeExtent& attribute);

/// Whether what has this name declares a namespace, and so is not read as an attribute.
bool declares_namespace(std::string_view name);

/// The name that the library gives an attribute; empty for a namespace declaration.
/// \param losing_prefix  the attributes of the element that lose their prefix, as they are written
std::string_view get_read_name(std::string_view name, const std::vector<std::string>& losing_prefix);

}  // namespace tool

#endif
