// SPDX-License-Identifier: MIT

// Editing changes the bytes concerned and no others, whatever a document holds and however it is laid out.

#include <quxml/Document.h>
#include <quxml/Element.h>
#include <sys/resource.h>

#include <random>
#include <string>
#include <vector>

#include "converters.h"
#include "program.h"

namespace quxml_test {

namespace {

class EditedBytes : public Quxml {};

struct Edited {
    const char* command;
    std::string before;
    std::string after;
};

TEST_F(EditedBytes, are_those_that_are_concerned) {
    const std::string mixed = "<a><p>one <b>two</b> three</p></a>";
    const std::vector<Edited> all = {
        // set
        {"set /a x=2", "<a x='1'/>", "<a x='2'/>"},
        {"set /a x=2", "<a y=\"1\"\n   x = \"1\"  />\n", "<a y=\"1\"\n   x = \"2\"  />\n"},
        {"set /a \"x=it's\"", R"(<a x='1' y="&gt;"/>)", R"(<a x='it&apos;s' y="&gt;"/>)"},
        {"set /a 'x=\"'", "<a x='1'/>", R"(<a x='"'/>)"},
        {"set /a x=1", "<a x='&#49;'/>", "<a x='&#49;'/>"},
        {"set /a y=2", "<a x='1'/>", "<a x='1' y='2'/>"},
        {"set /a y=2 z=3", "<a\n  w=\"0\"\n  x=\"1\"\n/>",
         "<a\n  w=\"0\"\n  x=\"1\"\n  y=\"2\"\n  z=\"3\"\n/>"},
        {"set /a y=2", "<a\t>t</a >", "<a y=\"2\"\t>t</a >"},
        {"set /a y=2", "<a x='>'><!--<a>--></a>", "<a x='>' y='2'><!--<a>--></a>"},
        {"set /r id=2", "<p:r xmlns:p='urn:x' id='0' p:id='1'/>", "<p:r xmlns:p='urn:x' id='0' p:id='2'/>"},
        {"set /a lang=de", "<a xml:lang='en'/>", "<a xml:lang='de'/>"},
        {"set /a/b x=3", "<?xml version='1.0' standalone='yes'?>\r\n<a>\r\n<b/></a><!-- end -->\r\n\r\n",
         "<?xml version='1.0' standalone='yes'?>\r\n<a>\r\n<b x=\"3\"/></a><!-- end -->\r\n\r\n"},
        {"set '//*' x=1", "<a><b><c/></b></a>", R"(<a x="1"><b x="1"><c x="1"/></b></a>)"},
        // unset
        {"unset /a x -", "<a  x='1'  y='2'/>", "<a  y='2'/>"},
        {"unset /a y -", "<a\n  x='1'\n  y='2'/>", "<a\n  x='1'/>"},
        {"unset /r id -", "<r xmlns:p='urn:x' id='0' p:id='1' />", "<r xmlns:p='urn:x' />"},
        // text
        {"text /a 'x > y'", "<a> old &#65; </a>", "<a>x > y</a>"},
        {"text /a 'a & b < c ]]>'", "<a/>", "<a>a &amp; b &lt; c ]]&gt;</a>"},
        {"text /a \"'\"", "<a x='1' />", "<a x='1'>'</a>"},
        {"text /a x", "<a\n  x='1'\n/>", "<a\n  x='1'\n>x</a>"},
        {"text /a A", "<a>&#65;</a>", "<a>&#65;</a>"},
        {"text /a x", "<a><![CDATA[old]]></a>", "<a><![CDATA[x]]></a>"},
        {"text /a 'x & ]]>'", "<a> <![CDATA[old]]>\n</a>", "<a><![CDATA[x & ]]]]><![CDATA[>]]></a>"},
        {"text /a x", "<a>old <![CDATA[old]]></a>", "<a>x</a>"},
        {"text /a ''", "<a><![CDATA[old]]></a>", "<a></a>"},
        {"text /a/b \"$(printf 'x\\ny')\"", "<a>\r\n<b>1</b></a>", "<a>\r\n<b>x\r\ny</b></a>"},
        // add
        {"add /a n", "<a>\n\t<b/>\n</a>\n", "<a>\n\t<b/>\n\t<n/>\n</a>\n"},
        {"add /a n", "<a>\r\n  <b/> <!-- b -->\r\n</a>", "<a>\r\n  <b/> <!-- b -->\r\n  <n/>\r\n</a>"},
        {"add /a n", "<a>\n  <!-- c --> <b/>\n</a>", "<a>\n  <!-- c --> <b/>\n  <n/>\n</a>"},
        {"add /a n", "<a><b/></a>", "<a><b/><n/></a>"},
        {"add /a n", "<a> <b/> </a>", "<a> <b/> <n/> </a>"},
        {"add /a/b n", "<a>\n    <b/>\n</a>", "<a>\n    <b>\n        <n/>\n    </b>\n</a>"},
        {"add /a/b n", "<a>\n    <b>\n    </b>\n</a>", "<a>\n    <b>\n        <n/>\n    </b>\n</a>"},
        {"add /a/b n", "<a>\n <b>  </b></a>", "<a>\n <b>\n  <n/>\n </b></a>"},
        {"add /a/b n", "<a><b/></a>", "<a><b><n/></b></a>"},
        {"add /a/b n", "<a>\n <b x='1' /></a>", "<a>\n <b x='1'>\n  <n/>\n </b></a>"},
        {"add /a n", "<a>\n  <!-- none -->\n</a>", "<a>\n  <!-- none -->\n  <n/>\n</a>"},
        {"add /a/p n", mixed, "<a><p>one <b>two</b> three<n/></p></a>"},
        {"add /a n", "<p:a xmlns:p='urn:x'/>", "<p:a xmlns:p='urn:x'>\n  <p:n/>\n</p:a>"},
        {"add /a n", "<a xmlns='urn:x'><b/></a>", "<a xmlns='urn:x'><b/><n/></a>"},
        {"add /p:a n", "<p:a><b/></p:a>", "<p:a><b/><n/></p:a>"},
        {"add '//*' n", "<a><b/></a>", "<a><b><n/></b><n/></a>"},
        {"add /a n --item 2 --attribute 'x=a\"b' --text 'a & b'", "<a><b/></a>",
         R"(<a><b/><n item="2" x="a&quot;b">a &amp; b</n></a>)"},
        // add --sorted
        {"add --sorted /a b", "<a>\n  <a/>\n  <c/>\n</a>\n", "<a>\n  <a/>\n  <b/>\n  <c/>\n</a>\n"},
        {"add --sorted /a b", "<a>\r\n\t<!-- about c -->\r\n\t<c/>\r\n</a>",
         "<a>\r\n\t<b/>\r\n\t<!-- about c -->\r\n\t<c/>\r\n</a>"},
        {"add --sorted /a b", "<a>\n  <!-- part -->\n\n  <a/> <!-- a -->\n  <?c?> <c/>\n</a>",
         "<a>\n  <!-- part -->\n\n  <a/> <!-- a -->\n  <b/>\n  <?c?> <c/>\n</a>"},
        {"add --sorted /a b", "<a>\n  <!-- part -->\n\n  <c/>\n</a>",
         "<a>\n  <!-- part -->\n\n  <b/>\n  <c/>\n</a>"},
        {"add --sorted /a b", "<a> <a/> <c/> </a>", "<a> <a/> <b/> <c/> </a>"},
        {"add --sorted /a b", "<a><c/></a>", "<a><b/><c/></a>"},
        {"add --sorted /a d", "<a>\n  <c/>\n</a>", "<a>\n  <c/>\n  <d/>\n</a>"},
        {"add --sorted /a b", "<a/>", "<a>\n  <b/>\n</a>"},
        {"add --sorted /a b", "<p:a xmlns:p='u'><p:c/></p:a>", "<p:a xmlns:p='u'><p:b/><p:c/></p:a>"},
        {"add --sorted /a b --item 3", "<a><b item='1'/><b/><b item='10'/></a>",
         "<a><b item='1'/><b/><b item=\"3\"/><b item='10'/></a>"},
        {"add --sorted /a b --attribute item=3", "<a><b item='1'/><b item='3'/></a>",
         "<a><b item='1'/><b item=\"3\"/><b item='3'/></a>"},
        {"add --sorted /a b", "<a><b item='1'/><b/><c/></a>", "<a><b item='1'/><b/><b/><c/></a>"},
        {"add --sorted '//*' b", "<a><c><c/></c></a>", "<a><b/><c><b/><c><b/></c></c></a>"},
        {"edit -e 'add --sorted /a b' -e 'add --sorted /a a --text 1'", "<a>\n <c/>\n</a>",
         "<a>\n <a>1</a>\n <b/>\n <c/>\n</a>"},
        // remove
        {"remove /a/b", "<a>\n  <!-- c -->\n\n  <b>\n  </b>\n</a>", "<a>\n  <!-- c -->\n\n</a>"},
        {"remove /a/b", "<a>\r\n  <b/>\r\n  <c/>\r\n</a>", "<a>\r\n  <c/>\r\n</a>"},
        {"remove /a/b", "<a>\n  <b/><c/>\n</a>", "<a>\n  <c/>\n</a>"},
        {"remove /a/b", "<a>\n  <b/> <!-- b -->\n</a>", "<a>\n   <!-- b -->\n</a>"},
        {"remove /a/b", "<a>\n  <b/> <b/>\n  <c/>\n</a>", "<a>\n  <c/>\n</a>"},
        {"remove /a/b", "<a><b/></a>", "<a></a>"},
        {"remove /a/b", "<a> <b/> </a>", "<a></a>"},
        {"remove /a/b", "<a>\n  <b/>\n</a>", "<a>\n</a>"},
        {"remove /a/b", "<a> <b/>\n  <!-- c --></a>", "<a> \n  <!-- c --></a>"},
        {"remove /a/b/", "<a><b>text</b><c/></a>", "<a><b></b><c/></a>"},
        {"remove /a/p/b", "<a><p>one <b>two</b><!-- c --> three</p></a>",
         "<a><p>one <!-- c --> three</p></a>"},
        {"remove '/a/*/b'", "<a><c><b/><b/>\n<d/></c><e><b/></e></a>", "<a><c>\n<d/></c><e></e></a>"},
    };
    for (const Edited& one : all) {
        SCOPED_TRACE(one.command);
        SCOPED_TRACE(one.before);
        write("a.xml", one.before);
        expect_done(run(std::string("quxml ") + one.command + " <a.xml"), one.after);
        std::string command = one.command;
        if (command.compare(command.size() - 2, 2, " -") == 0)
            command.resize(command.size() - 2);
        expect_done(run("quxml " + command.insert(command.find(' '), " -i") + " a.xml"), "");
        EXPECT_EQ(written("a.xml"), one.after);
    }
}

TEST_F(EditedBytes, leave_a_whole_document_as_it_is) {
    const std::string before =
        "\xef\xbb\xbf<?xml version = '1.0'  encoding='utf-8' ?>\n<!-- <a> -->\n<?pi <a> ?>\n"
        "<!DOCTYPE a [\n<!ELEMENT a ANY><!-- <b> -->\n<!ENTITY e \"<b>text</b>\">\n<!ATTLIST b d CDATA "
        "'1'>\n]>\n\n"
        "<a   x=\"&e2;>\"\n  xmlns='urn:d' >&e;\n<![CDATA[<b>]]>&#65;&amp;<?pi <b>?>\n\n  <b n = '1'/ >\n";
    const std::string start = before.substr(0, before.find("/ >")).replace(before.find("&e2;"), 4, "&#60;");
    const std::string end = "/>\n</a >\n<!-- end --> \n\n";
    write("a.xml", start + end);
    expect_done(run("quxml set --quiet /a/b m=2 a.xml"), start + " m='2'" + end);
    expect_done(run("quxml text --quiet /a/b 2 a.xml"), start + ">2</b>" + end.substr(2));
    expect_done(run("quxml unset --quiet /a/b n a.xml"), start.substr(0, start.size() - 8) + end);
}

TEST_F(EditedBytes, hold_values_with_entities_that_are_replaced_as_a_whole) {
    write("a.xml", "<!DOCTYPE a [<!ENTITY v 'val'>]>\n<a x='&v;ue' y='&v;'/>\n");
    expect_done(run("quxml set /a x=val y=val a.xml"),
                "<!DOCTYPE a [<!ENTITY v 'val'>]>\n<a x='val' y='val'/>\n");
}

TEST_F(EditedBytes, hold_an_attribute_that_the_doctype_has_a_default_for) {
    write("a.xml", "<!DOCTYPE a [<!ATTLIST a x CDATA '1'>]>\n<a><a x='5'/></a>\n");
    expect_done(run("quxml set /a x=2 a.xml"),
                "<!DOCTYPE a [<!ATTLIST a x CDATA '1'>]>\n<a x=\"2\"><a x='5'/></a>\n");
    for (const char* path : {"/a", "/a/a"})
        expect(run(std::string("quxml unset ") + path + " x a.xml"), 3, "",
               std::string("quxml: ") + path +
                   " would still have the attribute x: the DOCTYPE has a default for it; set it to another "
                   "value\n");
}

TEST_F(EditedBytes, are_not_touched_where_that_would_lose_or_show_something) {
    write("a.xml",
          "<!DOCTYPE a [<!ENTITY e '<q/>'>]>\n"
          "<a><b>x<!-- c --></b><b>&e;</b><b><?pi?></b><b><![CDATA[x]]></b><b>one <c/> "
          "two</b><b>x</b>&e;</a>\n");
    const std::string rest = ", which a text would take the place of; take it out of the element first";
    const std::string b = "'/a/b[position()=";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"text " + b + "1]' x", "/a/b[position()=1] holds a comment" + rest},
        {"text " + b + "2]' x", "/a/b[position()=2] holds a reference to an entity" + rest},
        {"text " + b + "3]' x", "/a/b[position()=3] holds a processing instruction" + rest},
        {"text " + b + "4]' \"$(printf 'a\\rb')\"",
         "/a/b[position()=4] holds CDATA, in which a carriage return cannot stand"},
        {"text " + b + "5]' x", "/a/b[position()=5] has elements in it; text beside them would be lost"},
        {"add " + b + "1]' n", "/a/b[position()=1] has text, which would be lost beside an element"},
        {"add " + b + "4]' n", "/a/b[position()=4] has text, which would be lost beside an element"},
        {"add " + b + "6]' n", "/a/b[position()=6] has text, which would be lost beside an element"},
        {"remove " + b + "5]/c'",
         "/a/b[position()=5] has text beside what is to be removed; that would be alone then, and be read as "
         "its "
         "value"},
    };
    for (const auto& [command, message] : all) {
        SCOPED_TRACE(command);
        expect(run("quxml " + command + " a.xml"), 3, "", "quxml: " + message + '\n');
    }
    EXPECT_EQ(run("quxml set --quiet //q x=1 a.xml").code, 1);
}

TEST_F(EditedBytes, have_a_sorted_place_only_among_sorted_elements) {
    const std::string advice = "leave out --sorted\n";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"<a><c/><b/></a>",
         "has elements that are not sorted, so there is no sorted place for another; sort the document "
         "first, or "},
        {"<a><b item='2'/><b/><b item='1'/></a>",
         "has elements that are not sorted, so there is no sorted place for another; sort the document "
         "first, or "},
        {"<a>one <b/> two</a>", "has text beside its elements, which are then never sorted; "},
        {"<a><![CDATA[one]]><b/></a>", "has text beside its elements, which are then never sorted; "},
        {"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;<c/></a>",
         "has text beside its elements, which are then never sorted; "},
        {"<a><b item='1'/><b item='99999999999'/></a>",
         "has an element with an item that is a number out of range; "},
    };
    for (const auto& [document, reason] : all) {
        SCOPED_TRACE(document);
        write("a.xml", document);
        expect(run("quxml add --quiet --sorted --item 3 /a b a.xml"), 3, "", "quxml: /a " + reason + advice);
    }
}

