// SPDX-License-Identifier: MIT
#include "writing/layout.h"

namespace tool {

Layout get_layout(const RewriteOptions& options) {
    Layout layout;
    layout.has_declaration = !options.no_declaration;
    layout.is_formatted = !options.compact;
    if (!options.indent.empty())
        layout.indentation = options.indent == "tab" ? "\t" : std::string(std::stoul(options.indent), ' ');
    return layout;
}

std::string write_document(const quxml::Document& document, const Layout& layout) {
    std::string text = quxml::extras::to_text(document, layout);
    if (!layout.is_formatted)
        text += '\n';
    return text;
}

}  // namespace tool
