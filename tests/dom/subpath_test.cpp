// SPDX-License-Identifier: MIT

// Covers sub-paths: which leading part of a path of names ends at a node, as the tree spells it.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <locale>
#include <ostream>
#include <string>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/locales.h"
#include "support/small_stack.h"
#include "support/test_names.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml_test::build;
using quxml_test::build_chain;
using quxml_test::GlobalLocale;
using quxml_test::note_of;
using quxml_test::on_small_stack;
using quxml_test::to_line;

struct SubpathRow {
    const char* note;
    const char* tree;   // a chain: one element in each
    std::size_t level;  // of the asked node, the root is 0
    const char* path;
    const char* expected;
};

void PrintTo(const SubpathRow& row, std::ostream* out) {
    *out << row.note << ": level " << row.level << " of " << row.tree << ", \"" << row.path << "\"";
}

Node* go_down(Node* node, std::size_t levels) {
    for (std::size_t level = 0; level < levels; ++level)
        node = node->get_children().front();
    return node;
}

class Subpath : public ::testing::TestWithParam<SubpathRow> {};

TEST_P(Subpath, is) {
    const SubpathRow& row = GetParam();
    Document document(false);
    Node* node = go_down(build(document, row.tree), row.level);
    EXPECT_EQ(node->get_subpath_for(row.path), row.expected);
    EXPECT_EQ(to_line(document.get_root_node()), row.tree) << "the tree is only read";
}

const char* const library = "library{shelf{book{page}}}";
const char* const doubled = "a{a{a}}";
const char* const mixed_case = "Library{sHELF{Book}}";
const char* const unnamed = "a{''{b}}";

const SubpathRow rows[] = {
    {"the last name is skipped", library, 2, "/library/shelf/book/page", "/library/shelf/book"},
    {"case is ignored, names are the tree's", library, 2, "/LIBRARY/SHELF/BOOK/PAGE", "/library/shelf/book"},
    {"the whole path", library, 3, "/library/shelf/book/page", ""},
    {"the whole path without its slash, wanted", library, 3, "library/shelf/book/page",
     "/library/shelf/book/page"},
    {"two of three", library, 1, "/library/shelf/book", "/library/shelf"},
    {"nothing names the node", library, 2, "/library/shelf", ""},
    {"the path begins below the root", library, 2, "/shelf/book/page", "/shelf/book"},
    {"the first name is another", library, 2, "/store/shelf/book/page", ""},
    {"the climb skips no node", library, 2, "/library/store/book/page", ""},
    {"a doubled name is skipped", library, 2, "/library/shelf/shelf/book/page", "/library/shelf/book"},
    {"empty names are skipped", library, 2, "//library//shelf/book/page/", "/library/shelf/book"},

    {"the root above the end", library, 0, "/library/shelf", "/library"},
    {"the root is the whole path", library, 0, "/library", ""},
    {"the root without a slash, wanted", library, 0, "library", "/library"},
    {"the root with a slash after it, wanted", library, 0, "/library/", "/library"},
    {"the root with two slashes, wanted", library, 0, "//library", "/library"},
    {"the whole path ends in a slash, wanted", library, 3, "/library/shelf/book/page/",
     "/library/shelf/book/page"},
    {"the whole path in another case is the whole path", library, 3, "/Library/SHELF/book/PAGE", ""},
    {"another case and no slash, wanted", library, 3, "Library/SHELF/book/PAGE", "/library/shelf/book/page"},
    {"an inner empty name makes another path, wanted", library, 1, "/library//shelf", "/library/shelf"},
    {"below the path's end", library, 3, "/library/shelf", ""},
    {"below the path's end, no slash", library, 3, "library/shelf/book", ""},
    {"another name in front of the root's", library, 1, "/store/library/shelf/book", ""},
    {"a second name in front of the root's", library, 1, "/library/library/shelf/book", "/library/shelf"},
    {"only the node's own name", library, 2, "/book/page", "/book"},
    {"only the node's own name is the path", library, 2, "/book", ""},
    {"only the node's own name, no slash, wanted", library, 2, "book", "/book"},
    {"the node's name twice", library, 2, "/book/book", "/book"},
    {"part of a name is another name", library, 2, "/library/shelf/boo/page", ""},
    {"a longer name is another name", library, 2, "/library/shelf/books/page", ""},
    {"a name with a blank is another name", library, 2, "/library/shelf/ book/page", ""},
    {"names in the wrong order", library, 2, "/book/shelf/library", "/book"},
    {"names after the node's are all skipped", library, 1, "/library/shelf/x/y//z", "/library/shelf"},
    {"names between are skipped", library, 2, "/library/x/shelf/y/book/z", "/library/shelf/book"},

    {"namesakes: the root", doubled, 0, "/a/a/a", "/a"},
    {"namesakes: the middle", doubled, 1, "/a/a/a", "/a/a"},
    {"namesakes: the lowest", doubled, 2, "/a/a/a", ""},
    {"namesakes: the lowest of a shorter path", doubled, 2, "/a/a", ""},
    {"namesakes: the lowest of a longer path", doubled, 2, "/a/a/a/a", "/a/a/a"},
    {"namesakes: the middle of a longer path", doubled, 1, "/a/a/a/a", "/a/a"},

    {"spelled as the tree spells it", mixed_case, 2, "/library/shelf/book/page", "/Library/sHELF/Book"},
    {"the whole path, spelled otherwise", mixed_case, 2, "/library/shelf/book", ""},
    {"whole but for the slash, spelled otherwise", mixed_case, 1, "LIBRARY/shelf", "/Library/sHELF"},

    {"an empty name matches a node without one", unnamed, 2, "/a//b/c", "/a//b"},
    {"a node without a name", unnamed, 1, "/a//c", "/a/"},
    {"a node without a name, whole path", unnamed, 1, "/a/", ""},
    {"a node without a name, slash missing, wanted", unnamed, 1, "a/", "/a/"},
    {"a node without a name needs an empty one", unnamed, 1, "/a/b", ""},
    {"only the first empty names are dropped", unnamed, 1, "//b//", ""},

    {"no name at all: empty", library, 0, "", ""},
    {"no name at all: one slash", library, 0, "/", ""},
    {"no name at all: slashes", library, 3, "///", ""},
    {"no name at all: a node without a name", "''{''}", 1, "//", ""},
    {"no name at all: an empty path for a root without a name", "''", 0, "", ""},
};

