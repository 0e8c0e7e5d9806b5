// SPDX-License-Identifier: MIT

// The completions of paths are the same from the skeleton of a document as from its tree: of paths without predicates from
// one without values, of those whose predicates look at attributes and positions
// from one with them.

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

const Words with_predicates = {"/a[@k]/",
                               "//b[@k =1]/",
                               "//*[@k =1][@l]/",
                               "/a/b[@l =2]//",
                               "//b[@k]/c[@l]/",
                               "//b[@m =2]//*[@",
                               "/a[@k]",
                               "/a/*[@K =1]/",
                               "//b[@k=1]/",
                               "//c[@k]/b[@k]/[@",
                               "//*[@m =1]/*[@l =1]/",
                               "/a[@xml:lang]/",
                               "/a/b[1]/",
                               "//b[2]/",
                               "/a/*[1]/",
                               "/a/b[position()=2]/",
                               "//b/c[position()>1]/",
                               "/a/b[last()]/",
                               "/a/c[last()-1]/*/",
                               "/a/b[@last()]/",
                               "//b[position()=2]/",
                               "/a/b[@k][2]/",
                               "/a/b[0]/"};

/// \return how many completions were compared
std::size_t expect_same_completions(const std::string& text, tool::AttributeValues values,
                                    const Words& paths) {
    const std::shared_ptr<quxml::Document> skeleton = tool::read_skeleton(text, values);
    EXPECT_NE(skeleton, nullptr) << text;
    if (skeleton == nullptr)
        return 0;
    const std::shared_ptr<quxml::Document> document = quxml::from_string(text, false);
    std::size_t count = 0;
    for (const std::string& beginning : paths) {
        const Words expected = get_sorted(*document, beginning);
        EXPECT_EQ(get_sorted(*skeleton, beginning), expected) << beginning << "\n" << text;
        count += expected.size();
    }
    return count;
}

std::size_t expect_same_names(const std::string& text) {
    return expect_same_completions(text, tool::AttributeValues::dropped, beginnings);
}

std::size_t expect_same_selections(const std::string& text) {
    return expect_same_completions(text, tool::AttributeValues::kept, beginnings) +
           expect_same_completions(text, tool::AttributeValues::kept, with_predicates);
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
        EXPECT_NE(expect_same_names(text), 0U) << text;
}

TEST(Skeleton, has_the_values_of_the_tree) {
    for (const char* text : {
             "<a/>",
             "<a><b k='1'><c/></b><b k='1'><d l=''/></b><b k='2'><e/></b><b><f/></b><b><g/></b></a>",
             "<p:a xmlns:p='u' p:k='1' q:l='2'><p:b xml:lang='en'/><q:b/></p:a>",
             "<!DOCTYPE a [<!ATTLIST b k NMTOKENS 'v'>]><a><b k='1 2'><c/></b><b l='1'><d/></b></a>",
             "<a k='text with \"quotes\" and > and \xc3\xa9'><b l = \"1\"/></a>",
         })
        EXPECT_NE(expect_same_selections(text), 0U) << text;
}

TEST(Skeleton, is_not_made_of_what_only_a_tree_tells) {
    for (const std::string& text :
         {std::string(), std::string("text"), std::string("<a>"), std::string("<a></b>"),
          std::string("<a/><b/>"), std::string("<a k='1' k='2'/>"),
          std::string("<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;</a>"), std::string("<a>&none;</a>"),
          std::string("<a/>\0", 5), std::string("<?xml version='1.0' encoding='none'?><a/>")})
        EXPECT_EQ(tool::read_skeleton(text, tool::AttributeValues::dropped), nullptr) << text;
}

TEST(Skeleton, is_not_made_of_values_that_are_read_otherwise_than_they_are_written) {
    for (const char* text :
         {"<a k='&lt;'/>", "<a k='1\t2'/>", "<a k='1\n2'/>", "<a k='1\r\n2'/>", "<a><b k='&#49;'/></a>",
          "<!DOCTYPE a [<!ATTLIST a k NMTOKENS #IMPLIED>]><a k=' 1'/>",
          "<!DOCTYPE a [<!ATTLIST a k NMTOKENS #IMPLIED>]><a k='1 '/>",
          "<!DOCTYPE a [<!ATTLIST a k NMTOKENS #IMPLIED>]><a k='1  2'/>",
          "<a xmlns:p='u' xmlns:q='v' p:k='1' q:k='2'/>"}) {
        EXPECT_EQ(tool::read_skeleton(text, tool::AttributeValues::kept), nullptr) << text;
        EXPECT_NE(tool::read_skeleton(text, tool::AttributeValues::dropped), nullptr) << text;
    }
}

/// Elements of few names, so that many stand at the same path.
std::string write_random(std::mt19937& random, int levels) {
    const std::string name = Words{"a", "b", "B", "c", "p:c"}[random() % 5];
    std::string text = '<' + name;
    for (const char* attribute : {"k", "l", "p:m"})
        text += random() % 3 == 0 ? std::string(" ") + attribute + "='" + "12"[random() % 2] + '\'' : "";
    text += '>';
    for (std::size_t left = levels == 0 ? 0 : random() % 5; left != 0; --left)
        text += random() % 6 == 0 ? "text" : write_random(random, levels - 1);
    return text + "</" + name + '>';
}

TEST(Skeleton, has_the_names_of_random_trees) {
    std::mt19937 random(1);
    std::size_t names = 0;
    std::size_t selections = 0;
    for (int round = 0; round != 300; ++round) {
        const std::string text =
            "<a xmlns:p='u'>" + write_random(random, 5) + write_random(random, 4) + "</a>";
        names += expect_same_names(text);
        selections += expect_same_selections(text);
    }
    EXPECT_GT(names, 9000U);
    EXPECT_GT(selections, names + 1500U);
}

TEST(Skeleton, is_read_as_far_as_a_path_needs_it) {
    for (const std::string& beginning : beginnings)
        EXPECT_EQ(tool::get_needed_parts(beginning), tool::NeededParts::names) << beginning;
    for (const std::string& beginning : with_predicates)
        EXPECT_NE(tool::get_needed_parts(beginning), tool::NeededParts::everything) << beginning;
    for (const char* beginning : {"/a/b[@k='1']/", "//a[@k][@", "/a[@k/", "/a[@k =1]//b[@l]/", "a[@k]b",
                                  "/a[1]/b[@", "//a[@k][2]/", "/a[last()]/[@k]/", "/a[@last()]/", "a]/"})
        EXPECT_EQ(tool::get_needed_parts(beginning), tool::NeededParts::elements) << beginning;
    for (const char* beginning :
         {"/a[b='1']/", "/a[@k='[']/", "/a/*[last()]/", "/*[position()=1]/", "//*[@last()]/",
          "/a/*[1][last()]/", "/a/*[@k][last()]/", "[last()]/", "/a[b]/", "/a[1 ]/", "/a[]/", "/a[-1]/"})
        EXPECT_EQ(tool::get_needed_parts(beginning), tool::NeededParts::everything) << beginning;
}

}  // namespace
