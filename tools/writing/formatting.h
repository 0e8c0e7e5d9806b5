// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_FORMATTING_H
#define QUXML_TOOLS_WRITING_FORMATTING_H

#include <string_view>
#include <vector>

#include "writing/layout.h"
#include "writing/outline.h"
#include "writing/patches.h"

namespace tool {

/// What lays out a document: each piece gets a line of its own, or all of them the same one, and nothing but the white
/// space between them changes. The content of elements that are mixed, or that preserve space, stays as it is.
std::vector<Patch> format(std::string_view document, const std::vector<Piece>& pieces, const Layout& layout);

/// Whether two documents differ in nothing but the white space that `format` changes, so that the library reads the same
/// from both: it drops texts that stand beside other pieces.
bool differ_only_in_layout(std::string_view one, const std::vector<Piece>& pieces, std::string_view other,
                           const std::vector<Piece>& other_pieces);

}  // namespace tool

#endif
