// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_UNIFIED_DIFF_H
#define QUXML_TOOLS_WRITING_UNIFIED_DIFF_H

#include <string>

namespace tool {

/// How two texts differ, line by line, as "diff -u" writes it and "patch" reads it; coloured if standard output is a
/// terminal that knows colours. Empty if they do not differ.
/// \param file  what both are called; standard input is "-"
std::string get_unified_diff(const std::string& file, const std::string& before, const std::string& after);

}  // namespace tool

#endif
