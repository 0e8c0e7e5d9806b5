// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_SKELETON_H
#define QUXML_TOOLS_READING_SKELETON_H

#include <quxml/Document.h>

#include <memory>
#include <string>

namespace tool {

/// The names in a document: one element for all that have the same names from the root element down to them, in order of
/// first appearance, with the attributes of all of these, whose values are empty. It takes a third of the time of reading
/// the document.
/// \return null for a document that is not well-formed or not in UTF-8, or that refers to entities, which may hold
///     elements: its tree has to be read.
/// \throws std::bad_alloc
std::shared_ptr<quxml::Document> read_skeleton(const std::string& document);

}  // namespace tool

#endif
