// SPDX-License-Identifier: MIT
#include "writing/canonical.h"

#include <quxml/Element.h>
#include <quxml/extras/trees.h>

#include <memory>
#include <vector>

#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "writing/arrangement.h"
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
        written = write_document(*document, get_layout(options));
    }
    if (options.in_place)
        require_to_read_back(file, written, [&](const quxml::Element& read) {
            return quxml::extras::is_same_tree(*root, read);
        });
    return written;
}

}  // namespace tool
