// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_LAYOUT_H
#define QUXML_TOOLS_WRITING_LAYOUT_H

#include <quxml/Document.h>

#include <string>

#include "writing/rewrite.h"

namespace tool {

/// How a document is laid out as text.
struct Layout {
    bool has_declaration = true;  // <?xml version="1.0"?>
    bool compact = false;         // everything on one line
    std::string indent = "  ";    // for each level
};

/// The layout that the options ask for.
Layout get_layout(const RewriteOptions& options);

/// The document as text that ends with a line feed. Its attribute values have been escaped.
std::string write_document(const quxml::Document& document, const Layout& layout);

}  // namespace tool

#endif
