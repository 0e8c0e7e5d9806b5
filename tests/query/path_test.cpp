// SPDX-License-Identifier: MIT

// Paths: how they are split into steps, walked and searched, name tests of both operations, deep trees, long
// paths.

#include "quxml/Node.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"
#include "support/expect_throw.h"
#include "support/small_stack.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::NodeSet;
using quxml_test::QueryRow;
using quxml_test::Tree;

// #1 is the library; #4, #7 and #11 are the texts of the titles.
const char* const library =
    "library{book(n=b1,id=1){title(n=t1){\"Alpha\"}} book(n=b2,id=2){title(n=t2){\"Beta\"}}"
    " shelf(n=s){book(n=b3,id=3){title(n=t3){\"Gamma\"}}}}";

const char* const mixed = "p(n=p){\"one\" b(n=b){\"two\"} \"three\"}";

const char* const sections = "section(n=outer){section(n=inner){para(n=para)}}";

const char* const nested_names = "a(n=1){a(n=2){a(n=3)} b(n=4){a(n=5){a(n=6)}}}";

const char* const nested_ids = "r(n=r){x(n=x,id=1){y(n=y,id=2)} z(n=z){w(n=w,id=3)}}";

const char* const boats = "r(n=r){book(n=1) Boat(n=2) ebook(n=3) \"bo\"}";

class ExactMatch : public ::testing::TestWithParam<QueryRow> {};

TEST_P(ExactMatch, selects) {
    quxml_test::check_exact(GetParam());
}

const QueryRow library_rows[] = {
    {"children by name", library, "#1", "library/book", "b1 b2"},
    {"a leading slash changes nothing", library, "#1", "/library/book", "b1 b2"},
    {"names match in any case", library, "#1", "LIBRARY/Book", "b1 b2"},
    {"the first step names the start node", library, "#1", "book", ""},
    {"search from the start node", library, "#1", "//book", "b1 b2 b3"},
    {"search below a step", library, "#1", "library//title", "t1 t2 t3"},
    {"steps after a search", library, "#1", "//shelf/book/title", "t3"},
    {"an empty last step takes all children", library, "#1", "library/", "b1 b2 s"},
    {"any name with an attribute", library, "#1", "library/*[@id]", "b1 b2"},
    {"attribute value", library, "#1", "library/book[@id='2']", "b2"},
    {"child value", library, "#1", "library/book[title='Beta']", "b2"},
    {"item 1 is the first without an item", library, "#1", "library/book[1]", "b1"},
    {"item 2 is not the second node", library, "#1", "library/book[2]", ""},
    {"second position", library, "#1", "library/book[position()=2]", "b2"},
    {"last position", library, "#1", "library/book[last()]", "b2"},
    {"greater than leaves out the last node", library, "#1", "library/book[position()>1]", ""},
    {"search with an attribute", library, "#1", "//book[@id]", "b1 b2 b3"},
    {"every node without an item counts as item 1 in a search", library, "#1", "//book[1]", "b1 b2 b3"},
    {"last has no positional meaning in a search", library, "#1", "//book[last()]", ""},
    {"a search loses the character before the equals sign", library, "#1", "//book[@id='3']", ""},
};
INSTANTIATE_TEST_SUITE_P(Library, ExactMatch, ::testing::ValuesIn(library_rows),
                         quxml_test::note_of<QueryRow>);

