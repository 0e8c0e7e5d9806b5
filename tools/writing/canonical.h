// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_CANONICAL_H
#define QUXML_TOOLS_WRITING_CANONICAL_H

#include <string>

#include "writing/rewrite.h"

namespace tool {

/// A document as the library reads and writes it. What is lost is warned of and, in place, refused.
/// \throws Failure
std::string write_canonical(const RewriteOptions& options, const std::string& file, const std::string& text);

}  // namespace tool

#endif
