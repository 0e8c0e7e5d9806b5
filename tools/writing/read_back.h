// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_READ_BACK_H
#define QUXML_TOOLS_WRITING_READ_BACK_H

#include <quxml/Element.h>

#include <functional>
#include <string>

namespace tool {

// Before a new text takes the place of a document, it is read as the library will read it.

/// What a tree that was read back has to fulfil. It may change the tree.
using TreeTest = std::function<bool(quxml::Element& root)>;

/// Refuses a new text of `file` that cannot be read, or whose tree fails the test.
/// \throws Failure  (malformed) in that case; (io) if there is no memory to read it
void require_to_read_back(const std::string& file, const std::string& text, const TreeTest& test);

/// Refuses a new text of `file`.
/// \throws Failure  (malformed)
[[noreturn]] void refuse_to_write(const std::string& file);

}  // namespace tool

#endif