const QueryRow split_rows[] = {
    {"an empty path selects nothing", library, "#1", "", ""},
    {"a path of one blank selects nothing", library, "#1", " ", ""},
    {"a path of white space selects nothing", library, "#1", " \t\n\v\f\r", ""},
    {"white space around the path is removed", library, "#1", " \t\n\v\f\rlibrary/book \t\n\v\f\r", "b1 b2"},
    {"white space before a leading slash", library, "#1", "  /library", "#1"},
    {"white space before a search", library, "#1", "\n//shelf", "s"},
    {"white space after an empty last step", library, "#1", "library/ ", "b1 b2 s"},
    {"white space within the path belongs to the names", library, "#1", "library / book", ""},
    {"white space before an inner name", library, "#1", "library/ book", ""},
    {"a step of white space is a name", library, "#1", "library/ /title", ""},
    {"a slash alone", library, "#1", "/", ""},
    {"two slashes alone", library, "#1", "//", ""},
    {"three slashes alone", library, "#1", "///", ""},
    {"four slashes alone", library, "#1", "////", ""},
    {"two slashes at the end", library, "#1", "library//", ""},
    {"three slashes at the end", library, "#1", "library///", ""},
    {"three slashes at the start", library, "#1", "///book", ""},
    {"three slashes between steps", library, "#1", "library///book", ""},
    {"four slashes between steps", library, "#1", "library////book", ""},
    {"an empty last step after a search", library, "#1", "//book/", "t1 t2 t3"},
    {"an empty last step after two steps", library, "#1", "library/book/", "t1 t2"},
    {"an empty last step takes text", library, "#1", "library/book/title/", "#4 #7"},
    {"an empty last step takes elements and text", mixed, "#1", "p/", "#2 b #5"},
    {"an empty last step on a leaf", sections, "para", "para/", ""},
    {"an empty last step after a name that fails", library, "#1", "book/", ""},
    {"search with an empty step", library, "#1", "//book//", ""},
};
INSTANTIATE_TEST_SUITE_P(Splitting, ExactMatch, ::testing::ValuesIn(split_rows),
                         quxml_test::note_of<QueryRow>);

const QueryRow step_rows[] = {
    {"the start node itself", library, "#1", "library", "#1"},
    {"the start node in another case", library, "#1", "/LiBrArY", "#1"},
    {"a name that nothing bears", library, "#1", "library/nothing", ""},
    {"a first step that fails", library, "#1", "nothing/book", ""},
    {"a beginning of a name", library, "#1", "library/boo", ""},
    {"more than a name", library, "#1", "library/books", ""},
    {"any start node", library, "#1", "*", "#1"},
    {"any child", library, "#1", "*/*", "b1 b2 s"},
    {"any child in the middle", library, "#1", "library/*/title", "t1 t2"},
    {"any grandchild", library, "#1", "library/*/*", "t1 t2 b3"},
    {"any child includes text", mixed, "#1", "p/*", "#2 b #5"},
    {"a star within a name is a character", library, "#1", "library/b*", ""},
    {"two stars are a name", library, "#1", "library/**", ""},
    {"no name selects text", mixed, "#1", "p/one", ""},
    {"another start node", library, "b1", "book/title", "t1"},
    {"a leading slash does not lead to the root", library, "b1", "/library", ""},
    {"the root is not above the start node", library, "b1", "//library", ""},
    {"the start node's siblings are not searched", library, "b1", "//book", "b1"},
    {"a dot is a name", library, "#1", "./book", ""},
    {"two dots are a name", library, "b1", "book/..", ""},
    {"a start node of text", mixed, "#2", "*", "#2"},
    {"a search from text", mixed, "#2", "//*", "#2"},
    {"text has no children", mixed, "#2", "*/", ""},
    {"text has no name", mixed, "#2", "one", ""},
    {"a predicate in the middle", library, "#1", "library/book[@id='1']/title", "t1"},
    {"predicates in two steps", library, "#1", "library[1]/book[@id='2']/title[last()]", "t2"},
    {"letters outside ASCII match as bytes",
     "r{gr\xC3\xB6\xC3\x9F"
     "e(n=g)}",
     "#1",
     "r/GR\xC3\xB6\xC3\x9F"
     "E",
     "g"},
    {"letters outside ASCII keep their case",
     "r{gr\xC3\xB6\xC3\x9F"
     "e(n=g)}",
     "#1",
     "r/GR\xC3\x96\xC3\x9F"
     "E",
     ""},
};
INSTANTIATE_TEST_SUITE_P(Steps, ExactMatch, ::testing::ValuesIn(step_rows), quxml_test::note_of<QueryRow>);

