// SPDX-License-Identifier: MIT
#include "program.h"

#include <array>
#include <string>

namespace quxml_test {

namespace {

using Check = Quxml;

TEST_F(Check, says_nothing_of_well_formed_documents) {
    write("a.xml", "<a/>");
    write("b.xml", "<!DOCTYPE b><b><!-- kept or not, it is well-formed --></b>");
    expect_done(run("quxml check a.xml"), "");
    expect_done(run("quxml check a.xml b.xml"), "");
    expect_done(run("quxml check <a.xml"), "");
    expect_done(run("quxml check b.xml - <a.xml"), "");
}

struct Malformed {
    const char* text;
    const char* errors;
};

TEST_F(Check, shows_the_first_error_first_each_with_its_line_and_a_caret) {
    const std::array<Malformed, 11> all{{
        {"", "bad.xml:1:1: error: Empty document.\n"},
        {"   ", "bad.xml:1:4: error: Start tag expected, '<' not found\n       \n       ^\n"},
        {"<a><b></a></b>",
         "bad.xml:1:11: error: Opening and ending tag mismatch: b line 1 and a\n    <a><b></a></b>\n         "
         "     "
         "^\n"
         "bad.xml:1:15: error: Opening and ending tag mismatch: a line 1 and b\n    <a><b></a></b>\n         "
         "       "
         "  ^\n"},
        {"<a>\r\n<b x=1/>\r\n</a>",
         "bad.xml:2:6: error: AttValue: \" or ' expected\n    <b x=1/>\n         ^\n"
         "bad.xml:2:6: error: attributes construct error\n    <b x=1/>\n         ^\n"
         "bad.xml:2:6: error: Couldn't find end of Start Tag b line 2\n    <b x=1/>\n         ^\n"},
        {"<\xc3\xa4>\xc3\xb6&u;</\xc3\xa4>",
         "bad.xml:1:8: error: Entity 'u' not defined\n    <\xc3\xa4>\xc3\xb6&u;</\xc3\xa4>\n           ^\n"},
        {"\xef\xbb\xbf<a>&u;</a>",
         "bad.xml:1:7: error: Entity 'u' not defined\n    <a>&u;</a>\n          ^\n"},
        {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>\xe4&u;</a>",
         "bad.xml:2:8: error: Entity 'u' not defined\n    <a>\xc3\xa4&u;</a>\n           ^\n"},
        {"<a>\t&u;</a>", "bad.xml:1:8: error: Entity 'u' not defined\n    <a> &u;</a>\n           ^\n"},
        {"<a>\x1b[1m</a>", "bad.xml:1:4: error: PCDATA invalid Char value 27\n    <a>?[1m</a>\n       ^\n"},
        {"<a/><b/>",
         "bad.xml:1:5: error: Extra content at the end of the document\n    <a/><b/>\n        ^\n"},
        {"<a>&1;&2;&3;&4;&5;&6;</a>", nullptr},
    }};
    for (const Malformed& one : all) {
        SCOPED_TRACE(one.text);
        write("bad.xml", one.text);
        const Result result = run("quxml check bad.xml");
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.out, "");
        if (one.errors == nullptr)
            EXPECT_TRUE(contains(result.err, "bad.xml: 1 more errors follow from these\n")) << result.err;
        else
            EXPECT_EQ(result.err.rfind(one.errors, 0), 0U) << result.err;
    }
}

TEST_F(Check, shows_the_part_of_a_long_line_that_the_error_is_in) {
    const std::string filler(1000, 'x');
    write("bad.xml", "<a>" + filler + "&u;" + filler + "</a>");
    expect(run("quxml check bad.xml"), 3, "",
           "bad.xml:1:1007: error: Entity 'u' not defined\n    " + filler.substr(0, 77) + "&u;" +
               filler.substr(0, 40) + "\n    " + std::string(80, ' ') + "^\n");
}

TEST_F(Check, says_in_plain_words_what_goes_beyond_the_limits_of_libxml2) {
    std::string deep;
    for (int level = 0; level < 258; ++level)
        deep += "<a>";
    write("deep.xml", deep);
    write("long.xml", "<a b='" + std::string(9999999, 'x') + "'/>");
    EXPECT_TRUE(contains(run("quxml check deep.xml").err, "error: elements are nested too deeply\n"));
    EXPECT_TRUE(contains(run("quxml check long.xml").err,
                         "error: something is too long, nearly 10,000,000 bytes or more\n"));
    write("text.xml", "<a>&lt;" + std::string(10000000, 'x') + "</a>");
    const Result text = run("quxml check text.xml");
    EXPECT_EQ(text.code, 3);
    EXPECT_TRUE(contains(text.err, "error: a text is too long, more than 10,000,000 bytes\n"));
}

/// libxml2 takes the first one after the root element for the end of the text.
TEST_F(Check, refuses_zero_bytes_wherever_they_are) {
    for (const char* text : {"<a/>\\n\\0\\0", "<a/>\\n\\0<!-- c -->", "<a/>\\n\\0<b/>garbage"}) {
        SCOPED_TRACE(text);
        const std::string zero = std::string("printf '") + text + "' >zero.xml; quxml ";
        EXPECT_EQ(run(zero + "check zero.xml").code, 3);
        EXPECT_TRUE(contains(run(zero + "check zero.xml").err,
                             "zero.xml:2:1: error: a zero byte, which XML does not allow\n"));
        EXPECT_EQ(run(zero + "set -i /a k=v zero.xml").code, 3);
        EXPECT_EQ(run(zero + "loss zero.xml").code, 3);
    }
    EXPECT_EQ(run("printf '\\377\\376<\\0a\\0/\\0>\\0' >wide.xml; quxml check wide.xml").code, 0);
    EXPECT_EQ(run("printf '\\377\\376<\\0a\\0/\\0>\\0\\0\\0' >wide.xml; quxml check wide.xml").code, 3);
}

TEST_F(Check, stops_at_loops_of_entities_that_libxml2_would_never_come_back_from) {
    write("loop.xml", "<!DOCTYPE a [<!ENTITY % x '&#37;y;'><!ENTITY % y '&#37;x;'>%x;]><a/>");
    const Result result = run("quxml check loop.xml");
    EXPECT_EQ(result.code, 3);
    EXPECT_TRUE(contains(result.err, "loop.xml:1:")) << result.err;
}

TEST_F(Check, looks_at_all_files_and_exits_with_the_highest_code) {
    write("good.xml", "<a/>");
    write("bad.xml", "<a>&u;</a>");
    write("worse.xml", "<b>&v;</b>");
    const std::string bad = "bad.xml:1:7: error: Entity 'u' not defined\n    <a>&u;</a>\n          ^\n";
    const std::string worse = "worse.xml:1:7: error: Entity 'v' not defined\n    <b>&v;</b>\n          ^\n";
    const std::string nothing = "quxml: nothing.xml: No such file or directory\n";
    expect(run("quxml check bad.xml good.xml worse.xml"), 3, "", bad + worse);
    expect(run("quxml check nothing.xml bad.xml good.xml"), 5, "", nothing + bad);
    expect(run("quxml check --quiet bad.xml worse.xml"), 3, "", "");
    expect(run("quxml check --quiet bad.xml nothing.xml"), 5, "", "");
    expect(run("quxml check --quiet good.xml"), 0, "", "");
}

TEST_F(Check, names_a_zero_byte_before_what_libxml2_makes_of_it) {
    write("zero.xml", std::string("<a>\n<b>x\0y</b></a>", 18));
    const Result result = run("quxml check zero.xml");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err.substr(0, result.err.find('\n')),
              "zero.xml:2:5: error: a zero byte, which XML does not allow");
}

}  // namespace

}  // namespace quxml_test
