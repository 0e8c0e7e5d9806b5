// SPDX-License-Identifier: MIT
#include "writing/rewrite.h"

#include "writing/arrangement.h"
#include "writing/canonical.h"

namespace tool {

std::string rewrite(const RewriteOptions& options, const std::string& file, const std::string& text) {
    return options.canonical ? write_canonical(options, file, text) : arrange(options, file, text);
}

}  // namespace tool