const QueryRow search_rows[] = {
    {"a search includes the start node", library, "#1", "//library", "#1"},
    {"a search below a step leaves out its nodes", library, "#1", "library//library", ""},
    {"a search below a search", library, "#1", "//library//book", "b1 b2 b3"},
    {"three searches", library, "#1", "//library//book//title", "t1 t2 t3"},
    {"a search below a child", library, "#1", "library/shelf//title", "t3"},
    {"a search below a child from elsewhere", library, "s", "shelf//book", "b3"},
    {"a search stops at the outer match", sections, "#1", "//section", "outer"},
    {"a step after a search does not look below the outer match", sections, "#1", "//section/para", ""},
    {"a search for what only the inner one has", sections, "#1", "//para", "para"},
    {"a search below the outer match finds the inner one", sections, "#1", "section//section", "inner"},
    {"a search below a search looks below the outer match", sections, "#1", "//section//para", "para"},
    {"matches on each branch", nested_names, "#1", "a//a", "2 5"},
    {"children of the match on each branch", nested_names, "#1", "a//a/a", "3 6"},
    {"a search below the matches on each branch", nested_names, "#1", "a//a//a", "3 6"},
    {"children of the first match only", nested_names, "#1", "//a/a", "2"},
    {"children of a deeper match", nested_names, "#1", "//b/a", "5"},
    {"a search below a deeper match", nested_names, "#1", "//b//a", "5"},
    {"any node anywhere", library, "#1", "//*", "#1 b1 t1 #4 b2 t2 #7 s b3 t3 #11"},
    {"any node anywhere from within", library, "s", "//*", "s b3 t3 #11"},
    {"any node below a step", library, "#1", "library//*", "b1 t1 #4 b2 t2 #7 s b3 t3 #11"},
    {"any node below a search", library, "#1", "//shelf//*", "b3 t3 #11"},
    {"any node goes on below matches only as the last step", library, "#1", "//*/*", "b1 b2 s"},
    {"any node with an empty last step", library, "#1", "//*/", "b1 b2 s"},
    {"a name below any node", library, "#1", "//*/book", "b1 b2"},
    {"a search below any node", library, "#1", "//*//book", "b1 b2 b3"},
    {"any node with a predicate stops at the outer match", nested_ids, "#1", "//*[@id]", "x w"},
    {"any node with a predicate that the start node meets", nested_ids, "#1", "//*[@n]", "r"},
    {"any node with a predicate below a step", nested_ids, "#1", "r//*[@id]", "x w"},
    {"children of any node with a predicate", nested_ids, "#1", "//*[@id]/*", "y"},
    {"an empty name test finds no named node", nested_ids, "#1", "//[@id]", ""},
};
INSTANTIATE_TEST_SUITE_P(Searches, ExactMatch, ::testing::ValuesIn(search_rows),
                         quxml_test::note_of<QueryRow>);

class PrefixMatch : public ::testing::TestWithParam<QueryRow> {};

TEST_P(PrefixMatch, selects) {
    quxml_test::check_prefix(GetParam());
}