TEST_F(EditedBytes, stand_where_the_library_puts_a_sorted_element) {
    std::mt19937 random(17);
    const auto pick = [&random](std::vector<std::string> all) { return all[random() % all.size()]; };
    for (int round = 0; round < 20; ++round) {
        quxml::Document document(true);
        quxml::Element* const root = document.create_root_node("a");
        std::string edits;
        for (int i = 0; i < 8; ++i) {
            const std::string name = pick({"b", "c", "d"});
            const std::string item = pick({"", "1", "2", "10"});
            const std::string number = std::to_string(i);
            quxml::Element* const added = item.empty() ? root->add_child(name) : root->add_child(name, item);
            added->set_attribute("n", number);
            edits += "add --sorted /a " + name + (item.empty() ? "" : " --item " + item) +
                     " --attribute n=" + number + '\n';
        }
        SCOPED_TRACE(edits);
        write("a.xml", "<?xml version=\"1.0\"?>\n<a/>\n");
        write("edits.txt", edits);
        expect_done(run("quxml edit a.xml <edits.txt"), document.write_to_string_formatted(true));
    }
}

struct Encoded {
    const char* name;
    const char* command;
    const char* before;  // in UTF-8
    const char* after;
};

/// Nothing is written, and no message says that the encoding lacks a character.
TEST_F(EditedBytes, are_refused_where_the_machine_cannot_convert_them) {
    if (has_converters())
        GTEST_SKIP() << "this machine has converters of encodings";
    const std::string before = "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a><c/><!-- \xe4 --><b/></a>\n";
    write("a.xml", before);
    for (const char* command :
         {"set -i /a x=1", "add -i /a b", "remove -i /a/b", "text -i /a/b x", "format -i", "sort -i"}) {
        const Result result = run(std::string("quxml ") + command + " a.xml");
        EXPECT_EQ(result.code, 3) << command;
        EXPECT_NE(result.err.find("a.xml: not written: it cannot be converted to ISO-8859-1 and back"),
                  std::string::npos)
            << result.err;
        EXPECT_EQ(written("a.xml"), before) << command;
    }
}

