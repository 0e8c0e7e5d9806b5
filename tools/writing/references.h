// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_REFERENCES_H
#define QUXML_TOOLS_WRITING_REFERENCES_H

#include <string>
#include <string_view>

namespace tool {

// How values are written into a text that is edited: read back as they are, with no more references than that takes. The
// extras' writing always takes double quotes and escapes more; here quotes, line ends and CDATA are the document's own.

/// An attribute's value between quotes of one kind.
std::string to_attribute_value(std::string_view value, char quote);

/// The text of an element. Its line feeds are written as the document's other line ends are.
std::string to_text(std::string_view value, std::string_view line_end);

/// The same as CDATA, in one section or, where the value has the end of one, in several. Nothing is escaped in there.
std::string to_cdata(std::string_view value, std::string_view line_end);

}  // namespace tool

#endif
