// SPDX-License-Identifier: MIT
#include "writing/rewrite.h"

#include "writing/arrangement.h"
#include "writing/canonical.h"

namespace tool {

ExitCode rewrite(const RewriteOptions& options) {
    return change_document(options, [&](const std::string& text) {
        return options.canonical ? write_canonical(options, text) : arrange(options, text);
    });
}

}  // namespace tool
