// SPDX-License-Identifier: MIT

// The answers that the playground's page gets. What the page makes of them is tested in a browser.

#include "Session.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using playground::Session;
using tool::NameMatch;

TEST(Session, counts_the_elements_of_a_text) {
    Session session;
    EXPECT_EQ(session.read("<a><b/><c><d/></c></a>", false), R"({"rows":4})");
}

TEST(Session, keeps_the_former_document_if_a_text_is_refused) {
    Session session;
    session.read("<a><b/></a>", false);
    EXPECT_EQ(
        session.read("<a>\n</b>", false),
        R"({"line":2,"column":5,"message":"Opening and ending tag mismatch: a line 1 and b","more":0})");
    EXPECT_EQ(session.query("a/b", 0, NameMatch::whole),
              R"({"count":1,"rows":[1],"names":["<b/>"],"notes":[]})");
}

TEST(Session, numbers_matches_in_document_order_and_texts_in_the_rows_of_their_elements) {
    Session session;
    session.read("<a><b k='1'>x</b><b/></a>", false);
    EXPECT_EQ(session.query("//*", 0, NameMatch::whole),
              R"({"count":4,"rows":[0,1,1,2],"names":["<a>","<b k=\"1\">x</b>","x","<b/>"],"notes":[]})");
    EXPECT_EQ(
        session.get_rows(1, 9),
        R"([{"depth":1,"name":"b","attributes":[["k","1"]],"more":false,"text":"x","match":2,"text_match":3},)"
        R"({"depth":1,"name":"b","attributes":[],"more":false,"text":null,"match":4,"text_match":0}])");
    EXPECT_EQ(session.get_rows(3, 9), "[]");
}

TEST(Session, lets_a_path_start_at_any_element) {
    Session session;
    session.read("<a><b><c/></b><c/></a>", false);
    EXPECT_EQ(session.query("b/c", 1, NameMatch::whole),
              R"({"count":1,"rows":[2],"names":["<c/>"],"notes":[]})");
    EXPECT_EQ(session.query("B/", 1, NameMatch::prefix),
              R"({"count":1,"rows":[2],"names":["<c/>"],"notes":[]})");
}

TEST(Session, gives_the_error_of_the_library_by_its_type) {
    Session session;
    session.read("<a><b/></a>", false);
    EXPECT_EQ(session.query("a/b[position()<=2]", 0, NameMatch::whole),
              R"({"error":"step 2, [position()<=2]: <= is not known; use < and the next number",)"
              R"("exception":"std::invalid_argument: stoi"})");
    EXPECT_EQ(
        session.query("a/b[99999999999]", 0, NameMatch::whole),
        R"({"error":"step 2, [99999999999]: the number is too large; after // it would be compared as text",)"
        R"("exception":"std::out_of_range: stoi"})");
}

TEST(Session, says_why_a_path_is_refused_where_the_library_has_not_come_to_it) {
    Session session;
    session.read("<a/>", false);
    EXPECT_EQ(
        session.query("a/b/c[position()<=2]", 0, NameMatch::whole),
        R"({"count":0,"rows":[],"names":[],"notes":[{"text":"step 3, [position()<=2]: <= is not known; use < )"
        R"(and the next number; the library has not come to it","kind":"surprise"}]})");
}

TEST(Session, says_that_an_option_is_one_of_the_program) {
    Session session;
    session.read("<a><b/></a>", false);
    const auto has = [](const std::string& answer, const char* words) {
        return answer.find(words) != std::string::npos;
    };
    const char* const option = "(--arg is an option of the program)";
    EXPECT_TRUE(has(session.query("a/b[c='d/e']", 0, NameMatch::whole), option));
    EXPECT_TRUE(has(session.query("a/b[c='d=e']", 0, NameMatch::whole), option));
    EXPECT_TRUE(has(Session::explain("a/b[c=$d]", NameMatch::whole), option));
    EXPECT_FALSE(has(session.query("a/b[c=d]", 0, NameMatch::whole), option));
    session.read("<a b='1'/>", false);
    EXPECT_TRUE(has(session.query("a/b", 0, NameMatch::whole), "(--attribute is an option of the program)"));
}

