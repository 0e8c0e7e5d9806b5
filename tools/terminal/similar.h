// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_SIMILAR_H
#define QUXML_TOOLS_TERMINAL_SIMILAR_H

#include <string>
#include <vector>

namespace tool {

/// Asks for the word that is nearly the one that was written, and begins as it does: "; is it WORD?". Empty if there is
/// none.
std::string ask_for_similar(const std::string& word, const std::vector<std::string>& words);

}  // namespace tool

#endif
