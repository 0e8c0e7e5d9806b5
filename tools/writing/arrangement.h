// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_ARRANGEMENT_H
#define QUXML_TOOLS_WRITING_ARRANGEMENT_H

#include <quxml/Node.h>

#include <string>
#include <vector>

#include "trees/sorting.h"
#include "writing/layout.h"
#include "writing/rewrite.h"

namespace tool {

/// A document sorted and formatted, with everything in it kept. The library reads it as it reads the old one, but for
/// the order of elements.
/// \throws Failure  (malformed, io)
std::string arrange(const RewriteOptions& options, const std::string& file, const std::string& bytes);

/// Sorts the tree of a file, and says how.
/// \throws Failure  (malformed) if it has pieces that cannot be compared.
std::vector<Order> sort_tree(const std::string& file, quxml::Node* root, const std::vector<bool>& fixed = {});

}  // namespace tool

#endif
