// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_ENCODING_H
#define QUXML_TOOLS_READING_ENCODING_H

#include <string>
#include <string_view>

namespace tool {

/// The encoding that libxml2 converts a document from, such as "ISO-8859-1"; empty if it is UTF-8 or unknown. Ends the
/// program if there is no memory to find it.
std::string get_encoding(const std::string& document);

/// The document as UTF-8, from the encoding that `get_encoding` found; as it is if it cannot be converted, which makes reading it fail as well.
std::string to_utf8(const std::string& document, const std::string& encoding);

/// Whether a document has the character 0, which XML does not allow and which libxml2, after the root element,
/// takes for the end of the text.
bool has_zero_character(const std::string& document);

/// The document without the byte-order mark of UTF-8.
std::string_view without_mark(std::string_view document);

}  // namespace tool

#endif
