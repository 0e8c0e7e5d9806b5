// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_ESCAPING_H
#define QUXML_TOOLS_WRITING_ESCAPING_H

#include <quxml/Node.h>

#include <string>

namespace tool {

/// Escapes what XML does not allow in attribute values, or would read back as a blank, in `root` and everything below
/// it. The library writes these values as they are stored, so this is the last thing to do before writing.
void escape_attributes(quxml::Node* root);

/// Makes references of the carriage returns in a document's text, which would be read back as line feeds. They
/// can only stand in texts, since attribute values have been escaped.
void escape_carriage_returns(std::string& document);

}  // namespace tool

#endif