TEST(Session, finds_the_element_of_a_row_again_by_its_path) {
    Session session;
    session.read("<a><b/><b/><c/></a>", false);
    EXPECT_EQ(session.get_path(2), R"({"path":"/a/b[position()=2]"})");
    EXPECT_EQ(session.find_row("/a/b[position()=2]"), R"({"row":2})");
    session.read("<a><x/><b/><b/></a>", false);
    EXPECT_EQ(session.find_row("/a/b[position()=2]"), R"({"row":3})");
    for (const char* path : {"/a/c", "", "/a/b[position()<=2]"})
        EXPECT_EQ(session.find_row(path), R"({"row":null})") << path;
}

TEST(Session, says_why_nothing_is_selected) {
    Session session;
    session.read("<a><book/></a>", false);
    const std::string answer = session.query("a/bok", 0, NameMatch::whole);
    EXPECT_NE(answer.find("none is called bok; is it book?"), std::string::npos) << answer;
}

TEST(Session, explains_as_the_program_does) {
    EXPECT_EQ(
        Session::explain("/a/", NameMatch::whole),
        R"-([{"step":"a","lines":[{"text":"start node: the root element, if it has the name \"a\" in upper or lower case",)-"
        R"-("kind":""}]},{"step":"(empty)","lines":[{"text":"children: all of them, texts too","kind":""}]}])-");
}

TEST(Session, lists_losses_by_characters_as_javascript_counts_them) {
    EXPECT_EQ(
        Session::list_losses("\xEF\xBB\xBF<a>\xC3\xA4\xF0\x9F\x98\x80<b/></a>"),
        R"({"count":2,"harmless":0,"unseen":"queries do not see 1 text beside other content",)"
        R"("losses":[{"kind":"byte-order mark","line":1,"column":1,"excerpt":"EF BB BF","harmless":false,)"
        R"("begin":1,"length":0},{"kind":"text beside other content","line":1,"column":4,"excerpt":")"
        "\xC3\xA4\xF0\x9F\x98\x80"
        R"(","harmless":false,"begin":4,"length":3}]})");
}

TEST(Session, counts_what_is_noted_only_apart) {
    const std::string answer = Session::list_losses("<a b='&lt;'><!-- --></a>");
    EXPECT_EQ(answer.rfind(R"({"count":2,"harmless":1,"unseen":"",)", 0), 0U) << answer;
}

TEST(Session, marks_a_doctype_to_its_end) {
    const std::string answer = Session::list_losses("<!DOCTYPE a [<!ENTITY b '>'>]><a/>");
    EXPECT_NE(answer.find(R"("begin":0,"length":30)"), std::string::npos) << answer;
}

TEST(Session, writes_as_the_library_does) {
    Session session;
    session.read("<a k='&lt;'><b/></a>", true);
    EXPECT_EQ(session.write(false), R"({"size":38,"text":"<?xml version=\"1.0\"?><a k=\"<\"><b/></a>"})");
    EXPECT_NE(session.write(true).find(R"(\n  <b/>\n)"), std::string::npos);
}

TEST(Session, bounds_what_it_shows) {
    Session session;
    std::string text = "<a>";
    for (int i = 0; i < 2000; ++i)
        text += "<b><!-- --></b>";
    text += "<c>" + std::string(300000, 'x') + "</c></a>";
    EXPECT_EQ(session.read(text, false), R"({"rows":2002})");
    EXPECT_LT(session.query("a/c", 0, NameMatch::whole).size(), 400U);
    EXPECT_LT(session.write(false).size(), 120000U);
    EXPECT_LT(session.get_rows(2001, 1).size(), 400U);
    EXPECT_EQ(Session::list_losses(text).rfind(R"({"count":2000,"harmless":0,)", 0), 0U);
    EXPECT_LT(Session::list_losses(text).size(), 150000U);
}

}  // namespace
