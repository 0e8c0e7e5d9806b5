// SPDX-License-Identifier: MIT
#include "program.h"

#include <array>
#include <string>

namespace quxml_test {

namespace {

using Loss = Quxml;

struct Lost {
    const char* text;
    const char* losses;  // without the file's name
};

TEST_F(Loss, lists_each_thing_with_its_place) {
    const std::array<Lost, 36> all{{
        {"<a><!-- x --></a>", ":1:4: comment: <!-- x -->\n"},
        {"<?xml version='1.0'?>\n<!-- x -->\n<a/>\n <!-- y -->\n",
         ":2:1: comment: <!-- x -->\n:4:2: comment: <!-- y -->\n"},
        {"<a><?p x?></a>", ":1:4: processing instruction: <?p x?>\n"},
        {"<?p x?><a/>", ":1:1: processing instruction: <?p x?>\n"},
        {"<a><![CDATA[x]]></a>", ":1:4: CDATA section: <![CDATA[x]]>\n"},
        {"<!DOCTYPE a [<!ELEMENT a ANY><!-- x -->]><a/>",
         ":1:1: DOCTYPE: <!DOCTYPE a [<!ELEMENT a ANY><!-- x -->]>\n"},
        {"<!DOCTYPE a SYSTEM 'a.dtd'>\n<a/>", ":1:1: DOCTYPE: <!DOCTYPE a SYSTEM 'a.dtd'>\n"},
        {"<a>x<b/></a>", ":1:4: text beside other content: x\n"},
        {"<a>\n  x &amp; y\n  <b/>\n</a>", ":1:4: text beside other content:    x &amp; y   \n"},
        {"<a>x<b/>y<b/>z</a>",
         ":1:4: text beside other content: x\n:1:9: text beside other content: y\n:1:14: text beside other "
         "content: z\n"},
        {"<a><b/> <b/></a>", ":1:8: white space:  \n"},
        {"<a>\n \n</a>", ":1:4: white space:    \n"},
        {"<a>&#10;</a>", ":1:4: white space: &#10;\n"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>",
         ":1:1: DOCTYPE: <!DOCTYPE a [<!ENTITY e 'x'>]>\n:1:34: entity reference: &e;\n"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a b='&e;'/>",
         ":1:1: DOCTYPE: <!DOCTYPE a [<!ENTITY e 'x'>]>\n:1:34: entity reference: b='&e;'\n"},
        {"<!DOCTYPE a [<!ENTITY e '<c>x</c>'>]><a>y&e;</a>",
         ":1:1: DOCTYPE: <!DOCTYPE a [<!ENTITY e '<c>x</c>'>]>\n:1:41: text beside other content: y\n:1:42: "
         "entity reference: &e;\n"},
        {"<p:a xmlns:p='u'><p:b/></p:a>",
         ":1:1: prefix: <p:a xmlns:p='u'\n:1:6: namespace declaration: xmlns:p='u'\n:1:18: prefix: <p:b\n"},
        {"<a xmlns='u'\n  xml:lang = \"de\"/>",
         ":1:4: namespace declaration: xmlns='u'\n:2:3: prefix: xml:lang = \"de\"\n"},
        {"<a xmlnsx='u'/>", ":1:1: note: spelling: no XML declaration\n"},
        {"<a xmlns:p='u' b='1' p:b='2'/>",
         ":1:4: namespace declaration: xmlns:p='u'\n:1:16: replaced attribute: b='1'\n:1:22: prefix: "
         "p:b='2'\n"},
        {"<a xmlns:p='u' p:b='1' b='2'/>",
         ":1:4: namespace declaration: xmlns:p='u'\n:1:16: prefix: p:b='1'\n:1:16: replaced attribute: "
         "p:b='1'\n"},
        {"<\xc3\xa4\xc3\xb6><!-- x --></\xc3\xa4\xc3\xb6>", ":1:5: comment: <!-- x -->\n"},
        {"\xef\xbb\xbf<a><!-- x --></a>", ":1:1: byte-order mark: EF BB BF\n:1:4: comment: <!-- x -->\n"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe4<!-- \xe4 --></a>",
         ":1:1: encoding: ISO-8859-1\n:1:47: text beside other content: \xc3\xa4\n:1:48: comment: <!-- "
         "\xc3\xa4 -->\n"},
        {"<a><!--  a comment that is much too long to be shown as a whole --></a>",
         ":1:4: comment: <!--  a comment that is much too long to be shown ...\n"},
        // No declaration tells what p means, so the names keep it.
        {"<a><p:b/><c p:x='1'/></a>", ":1:1: note: spelling: no XML declaration\n"},
        {"<a p:x='1' xml:lang='de'><p:b xmlns:p='u'/><p:c/></a>",
         ":1:12: prefix: xml:lang='de'\n:1:26: prefix: <p:b xmlns:p='u'\n:1:31: namespace declaration: "
         "xmlns:p='u'\n"},
        {"<:a b:='1' c:1='2' xmlns:c='u'/>", ":1:20: namespace declaration: xmlns:c='u'\n"},
        {"<?xml version='1.0' encoding='utf-8' standalone='no'?>\n<a/>",
         ":1:38: standalone declaration: standalone='no'\n"},
        {"\n<a/>", ":1:1: note: spelling: no XML declaration\n"},
        {"<?xml-stylesheet version='1.1'?><a/>",
         ":1:1: processing instruction: <?xml-stylesheet version='1.1'?>\n"},
        {"<?xml version='1.1'?><a/>", ":1:7: XML version: version='1.1'\n"},
        {"\xef\xbb\xbf<a/>", ":1:1: byte-order mark: EF BB BF\n"},
        {"<a>\r\n  <b/>\r\n  <!-- x -->\r\n</a>\r\n", ":1:4: line ends: CR LF\n:3:3: comment: <!-- x -->\n"},
        {"<a>\n  <b>x</b>\r</a>", ":2:11: line ends: CR\n"},
        {"<a b='x\ry'/>", ":1:8: line ends: CR\n"},
    }};
    for (const Lost& one : all) {
        SCOPED_TRACE(one.text);
        write("a.xml", one.text);
        std::string expected;
        const std::string losses = one.losses;
        for (std::size_t begin = 0; begin < losses.size();) {
            const std::size_t end = losses.find('\n', begin) + 1;
            expected += "a.xml" + losses.substr(begin, end - begin);
            begin = end;
        }
        expect(run("quxml loss a.xml"), contains(losses, "note: ") ? 0 : 1, expected, "");
    }
}

TEST_F(Loss, finds_nothing_in_what_the_library_writes) {
    const std::string declared = std::string(declaration) + '\n';
    for (const char* text :
         {"<a/>", "<a b=\"1\">\n  <c>x &lt; y</c>\n\n</a>\n", "<a>  </a>", "<a> \n </a>", "<a>\nx\n</a>",
          "<a b=\"\xc3\xa4'>\" c=\"\">\xc3\xa4&gt;&apos;&quot;&amp;</a>", R"(  <a><b/><c d=""/></a>)"}) {
        SCOPED_TRACE(text);
        write("a.xml", declared + text);
        expect_done(run("quxml loss a.xml"), "");
        expect_done(run("quxml format --canonical a.xml"), run("quxml format a.xml").out);
    }
}

/// `format` keeps what `format --canonical` writes differently.
TEST_F(Loss, notes_the_first_other_spelling_if_nothing_else_is_listed) {
    const std::string declared = std::string(declaration) + '\n';
    const std::array<const char*, 17> all{
        "<a b='1'>",
        R"(<a b="1" >)",
        R"(<a  b="1">)",
        R"(<a b ="1">)",
        R"(<a b= "1">)",
        "<a\nb=\"1\">",
        R"(<a b="&apos;">)",
        "<a b=\"1\n2\">",
        "<a><b />",
        "<a><b></b>",
        "<a><b>x</b >",
        "<a><b>it's</b>",
        R"(<a><b>"</b>)",
        "<a><b>&lt;></b>",
        "<a><b>&#65;</b>",
        "<a><b>&amp;&#x26;</b>",
        "<a><b c='1'/><b></b>",
    };
    for (const char* one : all) {
        SCOPED_TRACE(one);
        write("a.xml", declared + one + "<c>x</c></a>");
        const Result found = run("quxml loss a.xml");
        EXPECT_EQ(found.code, 0);
        EXPECT_TRUE(contains(found.out, ": note: spelling: ")) << found.out;
        EXPECT_NE(run("quxml format a.xml").out, run("quxml format --canonical a.xml").out);
    }
    write("a.xml", "<a b='1'/>");
    expect_done(run("quxml loss a.xml"), "a.xml:1:1: note: spelling: no XML declaration\n");
    write("a.xml", "<?xml version='1.0'?><a/>");
    expect_done(run("quxml loss a.xml"), "a.xml:1:1: note: spelling: <?xml version='1.0'?>\n");
    write("a.xml", declared + "<a>\n <b x='1'/><b y='2'/></a>");
    expect_done(run("quxml loss a.xml"), "a.xml:3:2: note: spelling: <b x='1'/>\n");
    write("a.xml", "<a b='1'><!-- x --></a>");
    expect(run("quxml loss a.xml"), 1, "a.xml:1:10: comment: <!-- x -->\n", "");
}

/// This program writes them so that they read back; the library alone does not.
TEST_F(Loss, notes_what_needs_escapes_without_counting_it) {
    write("a.xml", "<a x='&lt;'\n y='say \"hi\"' z='&#10;' v='&amp;' w='&gt;&apos;&#x41;'/>");
    expect_done(run("quxml loss a.xml"),
                "a.xml:1:4: note: attribute value that needs escapes: x='&lt;'\n"
                "a.xml:2:2: note: attribute value that needs escapes: y='say \"hi\"'\n"
                "a.xml:2:15: note: attribute value that needs escapes: z='&#10;'\n"
                "a.xml:2:25: note: attribute value that needs escapes: v='&amp;'\n");
    write("b.xml", "<a>\n  <b>x&#13;y</b>\n</a>");
    expect_done(run("quxml loss b.xml"), "b.xml:2:6: note: carriage return: x&#13;y\n");
    expect_done(run("quxml format --no-declaration b.xml"), "<a>\n  <b>x&#13;y</b>\n</a>\n");
    expect_done(run("quxml query //b b.xml"), "<b>x&#13;y</b>\n");
    expect_done(run("quxml format a.xml >b.xml; quxml format b.xml | cmp - b.xml"), "");
}

TEST_F(Loss, reads_other_encodings) {
    write("a.xml", std::string("\xff\xfe<\0a\0>\0<\0!\0-\0-\0x\0-\0-\0>\0<\0/\0a\0>\0", 32));
    expect(run("quxml loss a.xml"), 1,
           "a.xml:1:1: encoding: UTF-16LE\n"
           "a.xml:1:4: comment: <!--x-->\n",
           "");
}

TEST_F(Loss, shows_no_control_characters) {
    write("a.xml", "<a><!-- \x7f \xc2\x9b \t\n --></a>");
    expect(run("quxml loss a.xml"), 1, "a.xml:1:4: comment: <!-- ? ?    -->\n", "");
}

TEST_F(Loss, reads_standard_input) {
    expect(run("echo '<a><!-- x --></a>' | quxml loss"), 1, "standard input:1:4: comment: <!-- x -->\n", "");
    expect_done(run(R"(echo '<?xml version="1.0"?><a/>' | quxml loss -)"), "");
}

struct Warned {
    const char* text;
    const char* summary;
};

TEST_F(Loss, of_all_kinds_is_warned_of_in_one_line) {
    const std::array<Warned, 7> all{{
        {"<a><!-- x --></a>", "1 comment"},
        {"<a><!-- x --><!-- y --><?p?></a>", "2 comments, 1 processing instruction"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;&e;</a>", "1 DOCTYPE, 2 entity references"},
        {"<a xmlns:p='u' p:x='1' p:y='2'>\n</a>", "1 white space, 2 prefixes, 1 namespace declaration"},
        {"<a>x<![CDATA[y]]>z</a>", "1 CDATA section, 2 texts beside other content"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a x='&amp;'>&#13;</a>", "1 encoding"},
        {"\xef\xbb\xbf<a>\r\n<!-- x -->\r\n</a>", "1 byte-order mark, line ends, 1 comment"},
    }};
    for (const Warned& one : all) {
        write("a.xml", one.text);
        const std::string summary = std::string("warning: left out of the output: ") + one.summary;
        for (const char* command : {"format --canonical", "sort --canonical"}) {
            SCOPED_TRACE(std::string(command) + ' ' + one.text);
            const std::string quxml = std::string("quxml ") + command;
            Result result = run(quxml + " a.xml");
            EXPECT_EQ(result.err, "a.xml: " + summary + "; \"quxml loss a.xml\" lists them\n");
            EXPECT_EQ(result.code, 0);
            result = run(quxml + " <a.xml");
            EXPECT_EQ(result.err, "standard input: " + summary + "; \"quxml loss\" lists them\n");
            EXPECT_EQ(run(quxml + " --quiet a.xml").err, "");
        }
    }
}

/// Only the canonical form leaves the declaration out.
TEST_F(Loss, of_the_declaration_counts_only_where_it_is_not_kept) {
    const std::string text = "<?xml version=\"1.1\" standalone=\"yes\"?>\n<a/>\n";
    write("a.xml", text);
    EXPECT_EQ(run("quxml loss a.xml").code, 1);
    const std::string lost = "1 XML version, 1 standalone declaration";
    const std::string warning =
        "a.xml: warning: left out of the output: " + lost + "; \"quxml loss a.xml\" lists them\n";
    expect(run("quxml format --canonical a.xml"), 0, "<?xml version=\"1.0\"?>\n<a/>\n", warning);
    expect(run("quxml format --canonical --no-declaration a.xml"), 0, "<a/>\n", warning);
    expect_done(run("quxml format a.xml | cmp - a.xml; quxml sort a.xml | cmp - a.xml"), "");
    expect(run("quxml format -i --canonical a.xml"), 3, "",
           "quxml: a.xml: not touched, this would be lost: " + lost +
               "; \"quxml loss a.xml\" lists them, --lossy changes the file anyway\n");
    EXPECT_EQ(written("a.xml"), text);
    expect_done(run("quxml set -i /a x=1 a.xml"), "");
    EXPECT_EQ(written("a.xml"), "<?xml version=\"1.1\" standalone=\"yes\"?>\n<a x=\"1\"/>\n");
}

TEST_F(Loss, of_line_ends_or_a_byte_order_mark_keeps_a_file_from_being_formatted) {
    for (const std::string text : {"<a>\r\n  <b/>\r\n</a>\r\n", "\xef\xbb\xbf<a/>", "<a>\r</a>"}) {
        for (const char* command : {"format -i --canonical", "sort -i --canonical"}) {
            SCOPED_TRACE(command + text);
            write("a.xml", text);
            EXPECT_EQ(run(std::string("quxml ") + command + " a.xml").code, 3);
            EXPECT_EQ(written("a.xml"), text);
        }
    }
    write("a.xml", "\xef\xbb\xbf<a>\r\n  <b/>\r\n</a>\r\n");
    expect(run("quxml format -i --canonical --lossy a.xml"), 0, "",
           "a.xml: warning: this is lost: 1 byte-order mark, line ends\n");
    EXPECT_EQ(written("a.xml"), std::string(declaration) + "\n<a>\n  <b/>\n</a>\n");
}

/// Queries answer as if these were not there.
TEST_F(Loss, of_content_is_warned_of_by_queries) {
    write("a.xml", "<a><b>x<![CDATA[y]]></b></a>");
    for (const char* option : {"--value --lossy", "--count", ""}) {
        const Result result = run(std::string("quxml query ") + option + " //b a.xml");
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(
            result.err,
            "a.xml: warning: queries do not see 1 CDATA section, 1 text beside other content; \"quxml loss "
            "a.xml\" lists them\n");
    }
    expect_done(run("quxml query --quiet --lossy --value //b a.xml"), "\n");
    write("a.xml", "<!DOCTYPE a>\r\n<a xmlns='u'><!-- x --><?p?><b>x</b></a>");
    expect_done(run("quxml query --value //b a.xml"), "x\n");
}

}  // namespace

}  // namespace quxml_test
