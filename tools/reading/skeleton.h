// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_SKELETON_H
#define QUXML_TOOLS_READING_SKELETON_H

#include <quxml/Document.h>

#include <memory>
#include <string>

namespace tool {

enum class AttributeValues { dropped, kept };

/// The elements and attributes of a document without its texts. Of elements that are alike, whatever is in them, there is
/// one, which has the children of all. Elements are alike if they stand in the same element and have the same name and, if
/// values are kept, no attributes; they are in order of first appearance. Without values, one element has the attributes
/// of all that are like it, with empty values. It takes a third of the time of reading the document, and a half with values.
/// \return null for a document that is not well-formed or not in UTF-8, or that refers to entities, which may hold
///     elements; if values are kept, also if one of them is not what is written. Then the tree has to be read.
/// \throws std::bad_alloc
std::shared_ptr<quxml::Document> read_skeleton(const std::string& document, AttributeValues values);

}  // namespace tool

#endif
