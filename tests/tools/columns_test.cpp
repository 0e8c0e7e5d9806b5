// SPDX-License-Identifier: MIT

// Several values of each match, in columns and as JSON.

#include <string>
#include <utility>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class Columns : public Quxml {
protected:
    Columns() {
        write("a.xml",
              "<a>"
              "<b id='1' n='x'><name>One</name><port>080</port>"
              "<port>81</port></b>"
              "<b id=''><name/></b>"
              "<b>own</b>"
              "</a>");
    }

    /// Whether another program takes a text for JSON, and what it reads of it.
    Result read_as_json(const std::string& command) const {
        return run(command +
                   " | python3 -c 'import json, sys; print(ascii(json.loads(sys.stdin.buffer.read())))'");
    }
};

TEST_F(Columns, have_tabs_between_them_and_stay_where_a_value_is_absent) {
    expect_done(run("quxml query --columns name,@id,port,@n,. //b a.xml"),
                "One\t1\t080\tx\t\n"
                "\t\t\t\t\n"
                "\t\t\t\town\n");
    expect_done(run("quxml query --columns=@id //b a.xml"), "1\n\n\n");
    expect_done(run("quxml query --columns . //port a.xml"), "080\n81\n");
    expect_done(run("quxml query --columns .,@n,name //port/ a.xml"), "080\t\t\n81\t\t\n");
}

TEST_F(Columns, compare_names_exactly) {
    expect_done(run("quxml query --columns Name,@ID //b a.xml | head -n 1"), "\t\n");
    write("b.xml", "<a><x:b y:c='1'>2</x:b></a>");
    EXPECT_EQ(run("quxml query --quiet --columns x:b /a b.xml").out, "2\n");
}

TEST_F(Columns, escape_what_would_break_a_line) {
    write("b.xml", "<a b='1&#9;2&#10;3&#13;4\\5'>&#9;\\n\n</a>");
    expect_done(run("quxml query --columns @b,. /a b.xml"), "1\\t2\\n3\\r4\\\\5\t\\t\\\\n\\n\n");
}

TEST_F(Columns, have_a_header_even_above_nothing) {
    expect_done(run("quxml query --header --columns name,@id,. '/a/b[@n=x]' a.xml"),
                "name\t@id\t.\nOne\t1\t\n");
    expect(run("quxml query --quiet --header --columns name,@id /a/c a.xml"), 1, "name\t@id\n", "");
    expect(run("quxml query --quiet --columns name,@id /a/c a.xml"), 1, "", "");
}

TEST_F(Columns, end_with_zero_bytes_if_wanted) {
    using std::string_literals::operator""s;
    expect_done(run("quxml query -0 --header --columns @id,name //b a.xml"),
                "@id\tname\0001\tOne\0\t\0\t\0"s);
    expect_done(run("quxml query --null --json --columns @n '/a/b[@n]' a.xml"), "[\n  {\"@n\": \"x\"}\n]\0"s);
    expect(run("quxml query --null --json --quiet /a/c a.xml"), 1, "[]\0"s, "");
}

TEST_F(Columns, are_keys_of_objects_with_null_for_what_is_absent_and_no_numbers) {
    expect_done(run("quxml query --json --columns name,@id,port,. //b a.xml"),
                "[\n"
                "  {\"name\": \"One\", \"@id\": \"1\", \"port\": \"080\", \".\": \"\"},\n"
                "  {\"name\": \"\", \"@id\": \"\", \"port\": null, \".\": \"\"},\n"
                "  {\"name\": null, \"@id\": null, \"port\": null, \".\": \"own\"}\n"
                "]\n");
    expect(run("quxml query --quiet --json --columns name /a/c a.xml"), 1, "[]\n", "");
}

TEST_F(Columns, json_of_matches_has_name_path_attributes_and_text) {
    expect_done(run("quxml query --json '/a/b[position()=1]' a.xml"),
                "[\n  {\"name\": \"b\", \"path\": \"/a/b[position()=1]\", "
                "\"attributes\": {\"id\": \"1\", \"n\": \"x\"}, \"text\": \"\"}\n]\n");
    expect_done(run("quxml query --json '/a/b[last()]/' a.xml"),
                "[\n  {\"name\": \"\", \"path\": \"/a/b[position()=3]/\", \"attributes\": {}, \"text\": "
                "\"own\"}\n]\n");
    expect(run("quxml query --quiet --json /a/c a.xml"), 1, "[]\n", "");
}

TEST_F(Columns, json_of_one_value_holds_strings) {
    expect_done(run("quxml query --json --value //port a.xml"), "[\n  \"080\",\n  \"81\"\n]\n");
    expect_done(run("quxml query --json --attribute id //b a.xml"), "[\n  \"1\",\n  \"\"\n]\n");
    expect_done(run("quxml query --json --path //name a.xml"),
                "[\n  \"/a/b[position()=1]/name\",\n  \"/a/b[position()=2]/name\"\n]\n");
    expect_done(run("quxml query --json --count //b a.xml"), "3\n");
}

