// SPDX-License-Identifier: MIT
#include "writing/canonical.h"

#include <quxml/Element.h>

#include <memory>
#include <vector>

#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "trees/tree.h"
#include "writing/arrangement.h"
#include "writing/escaping.h"
#include "writing/layout.h"
#include "writing/read_back.h"

namespace tool {

namespace {

/// Once the file has been changed, nothing lists what is gone.
std::string get_warning(const RewriteOptions& options, const std::string& file,
                        const std::vector<Loss>& losses) {
    return options.in_place
               ? "this is lost: " + get_summary(losses)
               : "left out of the output: " + get_summary(losses) + "; " + get_pointer_to_loss(file);
}

void refuse_or_warn(const RewriteOptions& options, const std::string& file, const std::string& text) {
    if (options.in_place ? options.lossy && options.quiet : options.quiet)
        return;
    const std::vector<Loss> losses = find_losses(text);
    if (!has_losses(losses))
        return;
    if (options.in_place && !options.lossy)
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not touched, this would be lost: " + get_summary(losses) + "; " +
                          get_pointer_to_loss(file) + ", --lossy changes the file anyway");
    if (!options.quiet)
        write_warning(file, get_warning(options, file, losses));
}

/// The attribute values of `root` have been escaped for writing, so those that are read are escaped as well.
void require_tree_to_read_back(const std::string& file, const quxml::Node& root, const std::string& text) {
    require_to_read_back(file, text, [&](quxml::Element& read) {
        escape_attributes(&read);
        return is_same_tree(root, read);
    });
}

}  // namespace

std::string write_canonical(const RewriteOptions& options, const std::string& file, const std::string& text) {
    const std::shared_ptr<quxml::Document> document = parse_document(file, text);
    quxml::Element* const root = document->get_root_node();
    if (options.sorted)
        sort_tree(file, root);
    refuse_or_warn(options, file, text);
    std::string written;
    {
        const Progress progress("writing", 0);
        escape_attributes(root);
        written = write_document(*document, get_layout(options));
        escape_carriage_returns(written);
    }
    if (options.in_place)
        require_tree_to_read_back(file, *root, written);
    return written;
}

}  // namespace tool