const QueryRow prefix_rows[] = {
    {"beginnings of names", library, "#1", "lib/b", "b1 b2"},
    {"beginnings in any case", library, "#1", "LIB/B", "b1 b2"},
    {"whole names", library, "#1", "library/book", "b1 b2"},
    {"search by the beginning", library, "#1", "//ti", "t1 t2 t3"},
    {"search below a step by the beginning", library, "#1", "l//s", "s"},
    {"a prefix in any case and not a part", boats, "#1", "r/bo", "1 2"},
    {"it is deliberate that a part within a name does not match", boats, "#1", "r/oo", ""},
    {"it is deliberate that the end of a name does not match", boats, "#1", "r/ook", ""},
    {"more than a name", boats, "#1", "r/books", ""},
    {"any child", boats, "#1", "r/*", "1 2 3 #5"},
    {"an empty last step", boats, "#1", "r/", "1 2 3 #5"},
    {"a star within a name is a character", boats, "#1", "r/bo*", ""},
    {"an empty path", boats, "#1", "", ""},
    {"an empty step in a search", boats, "#1", "//", ""},
    {"every name begins with an empty name test of a single node", boats, "#1", "[@n]", "r"},
    {"every name begins with an empty name test of a search", boats, "#1", "r//[@n]", "1 2 3"},
    {"an empty name test among children is never met", boats, "#1", "r/[@n]", ""},
    {"attribute names are not matched by their beginning", library, "#1", "lib/b[@i]", ""},
    {"attribute values are not matched by their beginning", "r{b(n=b,x=long)}", "#1", "r/b[@x=lo]", ""},
    {"child names are not matched by their beginning", library, "#1", "lib/b[ti='Beta']", ""},
    {"child values are not matched by their beginning", library, "#1", "lib/b[title='Be']", ""},
    {"predicates as with whole names", library, "#1", "lib/b[title='Beta']", "b2"},
};
INSTANTIATE_TEST_SUITE_P(Names, PrefixMatch, ::testing::ValuesIn(prefix_rows), quxml_test::note_of<QueryRow>);

TEST(FindExactMatch, each_call_starts_without_results) {
    const Tree tree(library);
    quxml::Node* const root = tree.node("#1");
    EXPECT_EQ(tree.names(root->find_exact_match("library/book")), "b1 b2");
    EXPECT_EQ(tree.names(root->find_exact_match("//title")), "t1 t2 t3");
    EXPECT_EQ(tree.names(root->find_substring_match("//shelf")), "s");
    EXPECT_EQ(tree.names(root->find_exact_match("nothing")), "");
}

TEST(FindExactMatch, results_are_a_copy_that_the_tree_does_not_share) {
    const Tree tree(library);
    NodeSet found = tree.node("#1")->find_exact_match("library/book");
    found.clear();
    EXPECT_EQ(tree.names(tree.node("#1")->find_exact_match("library/book")), "b1 b2");
}

TEST(FindExactMatch, sees_changes_of_the_tree) {
    Document document(false);
    Element* const root = document.create_root_node("r");
    EXPECT_EQ(root->find_exact_match("r/a"), NodeSet());
    Element* const a = root->add_child("a");
    EXPECT_EQ(root->find_exact_match("r/a"), NodeSet({a}));
    a->set_name("b");
    EXPECT_EQ(root->find_exact_match("r/a"), NodeSet());
    EXPECT_EQ(root->find_exact_match("r/b"), NodeSet({a}));
    root->remove_child(a);
    EXPECT_EQ(root->find_exact_match("r/b"), NodeSet());
}

TEST(FindExactMatch, elements_with_an_empty_name_are_found_by_an_empty_name_test_of_a_search_alone) {
    Document document(false);
    Element* const root = document.create_root_node("r");
    Element* const nameless = root->add_child("");
    nameless->set_attribute("id", "1");
    EXPECT_EQ(root->find_exact_match("//[@id]"), NodeSet({nameless}));
    EXPECT_EQ(root->find_exact_match("r/[@id]"), NodeSet());
    EXPECT_EQ(root->find_exact_match("//"), NodeSet());
    EXPECT_EQ(nameless->find_exact_match("[@id]"), NodeSet({nameless}));
}

TEST(FindExactMatch, an_attribute_can_be_the_start_node) {
    Document document(false);
    Element* const root = document.create_root_node("r");
    quxml::Attribute* const id = root->set_attribute("id", "1");
    EXPECT_EQ(id->find_exact_match("ID"), NodeSet({id}));
    EXPECT_EQ(id->find_exact_match("//*"), NodeSet({id}));
    EXPECT_EQ(id->find_exact_match("id[1]"), NodeSet());
}

