// SPDX-License-Identifier: MIT

// Reading any bytes, into a plain and into a sorted document. What is read must be what a conversion of libxml2's own
// tree gives, or be refused with libxml2's own error; links and parents must agree; the tree must survive being written
// and queried.
//
// Input: at most 4,096 bytes. That is room for libxml2's limit of 256 levels and for its buffers to be filled more than
// once; longer texts repeat what shorter ones do.

#include <string>

#include "check.h"
#include "quxml/quxml.h"
#include "reader/libxml2_oracle.h"
#include "support/check_links.h"
#include "support/tree_text.h"
#include "tree_input.h"

namespace {

using quxml::Element;
using quxml_fuzz::check;

constexpr std::size_t longest_input = 4096;

/// Writing escapes nothing in attributes, so the text may be refused when it is read again; that is an exception.
void read_again(const std::string& text) {
    try {
        const auto document = quxml::from_string(text, false);
        check(document->get_root_node() != nullptr, "a document that was read has no root");
    } catch (const quxml::DomParserError& error) {
        check(!std::string(error.what()).empty(), "an error without a message");
    }
}

void query(Element* root) {
    const auto nodes = quxml_fuzz::list_nodes(root);
    check(root->find_exact_match("//*").size() == nodes.size(), "//* does not find every node");
    check(root->find_exact_match(root->get_name()).count(root) == 1, "the root is not found by its name");
    check(root->find_substring_match("//*[1]").size() <= nodes.size(), "more matches than nodes");
}

void use(const quxml::Document& document) {
    Element* root = document.get_root_node();
    const auto links = quxml_test::links_agree(root);
    check(links, links.message());
    query(root);
    read_again(document.write_to_string());
    read_again(document.write_to_string_formatted(true));
}

void read(const std::string& text, bool keep_sorted) {
    std::string outcome;
    try {
        const auto document = quxml::from_string(text, keep_sorted);
        outcome = quxml_test::to_line(document->get_root_node());
        use(*document);
    } catch (const quxml::DomParserError& error) {
        outcome = std::string("refused: ") + error.what();
    }
    const std::string expected =
        text.empty() ? "refused: Empty document." : quxml_test::expected_outcome(text, keep_sorted);
    quxml_fuzz::check_same(keep_sorted ? "sorted reading" : "reading", outcome, expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_input)
        return 0;
    const std::string text = quxml_fuzz::to_text(data, size);
    read(text, false);
    read(text, true);
    return 0;
}
