// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_WRITING_H
#define QUXML_EXTRAS_WRITING_H

/// \file
/// Writing XML text that is read back as what is in the tree, to a string, a stream or a file descriptor.
///
/// The layout is that of `Document::write_to_string` and `Document::write_to_string_formatted`, and with the
/// default layout so is the text, byte for byte, unless there is something to escape that these do not escape:
/// in values of attributes `&`, `<`, the double quote, tabs, line feeds and carriage returns, in texts carriage
/// returns. Values that were escaped before they were stored are escaped once more.
///
/// Names are not checked, nor are bytes that XML does not allow at all: control characters, and what is not
/// UTF-8. Nodes of derived classes are asked to write themselves and escape what they escape; in formatted text
/// they get their depth, and may indent by two spaces only.
///
/// \par Memory
/// The text does not pass through memory as a whole, unless it is written to a string: at most 48 KiB, or 256 KiB
/// for a file, twice the longest text, value, or node that writes itself, and for each level of the tree 24
/// bytes and an indentation (twice as much while it grows).
/// \par Depth
/// The stack does not grow with the depth of the tree, except for nested nodes of derived classes.
/// \par Complexity
/// Linear in the length of the text.

#include <quxml/Document.h>
#include <quxml/Node.h>

#include <iosfwd>
#include <string>

namespace quxml {
namespace extras {

/// How XML text is laid out.
struct Layout {
    /// The library's own formatted text: one element per line.
    Layout() : is_formatted(true), has_declaration(true), indentation("  ") {}

    /// The library's own compact text: no white space between tags.
    static Layout compact() {
        Layout layout;
        layout.is_formatted = false;
        return layout;
    }

    /// Whether elements stand on lines of their own; otherwise there is no white space between tags.
    bool is_formatted;

    /// Whether `<?xml version="1.0"?>` comes before the root; only for documents.
    bool has_declaration;

    /// What stands before a line once for each level; white space. Only for formatted text.
    std::string indentation;
};

/// An open file, as the operating system numbers it.
struct FileDescriptor {
    /// \param descriptor of a file that is open for writing; borrowed, and not closed.
    explicit FileDescriptor(int descriptor) : number(descriptor) {}

    /// As it was passed.
    int number;
};

/// Where text is written to; borrowed, and neither closed nor flushed.
class Output {
public:
    /// Appends to a string. What was appended before an exception stays.
    /// \param out borrowed.
    Output(std::string& out) : text(&out), stream(nullptr), file(-1) {}

    /// Writes to a stream. As with `<<`, failures leave their mark in the stream and throw only if the stream
    /// has been told to throw.
    /// \param out borrowed.
    Output(std::ostream& out) : text(nullptr), stream(&out), file(-1) {}

    /// Writes to a file, a pipe or a socket that blocks; goes on after signals.
    /// \throws std::system_error if it cannot be written to; some of the text may have been.
    Output(FileDescriptor out) : text(nullptr), stream(nullptr), file(out.number) {}

private:
    friend class TextSink;

    std::string* text;
    std::ostream* stream;
    int file;
};

/// Writes a document as `layout` says; without a root, only the declaration.
/// \param out where to.
/// \param document of which nothing is changed.
/// \param layout of the text.
/// \throws std::bad_alloc some of the text may have been written.
/// \throws std::system_error see `Output`.
void write(Output out, const Document& document, const Layout& layout);

/// Writes a node and everything below it, without a declaration; a root and any other node alike. Errors as above.
void write(Output out, const Node& node, const Layout& layout);

/// Writes a document as compact text. Errors as above.
inline void write(Output out, const Document& document) {
    write(out, document, Layout::compact());
}

/// Writes a node and everything below it as compact text. Errors as above.
inline void write(Output out, const Node& node) {
    write(out, node, Layout::compact());
}

/// Writes a document as formatted text. Errors as above.
inline void write_formatted(Output out, const Document& document) {
    write(out, document, Layout());
}

/// Writes a node and everything below it as formatted text, not indented itself. Errors as above.
inline void write_formatted(Output out, const Node& node) {
    write(out, node, Layout());
}

/// The compact text of a document. Unlike with the functions above, all of it is in memory at once.
/// \throws std::bad_alloc
std::string to_text(const Document& document);

/// The compact text of a node and everything below it.
/// \throws std::bad_alloc
std::string to_text(const Node& node);

/// The text of a document as `layout` says.
/// \throws std::bad_alloc
std::string to_text(const Document& document, const Layout& layout);

/// The text of a node and everything below it as `layout` says.
/// \throws std::bad_alloc
std::string to_text(const Node& node, const Layout& layout);

}  // namespace extras
}  // namespace quxml

#endif
