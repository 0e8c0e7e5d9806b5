#ifndef QUXML_TOOLS_WRITING_FORMATTING_H
#define QUXML_TOOLS_WRITING_FORMATTING_H

#include <string_view>
#include <vector>

#include "writing/layout.h"
#include "writing/outline.h"
#include "writing/patches.h"

namespace tool {

/// What lays out a document: each item gets a line of its own, or all of them the same one, and nothing but the white
/// space between them changes. The content of elements that are mixed, or that preserve space, stays as it is.
std::vector<Patch> format(std::string_view document, const std::vector<Item>& items, const Layout& layout);

}  // namespace tool

#endif
