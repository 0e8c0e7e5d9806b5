#include "program.h"

#include <string>

namespace quxml_test {

namespace {

using Format = Quxml;

constexpr const char* library_text =
    "<library>\n\n<shelf n='1'><book>Tom &amp; Jerry</book><empty></empty></shelf>\n  <shelf "
    "n='2'/></library>";

constexpr const char* formatted_library =
    "<library>\n"
    "  <shelf n=\"1\">\n"
    "    <book>Tom &amp; Jerry</book>\n"
    "    <empty/>\n"
    "  </shelf>\n"
    "  <shelf n=\"2\"/>\n"
    "</library>\n";

constexpr const char* compact_library =
    "<library><shelf n=\"1\"><book>Tom &amp; Jerry</book><empty/></shelf><shelf n=\"2\"/></library>\n";

TEST_F(Format, writes_an_element_a_line) {
    write("library.xml", library_text);
    expect_done(run("quxml format library.xml"), std::string(declaration) + '\n' + formatted_library);
}

TEST_F(Format, leaves_out_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --no-declaration library.xml"), formatted_library);
}

TEST_F(Format, writes_compact_text_and_closes_it_with_one_line_feed) {
    write("library.xml", library_text);
    expect_done(run("quxml format --compact library.xml"), std::string(declaration) + compact_library);
}

TEST_F(Format, writes_compact_text_without_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --compact --no-declaration library.xml"), compact_library);
    expect_done(run("quxml format library.xml --no-declaration --compact --compact"), compact_library);
}

TEST_F(Format, leaves_its_own_output_as_it_is) {
    write("library.xml", library_text);
    expect_done(run("quxml format library.xml | quxml format --compact | quxml format | quxml format"),
                std::string(declaration) + '\n' + formatted_library);
}

/// The library writes attribute values as they are stored.
TEST_F(Format, escapes_attribute_values_so_that_they_read_back_the_same) {
    write("a.xml", "<a x='&lt;&amp;>&quot;&apos;' y='&#10;&#9;&#13; '><b z='\xc3\xa4&amp;amp;'>&lt;</b></a>");
    const std::string escaped =
        "<a x=\"&lt;&amp;>&quot;'\" y=\"&#10;&#9;&#13; \"><b z=\"\xc3\xa4&amp;amp;\">&lt;</b></a>\n";
    expect_done(run("quxml format --compact --no-declaration a.xml"), escaped);
    expect_done(run("quxml format a.xml | quxml format --compact --no-declaration"), escaped);
}

TEST_F(Format, reads_standard_input_for_a_dash_or_no_file) {
    write("library.xml", library_text);
    expect_done(run("quxml format --no-declaration <library.xml"), formatted_library);
    expect_done(run("quxml format --no-declaration - <library.xml"), formatted_library);
    expect_done(run("cat library.xml | quxml format --no-declaration"), formatted_library);
}

TEST_F(Format, reads_files_whose_names_look_like_something_else) {
    for (const char* name : {"-", "--compact", "format", "a b.xml", "\xc3\xa4.xml"})
        write(name, "<a/>");
    expect_done(run("quxml format --no-declaration ./-"), "<a/>\n");
    expect_done(run("quxml format --no-declaration -- --compact"), "<a/>\n");
    expect_done(run("quxml format --no-declaration format"), "<a/>\n");
    expect_done(run("quxml format --no-declaration 'a b.xml'"), "<a/>\n");
    expect_done(run("quxml format --no-declaration \xc3\xa4.xml"), "<a/>\n");
}

TEST_F(Format, reads_and_writes_more_than_any_buffer_holds) {
    write("books.xml", many_books(50000));
    expect_done(run("quxml format --no-declaration books.xml"), many_books(50000));
    expect_done(run("cat books.xml | quxml format --no-declaration - | cat"), many_books(50000));
}

TEST_F(Format, indents_by_tabs_or_any_number_of_blanks_as_it_does_by_two) {
    write("library.xml", library_text);
    for (const char* data : {
             "library.xml",
             QUXML_REPOSITORY "/tests/data/catalog.xml",
             QUXML_REPOSITORY "/tests/data/names.xml",
         }) {
        SCOPED_TRACE(data);
        const std::string format = "quxml format --quiet '" + std::string(data) + "' ";
        const std::string expected = run(format).out;
        expect_done(run(format + "--indent tab | expand -i -t 2"), expected);
        expect_done(run(format + "--indent 2"), expected);
        expect_done(run(format + "--indent 4 | unexpand --first-only -t 4 | expand -i -t 2"), expected);
    }
    expect_done(
        run("quxml format --no-declaration --indent 0 library.xml"),
        "<library>\n<shelf n=\"1\">\n<book>Tom &amp; Jerry</book>\n<empty/>\n</shelf>\n<shelf n=\"2\"/>\n"
        "</library>\n");
}

// ---- format --sorted ----

using FormatSorted = Quxml;

std::string sorted_command(const std::string& text) {
    return "echo '" + text + "' | quxml format --compact --no-declaration --sorted";
}

TEST_F(FormatSorted, puts_children_in_the_order_of_their_names_on_every_level) {
    expect_done(run(sorted_command("<r><b><z/><y/></b><a/><B/></r>")), "<r><B/><a/><b><y/><z/></b></r>\n");
}

TEST_F(FormatSorted, puts_namesakes_in_the_order_of_their_items_as_numbers) {
    expect_done(run(sorted_command("<r><b item=\"10\"/><b item=\"9\"/><a/><b item=\"-1\"/></r>")),
                "<r><a/><b item=\"-1\"/><b item=\"9\"/><b item=\"10\"/></r>\n");
}

TEST_F(FormatSorted, puts_items_that_are_not_numbers_in_the_order_of_their_text) {
    expect_done(run(sorted_command("<r><b item=\"y\"/><b item=\"x\"/><b item=\"2\"/></r>")),
                "<r><b item=\"2\"/><b item=\"x\"/><b item=\"y\"/></r>\n");
}

TEST_F(FormatSorted, leaves_namesakes_with_equal_items_in_document_order) {
    expect_done(
        run(sorted_command("<r><b item=\"1\" n=\"p\"/><b item=\"1\" n=\"q\"/><b item=\"1\" n=\"r\"/></r>")),
        "<r><b item=\"1\" n=\"p\"/><b item=\"1\" n=\"q\"/><b item=\"1\" n=\"r\"/></r>\n");
}

/// The library's own sort reverses them.
TEST_F(FormatSorted, leaves_namesakes_without_items_in_document_order) {
    expect_done(run(sorted_command("<r><b n=\"p\"/><a/><b n=\"q\"/><b n=\"r\"/></r>")),
                "<r><a/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
    expect_done(run(sorted_command("<r><b n=\"p\"/><a item=\"1\"/><b n=\"q\"/><b n=\"r\"/></r>")),
                "<r><a item=\"1\"/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
}

TEST_F(FormatSorted, puts_namesakes_without_items_after_those_with_numbers_and_leaves_attributes_alone) {
    expect_done(run(sorted_command(
                    "<r><b n=\"p\"/><b item=\"2\"/><b item=\"\" n=\"q\"/><b n=\"r\"/><b item=\"1\"/></r>")),
                "<r><b item=\"1\"/><b item=\"2\"/><b n=\"p\"/><b item=\"\" n=\"q\"/><b n=\"r\"/></r>\n");
}

TEST_F(FormatSorted, changes_nothing_when_repeated) {
    write("a.xml",
          "<r><b n=\"p\"/><b item=\"2\"/>\n<c/><b n=\"q\"/><a/><c item=\"x\"/><b "
          "item=\"1\"/><c><e/><d/></c></r>");
    const Result once = run("quxml format --sorted a.xml");
    EXPECT_EQ(once.code, 0);
    EXPECT_TRUE(contains(once.out, "<d/>\n    <e/>")) << once.out;
    expect_done(run("quxml format --sorted a.xml | quxml format --sorted"), once.out);
}

TEST_F(FormatSorted, exits_with_3_for_items_beyond_the_range_of_numbers) {
    write("a.xml", "<r><b item='99999999999'/><b item='1'/></r>");
    expect(run("quxml format --sorted a.xml"), 3, "",
           "quxml: a.xml: cannot be sorted: an item is a number out of range\n");
    EXPECT_EQ(run("quxml format a.xml").code, 0);
}

}  // namespace

}  // namespace quxml_test
