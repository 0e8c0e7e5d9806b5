// SPDX-License-Identifier: MIT

// The completions of paths without predicates are the same from the skeleton of a document as from its tree.

#include "reading/skeleton.h"

#include <gtest/gtest.h>
#include <quxml/Document.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "paths/completions.h"

namespace {

using Words = std::vector<std::string>;

Words get_sorted(const quxml::Document& document, const std::string& beginning) {
    Words words = tool::get_completions(document, beginning);
    std::sort(words.begin(), words.end());
    return words;
}

const Words beginnings = {"",       "/",      "a",     "//",         "//b",       "/a/",     "/A/B",
                          "//b/",   "//b//",  "/a/*/", "//*/",       "/a//",      "/a/b/c/", "/a[@",
                          "/a/b[@", "//b[@",  "//*[@", "/a/b[@k",    "/p:a/",     "/a/p:",   "*",
                          "/*/b/",  "//c//b", "/x/",   "/a/b/../b/", "//b/c//[@", "]"};

/// \return how many completions were compared
std::size_t expect_same_completions(const std::string& text) {
    const std::shared_ptr<quxml::Document> skeleton = tool::read_skeleton(text);
    EXPECT_NE(skeleton, nullptr) << text;
    if (skeleton == nullptr)
        return 0;
    const std::shared_ptr<quxml::Document> document = quxml::from_string(text, false);
    std::size_t count = 0;
    for (const std::string& beginning : beginnings) {
        EXPECT_FALSE(tool::selects_by_predicates(beginning)) << beginning;
        const Words expected = get_sorted(*document, beginning);
        EXPECT_EQ(get_sorted(*skeleton, beginning), expected) << beginning << "\n" << text;
        count += expected.size();
    }
    return count;
}

TEST(Skeleton, has_the_names_of_the_tree) {
    for (const char* text : {
             "<a/>",
             "\xef\xbb\xbf<a><b k='1'/><b l='2'><c/></b><c/><B/></a>",
             "<?xml version='1.0' encoding='UTF-8'?><a><b k='1'/><c/></a>",
             "<!-- <x> --><a><!-- <b> --><?b <c>?><![CDATA[<b k='1'>]]><b>&lt;c&gt;&#60;d&#62;</b></a>",
             "<p:a xmlns:p='u' p:k='1' q:l='2'><p:b xml:lang='en'/><q:b/></p:a>",
             "<!DOCTYPE a [<!ATTLIST b k CDATA 'v' xmlns:p CDATA #FIXED 'u'>]><a><b><p:c p:m='2'/></b></a>",
             "<!DOCTYPE a [<!ENTITY e 'text'>]><a k='&e;'><b l='&#60;'/></a>",
             "<a>text<b>text</b> <b/>text</a>",
             "<b><b k='1'><b l='2'><c/></b></b><c><b m='3'/></c></b>",
         })
        EXPECT_NE(expect_same_completions(text), 0U) << text;
}

TEST(Skeleton, is_not_made_of_what_only_a_tree_tells) {
    for (const std::string& text :
         {std::string(), std::string("text"), std::string("<a>"), std::string("<a></b>"),
          std::string("<a/><b/>"), std::string("<a k='1' k='2'/>"),
          std::string("<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;</a>"), std::string("<a>&none;</a>"),
          std::string("<a/>\0", 5), std::string("<?xml version='1.0' encoding='none'?><a/>")})
        EXPECT_EQ(tool::read_skeleton(text), nullptr) << text;
}

/// Elements of few names, so that many stand at the same path.
std::string write_random(std::mt19937& random, int levels) {
    const std::string name = Words{"a", "b", "B", "c", "p:c"}[random() % 5];
    std::string text = '<' + name;
    for (const char* attribute : {"k", "l", "p:m"})
        text += random() % 3 == 0 ? std::string(" ") + attribute + "='1'" : "";
    text += '>';
    for (std::size_t left = levels == 0 ? 0 : random() % 5; left != 0; --left)
        text += random() % 6 == 0 ? "text" : write_random(random, levels - 1);
    return text + "</" + name + '>';
}

TEST(Skeleton, has_the_names_of_random_trees) {
    std::mt19937 random(1);
    std::size_t compared = 0;
    for (int round = 0; round != 300; ++round)
        compared += expect_same_completions("<a xmlns:p='u'>" + write_random(random, 5) +
                                            write_random(random, 4) + "</a>");
    EXPECT_GT(compared, 9000U);
}

TEST(Skeleton, is_told_from_what_needs_predicates) {
    for (const char* beginning : {"/a/b[@k='1']/", "/a[1]/b[@", "/a[b='1']", "//a[@k][@", "/a[@k/"})
        EXPECT_TRUE(tool::selects_by_predicates(beginning)) << beginning;
}

}  // namespace
