// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_REWRITE_H
#define QUXML_TOOLS_WRITING_REWRITE_H

#include <string>

#include "writing/destination.h"

namespace tool {

/// What is done with a whole document.
struct RewriteOptions : WritingOptions {
    bool formatted = false;
    bool sorted = false;
    bool canonical = false;  // as the library writes it
    bool lossy = false;
    bool compact = false;
    bool no_declaration = false;
    std::string indent;  // a number or "tab"; empty for what the library has
};

/// The text of a file, sorted and formatted. All that is not white space between elements stays as it was written, unless
/// the canonical form is wanted; then what would be lost is warned of and, in place, refused. So is what would not be read
/// back as it is.
/// \throws Failure
std::string rewrite(const RewriteOptions& options, const std::string& file, const std::string& text);

}  // namespace tool

#endif
