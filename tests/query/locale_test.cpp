// SPDX-License-Identifier: MIT

// Queries under a global locale whose character classes differ from the ordinary ones: it decides which
// letters of names count as equal and which characters are trimmed from a path, and it is taken again at each
// call.

#include "quxml/Node.h"

#include <locale>
#include <string>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"
#include "support/locales.h"

namespace {

using quxml::NodeSet;
using quxml::XPathHelper;
using quxml_test::FoursAreLetters;
using quxml_test::GlobalLocale;
using quxml_test::LatinLetters;
using quxml_test::NoCapitals;
using quxml_test::Tree;
using quxml_test::UnderscoresAreSpace;
using quxml_test::with_facet;

const char* const cats = "r{cat(n=1) c4t(n=2) C4T(n=3) CAT(n=4) cbt(n=5) c4ttle(n=6) dog(n=7)}";

std::string exact(const Tree& tree, const std::string& path) {
    return tree.names(tree.node("#1")->find_exact_match(path));
}

std::string prefix(const Tree& tree, const std::string& path) {
    return tree.names(tree.node("#1")->find_substring_match(path));
}

TEST(GlobalLocaleOfQueries, decides_which_letters_of_names_are_equal) {
    const Tree tree(cats);
    const GlobalLocale changed(with_facet(new FoursAreLetters));
    EXPECT_EQ(exact(tree, "r/cat"), "1 2 3 4");
    EXPECT_EQ(exact(tree, "R/c4T"), "1 2 3 4");
    EXPECT_EQ(exact(tree, "//CaT"), "1 2 3 4");
    EXPECT_EQ(exact(tree, "r//c4t[1]"), "1 2 3 4");
    EXPECT_EQ(exact(tree, "r/cat[last()]"), "4");
}

TEST(GlobalLocaleOfQueries, decides_which_beginnings_of_names_are_equal) {
    const Tree tree(cats);
    const GlobalLocale changed(with_facet(new FoursAreLetters));
    EXPECT_EQ(prefix(tree, "r/ca"), "1 2 3 4 6");
    EXPECT_EQ(prefix(tree, "//c4"), "1 2 3 4 6");
    EXPECT_EQ(prefix(tree, "r/cattle"), "6");
}

TEST(GlobalLocaleOfQueries, can_make_names_depend_on_their_case) {
    const Tree tree(cats);
    const GlobalLocale changed(with_facet(new NoCapitals));
    EXPECT_EQ(exact(tree, "r/cat"), "1");
    EXPECT_EQ(exact(tree, "r/CAT"), "4");
    EXPECT_EQ(exact(tree, "R/cat"), "");
    EXPECT_EQ(prefix(tree, "r/c4"), "2 6");
    EXPECT_EQ(prefix(tree, "r/C"), "3 4");
}

TEST(GlobalLocaleOfQueries, decides_about_bytes_beyond_ascii) {
    const Tree tree("r{k\xF6k(n=1) K\xD6K(n=2) k\xF6ken(n=3)}");
    EXPECT_EQ(exact(tree, "r/k\xF6k"), "1");
    EXPECT_EQ(prefix(tree, "r/K\xD6"), "2");
    const GlobalLocale changed(with_facet(new LatinLetters));
    EXPECT_EQ(exact(tree, "r/k\xF6k"), "1 2");
    EXPECT_EQ(prefix(tree, "r/K\xD6"), "1 2 3");
}

TEST(GlobalLocaleOfQueries, is_taken_again_at_each_call) {
    const Tree tree(cats);
    EXPECT_EQ(exact(tree, "r/cat"), "1 4");
    {
        const GlobalLocale changed(with_facet(new FoursAreLetters));
        EXPECT_EQ(exact(tree, "r/cat"), "1 2 3 4");
        {
            const GlobalLocale changed_again(with_facet(new NoCapitals));
            EXPECT_EQ(exact(tree, "r/cat"), "1");
        }
        EXPECT_EQ(prefix(tree, "r/cat"), "1 2 3 4 6");
    }
    EXPECT_EQ(exact(tree, "r/cat"), "1 4");
    EXPECT_EQ(prefix(tree, "r/cat"), "1 4");
}

TEST(GlobalLocaleOfQueries, does_not_touch_what_is_compared_exactly) {
    const Tree tree("r{cat(n=1,a=a,item=a){a{\"a\"}} cat(n=2,4=4,item=4){4{\"4\"}}}");
    const GlobalLocale changed(with_facet(new FoursAreLetters));
    EXPECT_EQ(exact(tree, "r/c4t[@a]"), "1");
    EXPECT_EQ(exact(tree, "r/c4t[@4='4']"), "2");
    EXPECT_EQ(exact(tree, "r/c4t[@a='4']"), "");
    EXPECT_EQ(exact(tree, "r/c4t[a='a']"), "1");
    EXPECT_EQ(exact(tree, "r/c4t[4]"), "2");
    EXPECT_EQ(exact(tree, "//c4t[a]"), "1");
    EXPECT_EQ(exact(tree, "//c4t[4='4']"), "2");
    EXPECT_EQ(exact(tree, "r/c4t[position()=1]"), "1");
}

TEST(GlobalLocaleOfQueries, decides_what_is_trimmed_from_a_path) {
    const Tree tree("_r{a(n=a)}");
    const Tree other("r{a(n=a) ' '(n=blank)}");
    EXPECT_EQ(exact(tree, " _r/a "), "a");
    EXPECT_EQ(exact(other, "_r/a_"), "");
    const GlobalLocale changed(with_facet(new UnderscoresAreSpace));
    EXPECT_EQ(exact(tree, "_r/a"), "");
    EXPECT_EQ(exact(other, "__r/a_"), "a");
    EXPECT_EQ(prefix(other, "\t_/r/a_\n"), "a");
    EXPECT_EQ(exact(other, " r/a"), "");
    EXPECT_EQ(exact(other, "r/ "), "blank") << "a blank is a name like others now";
    EXPECT_EQ(exact(other, "_//a"), "a");
    EXPECT_EQ(exact(other, "r/_"), "a blank") << "an empty last step";
}

TEST(GlobalLocaleOfQueries, decides_which_paths_are_white_space_only) {
    const Tree tree("r{a(n=a)}");
    const XPathHelper helper(
        [](const std::string& name, const std::string& name_test) { return name == name_test; });
    EXPECT_EQ(tree.names(helper.find(tree.node("#1"), "r/a")), "a");
    EXPECT_EQ(tree.names(helper.find(tree.node("#1"), "___")), "a") << "the results that are held";
    const GlobalLocale changed(with_facet(new UnderscoresAreSpace));
    EXPECT_EQ(tree.names(helper.find(tree.node("#1"), "___")), "");
    EXPECT_EQ(tree.names(helper.find(tree.node("#1"), " ")), "a") << "the results that are held";
}

TEST(GlobalLocaleOfQueries, does_not_touch_numbers_and_quotes) {
    const Tree tree("r{a(n=1,x=v) a(n=2,x=w){b{\"v\"}}}");
    const GlobalLocale changed(with_facet(new UnderscoresAreSpace));
    EXPECT_EQ(exact(tree, "r/a[position()= 2]"), "2");
    EXPECT_EQ(exact(tree, "r/a[last() -1]"), "1");
    EXPECT_EQ(exact(tree, "r/a[@x='v']"), "1");
    EXPECT_EQ(exact(tree, "r/a[@x='v'_]"), "");
    EXPECT_EQ(exact(tree, "r/a[b='v']"), "2");
    EXPECT_EQ(tree.outcome([&] { return tree.node("#1")->find_exact_match("r/a[position()=_2]"); }),
              quxml_test::not_a_number);
}

TEST(GlobalLocaleOfQueries, is_left_as_it_was) {
    const Tree tree(cats);
    const std::locale own = with_facet(new FoursAreLetters);
    const GlobalLocale changed(own);
    exact(tree, "r/cat");
    EXPECT_EQ(tree.outcome([&] { return tree.node("#1")->find_exact_match("r/a[x==y]"); }),
              quxml_test::one_equals_sign);
    EXPECT_EQ(std::locale(), own);
}

TEST(GlobalLocaleOfQueries, the_slow_engine_agrees) {
    const Tree tree(cats);
    const GlobalLocale changed(with_facet(new FoursAreLetters));
    quxml::Node* const root = tree.node("#1");
    for (const char* path : {"r/cat", "r/c4", "//C4T", "r/ca", "r//*[1]", "r/d0g", " r/cat "}) {
        EXPECT_EQ(root->find_exact_match(path), quxml_test::slow_find_exact_match(root, path)) << path;
        EXPECT_EQ(root->find_substring_match(path), quxml_test::slow_find_substring_match(root, path))
            << path;
    }
}

}  // namespace
