// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_JSON_H
#define QUXML_TOOLS_TERMINAL_JSON_H

#include <string>
#include <string_view>

namespace tool {

/// A text as a string of JSON, with its double quotes: valid UTF-8 on one line, harmless on any terminal, and read back as it
/// is. Bytes that are not UTF-8 become U+FFFD.
std::string to_json(std::string_view text);

}  // namespace tool

#endif