INSTANTIATE_TEST_SUITE_P(Rows, Subpath, ::testing::ValuesIn(rows), note_of<SubpathRow>);

TEST(SubpathOf, text_and_attributes_climb_to_their_element) {
    Document document(false);
    Element* root = build(document, "r{e(id=1){\"t\"}}");
    Node* e = root->get_child("e");
    auto* element = dynamic_cast<Element*>(e);
    EXPECT_EQ(element->get_attribute("id")->get_subpath_for("/r/e/id/x"), "/r/e/id");
    EXPECT_EQ(element->get_attribute("id")->get_subpath_for("/r/e"), "");
    EXPECT_EQ(element->get_child_text()->get_subpath_for("/r/e/"), "");
    EXPECT_EQ(element->get_child_text()->get_subpath_for("/r/e//x"), "/r/e/");
    EXPECT_EQ(element->get_child_text()->get_subpath_for("/r/e"), "");
}

TEST(SubpathOf, a_name_with_a_slash_matches_no_component) {
    Document document(false);
    Element* root = build(document, "r{a/b}");
    Node* child = root->get_child("a/b");
    EXPECT_EQ(child->get_subpath_for("/r/a/b/c"), "");
    EXPECT_EQ(root->get_subpath_for("/r/a/b/c"), "/r");
}

TEST(SubpathOf, a_free_standing_node_is_its_own_root) {
    Element element("e", nullptr, false);
    EXPECT_EQ(element.get_subpath_for("/e/x"), "/e");
    EXPECT_EQ(element.get_subpath_for("/r/e/x"), "");
}

TEST(SubpathOf, a_node_that_was_never_linked_climbs_to_the_parent_it_was_constructed_with) {
    Element parent("p", nullptr, false);
    Element element("e", &parent, false);
    EXPECT_EQ(element.get_subpath_for("/p/e/x"), "/p/e");
}

/// Folds "q" and "z" in addition to nothing else: neither "A" nor "a".
class OddCase : public std::ctype<char> {
protected:
    char do_toupper(char c) const override { return c == 'q' ? 'z' : c; }
    const char* do_toupper(char* begin, const char* end) const override {
        for (; begin != end; ++begin)
            *begin = do_toupper(*begin);
        return end;
    }
};

TEST(SubpathOf, folds_case_under_the_global_locale) {
    Document document(false);
    Element* root = build(document, "r{aq}");
    Node* node = root->get_child("aq");
    EXPECT_EQ(node->get_subpath_for("/r/AQ/x"), "/r/aq");
    EXPECT_EQ(node->get_subpath_for("/r/az/x"), "");
    const GlobalLocale odd(std::locale(std::locale::classic(), new OddCase));
    EXPECT_EQ(node->get_subpath_for("/r/AQ/x"), "");
    EXPECT_EQ(node->get_subpath_for("/r/az/x"), "/r/aq");
    EXPECT_EQ(node->get_subpath_for("/r/az"), "") << "the whole path, folded";
    EXPECT_EQ(node->get_subpath_for("/R/aq/x"), "") << "the first name, not folded";
}

TEST(SubpathOf, does_not_fold_bytes_beyond_ascii_under_the_classic_locale) {
    Document document(false);
    Element* root = build(document, "r{\xc3\xa4}");
    Node* node = root->get_children().front();
    EXPECT_EQ(node->get_subpath_for("/r/\xc3\xa4/x"), "/r/\xc3\xa4");
    EXPECT_EQ(node->get_subpath_for("/r/\xc3\x84/x"), "");
}

TEST(SubpathOf, a_deep_node_needs_no_deep_stack) {
    const std::size_t levels = 1000000;
    Document document(false);
    Element* lowest = build_chain(document, "n", levels);
    std::string path;
    for (std::size_t level = 0; level < levels; ++level)
        path += "/n";
    std::string subpath;
    on_small_stack([&] { subpath = lowest->get_subpath_for(path + "/below"); });
    EXPECT_EQ(subpath, path);
    EXPECT_EQ(lowest->get_subpath_for(path), "");
}

}  // namespace
