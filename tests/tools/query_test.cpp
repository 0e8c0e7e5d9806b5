#include "program.h"

#include <array>
#include <sstream>
#include <string>

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
    for (std::string line; std::getline(lines, line);)
        if (contains(line, "<book>"))
            expected += line.substr(2) + '\n';
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
    expect(run("quxml query /lib/book/ti library.xml"), 1, "", "");
    expect_done(run("quxml query --prefix /lib/book/ti library.xml"),
                "<title>Alpha</title>\n<title>Beta &lt; 3</title>\n");
    expect(run("quxml query --prefix /library/ook library.xml"), 1, "", "");
}

TEST_F(Query, reads_standard_input_for_a_dash_or_no_file) {
    expect_done(run("quxml query //shelf/book/title <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("quxml query //shelf/book/title - <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("cat library.xml | quxml query //shelf/book/title"), "<title>Gamma</title>\n");
}

TEST_F(Query, exits_with_1_and_says_nothing_when_nothing_matches) {
    for (const char* path :
         {"book", "//nothing", "/library/book[7]", "/library/book[@id='7']", "", "' '", "/", "//"}) {
        SCOPED_TRACE(path);
        expect(run(std::string("quxml query \"") + path + "\" library.xml"), 1, "", "");
    }
}

TEST_F(Query, takes_paths_that_look_like_something_else) {
    write("format.xml", "<format><query/></format>");
    expect_done(run("quxml query format format.xml"), "<format>\n  <query/>\n</format>\n");
    expect_done(run("quxml query //query format.xml"), "<query/>\n");
    expect(run("quxml query query format.xml"), 1, "", "");
    expect(run("quxml query '[1]' format.xml"), 1, "", "");
    expect(run("quxml query -- --prefix format.xml"), 1, "", "");
    expect_done(run("quxml query '*' format.xml"), "<format>\n  <query/>\n</format>\n");
}

TEST_F(Query, exits_with_4_for_a_path_it_can_not_understand) {
    const char* number_missing = "A number is missing or can not be read; <= and >= are not known";
    const std::array<Refused, 7> refused{{
        {"library/book[position()>=1]", number_missing},
        {"library/book[last()-x]", number_missing},
        {"library/book[position()=]", number_missing},
        {"library/book[99999999999]", "A number is out of range"},
        {"library/book[@id==1]", "Can at most have one equal sign in attribute queries"},
        {"library/book[title==Alpha]", "Search for child node must contain exactly one equals sign"},
        {"//book[title==Alpha]", "Search for child node must contain exactly one equals sign"},
    }};
    for (const Refused& one : refused) {
        SCOPED_TRACE(one.arguments);
        const std::string reason =
            std::string("quxml: bad query \"") + one.arguments + "\": " + one.message + '\n';
        const std::string command = std::string("quxml query '") + one.arguments + "' ";
        expect(run(command + "library.xml"), 4, "", reason);
        expect(run(command + "<library.xml"), 4, "", reason);
    }
}

}  // namespace

}  // namespace quxml_test
