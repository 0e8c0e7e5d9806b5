// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "program.h"
#include "terminal.h"

namespace quxml_test {

namespace {

class Outline : public Quxml {
protected:
    Outline() {
        write("a.xml",
              "<catalog>\n"
              "  <book id='1' lang=''><title>Emma</title></book>\n"
              "  <shelf/>\n"
              "  <book lang='de' id='2'><title>Faust</title><note/></book>\n"
              "</catalog>\n");
    }

    /// What the program writes to a terminal that is both standard output and standard error.
    std::string show(const std::string& command) const {
        return run_on_terminal("cd '" + folder.string() +
                               "'\nunset NO_COLOR\nTERM=xterm\nexport TERM\nexec >&2\n'" QUXML_TOOL "' " +
                               command);
    }
};

constexpr const char* outline_of_a =
    "/catalog\t1\t\t\n"
    "/catalog/book\t2\t@id=\"1\" @lang=\"de\"\t\n"
    "/catalog/book/title\t2\t\t\"Emma\"\n"
    "/catalog/shelf\t1\t\t\n"
    "/catalog/book/note\t1\t\t\n";

constexpr const char* tree_of_a =
    "catalog 1\n"
    "  book 2 @id=\"1\" @lang=\"de\"\n"
    "    title 2 \"Emma\"\n"
    "    note 1\n"
    "  shelf 1\n";

TEST_F(Outline, has_each_path_once_in_order_of_first_appearance) {
    expect_done(run("quxml outline a.xml"), outline_of_a);
    expect_done(run("quxml outline --paths --quiet a.xml | cat"), outline_of_a);
}

TEST_F(Outline, puts_what_appears_late_below_its_early_branch_in_a_tree) {
    expect_done(run("quxml outline --tree a.xml"), tree_of_a);
}

TEST_F(Outline, reads_standard_input_for_a_dash_or_no_file) {
    expect_done(run("quxml outline <a.xml"), outline_of_a);
    expect_done(run("quxml outline - <a.xml"), outline_of_a);
    expect_done(run("cat a.xml | quxml outline"), outline_of_a);
}

TEST_F(Outline, is_one_over_all_files) {
    write("b.xml", "<Catalog/>");
    write("c.xml", "<catalog x='1'><book id='3'/><new>y</new></catalog>");
    expect_done(run("quxml outline a.xml b.xml c.xml"),
                "/catalog\t2\t@x=\"1\"\t\n"
                "/catalog/book\t3\t@id=\"1\" @lang=\"de\"\t\n"
                "/catalog/book/title\t2\t\t\"Emma\"\n"
                "/catalog/shelf\t1\t\t\n"
                "/catalog/book/note\t1\t\t\n"
                "/Catalog\t1\t\t\n"
                "/catalog/new\t1\t\t\"y\"\n");
    expect_done(run("quxml outline --tree b.xml c.xml - <b.xml"),
                "Catalog 2\n"
                "catalog 1 @x=\"1\"\n"
                "  book 1 @id=\"3\"\n"
                "  new 1 \"y\"\n");
}

TEST_F(Outline, leaves_out_files_that_cannot_be_read_and_exits_with_the_highest_code) {
    write("bad.xml", "<catalog><b></catalog>");
    const std::string error =
        "bad.xml:1:23: error: Opening and ending tag mismatch: b line 1 and catalog\n"
        "    <catalog><b></catalog>\n"
        "                          ^\n";
    const Result malformed = run("quxml outline bad.xml a.xml");
    EXPECT_EQ(malformed.code, 3);
    EXPECT_EQ(malformed.out, outline_of_a);
    EXPECT_TRUE(contains(malformed.err, error)) << malformed.err;
    EXPECT_EQ(run("quxml outline --quiet bad.xml a.xml").err, malformed.err);
    expect(run("quxml outline nothing.xml a.xml"), 5, outline_of_a,
           "quxml: nothing.xml: No such file or directory\n");
    EXPECT_EQ(run("quxml outline nothing.xml bad.xml").code, 5);
    expect(run("quxml outline --quiet nothing.xml"), 5, "",
           "quxml: nothing.xml: No such file or directory\n");
}

TEST_F(Outline, cuts_examples_between_characters_and_writes_control_characters_as_escapes) {
    const std::string longest = std::string(49, 'x');
    write("b.xml", "<a b='" + longest + "y' c='" + longest + "\xc3\xa4' d='\"&#9;&#10;\\&#13;&#155;'>" +
                       longest + "yz</a>");
    expect_done(run("quxml outline b.xml"), "/a\t1\t@b=\"" + longest + "y\" @c=\"" + longest +
                                                "\"... @d=\"\\\"\\t\\n\\\\\\r\\xc2\\x9b\"\t\"" + longest +
                                                "y\"...\n");
}

TEST_F(Outline, shows_an_attribute_that_is_always_empty) {
    write("b.xml", "<a b=''><a b=''/></a>");
    expect_done(run("quxml outline b.xml"), "/a\t1\t@b=\"\"\t\n/a/a\t1\t@b=\"\"\t\n");
}

TEST_F(Outline, warns_of_content_that_it_leaves_out) {
    write("b.xml", "<a><!-- --><b><![CDATA[x]]></b></a>");
    const std::string expected = "/a\t1\t\t\n/a/b\t1\t\t\n";
    expect(run("quxml outline b.xml"), 0, expected,
           "b.xml: warning: the outline leaves out 1 CDATA section; \"quxml loss b.xml\" lists them\n");
    expect_done(run("quxml outline --quiet b.xml"), expected);
}

TEST_F(Outline, exits_with_2_for_a_command_line_it_cannot_understand) {
    const std::vector<Refused> all = {
        {"--tree --paths a.xml", "--tree excludes --paths"},
        {"--count a.xml", "there is no option --count"},
        {"--qiet a.xml", "there is no option --qiet; is it --quiet?"},
    };
    for (const Refused& one : all)
        expect(run(std::string("quxml outline ") + one.arguments), 2, "",
               std::string("quxml: ") + one.message + "\nquxml outline --help says more.\n");
}

TEST_F(Outline, ends_quietly_on_a_closed_pipe) {
    expect_done(run("{ quxml outline a.xml; echo $? >code; } | true"), "");
    EXPECT_EQ(written("code"), "0\n");
}

/// As many names of attributes as there are elements, and of children: each costs the same.
TEST_F(Outline, has_many_distinct_paths) {
    constexpr int count = 100000;
    std::string text = "<a>";
    std::string expected;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += "<b a" + number + "='1'/><c" + number + "/>";
    }
    write("many.xml", text + "</a>");
    expect_done(run("quxml outline many.xml | wc -l"), "100002\n");
    expect_done(run("quxml outline many.xml | tail -n 1"), "/a/c99999\t1\t\t\n");
    expect_done(run("quxml outline many.xml | sed -n 2p | cut -f 3 | wc -w"), "100000\n");
}

TEST_F(Outline, is_a_tree_with_dimmed_counts_on_a_terminal) {
    skip_without_terminal();
    if (IsSkipped())
        return;
    write("b.xml", "<a><b c='1'>x</b></a>");
    EXPECT_EQ(show("outline b.xml"), "a \033[2m1\033[0m\r\n  b \033[2m1\033[0m @c=\"1\" \"x\"\r\n");
    EXPECT_EQ(show("outline --paths b.xml"), "/a\t1\t\t\r\n/a/b\t1\t@c=\"1\"\t\"x\"\r\n");
    EXPECT_EQ(show("outline b.xml >out; cat out"), "/a\t1\t\t\r\n/a/b\t1\t@c=\"1\"\t\"x\"\r\n");
    EXPECT_EQ(
        run_on_terminal("cd '" + folder.string() +
                        "'; TERM=xterm NO_COLOR=1; export TERM NO_COLOR; '" QUXML_TOOL "' outline b.xml >&2"),
        "a 1\r\n  b 1 @c=\"1\" \"x\"\r\n");
}

}  // namespace

}  // namespace quxml_test