TEST_F(Columns, json_escapes_control_characters_quotes_and_backslashes) {
    write("b.xml",
          "<a b='&#9;&#10;&#13;\"\\/&#127;&#128;&#159;&#160;\xc3\xa4\xf0\x9f\x98\x80'>\xe2\x82\xac&lt;</a>");
    expect_done(run("quxml query --json --columns @b,. /a b.xml"),
                "[\n  {\"@b\": \"\\t\\n\\r\\\"\\\\/\\u007f\\u0080\\u009f\xc2\xa0\xc3\xa4\xf0\x9f\x98\x80\", "
                "\".\": \"\xe2\x82\xac<\"}\n]\n");
    if (run("command -v python3").code != 0)
        GTEST_SKIP() << "there is no python3";
    expect_done(read_as_json("quxml query --json --columns @b,. /a b.xml"),
                "[{'@b': '\\t\\n\\r\"\\\\/\\x7f\\x80\\x9f\\xa0\\xe4\\U0001f600', '.': '\\u20ac<'}]\n");
    expect_done(
        read_as_json("quxml query --json '//*' a.xml | wc -c >size; quxml query --json /a/b/port a.xml"),
        "[{'name': 'port', 'path': '/a/b[position()=1]/port[position()=1]', 'attributes': {}, 'text': "
        "'080'}, {'name': 'port', 'path': '/a/b[position()=1]/port[position()=2]', 'attributes': {}, "
        "'text': '81'}]\n");
}

TEST_F(Columns, are_written_of_many_matches) {
    write("books.xml", many_books(20000));
    expect_done(run("quxml query --columns .,@x //book books.xml | tail -n 1"),
                "Nuts & bolts, volume 19999\t\n");
    expect_done(run("quxml query --columns . //book books.xml | wc -l"), "20000\n");
    expect_done(run("quxml query --json --value //book books.xml | wc -l"), "20002\n");
    expect_done(run("{ quxml query --json //book books.xml; echo $? >code; } | head -c 1"), "[");
    EXPECT_EQ(written("code"), "0\n");
}

/// As `--value` does.
TEST_F(Columns, refuse_with_3_texts_that_are_not_read_whole) {
    write("c.xml", "<a><b x='1'><c><![CDATA[y]]></c><d>z</d></b></a>");
    const std::string message =
        "quxml: c.xml: not all of the value of /a/b/c is read: queries do not see its CDATA section; "
        "--lossy writes the rest\n";
    for (const char* options :
         {"--columns @x,c /a/b", "--json --columns c /a/b", "--json /a/b/c", "--json --value /a/b/c"})
        expect(run(std::string("quxml query --quiet ") + options + " c.xml"), 3, "", message);
    expect_done(run("quxml query --quiet --columns @x,d,. /a/b c.xml"), "1\tz\t\n");
    expect_done(run("quxml query --quiet --lossy --columns @x,c /a/b c.xml"), "1\t\n");
    expect_done(run("quxml query --quiet --json --path /a/b/c c.xml"), "[\n  \"/a/b/c\"\n]\n");
    expect_done(run("quxml query --quiet --json --count /a/b/c c.xml"), "1\n");
}

TEST_F(Columns, exit_with_2_for_what_is_not_a_column_and_for_contradictions) {
    const std::vector<Refused> all = {
        {"--columns a,,b", "--columns: \"\" is not a column: write NAME, @NAME or a dot"},
        {"--columns ''", "--columns: \"\" is not a column: write NAME, @NAME or a dot"},
        {"--columns @", "--columns: \"@\" is not a column: write NAME, @NAME or a dot"},
        {"--columns 'a, b'", "--columns: \" b\" is not a column: write NAME, @NAME or a dot"},
        {"--columns a/b", "--columns: \"a/b\" is not a column: write NAME, @NAME or a dot"},
        {"--columns a,@b,a", "--columns: \"a\" is given more than once"},
        {"--columns a --value", "--value excludes --columns"},
        {"--columns a --count", "--count excludes --columns"},
        {"--columns a --path", "--path excludes --columns"},
        {"--columns a --attribute b", "--attribute excludes --columns"},
        {"--header", "--header requires --columns"},
        {"--columns a --header --json", "--json excludes --header"},
        {"--columns=", "--columns=: a value is missing after the equal sign"},
    };
    for (const Refused& one : all) {
        SCOPED_TRACE(one.arguments);
        expect(run(std::string("quxml query ") + one.arguments + " //b a.xml"), 2, "",
               std::string("quxml: ") + one.message + "\nquxml query --help says more.\n");
    }
}

}  // namespace

}  // namespace quxml_test
