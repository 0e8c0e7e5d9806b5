#ifndef QUXML_TOOLS_WRITING_LAYOUT_H
#define QUXML_TOOLS_WRITING_LAYOUT_H

#include <quxml/Document.h>

#include <string>
#include <string_view>

namespace tool {

/// How a document is laid out as text.
struct Layout {
    std::string declaration;    // such as <?xml version="1.0"?>, with its line feed if it has one
    bool compact = false;       // everything on one line
    std::string indent = "  ";  // for each level
};

constexpr const char* standard_declaration = "<?xml version=\"1.0\"?>";

/// The layout of a document as its first lines show it, so that an edited document looks as it did before.
Layout guess_layout(const std::string& document);

/// The document as text that ends with a line feed. Its attribute values have been escaped.
std::string write_document(const quxml::Document& document, const Layout& layout);

}  // namespace tool

#endif
