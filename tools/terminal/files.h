// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_FILES_H
#define QUXML_TOOLS_TERMINAL_FILES_H

#include <string>

namespace tool {

/// Whether there is a file of this name.
bool is_file(const std::string& name);

/// Whether a word is rather the name of a file than that of an attribute: it has a dot or a slash, or is standard input.
bool looks_like_file(const std::string& word);

/// Whether two names of files, as they are written, are of the same folder.
bool is_in_same_folder(const std::string& one, const std::string& other);

/// The name of a file without symbolic links, from the root on; as it is if there is no such file.
std::string get_true_name(const std::string& name);

}  // namespace tool

#endif
