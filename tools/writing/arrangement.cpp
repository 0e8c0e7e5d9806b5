// What the library reads is compared as the text that it would write of it: so no two trees are held at once.

#include "writing/arrangement.h"

#include <quxml/Element.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "writing/EncodedText.h"
#include "writing/escaping.h"
#include "writing/formatting.h"
#include "writing/moving.h"
#include "writing/outline.h"

namespace tool {

namespace {

std::string get_indent(const std::string& option) {
    return option == "tab" ? "\t" : std::string(std::stoul(option), ' ');
}

/// What the library would write, with escapes that leave no doubt.
std::string write_tree(quxml::Node& root) {
    escape_attributes(&root);
    std::string text;
    root.write_to_string(text, -1);
    return text;
}

std::vector<Item> find_items(const std::string& file, const EncodedText& text) {
    const Progress progress("looking for elements", 0);
    std::vector<Item> items = get_outline(text.get_text());
    if (items.front().end != text.get_text().size())
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not all of its elements are found in its text");
    return items;
}

/// Elements in mixed content stay where they are, and so does what is in them.
std::vector<bool> find_fixed_elements(const std::vector<Item>& items) {
    std::vector<bool> fixed;
    std::size_t fixed_up_to = 0;
    for (std::size_t i = 0; i != items.size(); ++i) {
        if (items[i].is_mixed)
            fixed_up_to = std::max(fixed_up_to, items[i].after);
        if (items[i].kind == ItemKind::element)
            fixed.push_back(i < fixed_up_to);
    }
    return fixed;
}

/// Sorts the tree and the text. \return the tree as the library would write it
std::string sort(const std::string& file, EncodedText& text) {
    const std::vector<Item> items = find_items(file, text);
    std::string written;
    std::vector<Order> orders;
    {
        const std::shared_ptr<quxml::Document> document = parse_document(file, text.get_bytes(), false);
        orders = sort_tree(file, document->get_root_node(), find_fixed_elements(items));
        written = write_tree(*document->get_root_node());
    }
    text.apply(move_elements(text.get_text(), items, orders));
    return written;
}

std::string read(const std::string& file, const std::string& bytes, Errors errors) {
    return write_tree(*parse_document(file, bytes, false, errors)->get_root_node());
}

bool reads_back(const std::string& file, const std::string& bytes, const std::string& wanted) {
    try {
        return read(file, bytes, Errors::silent) == wanted;
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed)
            throw;
        return false;
    }
}

}  // namespace

Layout get_layout(const RewriteOptions& options) {
    Layout layout;
    layout.has_declaration = !options.no_declaration;
    layout.compact = options.compact;
    if (!options.indent.empty())
        layout.indent = get_indent(options.indent);
    return layout;
}

std::vector<Order> sort_tree(const std::string& file, quxml::Node* root, const std::vector<bool>& fixed) {
    try {
        const Progress progress("sorting", 0);
        return sort_by_item(root, fixed);
    } catch (const std::out_of_range&) {
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": cannot be sorted: an item is a number out of range");
    }
}

std::string arrange(const RewriteOptions& options, const std::string& bytes) {
    const std::string& file = options.file;
    std::string wanted = options.sorted ? "" : read(file, bytes, Errors::written);
    EncodedText text(bytes);
    if (options.sorted)
        wanted = sort(file, text);
    if (options.formatted)
        text.apply(format(text.get_text(), find_items(file, text), get_layout(options)));
    if (text.get_bytes() != bytes && !reads_back(file, text.get_bytes(), wanted))
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not written: the result would not be read back as it is");
    return text.take_bytes();
}

}  // namespace tool
