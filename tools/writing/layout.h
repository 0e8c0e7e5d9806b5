// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_LAYOUT_H
#define QUXML_TOOLS_WRITING_LAYOUT_H

#include <quxml/Document.h>
#include <quxml/extras/writing.h>

#include <string>

#include "writing/rewrite.h"

namespace tool {

using quxml::extras::Layout;

/// The layout that the options ask for.
Layout get_layout(const RewriteOptions& options);

/// The document as text that ends with a line feed.
std::string write_document(const quxml::Document& document, const Layout& layout);

}  // namespace tool

#endif
