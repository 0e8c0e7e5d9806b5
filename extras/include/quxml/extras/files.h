// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_FILES_H
#define QUXML_EXTRAS_FILES_H

#include <quxml/Document.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "writing.h"

namespace quxml {
namespace extras {

/// A file that cannot be read or written, or that is not XML. `what()` is one line, such as
/// "settings.xml: No such file or directory" or "settings.xml:3:7: Opening and ending tag mismatch: ...".
class FileError : public std::runtime_error {
public:
    /// \param file its name; copied.
    /// \param line counted from 1; 0 if the error has no place in the text.
    /// \param column in characters, counted from 1; not looked at if `line` is 0.
    /// \param reason the end of what `what()` returns; copied.
    /// \throws std::bad_alloc
    FileError(const std::string& file, int line, int column, const std::string& reason);

    /// Shares the texts with the other exception; so does assignment.
    FileError(const FileError&) noexcept = default;

    /// As the copy above.
    FileError& operator=(const FileError&) noexcept = default;

    ~FileError() override;

    /// The name as it was passed. Valid as long as the exception.
    const std::string& get_file() const noexcept;

    /// Where libxml2 noticed the error, counted from 1; 0 if the error has no place in the text.
    int get_line() const noexcept;

    /// In characters, as libxml2 counts them, from 1; 0 if the error has no place in the text.
    int get_column() const noexcept;

private:
    std::shared_ptr<const std::string> file;
    int line;
    int column;
};

/// Reads a document from a file, see `from_string`. Anything that can be read to its end will do, a pipe too.
/// \param name of the file; for the operating system, so relative names begin at the working directory.
/// \param keep_sorted for the new document.
/// \return never null.
/// \throws FileError if the file cannot be read, or is not XML.
/// \throws std::bad_alloc
/// \par Memory
/// The text is in memory as a whole while it is read, besides what `from_string` takes.
/// \par Complexity
/// As `from_string`.
std::shared_ptr<Document> read_file(const std::string& name, bool keep_sorted = false);

/// Writes a document to a file, formatted unless `layout` says otherwise, with attributes escaped (see
/// writing.h), as `replace_file` does it.
/// \param name of the file, which need not be there.
/// \param document of which nothing is changed.
/// \param layout of the text.
/// \throws FileError the file is as it was, and nothing else is left behind.
/// \throws std::bad_alloc likewise.
/// \par Memory
/// As `write`: the text is never in memory as a whole.
/// \par Complexity
/// Linear in the length of the text, and two waits for the disk.
void write_file(const std::string& name, const Document& document, const Layout& layout = Layout());

/// Replaces a file, or creates one, such that at any moment it is there as a whole, old or new, even if the
/// machine stops: the new one is written beside the old one, under a name that begins with ".quxml-", flushed to
/// the disk, and then given the old one's name, which is flushed to the disk too.
///
/// Symbolic links are followed and stay. The new file gets the mode of the old one, and its owner; if that is
/// not possible, or the old one must not be written or is not a regular file, it is not replaced. Access lists
/// and extended attributes do not go over; other hard links keep the old file. A file that is created gets the
/// mode that the process gives new files.
/// \param name of the file, which need not be there; its folder has to be, and to allow new files.
/// \param write is called once, to write the new file; it must not close it.
/// \throws FileError the file is as it was, and nothing else is left behind; after what `write` throws likewise.
///     A `std::system_error` of `write` becomes a `FileError`.
/// \throws std::bad_alloc likewise.
/// \par Complexity
/// What `write` takes, and two waits for the disk.
void replace_file(const std::string& name, const std::function<void(FileDescriptor)>& write);

}  // namespace extras
}  // namespace quxml

#endif