TEST_F(EditedBytes, are_of_the_encoding_of_the_document) {
    if (!has_converters())
        GTEST_SKIP() << "this machine has no converters of encodings";
    const std::vector<Encoded> all = {
        {"ISO-8859-1", "set /a x=\xc3\xa4\xe2\x82\xac", "<a x=\"\xc3\xb6\"><!-- \xc3\x9f --></a>\n",
         "<a x=\"\xc3\xa4&#8364;\"><!-- \xc3\x9f --></a>\n"},
        {"UTF-16", "text /a '\xe2\x82\xac\xf0\x9f\x98\x80'", "<a>\xc3\xb6\xf0\x9f\x98\x80</a>\n",
         "<a>\xe2\x82\xac\xf0\x9f\x98\x80</a>\n"},
        {"UTF-16LE", "add /a n --text \xc3\xa4", "\xef\xbb\xbf<a>\xf0\x9f\x98\x80<b/></a>\n",
         "\xef\xbb\xbf<a>\xf0\x9f\x98\x80<b/><n>\xc3\xa4</n></a>\n"},
        {"UTF-16BE", "remove /a/b", "\xef\xbb\xbf<a>\n<b/>\n<c/></a>\n", "\xef\xbb\xbf<a>\n<c/></a>\n"},
        {"Shift_JIS", "text /a/b \xe3\x83\xbd\xe3\x82\xbd\xe2\x82\xac",
         "<a><!-- \xe3\x82\xbd --><b>\xe8\xa1\xa8</b></a>\n",
         "<a><!-- \xe3\x82\xbd --><b>\xe3\x83\xbd\xe3\x82\xbd&#8364;</b></a>\n"},
        {"EUC-JP", "set /a x=\xe8\xa1\xa8", "<a>\xe8\xa1\xa8<b/></a>\n",
         "<a x=\"\xe8\xa1\xa8\">\xe8\xa1\xa8<b/></a>\n"},
        {"ISO-2022-JP", "text /a/b \xe8\xa1\xa8", "<a><!-- \xe8\xa1\xa8 --><b>\xe3\x82\xbd</b></a>\n",
         "<a><!-- \xe8\xa1\xa8 --><b>\xe8\xa1\xa8</b></a>\n"},
        {"KOI8-R", "set /a x=\xd0\xb6", "<a>\xd0\xb6</a>\n", "<a x=\"\xd0\xb6\">\xd0\xb6</a>\n"},
        {"windows-1252", "unset /a x -", "<a x=\"\xe2\x82\xac\">\xe2\x82\xac</a>\n", "<a>\xe2\x82\xac</a>\n"},
        {"US-ASCII", "text /a \xc3\xa4", "<a>x</a>\n", "<a>&#228;</a>\n"},
    };
    for (const Encoded& one : all) {
        SCOPED_TRACE(one.name);
        const std::string declaration =
            std::string("<?xml version=\"1.0\" encoding=\"") + one.name + "\"?>\n";
        const auto encode = [&](const std::string& name, std::string text) {
            text.insert(text.compare(0, 3, "\xef\xbb\xbf") == 0 ? 3 : 0, declaration);
            write("utf-8.xml", text);
            expect_done(run("iconv -f UTF-8 -t " + std::string(one.name) + " utf-8.xml >" + name), "");
        };
        encode("before.xml", one.before);
        encode("after.xml", one.after);
        EXPECT_EQ(run(std::string("quxml ") + one.command + " <before.xml >edited.xml").err, "");
        if (std::string(one.name) == "ISO-2022-JP")  // in which a text can be written in several ways
            EXPECT_EQ(run("iconv -f ISO-2022-JP -t UTF-8 edited.xml | cmp - utf-8.xml").code, 0);
        else
            EXPECT_EQ(written("edited.xml"), written("after.xml"));
    }
}

