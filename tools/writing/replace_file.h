// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_REPLACE_FILE_H
#define QUXML_TOOLS_WRITING_REPLACE_FILE_H

#include <sys/stat.h>

#include <memory>
#include <string>

namespace tool {

// The extras replace a file as a whole, too, but a command also has to see that nobody else changes the file between its
// reading and its replacement, which takes a lock and a comparison of its state, and it can keep the old text as a backup.

/// A file that is going to be replaced, as it was when it was read.
struct Original {
    std::string path;  // without symbolic links
    struct stat status;
    std::string text;
    std::shared_ptr<const void> lock;  // keeps other processes of this program from changing the file
};

/// Reads a file that is to be replaced later, and locks it until the result is destroyed, so that of several programs
/// that change it each sees what the one before wrote. Waits up to ten seconds for the lock.
/// \throws Failure  (io), also if it is not a regular file, or if another process holds the lock for longer.
Original read_original(const std::string& file);

/// Puts `text` in the place of a file, which at any moment is whole, old or new: the text goes to a new file
/// beside it, and only when that has reached the disk it gets the old one's name. Mode and owner stay; symbolic
/// links go on to lead to the file, other hard links keep the old text.
/// \param backup  what is added to the file's name for a copy of the old text; empty for none.
/// \throws Failure  (io) if that cannot be done, or if the file has changed since it was read; the file is untouched.
void replace_file(const Original& original, const std::string& text, const std::string& backup);

}  // namespace tool

#endif
