// SPDX-License-Identifier: MIT
#include "conformance/checks.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "query/slow_engine.h"
#include "quxml/quxml.h"
#include "reader/libxml2_oracle.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace quxml_conformance {

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeSet;
using quxml::TextNode;
using quxml_test::to_line;

void expect(Verdict& verdict, bool holds, const std::string& finding) {
    if (!holds)
        verdict.findings.push_back(finding);
}

void expect_same(Verdict& verdict, const std::string& what, const std::string& got,
                 const std::string& expected) {
    constexpr std::size_t shown = 300;
    expect(verdict, got == expected,
           what + "\n  expected: " + expected.substr(0, shown) + "\n  got:      " + got.substr(0, shown));
}

std::string get_expected_outcome(const std::string& text, bool keep_sorted) {
    return text.empty() ? "refused: Empty document." : quxml_test::expected_outcome(text, keep_sorted);
}

bool is_refusal(const std::string& outcome) {
    return outcome.rfind("refused: ", 0) == 0;
}

void add_nodes(NodeSet& nodes, Node* node) {
    nodes.insert(node);
    for (Node* child : node->get_children())
        add_nodes(nodes, child);
}

// ---- Writing ----

/// Values are written as they are, and white space other than a blank is read as one. A namespace declaration
/// is not an attribute, and prefixes are dropped.
bool is_carried(const Attribute* attribute) {
    return attribute->get_name() != "xmlns" && attribute->get_name().find(':') == std::string::npos &&
           attribute->get_value().find_first_of("&<\"\t\n\r") == std::string::npos;
}

/// Whether a node comes back from its text as it was.
bool is_carried(const Node* node) {
    if (const auto* text = dynamic_cast<const TextNode*>(node))
        return text->get_content().find('\r') == std::string::npos;
    const quxml::AttributeList attributes = dynamic_cast<const Element&>(*node).get_attributes();
    return node->get_name().find(':') == std::string::npos &&
           std::all_of(attributes.begin(), attributes.end(),
                       [](const Attribute* a) { return is_carried(a); });
}

void check_written(Verdict& verdict, const std::string& text, const std::string& line) {
    const std::string outcome = quxml_test::outcome(text);
    expect_same(verdict, "what was written is read as libxml2 reads it", outcome,
                get_expected_outcome(text, false));
    if (verdict.is_carried)
        expect_same(verdict, "what was written gives the same tree", outcome, line);
}

void check_writing(Verdict& verdict, const Document& document) {
    const std::string line = to_line(document.get_root_node());
    const std::string formatted = document.write_to_string_formatted(false);
    expect_same(verdict, "the declaration comes first", document.write_to_string_formatted(true),
                "<?xml version=\"1.0\"?>\n" + formatted);
    check_written(verdict, document.write_to_string(), line);
    check_written(verdict, formatted, line);
}

// ---- Queries ----

struct Answer {
    NodeSet nodes;
    std::string error;
};

bool operator==(const Answer& a, const Answer& b) {
    return a.nodes == b.nodes && a.error == b.error;
}

template <class Query>
Answer ask(const Query& query) {
    try {
        return {query(), ""};
    } catch (const std::exception& error) {
        return {{}, error.what()};
    }
}

void check_query(Verdict& verdict, Element* root, const std::string& path) {
    const Answer exact = ask([&] { return root->find_exact_match(path); });
    const Answer slow_exact = ask([&] { return quxml_test::slow_find_exact_match(root, path); });
    expect(verdict, exact == slow_exact, "the query " + path + " finds other nodes than the slow engine");
    const Answer prefix = ask([&] { return root->find_substring_match(path); });
    const Answer slow_prefix = ask([&] { return quxml_test::slow_find_substring_match(root, path); });
    expect(verdict, prefix == slow_prefix,
           "the prefix query " + path + " finds other nodes than the slow engine");
}

/// The last element below the root, the root itself if there is none, or the last one that has attributes.
const Element* find_last(const Element* element, bool with_attributes) {
    const Element* last = with_attributes && element->get_attributes().empty() ? nullptr : element;
    for (const Node* child : element->get_children()) {
        const auto* below = dynamic_cast<const Element*>(child);
        const Element* found = below == nullptr ? nullptr : find_last(below, with_attributes);
        last = found == nullptr ? last : found;
    }
    return last;
}

/// Paths with names that the tree has.
std::vector<std::string> list_paths(const Element* root) {
    const std::string top = root->get_name();
    const std::string name = find_last(root, false)->get_name();
    std::vector<std::string> paths = {top,
                                      "/" + top,
                                      "//" + top,
                                      top + "/",
                                      top + "/*",
                                      top + "/" + name,
                                      top + "//" + name,
                                      "//" + name,
                                      "//*[1]",
                                      top + "/*[1]",
                                      top + "/*[last()]",
                                      top + "/*[last()-1]",
                                      top + "/*[position()<3]",
                                      top + "/*[position()>1]",
                                      top + "/" + name + "[position()=1]",
                                      top + "/*[" + name + "='a']"};
    if (const Element* element = find_last(root, true)) {
        const Attribute* attribute = element->get_attributes().front();
        const std::string predicate = "[@" + attribute->get_name() + "]";
        const std::string with_value = "[@" + attribute->get_name() + "='" + attribute->get_value() + "']";
        for (const std::string& start : {std::string("//*"), "//" + element->get_name(), top + "/*"})
            paths.insert(paths.end(), {start + predicate, start + with_value});
    }
    return paths;
}

void check_queries(Verdict& verdict, Element* root) {
    const std::string line = to_line(root);
    NodeSet nodes;
    add_nodes(nodes, root);
    expect(verdict, root->find_exact_match("//*") == nodes, "//* does not find every node");
    expect(verdict, root->find_exact_match(root->get_name()) == NodeSet{root},
           "the root is not found by its name");
    for (const std::string& path : list_paths(root))
        check_query(verdict, root, path);
    expect_same(verdict, "queries change nothing", to_line(root), line);
}

// ---- Reading ----

void check_document(Verdict& verdict, const Document& document) {
    Element* root = document.get_root_node();
    const auto links = quxml_test::links_agree(root);
    expect(verdict, links, links.message());
    NodeSet nodes;
    add_nodes(nodes, root);
    verdict.is_carried =
        std::all_of(nodes.begin(), nodes.end(), [](const Node* node) { return is_carried(node); });
    check_writing(verdict, document);
    check_queries(verdict, root);
}

void check_reading(Verdict& verdict, const std::string& text, bool keep_sorted) {
    const std::string expected = get_expected_outcome(text, keep_sorted);
    verdict.is_accepted = !is_refusal(expected);
    expect_same(verdict, keep_sorted ? "read sorted" : "read", quxml_test::outcome(text, keep_sorted),
                expected);
    if (verdict.is_accepted)
        check_document(verdict, *quxml::from_string(text, keep_sorted));
}

}  // namespace

Verdict check_text(const std::string& text) {
    Verdict verdict;
    try {
        check_reading(verdict, text, true);
        check_reading(verdict, text, false);
    } catch (const std::exception& error) {
        verdict.findings.push_back(std::string("an exception: ") + error.what());
    }
    return verdict;
}

}  // namespace quxml_conformance
