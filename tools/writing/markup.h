// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_MARKUP_H
#define QUXML_TOOLS_WRITING_MARKUP_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Where an element stands in its document, in bytes, and what is directly in it. Edits take it, of the elements they
/// change; what goes through a whole document takes its pieces (outline.h).
struct Extent {
    std::size_t begin;            // of the start tag
    std::size_t tag_end;          // the byte after the start tag
    std::size_t content_end = 0;  // of the end tag's begin; that of `tag_end` for <a/>
    std::size_t end = 0;          // the byte after the element
    bool is_empty_tag = false;    // <a/>
    bool loses_prefix = false;    // the library reads the name without its prefix
    std::vector<std::string> attributes_losing_prefix{};  // as written

    std::size_t elements = 0;
    std::size_t comments = 0;
    std::size_t instructions = 0;
    std::size_t references = 0;  // to entities other than the predefined ones
    std::size_t sections = 0;    // of CDATA
    bool has_text = false;       // outside of CDATA, other than white space
    // Where the last child begins: an element or, if there is none, a comment, an instruction or a reference.
    // Comments directly before it on its line count as a part of it.
    std::size_t last_child = 0;
};

/// Some elements of a document, and how the document is laid out.
struct Markup {
    std::vector<Extent> extents;
    std::string indent;    // what each level adds at the beginning of a line
    std::string line_end;  // "\n", "\r\n" or "\r"
};

/// The first line end of a document: "\n", "\r\n" or "\r"; "\n" if it has none.
std::string find_line_end(std::string_view document);

/// Finds elements in a document: those with the given numbers, which are sorted; the root element is 0, and the
/// others follow in document order. Elements from the text of an entity do not count.
/// \param document  well-formed, in UTF-8 without a byte-order mark, whatever encoding it declares
/// \throws std::bad_alloc
Markup find_extents(std::string_view document, const std::vector<std::size_t>& numbers);

/// The element's name as it is written, with its prefix.
std::string_view get_written_name(std::string_view document, const Extent& extent);

/// Where the blanks and tabs before `position` begin, if these are all that its line has before it; else
/// `position` itself if it begins the line, and npos if it does not.
std::size_t get_line_begin(std::string_view document, std::size_t position);

}  // namespace tool

#endif
