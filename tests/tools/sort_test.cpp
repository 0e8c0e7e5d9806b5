// SPDX-License-Identifier: MIT
#include <array>
#include <random>
#include <string>
#include <vector>

#include "converters.h"
#include "program.h"

namespace quxml_test {

namespace {

using Sort = Quxml;

struct Sorted {
    const char* before;
    const char* after;
};

TEST_F(Sort, moves_elements_with_all_their_bytes) {
    const std::array<Sorted, 17> all{{
        {"<r><b/><a/></r>", "<r><a/><b/></r>"},
        {"<r>\n  <b x='1'  y=\"2\" >&#65;</b>\n\n  <a ></a >\n</r>\n\n",
         "<r>\n  <a ></a >\n\n  <b x='1'  y=\"2\" >&#65;</b>\n</r>\n\n"},
        {"<r>\n  <c><z/><y/></c>\n  <b><![CDATA[x]]></b>\n</r>",
         "<r>\n  <b><![CDATA[x]]></b>\n  <c><y/><z/></c>\n</r>"},
        {"<r><b item='10'/><b item='9'/><b/><a/></r>", "<r><a/><b item='9'/><b item='10'/><b/></r>"},
        // Comments and instructions directly above an element go with it.
        {"<r>\n <!-- 1 -->\n <?p 2?>\n <b/>\n <!-- 3 -->\n <a/>\n</r>",
         "<r>\n <!-- 3 -->\n <a/>\n <!-- 1 -->\n <?p 2?>\n <b/>\n</r>"},
        {"<r><!-- 1 --><b/><!-- 2 --> <a/></r>", "<r><!-- 2 --> <a/><!-- 1 --><b/></r>"},
        // With a blank line between they stay, and what is above them does.
        {"<r>\n <!-- 0 -->\n <!-- 1 -->\n\n <!-- 2 -->\n <b/>\n <a/>\n</r>",
         "<r>\n <!-- 0 -->\n <!-- 1 -->\n\n <a/>\n <!-- 2 -->\n <b/>\n</r>"},
        {"<r>\r\n <!-- 1 -->\r\n\r\n <b/>\r\n <!-- 2 -->\r\n <a/>\r\n</r>",
         "<r>\r\n <!-- 1 -->\r\n\r\n <!-- 2 -->\r\n <a/>\r\n <b/>\r\n</r>"},
        // Those after an element, on its last line, go with it.
        {"<r>\n <b/> <!-- 1 -->\n <a/><!-- 2 --> <!-- 3 -->\n</r>",
         "<r>\n <a/><!-- 2 --> <!-- 3 -->\n <b/> <!-- 1 -->\n</r>"},
        {"<r><b/><a/><!-- 1 --></r>", "<r><a/><!-- 1 --><b/></r>"},
        // Those after the parent's start tag are the parent's, and those at its end stay there.
        {"<r> <!-- 1 -->\n <b/>\n <a/>\n <!-- 2 -->\n</r>",
         "<r> <!-- 1 -->\n <a/>\n <b/>\n <!-- 2 -->\n</r>"},
        {"<!-- 1 -->\n<r><b/><a/></r>\n<!-- 2 -->", "<!-- 1 -->\n<r><a/><b/></r>\n<!-- 2 -->"},
        // Mixed content stays in its order, with everything in it.
        {"<r><b>x<d/><c><f/><e/></c></b><a/></r>", "<r><a/><b>x<d/><c><f/><e/></c></b></r>"},
        {"<r><![CDATA[]]><b/><a/></r>", "<r><![CDATA[]]><b/><a/></r>"},
        // The names that the library reads are compared.
        {"<r xmlns:p='u'><b/><p:a/><q:a/></r>", "<r xmlns:p='u'><p:a/><b/><q:a/></r>"},
        {"<r xml:space='preserve'> <b/><a/></r>", "<r xml:space='preserve'> <a/><b/></r>"},
        {"\xef\xbb\xbf<r>\r<b/>\r<a/></r>", "\xef\xbb\xbf<r>\r<a/>\r<b/></r>"},
    }};
    for (const Sorted& one : all) {
        SCOPED_TRACE(one.before);
        write("a.xml", one.before);
        expect_done(run("quxml sort a.xml"), one.after);
        expect_done(run("quxml sort a.xml | quxml sort"), one.after);
    }
}

TEST_F(Sort, changes_files_and_shows_differences) {
    write("a.xml", "<!-- x -->\n<r>\n  <b/>\n  <a/>\n</r>\n");
    expect(run("quxml sort --diff a.xml"), 1,
           "--- a.xml\n+++ a.xml\n@@ -1,5 +1,5 @@\n <!-- x -->\n <r>\n-  <b/>\n   <a/>\n+  <b/>\n </r>\n",
           "");
    expect_done(run("quxml sort -i a.xml; quxml sort --diff a.xml"), "");
    EXPECT_EQ(written("a.xml"), "<!-- x -->\n<r>\n  <a/>\n  <b/>\n</r>\n");
}

TEST_F(Sort, exits_with_3_for_items_beyond_the_range_of_numbers) {
    write("a.xml", "<r><b item='99999999999'/><b item='1'/></r>");
    expect(run("quxml sort a.xml"), 3, "",
           "quxml: a.xml: cannot be sorted: an item is a number out of range\n");
}

TEST_F(Sort, keeps_other_encodings) {
    if (!has_converters())
        GTEST_SKIP() << "this machine has no converters of encodings";
    write("a.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><r><!-- \xe4 --><b x='\xe4'/><a>\xf6</a></r>");
    expect_done(run("quxml sort a.xml"),
                "<?xml version='1.0' encoding='ISO-8859-1'?><r><a>\xf6</a><!-- \xe4 --><b x='\xe4'/></r>");
}

TEST_F(Sort, is_canonical_on_demand) {
    write("a.xml", "<r><!-- x --><b></b><a/></r>");
    expect(run("quxml sort --canonical a.xml"), 0, std::string(declaration) + "\n<r>\n  <a/>\n  <b/>\n</r>\n",
           "a.xml: warning: left out of the output: 1 comment; \"quxml loss a.xml\" lists them\n");
    EXPECT_EQ(run("quxml sort -i --canonical a.xml").code, 3);
    expect_done(run("quxml sort --canonical --quiet a.xml | cmp - /dev/fd/3 3<<E\n"
                    "$(quxml format --sorted --canonical --quiet a.xml)\nE"),
                "");
}

std::string get_random_element(std::mt19937& random, int level) {
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const std::vector<std::string> items{"",           "",          " item='1'", " item='2'",
                                         " item='10'", " item='x'", " item=''"};
    const std::vector<std::string> spaces{
        "", "\n", "\n  ", "\n\n", "<!-- y -->", "\n<!-- x -->\n", " <!-- z -->\n", "<?p?>"};
    const std::string name(1, "abc"[below(3)]);
    std::string text = '<' + name + " n='" + std::to_string(below(1000000)) + '\'' + items[below(7)] + '>';
    const std::size_t children = level == 0 ? 0 : below(6);
    for (std::size_t i = 0; i != children; ++i)
        text += spaces[below(8)] + get_random_element(random, level - 1);
    return text + spaces[below(children == 0 ? 1 : 8)] + "</" + name + '>';
}

/// The library's tree decides the order; nothing is lost, and what is sorted stays.
TEST_F(Sort, has_the_order_of_the_canonical_form) {
    std::mt19937 random(1);
    for (int i = 0; i != 100; ++i) {
        const std::string text = get_random_element(random, 4);
        SCOPED_TRACE(text);
        write("a.xml", text);
        const Result once = run("quxml sort a.xml | tee b.xml");
        EXPECT_EQ(once.err, "");
        EXPECT_EQ(once.out.size(), text.size());
        expect_done(run("quxml sort b.xml"), once.out);
        expect_done(run("quxml format --canonical --quiet b.xml"),
                    run("quxml sort --canonical --quiet a.xml").out);
        expect_done(run("quxml format b.xml"), run("quxml format --sorted a.xml").out);
    }
}

}  // namespace

}  // namespace quxml_test
