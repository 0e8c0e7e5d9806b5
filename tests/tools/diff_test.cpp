// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

using Diff = Quxml;

struct Compared {
    const char* one;
    const char* other;
    const char* differences;
};

TEST_F(Diff, lists_differences_with_paths) {
    const std::vector<Compared> all = {
        {"<a/>", "<a/>", ""},
        {"<a/>", "<b/>", "- /a\n+ /b\n"},
        {"<a x='1'/>", "<a x='2'/>", "! /a/@x: \"1\" -> \"2\"\n"},
        {"<a x='1' y='2'/>", "<a y='2' x='1'/>", ""},
        {"<a x='1'/>", "<a y='1'/>", "- /a/@x=\"1\"\n+ /a/@y=\"1\"\n"},
        {"<a x=''/>", "<a/>", "- /a/@x=\"\"\n"},
        {"<a>x</a>", "<a>y</a>", "! /a: \"x\" -> \"y\"\n"},
        {"<a>x</a>", "<a/>", "! /a: \"x\" -> \"\"\n"},
        {"<a>x</a>", "<a><b/></a>", "! /a: \"x\" -> \"\"\n+ /a/b\n"},
        {"<a><b/></a>", "<a><c/></a>", "- /a/b\n+ /a/c\n"},
        {"<a><b/><c/></a>", "<a>\n  <c/>\n  <b/>\n</a>", ""},
        {"<a><b item='1'/><b item='2'/></a>", "<a><b item='2'/><b item='1'/></a>", ""},
        {"<a><b item='1' x='1'/><b item='2'/></a>", "<a><b item='2'/><b item='1' x='2'/></a>",
         "! /a/b[position()=1]/@x: \"1\" -> \"2\"\n"},
        {"<a><b item='1'/><b item='2'/></a>", "<a><b item='2'/><b item='3'/></a>",
         "- /a/b[position()=1]\n+ /a/b[position()=2]\n"},
        {"<a><b>1</b><b>2</b></a>", "<a><b>2</b><b>1</b></a>",
         "! /a/b[position()=1]: \"1\" -> \"2\"\n! /a/b[position()=2]: \"2\" -> \"1\"\n"},
        {"<a><b>1</b><b>3</b></a>", "<a><b>1</b><b>2</b><b>3</b></a>", "+ /a/b[position()=2]\n"},
        {"<a><b>1</b><b>2</b><b>3</b></a>", "<a><b>1</b><b>3</b></a>", "- /a/b[position()=2]\n"},
        {"<a><b>1</b><b>1</b></a>", "<a><b>1</b></a>", "- /a/b[position()=2]\n"},
        {"<a><b><c x='1'/><d/></b><b/></a>", "<a><b><d/><c x='1'/></b><b/></a>", ""},
        {"<a><B/></a>", "<a><b/></a>", "- /a/B\n+ /a/b\n"},
        {"<a><b><c><d>x</d></c></b></a>", "<a><b><c><d>y</d><e/></c></b></a>",
         "! /a/b/c/d: \"x\" -> \"y\"\n+ /a/b/c/e\n"},
        {"<a x='&#10;\x7f&lt;'/>", "<a x='&quot;'/>", "! /a/@x: \"\\n\\x7f<\" -> \"\\\"\"\n"},
        {"<a>&#9;\xc2\x9b&#13;\xc3\xa4</a>", "<a>\\n</a>",
         "! /a: \"\\t\\xc2\\x9b\\r\xc3\xa4\" -> \"\\\\n\"\n"},
    };
    for (const Compared& one : all) {
        SCOPED_TRACE(std::string(one.one) + " with " + one.other);
        write("one.xml", one.one);
        write("other.xml", one.other);
        const std::string differences = one.differences;
        const int code = differences.empty() ? 0 : 1;
        expect(run("quxml diff one.xml other.xml"), code, differences, "");
        expect(run("quxml diff --quiet one.xml other.xml"), code, "", "");
        expect(run("quxml diff - other.xml <one.xml"), code, differences, "");
    }
}

TEST_F(Diff, warns_of_what_is_not_compared) {
    write("one.xml", "<a><!-- x --></a>");
    write("other.xml", "<a xmlns='u'/>");
    const char* warnings =
        "one.xml: warning: this is not compared: 1 comment\n"
        "other.xml: warning: this is not compared: 1 namespace declaration\n";
    expect(run("quxml diff one.xml other.xml"), 0, "", warnings);
    expect(run("quxml diff --quiet one.xml other.xml"), 0, "", "");
}

TEST_F(Diff, sees_what_editing_has_changed) {
    write("books.xml", many_books(500));
    EXPECT_EQ(run("quxml set -i --backup '/catalog/book[position()=250]' x=1 books.xml").code, 0);
    expect(run("quxml diff books.xml~ books.xml"), 1, "+ /catalog/book[position()=250]/@x=\"1\"\n", "");
    EXPECT_EQ(run("cp books.xml~ books.xml; quxml remove -i '/catalog/book[position()=250]' books.xml").code,
              0);
    expect(run("quxml diff books.xml~ books.xml"), 1, "- /catalog/book[position()=250]\n", "");
}

TEST_F(Diff, exits_with_the_code_of_what_fails) {
    write("a.xml", "<a/>");
    write("bad.xml", "<a>");
    EXPECT_EQ(run("quxml diff a.xml bad.xml").code, 3);
    EXPECT_EQ(run("quxml diff bad.xml a.xml").code, 3);
    EXPECT_EQ(run("quxml diff --quiet bad.xml a.xml").err, run("quxml check bad.xml").err);
    EXPECT_EQ(run("quxml diff --quiet bad.xml a.xml").code, 3);
    expect(run("quxml diff a.xml nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml diff a.xml"), 2, "", "quxml: B is required\nquxml diff --help says more.\n");
    expect(run("quxml diff - -"), 2, "",
           "quxml: only one of A and B can be standard input\nquxml diff --help says more.\n");
    EXPECT_EQ(run("quxml diff a.xml a.xml >/dev/full").code, 0);
    EXPECT_EQ(run("echo '<b/>' | quxml diff a.xml - >/dev/full").code, 5);
}

TEST_F(Diff, quiet_refuses_with_3_what_it_cannot_compare) {
    write("a.xml", "<a><b>x</b><c><![CDATA[1]]></c></a>");
    write("b.xml", "<a><b>x</b><c><![CDATA[2]]></c></a>");
    write("c.xml", "<a><b>y</b><c><![CDATA[2]]></c></a>");
    write("d.xml", "<a><!-- 1 --><b>x</b><c/></a>");
    const std::string complaint =
        "quxml: a.xml: this is not compared: 1 CDATA section; --lossy compares the rest\n";
    expect(run("quxml diff --quiet a.xml b.xml"), 3, "", complaint);
    expect(run("quxml diff --quiet d.xml a.xml"), 3, "", complaint);
    expect_done(run("quxml diff --quiet --lossy a.xml b.xml"), "");
    expect_done(run("quxml diff --quiet d.xml d.xml"), "");
    expect(run("quxml diff --quiet a.xml c.xml"), 1, "", "");
}

}  // namespace

}  // namespace quxml_test
