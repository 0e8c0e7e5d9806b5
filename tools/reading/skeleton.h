// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_SKELETON_H
#define QUXML_TOOLS_READING_SKELETON_H

#include <quxml/Document.h>

#include <memory>
#include <string>

namespace tool {

enum class AttributeValues { dropped, kept };

/// The elements and attributes of a document without its texts. If values are dropped, there is one element for all that
/// have the same names from the root element down to them, in order of first appearance, with the attributes of all of
/// these, whose values are empty; it takes a third of the time of reading the document. If they are kept, each element is
/// there; it takes half of that time.
/// \return null for a document that is not well-formed or not in UTF-8, or that refers to entities, which may hold
///     elements; if values are kept, also if one of them is not what is written. Then the tree has to be read.
/// \throws std::bad_alloc
std::shared_ptr<quxml::Document> read_skeleton(const std::string& document, AttributeValues values);

}  // namespace tool

#endif
