// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_FILES_H
#define QUXML_TOOLS_TERMINAL_FILES_H

#include <string>

namespace tool {

/// Whether there is a file of this name.
bool is_file(const std::string& name);

}  // namespace tool

#endif
