// What the library reads of a sorted document is compared as the text that it would write of it: so no two trees are held
// at once. A document that is only laid out needs no tree: where the same items have the same bytes, the same is read.

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

Failure refusal(const std::string& file) {
    return {ExitCode::malformed,
            get_label(file) + ": not written: the result would not be read back as it is"};
}

bool reads_back(const std::string& file, const std::string& bytes, const std::string& wanted) {
    try {
        return write_tree(*parse_document(file, bytes, false, Errors::silent)->get_root_node()) == wanted;
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed)
            throw;
        return false;
    }
}

/// Sorts the tree and the text, and compares them.
void sort(const std::string& file, std::shared_ptr<quxml::Document> document, EncodedText& text) {
    quxml::Element* const root = document->get_root_node();
    const std::vector<Item> items = find_items(file, text);
    const std::vector<Order> orders = sort_tree(file, root, find_fixed_elements(items));
    if (orders.empty())
        return;
    const std::string wanted = write_tree(*root);
    document.reset();  // what follows needs the memory
    text.apply(move_elements(text.get_text(), items, orders));
    if (!reads_back(file, text.get_bytes(), wanted))
        throw refusal(file);
}

/// The encoding must not follow from the declaration alone.
void remove_declaration(const std::string& file, EncodedText& text) {
    const std::vector<Item> items = find_items(file, text);
    if (items[1].kind != ItemKind::declaration)
        return;
    const std::string rest(text.get_text().substr(items[2].begin));
    text.apply({{0, items[2].begin, ""}});
    text = EncodedText(text.take_bytes());
    if (text.get_text() != rest)
        throw refusal(file);
}

/// Lays out the text, and compares it with the old one, as it is taken for by then.
void format(const std::string& file, EncodedText& text, const Layout& layout) {
    if (!layout.has_declaration)
        remove_declaration(file, text);
    const std::vector<Item> items = find_items(file, text);
    std::vector<Patch> patches = tool::format(text.get_text(), items, layout);
    if (patches.empty())
        return;
    const std::string before(text.get_text());
    text.apply(std::move(patches));
    text = EncodedText(text.take_bytes());
    if (!differ_only_in_layout(before, items, text.get_text(), find_items(file, text)))
        throw refusal(file);
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
    std::shared_ptr<quxml::Document> document = parse_document(file, bytes, false);
    if (!options.sorted)
        document.reset();
    EncodedText text(bytes);  // a copy only now: most memory is needed for parsing
    if (options.sorted)
        sort(file, std::move(document), text);
    if (options.formatted)
        format(file, text, get_layout(options));
    return text.take_bytes();
}

}  // namespace tool
