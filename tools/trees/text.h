// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_TEXT_H
#define QUXML_TOOLS_TREES_TEXT_H

#include <quxml/Node.h>

#include <string>

namespace tool {

/// The content of a text node, or of the text in an element; empty if it has none.
std::string get_text(const quxml::Node& node);

}  // namespace tool

#endif