TEST(FindExactMatch, errors_leave_the_tree_untouched_and_the_next_query_works) {
    const Tree tree(library);
    const std::string before = tree.line();
    quxml::Node* const root = tree.node("#1");
    EXPECT_THROW_MESSAGE(root->find_exact_match("library/book[a==b]"), std::invalid_argument,
                         "Search for child node must contain exactly one equals sign");
    EXPECT_THROW_MESSAGE(root->find_substring_match("//book[a==b]"), std::invalid_argument,
                         "Search for child node must contain exactly one equals sign");
    EXPECT_THROW_MESSAGE(root->find_substring_match("lib/book[99999999999]"), std::out_of_range, "stoi");
    EXPECT_EQ(tree.line(), before);
    EXPECT_EQ(tree.names(root->find_exact_match("library/book")), "b1 b2");
}

// ---- Deep trees and long paths, on a stack that no recursion over levels or steps would fit ----

const std::size_t levels = 1000000;

/// `count` further levels of elements called `name` below `parent`; returns the deepest one.
Element* add_levels(Element* parent, const std::string& name, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        parent = parent->add_child(name);
    return parent;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST(DeepTree, a_search_finds_the_deepest_node) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("root");
        Element* const deepest = add_levels(root, "level", levels)->add_child("x");
        EXPECT_EQ(root->find_exact_match("//x"), NodeSet({deepest}));
        EXPECT_EQ(root->find_substring_match("//X"), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match("//nothing"), NodeSet());
    });
}

TEST(DeepTree, a_search_for_any_node_finds_all) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("root");
        add_levels(root, "level", levels);
        EXPECT_EQ(root->find_exact_match("//*").size(), levels + 1);
        EXPECT_EQ(root->find_exact_match("root//*").size(), levels);
    });
}

TEST(DeepTree, a_search_with_a_predicate_passes_nodes_without_the_attribute) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("x");
        Element* const deepest = add_levels(root, "x", levels);
        deepest->set_attribute("a", "");
        EXPECT_EQ(root->find_exact_match("//x[@a]"), NodeSet({deepest}));
    });
}

TEST(DeepTree, a_search_below_a_search_finds_the_deepest_node) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("root");
        Element* const middle = add_levels(root, "level", levels / 2)->add_child("x");
        Element* const deepest = add_levels(middle, "x", levels / 2)->add_child("y");
        EXPECT_EQ(root->find_exact_match("//x//y"), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match("//x//x//y"), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match("//x/y"), NodeSet());
    });
}

TEST(DeepTree, an_error_in_the_depth_reaches_the_caller) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("root");
        add_levels(root, "level", levels)->add_child("x");
        EXPECT_THROW_MESSAGE(root->find_exact_match("//x[a==b]"), std::invalid_argument,
                             "Search for child node must contain exactly one equals sign");
    });
}

const std::size_t long_path = 100000;

TEST(LongPath, child_steps_reach_the_deepest_node) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("x");
        Element* const deepest = add_levels(root, "x", long_path - 1);
        EXPECT_EQ(root->find_exact_match("x" + repeated("/x", long_path - 1)), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match("x" + repeated("/*[1]", long_path - 1)), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match("x" + repeated("/x", long_path)), NodeSet());
    });
}

TEST(LongPath, searches_reach_the_deepest_node) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("x");
        Element* const deepest = add_levels(root, "x", long_path - 1);
        EXPECT_EQ(root->find_exact_match(repeated("//x", long_path)), NodeSet({deepest}));
        EXPECT_EQ(root->find_exact_match(repeated("//x", long_path + 1)), NodeSet());
    });
}

TEST(LongPath, slashes_alone) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("x");
        add_levels(root, "x", long_path);
        EXPECT_EQ(root->find_exact_match(repeated("/", long_path)), NodeSet());
        EXPECT_EQ(root->find_exact_match("x" + repeated("/", long_path)), NodeSet());
    });
}

TEST(LongPath, many_predicates_in_one_step) {
    quxml_test::on_small_stack([] {
        Document document(false);
        Element* const root = document.create_root_node("r");
        Element* const child = root->add_child("x");
        EXPECT_EQ(root->find_exact_match("r/x" + repeated("[1]", long_path)), NodeSet({child}));
        EXPECT_EQ(root->find_exact_match("r/x" + repeated("[1]", long_path) + "[2]"), NodeSet());
    });
}

}  // namespace