TEST_F(EditedBytes, hold_no_references_where_these_are_no_references) {
    if (!has_converters())
        GTEST_SKIP() << "this machine has no converters of encodings";
    write("a.xml", "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a><b><![CDATA[x]]></b></a>\n");
    expect(run("quxml text /a/b \xe2\x82\xac a.xml"), 3, "",
           "quxml: /a/b holds CDATA, in which a character stands for itself; ISO-8859-1 lacks one of "
           "\"\xe2\x82\xac\"\n");
    expect(run("quxml add /a \xe2\x84\xa6 a.xml"), 3, "",
           "quxml: a.xml: not written: ISO-8859-1 lacks a character of the name \"\xe2\x84\xa6\"\n");
    expect(run("quxml set /a \xe2\x84\xa6=1 a.xml"), 3, "",
           "quxml: a.xml: not written: ISO-8859-1 lacks a character of the name \"\xe2\x84\xa6\"\n");
}

std::string repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// The processor time that all commands up to now have taken, in seconds.
double get_time_of_commands() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) + static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
}

TEST_F(EditedBytes, of_many_matches_take_linear_time) {
    const int few = 10000;
    const int many = 100000;
    write("few.xml", "<a>\n" + repeat("<b/>\n<c/>\n", few) + "</a>\n");
    write("many.xml", "<a>\n" + repeat("<b/>\n<c/>\n", many) + "</a>\n");
    const std::vector<std::pair<std::string, std::string>> all = {
        {"remove //b", "<c/>\n"},
        {"set //b x=1", "<b x=\"1\"/>\n<c/>\n"},
        {"text //b x", "<b>x</b>\n<c/>\n"},
        {"add //b x", "<b>\n<x/>\n</b>\n<c/>\n"},
#ifndef _GLIBCXX_DEBUG  // whose std::lower_bound looks at the whole list of pieces before each search
        {"add --sorted //b x", "<b>\n<x/>\n</b>\n<c/>\n"},
#endif
    };
    const auto time = [&](const std::string& command, int count, const std::string& pair) {
        const double start = get_time_of_commands();
        const Result result = run(command);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_TRUE(result.out == "<a>\n" + repeat(pair, count) + "</a>\n");
        return get_time_of_commands() - start;
    };
    for (const auto& [edit, pair] : all) {
        SCOPED_TRACE(edit);
        const double time_of_few = time("quxml " + edit + " few.xml", few, pair);
        // Ten times the matches take ten times as long, or a hundred times if each looks at all of them.
        EXPECT_LT(time("quxml " + edit + " many.xml", many, pair), 30 * time_of_few + 0.5);
    }
}

}  // namespace

}  // namespace quxml_test
