#ifndef QUXML_WRITER_ESCAPE_H
#define QUXML_WRITER_ESCAPE_H

#include <string>

namespace quxml {

/// One byte of text as XML character data: an entity reference for `& < > " '`, else the byte itself.
std::string escape_character(char c);

/// Appends `text` as XML character data, byte by byte: an "&" that already begins a reference is escaped as
/// any other.
void append_escaped(std::string& out, const std::string& text);

}  // namespace quxml

#endif
