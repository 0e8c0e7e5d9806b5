// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_DEFAULT_ATTRIBUTES_H
#define QUXML_TOOLS_READING_DEFAULT_ATTRIBUTES_H

#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace tool {

/// The names of an element and of one of its attributes, both as they are written.
using AttributeName = std::pair<std::string, std::string>;

/// The attributes to which the DOCTYPE of a document gives a value where an element does not have them. The library
/// does not read these values, and other readers do.
/// \param document  UTF-8 without a byte-order mark, whatever encoding it declares
/// \throws std::bad_alloc
std::set<AttributeName> find_default_attributes(std::string_view document);

}  // namespace tool

#endif
