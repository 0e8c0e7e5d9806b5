#include "writing/rewrite.h"

#include <quxml/Element.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "reading/encoding.h"
#include "reading/input.h"
#include "reading/losses.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "trees/sorting.h"
#include "trees/tree.h"
#include "writing/escaping.h"
#include "writing/layout.h"
#include "writing/replace_file.h"

namespace tool {

namespace {

std::string get_indent(const std::string& option) {
    return option == "tab" ? "\t" : std::string(std::stoul(option), ' ');
}

Layout get_layout(const RewriteOptions& options, Purpose purpose, const std::string& text) {
    Layout layout;
    if (purpose == Purpose::change)
        layout = guess_layout(text);
    else
        layout.declaration = std::string(standard_declaration) + (options.compact ? "" : "\n");
    if (options.no_declaration)
        layout.declaration.clear();
    layout.compact = (layout.compact && options.indent.empty()) || options.compact;
    if (!options.indent.empty())
        layout.indent = get_indent(options.indent);
    return layout;
}

std::shared_ptr<quxml::Document> parse(const RewriteOptions& options, const std::string& text) {
    std::shared_ptr<quxml::Document> document = parse_document(options.file, text, options.sorted);
    try {
        if (options.sorted)
            sort_by_item(document->get_root_node());
    } catch (const std::out_of_range&) {
        throw Failure(ExitCode::malformed,
                      get_label(options.file) + ": cannot be sorted: an item is a number out of range");
    }
    return document;
}

/// What to compare a sorted tree with; nothing if only the layout changes.
std::shared_ptr<quxml::Document> get_tree_before(const RewriteOptions& options, Purpose purpose,
                                                 const std::string& text) {
    return purpose == Purpose::layout ? nullptr : parse_document(options.file, text, false);
}

bool is_unchanged(const quxml::Document& document, const quxml::Document* before) {
    return before != nullptr && is_same_tree(*before->get_root_node(), *document.get_root_node());
}

/// A document in UTF-8 keeps its XML declaration when it is changed, and with it what only that holds.
std::vector<Loss> find_what_is_lost(const RewriteOptions& options, Purpose purpose, const std::string& text) {
    std::vector<Loss> losses = find_losses(text);
    if (purpose == Purpose::change && !options.no_declaration && get_encoding(text).empty())
        losses.erase(std::remove_if(losses.begin(), losses.end(), is_in_declaration), losses.end());
    return losses;
}

/// Once the file has been changed, nothing lists what is gone.
std::string get_warning(const RewriteOptions& options, const std::vector<Loss>& losses) {
    return options.in_place
               ? "this is lost: " + get_summary(losses)
               : "left out of the output: " + get_summary(losses) + "; " + get_advice(options.file);
}

void refuse_or_warn(const RewriteOptions& options, Purpose purpose, const std::string& text) {
    if (options.in_place ? options.lossy && options.quiet : options.quiet)
        return;
    const std::vector<Loss> losses = find_what_is_lost(options, purpose, text);
    if (!has_losses(losses))
        return;
    if (options.in_place && !options.lossy)
        throw Failure(ExitCode::malformed,
                      get_label(options.file) + ": not touched, this would be lost: " + get_summary(losses) +
                          "; " + get_advice(options.file) + ", --lossy changes the file anyway");
    if (!options.quiet)
        write_warning(options.file, get_warning(options, losses));
}

/// The attribute values of `root` have been escaped for writing, so those that were read are escaped as well.
bool reads_back(const RewriteOptions& options, const quxml::Node& root, const std::string& text) {
    try {
        const std::shared_ptr<quxml::Document> read =
            parse_document(options.file, text, false, Errors::silent);
        escape_attributes(read->get_root_node());
        return is_same_tree(root, *read->get_root_node());
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed)
            throw;
        return false;
    }
}

void require_to_read_back(const RewriteOptions& options, const quxml::Node& root, const std::string& text) {
    if (!reads_back(options, root, text))
        throw Failure(ExitCode::malformed,
                      get_label(options.file) + ": not written: the result would not be read back as it is");
}

std::string write(const RewriteOptions& options, Purpose purpose, const std::string& text,
                  const quxml::Document& document) {
    quxml::Node* const root = document.get_root_node();
    std::string written;
    {
        const Progress progress("writing", 0);
        escape_attributes(root);
        written = write_document(document, get_layout(options, purpose, text));
        escape_carriage_returns(written);
    }
    if (options.in_place || purpose == Purpose::change)
        require_to_read_back(options, *root, written);
    return written;
}

std::string rewrite_text(const RewriteOptions& options, Purpose purpose, const std::string& text) {
    const std::shared_ptr<quxml::Document> document = parse(options, text);
    if (is_unchanged(*document, get_tree_before(options, purpose, text).get()) && options.in_place)
        return text;
    refuse_or_warn(options, purpose, text);
    return write(options, purpose, text, *document);
}

}  // namespace

ExitCode rewrite(const RewriteOptions& options, Purpose purpose) {
    return change_document(options,
                           [&](const std::string& text) { return rewrite_text(options, purpose, text); });
}

}  // namespace tool
