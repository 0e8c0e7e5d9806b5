// SPDX-License-Identifier: MIT
#include "program.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quxml_test {

namespace {

class Query : public Quxml {
protected:
    Query() {
        write("library.xml",
              "<library>"
              "<book id='1' item='2'><title>Alpha</title></book>"
              "<book id='2' item='1'><title>Beta &lt; 3</title></book>"
              "<shelf><book id='3'><title>Gamma</title></book></shelf>"
              "</library>");
    }
};

TEST_F(Query, writes_each_match_as_formatted_text_without_a_declaration) {
    expect_done(run("quxml query /library/book library.xml"),
                "<book id=\"1\" item=\"2\">\n  <title>Alpha</title>\n</book>\n"
                "<book id=\"2\" item=\"1\">\n  <title>Beta &lt; 3</title>\n</book>\n");
}

TEST_F(Query, understands_predicates) {
    expect_done(run("quxml query \"/library/book[@id='2']/title\" library.xml"),
                "<title>Beta &lt; 3</title>\n");
    expect_done(run("quxml query '/library/book[2]/title' library.xml"), "<title>Alpha</title>\n");
    expect_done(run("quxml query '/library/book[position()=2]/title' library.xml"),
                "<title>Beta &lt; 3</title>\n");
    expect_done(run("quxml query \"/library/book[title='Alpha'][last()]/title\" library.xml"),
                "<title>Alpha</title>\n");
}

TEST_F(Query, writes_text_that_is_a_match_on_a_line_of_its_own) {
    expect_done(run("quxml query //title/ library.xml"), "Alpha\nBeta &lt; 3\nGamma\n");
}

TEST_F(Query, writes_matches_inside_matches_in_document_order) {
    write("a.xml", "<a><b><c>x</c></b><d/></a>");
    expect_done(run("quxml query '//*' a.xml"),
                "<a>\n  <b>\n    <c>x</c>\n  </b>\n  <d/>\n</a>\n"
                "<b>\n  <c>x</c>\n</b>\n"
                "<c>x</c>\n"
                "x\n"
                "<d/>\n");
}

TEST_F(Query, compares_attribute_values_as_they_are_read_and_escapes_them_once_when_writing) {
    write("a.xml", "<a><b x='&lt;'><c y='&amp;'/></b></a>");
    expect_done(run("quxml query \"a/b[@x='<']\" a.xml"), "<b x=\"&lt;\">\n  <c y=\"&amp;\"/>\n</b>\n");
    expect_done(run("quxml query 'a//*' a.xml"),
                "<b x=\"&lt;\">\n  <c y=\"&amp;\"/>\n</b>\n<c y=\"&amp;\"/>\n");
}

TEST_F(Query, writes_many_matches_in_document_order) {
    write("books.xml", many_books(20000));
    const std::string all = many_books(20000);
    std::string expected;
    std::istringstream lines(all);
    for (std::string line; std::getline(lines, line);) {
        if (contains(line, "<book>"))
            expected += line.substr(2) + '\n';
    }
    expect_done(run("quxml query /catalog/book books.xml"), expected);
    expect_done(run("quxml query //book books.xml | cat"), expected);
}

TEST_F(Query, finds_everything_in_the_deepest_document_that_can_be_read) {
    const int depth = 250;
    std::string text;
    std::string ends;
    for (int i = 0; i < depth; ++i) {
        text += "<d>";
        ends += "</d>";
    }
    write("deep.xml", text + "<leaf/>" + ends);
    expect_done(run("quxml query //leaf deep.xml"), "<leaf/>\n");
    expect_done(run("quxml query '//*' deep.xml | grep -c '^<d>'"), "250\n");
}

TEST_F(Query, prefix_lets_a_name_stand_for_all_that_begin_with_it) {
    expect(run("quxml query --quiet /lib/book/ti library.xml"), 1, "", "");
    expect_done(run("quxml query --prefix /lib/book/ti library.xml"),
                "<title>Alpha</title>\n<title>Beta &lt; 3</title>\n");
    expect(run("quxml query --quiet --prefix /library/ook library.xml"), 1, "", "");
}

TEST_F(Query, reads_standard_input_for_a_dash_or_no_file) {
    expect_done(run("quxml query //shelf/book/title <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("quxml query //shelf/book/title - <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("cat library.xml | quxml query //shelf/book/title"), "<title>Gamma</title>\n");
}

TEST_F(Query, exits_with_1_when_nothing_matches_and_says_no_more_than_what_may_be_the_reason) {
    const std::vector<std::pair<const char*, const char*>> all = {
        {"//nothing", "nothing in the document is called nothing"},
        {"/library/nothing", "/library has 3 children: book, shelf; none is called nothing"},
        {"book",
         "step 1, book: the first step names the root element itself, not a child of it\n"
         "quxml: note: the root element is called library, not book"},
        {"/library/book[7]",
         "step 2, book[7]: this is not a position; for that, write [position()=7]\n"
         "quxml: note: /library/book matches 2 nodes; none has \"7\" as its attribute item; there is \"2\", "
         "\"1\""},
        {"", "step 1, (empty): a name is missing here; any name is *"},
        {"/", "step 1, (empty): a name is missing here; any name is *"},
    };
    for (const auto& [path, note] : all) {
        SCOPED_TRACE(path);
        const std::string query = std::string("quxml query \"") + path + "\" library.xml";
        expect(run(query + " --quiet"), 1, "", "");
        expect(run(query), 1, "", std::string("quxml: note: ") + note + '\n');
    }
}

TEST_F(Query, takes_paths_that_look_like_something_else) {
    write("format.xml", "<format><query/></format>");
    expect_done(run("quxml query format format.xml"), "<format>\n  <query/>\n</format>\n");
    expect_done(run("quxml query //query format.xml"), "<query/>\n");
    expect(run("quxml query --quiet query format.xml"), 1, "", "");
    expect(run("quxml query --quiet '[1]' format.xml"), 1, "", "");
    expect(run("quxml query --quiet -- --prefix format.xml"), 1, "", "");
    expect_done(run("quxml query '*' format.xml"), "<format>\n  <query/>\n</format>\n");
}

TEST_F(Query, exits_with_4_for_a_path_it_cannot_understand_and_names_step_and_predicate) {
    const std::string offset = "after last() only a number with its sign can stand, as in [last()-1]";
    const char* two_signs = "exactly one equal sign can stand in the predicate of a child's text";
    const std::vector<std::pair<const char*, std::string>> refused{
        {"library/book[position()>=1]",
         "step 2, [position()>=1]: >= is not known; use > and the number before, and [last()] for the last "
         "node, which > leaves out"},
        {"library/book[position()<=1]",
         "step 2, [position()<=1]: <= is not known; use < and the next number"},
        {"library/book[last()-x]", "step 2, [last()-x]: " + offset},
        {"library/book[last() - 1]", "step 2, [last() - 1]: " + offset},
        {"library/book[last()-99999999999]", "step 2, [last()-99999999999]: the number is too large"},
        {"library/book[position()=]", "step 2, [position()=]: a number is missing after <, > or ="},
        {"library/book[position()<x]", "step 2, [position()<x]: a number is missing after <, > or ="},
        {"library/book[position()>]", "step 2, [position()>]: a number is missing after <, > or ="},
        {"library/book[position()=99999999999]", "step 2, [position()=99999999999]: the number is too large"},
        {"library/book[99999999999]",
         "step 2, [99999999999]: the number is too large; after // it would be compared as text"},
        {"library/book[@id==1]",
         "step 2, [@id==1]: at most one equal sign can stand in the predicate of an attribute"},
        {"library/book[title==Alpha]", "step 2, [title==Alpha]: " + std::string(two_signs)},
        {"//book[title==Alpha]", "step 1, [title==Alpha]: " + std::string(two_signs)},
        {"library//book[a=b=c]/title", "step 2, [a=b=c]: " + std::string(two_signs) +
                                           "; for a value with more write [a=$V] and --arg V=VALUE"},
        {"library/book[@id][1][position()=]", "step 2, [position()=]: a number is missing after <, > or ="},
    };
    for (const auto& [path, message] : refused) {
        SCOPED_TRACE(path);
        const std::string said = std::string("quxml: bad query \"") + path + "\": " + message +
                                 "\n\"quxml explain\" shows how a path is taken; put it in quotes.\n";
        const std::string command = std::string("quxml query '") + path + "' ";
        expect(run(command + "library.xml"), 4, "", said);
        expect(run(command + "<library.xml"), 4, "", said);
        expect(run(command + "--count library.xml"), 4, "", said);
    }
}

TEST_F(Query, distinguishes_a_bad_query_from_no_match_whatever_the_document_holds) {
    write("other.xml", "<other/>");
    EXPECT_EQ(run("quxml query 'library/book[position()>=1]' other.xml").code, 4);
    EXPECT_EQ(run("quxml query 'library/book[position()>1]' other.xml").code, 1);
}

// ---- Other output than XML ----

TEST_F(Query, writes_the_texts_of_matches) {
    expect_done(run("quxml query --value //title library.xml"), "Alpha\nBeta < 3\nGamma\n");
    expect_done(run("quxml query --value //title/ library.xml"), "Alpha\nBeta < 3\nGamma\n");
    expect_done(run("quxml query --value //book library.xml"), "\n\n\n");
    expect(run("quxml query --quiet --value //nothing library.xml"), 1, "", "");
}

TEST_F(Query, writes_attributes_of_the_matches_that_have_them) {
    expect_done(run("quxml query --attribute id //book library.xml"), "1\n2\n3\n");
    expect_done(run("quxml query --attribute item //book library.xml"), "2\n1\n");
    expect(run("quxml query --quiet --attribute nothing //book library.xml"), 1, "", "");
    expect(run("quxml query --quiet --attribute id //title/ library.xml"), 1, "", "");
    write("a.xml", "<a><b c=''/><b c='&lt;&#10;'/></a>");
    expect_done(run("quxml query --attribute c //b a.xml"), "\n<\n\n");
}

TEST_F(Query, writes_a_path_to_each_match_that_selects_nothing_else) {
    expect_done(
        run("quxml query --path //title library.xml"),
        "/library/book[position()=1]/title\n/library/book[position()=2]/title\n/library/shelf/book/title\n");
    write("a.xml", "<a><b/><B/><c>x</c><b><b/></b></a>");
    expect_done(run("quxml query --path '//*' a.xml"),
                "/a\n/a/b[position()=1]\n/a/B[position()=2]\n/a/c\n/a/c/\n/a/b[position()=3]\n/a/"
                "b[position()=3]/b\n");
    for (const char* file : {"a.xml", "library.xml"}) {
        const std::string every_path_selects_its_node =
            "quxml query --path '//*' FILE | while read -r path; do\n"
            "  [ \"$(quxml query --path \"$path\" FILE)\" = \"$path\" ] || echo \"$path\"\n"
            "done";
        std::string command = every_path_selects_its_node;
        for (std::size_t at = command.find("FILE"); at != std::string::npos; at = command.find("FILE"))
            command.replace(at, 4, file);
        expect_done(run(command), "");
    }
}

TEST_F(Query, counts_matches) {
    expect_done(run("quxml query --count //book library.xml"), "3\n");
    expect(run("quxml query --quiet --count //nothing library.xml"), 1, "0\n", "");
}

TEST_F(Query, closes_matches_with_zero_bytes) {
    write("a.xml", "<a><b c='1&#10;2'>x\ny</b><b c='3'><d/></b></a>");
    using std::string_literals::operator""s;
    expect_done(run("quxml query -0 //b a.xml"), "<b c=\"1&#10;2\">x\ny</b>\0<b c=\"3\">\n  <d/>\n</b>\0"s);
    expect_done(run("quxml query --null --value //b a.xml"), "x\ny\0\0"s);
    expect_done(run("quxml query --null --attribute c //b a.xml"),
                "1\n2\0"
                "3\0"s);
    expect_done(run("quxml query --null --path //b a.xml"), "/a/b[position()=1]\0/a/b[position()=2]\0"s);
    expect_done(run("quxml query --null --count //b a.xml"), "2\0"s);
}

TEST_F(Query, exits_with_2_for_more_than_one_kind_of_output) {
    for (const char* options : {"--value --count", "--path --value", "--attribute id --path"}) {
        const Result result = run(std::string("quxml query ") + options + " //book library.xml");
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(contains(result.err, " excludes --")) << result.err;
    }
}

TEST_F(Query, value_refuses_with_3_what_it_does_not_see) {
    write("cdata.xml", "<a><b>x</b><b><![CDATA[y]]></b><c>1<d k='&#38;'>z</d></c><e><!-- --></e></a>");
    expect(run("quxml query --quiet --value //b cdata.xml"), 3, "",
           "quxml: cdata.xml: not all of the value of /a/b[position()=2] is read: queries do not see its "
           "CDATA section; "
           "--lossy writes the rest\n");
    expect(run("quxml query --quiet --value /a/c cdata.xml"), 3, "",
           "quxml: cdata.xml: not all of the value of /a/c is read: queries do not see its text beside other "
           "content; "
           "--lossy writes the rest\n");
    expect_done(run("quxml query --quiet --lossy --value //b cdata.xml"), "x\n\n");
    expect_done(run("quxml query --quiet --value '/a/b[position()<2]' cdata.xml"), "x\n");
    expect_done(run("quxml query --quiet --value /a/c/d cdata.xml"), "z\n");
    expect_done(run("quxml query --quiet --value /a/e cdata.xml"), "\n");
    expect_done(run("quxml query --quiet --count //b cdata.xml"), "2\n");
}

}  // namespace

}  // namespace quxml_test
