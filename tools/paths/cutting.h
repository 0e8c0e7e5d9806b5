// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_CUTTING_H
#define QUXML_TOOLS_PATHS_CUTTING_H

#include <string>
#include <vector>

namespace tool {

/// What the library takes for blanks in a path.
constexpr const char* blanks = " \t\n\v\f\r";

/// A text without some characters at its ends.
std::string trim(const std::string& text, const char* characters);

/// A text without the quotes, of either kind, paired or not, at its ends.
std::string without_quotes(const std::string& text);

/// What stands between separators, the empty pieces too.
std::vector<std::string> split(const std::string& text, const char* separators);

}  // namespace tool

#endif
