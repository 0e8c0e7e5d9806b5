// SPDX-License-Identifier: MIT
#include <quxml/Document.h>

#include <array>
#include <initializer_list>
#include <random>
#include <string>

#include "converters.h"
#include "program.h"

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

/// The same, but for what is not white space between elements.
constexpr const char* laid_out_library =
    "<library>\n"
    "  <shelf n='1'>\n"
    "    <book>Tom &amp; Jerry</book>\n"
    "    <empty></empty>\n"
    "  </shelf>\n"
    "  <shelf n='2'/>\n"
    "</library>\n";

/// A document, and what it becomes; the same if it stays as it is.
struct Formatted {
    const char* before;
    const char* after;
};

TEST_F(Format, changes_only_white_space_between_elements) {
    const std::array<Formatted, 32> all{{
        {"<a/>", "<a/>\n"},
        {"\n\n <a/>\n\n", "<a/>\n"},
        {R"(<?xml version='1.0' encoding="utf-8" ?><a ></a >)",
         "<?xml version='1.0' encoding=\"utf-8\" ?>\n<a ></a >\n"},
        {"<a><b/><b></b></a>", "<a>\n  <b/>\n  <b></b>\n</a>\n"},
        {R"(<a x='1'  y = "2" ><b z='&#65;&apos;'/></a>)",
         "<a x='1'  y = \"2\" >\n  <b z='&#65;&apos;'/>\n</a>\n"},
        {"<a>it's > &#65;</a>", "<a>it's > &#65;</a>\n"},
        {"<a><b><![CDATA[ < ]]></b>\n\n\n</a>", "<a>\n  <b><![CDATA[ < ]]></b>\n</a>\n"},
        // Remarks get lines of their own.
        {"<!--1--><?p 2?><!DOCTYPE a [\n<!ENTITY e 'x'>\n] ><!--3--><a/><!--4--><?p?>",
         "<!--1-->\n<?p 2?>\n<!DOCTYPE a [\n<!ENTITY e 'x'>\n] >\n<!--3-->\n<a/>\n<!--4-->\n<?p?>\n"},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a/>", "<!DOCTYPE a SYSTEM 'a.dtd'>\n<a/>\n"},
        {"<a><b/> <!-- b --><?p?></a>", "<a>\n  <b/>\n  <!-- b -->\n  <?p?>\n</a>\n"},
        {"<a><!-- alone --></a>", "<a>\n  <!-- alone -->\n</a>\n"},
        {"<a><!-- two\n lines --><b/></a>", "<a>\n  <!-- two\n lines -->\n  <b/>\n</a>\n"},
        // Mixed content stays, with everything in it.
        {"<a>x<b><c/><c/></b></a>", "<a>x<b><c/><c/></b></a>\n"},
        {"<a><b>x<c/> <c/></b><b/></a>", "<a>\n  <b>x<c/> <c/></b>\n  <b/>\n</a>\n"},
        {"<a><![CDATA[ ]]><b/><b/></a>", "<a><![CDATA[ ]]><b/><b/></a>\n"},
        {"<a>&#32;<b/><b/></a>", "<a>&#32;<b/><b/></a>\n"},
        {"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;<b/></a>",
         "<!DOCTYPE a [<!ENTITY e '<b/>'>]>\n<a>&e;<b/></a>\n"},
        {"<a>x<!-- y --></a>", "<a>x<!-- y --></a>\n"},
        // So does white space that is alone: it is a text, for the library or for others.
        {"<a>  </a>", "<a>  </a>\n"},
        {"<a><b>\n\n</b><c> \n </c></a>", "<a>\n  <b>\n\n</b>\n  <c> \n </c>\n</a>\n"},
        {"<a xml:space='preserve'><b><c/></b> <b/></a>", "<a xml:space='preserve'><b><c/></b> <b/></a>\n"},
        {R"(<a><b xml:space = "preserve"> <c/></b><b/></a>)",
         "<a>\n  <b xml:space = \"preserve\"> <c/></b>\n  <b/>\n</a>\n"},
        {"<a xml:space='default'><b/></a>", "<a xml:space='default'>\n  <b/>\n</a>\n"},
        {"<a x=' xml:space=' xml:space='default'><b/></a>",
         "<a x=' xml:space=' xml:space='default'>\n  <b/>\n</a>\n"},
        // What looks like one within the value of another does not count.
        {R"(<a b=" xml:space='default'" xml:space="preserve"><c/> <c/></a>)",
         "<a b=\" xml:space='default'\" xml:space=\"preserve\"><c/> <c/></a>\n"},
        {R"(<a b=" xml:space='preserve'" xml:space="default"><c/> <c/></a>)",
         "<a b=\" xml:space='preserve'\" xml:space=\"default\">\n  <c/>\n  <c/>\n</a>\n"},
        {"<!DOCTYPE a [<!ATTLIST a xml:space CDATA 'preserve'>]><a> <b/></a>",
         "<!DOCTYPE a [<!ATTLIST a xml:space CDATA 'preserve'>]>\n<a> <b/></a>\n"},
        // Lines inside of tags stay where they are.
        {"<a><b x='1'\n   y='2'\n   z='3'\n/><c/></a>",
         "<a>\n  <b x='1'\n   y='2'\n   z='3'\n/>\n  <c/>\n</a>\n"},
        {"<p:a xmlns:p='u'><p:b p:x='1'/></p:a>", "<p:a xmlns:p='u'>\n  <p:b p:x='1'/>\n</p:a>\n"},
        // The line ends are those of the document.
        {"<a>\r\n<b><c/></b>\r\n</a>", "<a>\r\n  <b>\r\n    <c/>\r\n  </b>\r\n</a>\r\n"},
        {"<a>\r<b/></a>", "<a>\r  <b/>\r</a>\r"},
        {"\xef\xbb\xbf<a> <b/></a>", "\xef\xbb\xbf<a>\n  <b/>\n</a>\n"},
    }};
    for (const Formatted& one : all) {
        SCOPED_TRACE(one.before);
        write("a.xml", one.before);
        expect_done(run("quxml format a.xml"), one.after);
        expect_done(run("quxml format a.xml | quxml format"), one.after);
        expect_done(run("quxml format --compact a.xml | quxml format"), one.after);
    }
}

TEST_F(Format, writes_everything_on_one_line) {
    write("a.xml",
          "<?xml version='1.0'?>\n<!-- x -->\n<a>\n  <b>\n  x </b>\n  <!-- y -->\n</a>\n<!-- z -->\n");
    expect_done(run("quxml format --compact a.xml"),
                "<?xml version='1.0'?><!-- x --><a><b>\n  x </b><!-- y --></a><!-- z -->\n");
    expect_done(run("quxml format --compact --no-declaration a.xml"),
                "<!-- x --><a><b>\n  x </b><!-- y --></a><!-- z -->\n");
}

TEST_F(Format, indents_by_tabs_or_any_number_of_blanks) {
    write("a.xml", "<a>\n  <b>\n      <c/></b></a>");
    expect_done(run("quxml format --indent tab a.xml"), "<a>\n\t<b>\n\t\t<c/>\n\t</b>\n</a>\n");
    expect_done(run("quxml format --indent 0 a.xml"), "<a>\n<b>\n<c/>\n</b>\n</a>\n");
    expect_done(run("quxml format --indent 3 a.xml"), "<a>\n   <b>\n      <c/>\n   </b>\n</a>\n");
}

TEST_F(Format, keeps_other_encodings) {
    if (!has_converters())
        GTEST_SKIP() << "this machine has no converters of encodings";
    write("a.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xe4 --><a><b x='\xe4'>\xe4</b></a>");
    expect_done(
        run("quxml format a.xml"),
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!-- \xe4 -->\n<a>\n  <b x='\xe4'>\xe4</b>\n</a>\n");
    expect(run("quxml format --no-declaration a.xml"), 3, "",
           "quxml: a.xml: not written: the result would not be read back as it is\n");
    expect_done(
        run("printf '<a><b/><!-- \\303\\244 --></a>' | iconv -t UTF-16 | quxml format | iconv -f UTF-16"),
        "<a>\n  <b/>\n  <!-- \xc3\xa4 -->\n</a>\n");
}

TEST_F(Format, changes_files_without_losing_anything) {
    write("a.xml", "<!-- x -->\n<a><b/></a>");
    expect(run("quxml format --diff a.xml"), 1,
           "--- a.xml\n+++ a.xml\n@@ -1,2 +1,4 @@\n <!-- x -->\n-<a><b/></a>\n\\ No newline at end of file\n"
           "+<a>\n+  <b/>\n+</a>\n",
           "");
    expect_done(run("quxml format -i a.xml"), "");
    EXPECT_EQ(written("a.xml"), "<!-- x -->\n<a>\n  <b/>\n</a>\n");
    expect_done(run("quxml format --diff a.xml"), "");
}

TEST_F(Format, reads_standard_input_for_a_dash_or_no_file) {
    write("library.xml", library_text);
    expect_done(run("quxml format --no-declaration <library.xml"), laid_out_library);
    expect_done(run("quxml format --no-declaration - <library.xml"), laid_out_library);
    expect_done(run("cat library.xml | quxml format --no-declaration"), laid_out_library);
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

/// A document whose elements, remarks, texts and white space are chosen at random.
class RandomDocument {
public:
    explicit RandomDocument(unsigned seed) : random(seed) {
        text = choose({"", "<?xml version='1.0'?>", "<?xml version=\"1.0\"?>\n"}) +
               choose({"", "<!-- x -->", "<?p?>\n"});
        add_element(0);
        text += choose({"", "\n", "\n<!-- end -->"});
    }

    const std::string& get() const { return text; }

private:
    std::string choose(std::initializer_list<const char*> choices) {
        return *(choices.begin() + std::uniform_int_distribution<std::size_t>(0, choices.size() - 1)(random));
    }

    void add_element(int level) {
        const std::string name = choose({"a", "b", "c", "p:d"});
        text += '<' + name +
                choose({"", " ", " item='1'", " item=\"2\"", " item=\"10\"", "\n  x = '&lt;\"'",
                        " xml:space='preserve'"});
        const std::string content = choose({"empty", "text", "items", "items", "items", "mixed"});
        if (content == "empty" || level == 5) {
            text += choose({"/>", " />"});
            return;
        }
        text += '>';
        if (content == "text")
            text += choose({"x", " ", "\n", "\nit's", "&amp;", "<![CDATA[ x ]]>", ""});
        else
            add_items(level, content == "mixed");
        text += "</" + name + choose({">", " >"});
    }

    void add_items(int level, bool is_mixed) {
        const int count = std::uniform_int_distribution<int>(1, 5)(random);
        for (int i = 0; i != count; ++i) {
            add_space();
            if (choose({"element", "element", "remark"}) == "element")
                add_element(level + 1);
            else
                text += choose({"<!-- r -->", "<!--\ns\n-->", "<?p?>"});
            if (is_mixed && i == 0)
                text += choose({"x", "&#32;", "<![CDATA[]]>"});
        }
        add_space();
    }

    void add_space() { text += choose({"", "", " ", "\n", "\n  ", "\n\n\t"}); }

    std::mt19937 random;
    std::string text;
};

/// A document without white space between its elements, that which is alone in an element excepted.
std::string without_space(const std::string& text) {
    std::string rest;
    std::size_t done = 0;
    bool was_start_tag = false;
    for (std::size_t tag = text.find('<'); tag != std::string::npos; tag = text.find('<', done)) {
        const std::string before = text.substr(done, tag - done);
        const bool is_alone = was_start_tag && text.compare(tag, 2, "</") == 0;
        if (is_alone || before.find_first_not_of(" \n\t") != std::string::npos)
            rest += before;
        const bool is_section = text.compare(tag, 9, "<![CDATA[") == 0;
        done = is_section ? text.find("]]>", tag) + 3 : text.find('>', tag) + 1;
        rest += text.substr(tag, done - tag);
        was_start_tag = std::string("/!?").find(text[tag + 1]) == std::string::npos && text[done - 2] != '/';
    }
    return rest;
}

std::string get_tree(const std::string& text) {
    return quxml::from_string(text, false)->write_to_string();
}

TEST_F(Format, keeps_random_documents_but_for_white_space) {
    for (unsigned seed = 0; seed != 100; ++seed) {
        const std::string text = RandomDocument(seed).get();
        SCOPED_TRACE(text);
        write("a.xml", text);
        const Result once = run("quxml format a.xml | tee b.xml");
        const Result other = run("quxml format b.xml; quxml format --compact a.xml >c.xml");
        EXPECT_EQ(once.err + other.err, "");
        EXPECT_EQ(without_space(once.out), without_space(text));
        EXPECT_EQ(without_space(written("c.xml")), without_space(text));
        EXPECT_EQ(get_tree(once.out), get_tree(text));
        EXPECT_EQ(other.out, once.out);
    }
}

/// Of what is not lost, the library writes everything; so there is but one form.
TEST_F(Format, is_canonical_where_nothing_is_listed_as_lost) {
    const std::string standard = declaration;
    int canonical = 0;
    for (unsigned seed = 0; seed != 100; ++seed) {
        write("a.xml", RandomDocument(seed).get());
        // What the library has written loses nothing more.
        run("quxml format --canonical --quiet a.xml >b.xml");
        for (const char* file : {"a.xml", "b.xml"}) {
            const Result loss = run("quxml loss " + std::string(file));
            if (!loss.out.empty())
                continue;
            ++canonical;
            SCOPED_TRACE(written(file));
            EXPECT_EQ(run("quxml format " + std::string(file)).out,
                      run("quxml format --canonical " + std::string(file)).out);
        }
        expect_done(run("quxml format b.xml"), written("b.xml"));
    }
    EXPECT_GT(canonical, 20);
}

// ---- format --canonical ----

using FormatCanonical = Quxml;

TEST_F(FormatCanonical, writes_an_element_a_line) {
    write("library.xml", library_text);
    expect_done(run("quxml format --canonical library.xml"),
                std::string(declaration) + '\n' + formatted_library);
}

TEST_F(FormatCanonical, leaves_out_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --canonical --no-declaration library.xml"), formatted_library);
}

TEST_F(FormatCanonical, writes_compact_text_and_closes_it_with_one_line_feed) {
    write("library.xml", library_text);
    expect_done(run("quxml format --canonical --compact library.xml"),
                std::string(declaration) + compact_library);
}

TEST_F(FormatCanonical, writes_compact_text_without_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --canonical --compact --no-declaration library.xml"), compact_library);
    expect_done(run("quxml format --canonical library.xml --no-declaration --compact --compact"),
                compact_library);
}

TEST_F(FormatCanonical, writes_what_the_library_keeps_and_warns_of_the_rest) {
    write("a.xml", "<?xml version='1.0' encoding='utf-8'?><!-- x --><p:a xmlns:p='u'><![CDATA[x]]></p:a>");
    expect(run("quxml format --canonical a.xml"), 0, std::string(declaration) + "\n<a/>\n",
           "a.xml: warning: left out of the output: 1 comment, 1 CDATA section, 1 prefix, 1 namespace "
           "declaration; "
           "\"quxml loss a.xml\" lists them\n");
    EXPECT_EQ(run("quxml format -i --canonical a.xml").code, 3);
    expect_done(run("quxml format -i --canonical --lossy --quiet a.xml"), "");
    EXPECT_EQ(written("a.xml"), std::string(declaration) + "\n<a/>\n");
}

TEST_F(FormatCanonical, leaves_its_own_output_as_it_is) {
    write("library.xml", library_text);
    expect_done(run("quxml format --canonical library.xml | quxml format --canonical --compact | quxml "
                    "format --canonical | quxml format --canonical"),
                std::string(declaration) + '\n' + formatted_library);
}

/// The library writes attribute values as they are stored.
TEST_F(FormatCanonical, escapes_attribute_values_so_that_they_read_back_the_same) {
    write("a.xml", "<a x='&lt;&amp;>&quot;&apos;' y='&#10;&#9;&#13; '><b z='\xc3\xa4&amp;amp;'>&lt;</b></a>");
    const std::string escaped =
        "<a x=\"&lt;&amp;>&quot;'\" y=\"&#10;&#9;&#13; \"><b z=\"\xc3\xa4&amp;amp;\">&lt;</b></a>\n";
    expect_done(run("quxml format --canonical --compact --no-declaration a.xml"), escaped);
    expect_done(run("quxml format --canonical a.xml | quxml format --canonical --compact --no-declaration"),
                escaped);
}

TEST_F(FormatCanonical, indents_by_tabs_or_any_number_of_blanks_as_it_does_by_two) {
    write("library.xml", library_text);
    for (const char* data : {
             "library.xml",
             QUXML_REPOSITORY "/tests/data/catalog.xml",
             QUXML_REPOSITORY "/tests/data/names.xml",
         }) {
        SCOPED_TRACE(data);
        const std::string format = "quxml format --canonical --quiet '" + std::string(data) + "' ";
        const std::string expected = run(format).out;
        expect_done(run(format + "--indent tab | expand -i -t 2"), expected);
        expect_done(run(format + "--indent 2"), expected);
        expect_done(run(format + "--indent 4 | unexpand --first-only -t 4 | expand -i -t 2"), expected);
    }
    expect_done(
        run("quxml format --canonical --no-declaration --indent 0 library.xml"),
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
    expect_done(run(sorted_command(R"(<r><b item="10"/><b item="9"/><a/><b item="-1"/></r>)")),
                "<r><a/><b item=\"-1\"/><b item=\"9\"/><b item=\"10\"/></r>\n");
}

TEST_F(FormatSorted, puts_items_that_are_not_numbers_in_the_order_of_their_text) {
    expect_done(run(sorted_command(R"(<r><b item="y"/><b item="x"/><b item="2"/></r>)")),
                "<r><b item=\"2\"/><b item=\"x\"/><b item=\"y\"/></r>\n");
}

TEST_F(FormatSorted, leaves_namesakes_with_equal_items_in_document_order) {
    expect_done(run(sorted_command(R"(<r><b item="1" n="p"/><b item="1" n="q"/><b item="1" n="r"/></r>)")),
                "<r><b item=\"1\" n=\"p\"/><b item=\"1\" n=\"q\"/><b item=\"1\" n=\"r\"/></r>\n");
}

/// The library's own sort reverses them.
TEST_F(FormatSorted, leaves_namesakes_without_items_in_document_order) {
    expect_done(run(sorted_command(R"(<r><b n="p"/><a/><b n="q"/><b n="r"/></r>)")),
                "<r><a/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
    expect_done(run(sorted_command(R"(<r><b n="p"/><a item="1"/><b n="q"/><b n="r"/></r>)")),
                "<r><a item=\"1\"/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
}

TEST_F(FormatSorted, puts_namesakes_without_items_after_those_with_numbers_and_leaves_attributes_alone) {
    expect_done(
        run(sorted_command(R"(<r><b n="p"/><b item="2"/><b item="" n="q"/><b n="r"/><b item="1"/></r>)")),
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
