// SPDX-License-Identifier: MIT

// Text that wants to harm: whatever it is, the reader gives a tree that holds together or throws its own
// exception, fetches nothing, and takes time and memory that can be foreseen.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "quxml/quxml.h"
#include "robustness/counting_heap.h"
#include "support/check_links.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using quxml::Document;

constexpr std::size_t mebibyte = 1024 * std::size_t{1024};

std::string repeat(const std::string& text, std::size_t count) {
    std::string out;
    out.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

int loads = 0;

extern "C" xmlParserInput* quxml_test_entity_loader(const char* /*url*/, const char* /*id*/,
                                                    xmlParserCtxt* /*context*/) {
    ++loads;
    return nullptr;
}

/// How a text was read.
struct Reading {
    std::shared_ptr<Document> document;  // null if it was refused ...
    std::string error;                   // ... with this message
    std::size_t memory;                  // at most in use at once, libxml2's included
    std::chrono::milliseconds time;
};

/// Whether libxml2, called as the reader calls it, accepts the text.
bool is_well_formed(const std::string& text) {
    xmlDoc* document = xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, 0);
    xmlFreeDoc(document);
    xmlResetLastError();
    return document != nullptr;
}

class HostileInput : public ::testing::Test {
protected:
    HostileInput() : loader(xmlGetExternalEntityLoader()) {
        quxml::from_string("<?oasis-xml-catalog catalog='c'?><a/>",
                           false);  // libxml2 allocates what it keeps for good
        loads = 0;
        xmlSetExternalEntityLoader(quxml_test_entity_loader);
    }

    void TearDown() override {
        EXPECT_EQ(loads, 0) << "something outside the text was asked for";
        xmlSetExternalEntityLoader(loader);
    }

    /// Reads a text, checks the tree and that nothing is left behind.
    static Reading read(const std::string& text, bool keep_sorted = false) {
        Reading reading = {nullptr, {}, 0, {}};
        const std::size_t xml_blocks = xml_heap().blocks;
        const std::size_t in_use = xml_heap().bytes + cpp_heap().bytes;
        xml_heap().peak = xml_heap().bytes;
        cpp_heap().peak = cpp_heap().bytes;
        const auto start = std::chrono::steady_clock::now();
        try {
            reading.document = quxml::from_string(text, keep_sorted);
        } catch (const quxml::DomParserError& error) {
            reading.error = error.what();
        }
        reading.time =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        reading.memory = xml_heap().peak + cpp_heap().peak - in_use;
        EXPECT_EQ(reading.document == nullptr, !reading.error.empty());
        EXPECT_EQ(xml_heap().blocks, xml_blocks);
        if (reading.document != nullptr) {
            EXPECT_TRUE(links_agree(reading.document->get_root_node()));
        }
        return reading;
    }

    /// Reads a text whose size in memory must not be far beyond its own.
    static Reading read_within(const std::string& text, std::size_t memory) {
        Reading reading = read(text);
        EXPECT_LE(reading.memory, memory);
        EXPECT_LE(reading.time, std::chrono::seconds(20));
        return reading;
    }

private:
    xmlExternalEntityLoader loader;
};

// Ten entities of ten references each: ten thousand million letters, if they were followed.
std::string entity_bomb(const std::string& document) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'bombbombbomb'>";
    for (int level = 1; level <= 10; ++level) {
        const std::string below = "&e" + std::to_string(level - 1) + ";";
        text += "<!ENTITY e" + std::to_string(level) + " '" + repeat(below, 10) + "'>";
    }
    return text + "]>" + document;
}

TEST_F(HostileInput, entity_bomb_in_content_is_refused) {
    const Reading reading = read_within(entity_bomb("<a><b>&e10;</b></a>"), 32 * mebibyte);
    EXPECT_EQ(reading.document, nullptr);
}

TEST_F(HostileInput, entity_bomb_in_attribute_is_refused) {
    const Reading reading = read_within(entity_bomb("<a b='&e10;'/>"), 32 * mebibyte);
    EXPECT_EQ(reading.document, nullptr);
}

TEST_F(HostileInput, entity_bomb_that_is_not_set_off_is_read) {
    const Reading reading = read_within(entity_bomb("<a><b>x</b></a>"), 4 * mebibyte);
    ASSERT_NE(reading.document, nullptr);
    EXPECT_EQ(to_line(reading.document->get_root_node()), "a{b{\"x\"}}");
}

std::string parameter_entity_bomb(const std::string& innermost, int levels) {
    std::string text = "<!DOCTYPE a [<!ENTITY % p0 '" + innermost + "'>";
    for (int level = 1; level <= levels; ++level) {
        const std::string below = "&#37;p" + std::to_string(level - 1) + ";";
        text += "<!ENTITY % p" + std::to_string(level) + " '" + repeat(below, 10) + "'>";
    }
    return text + "%p" + std::to_string(levels) + ";]><a/>";
}

#ifdef GTEST_HAS_DEATH_TEST
/// Ends the program after half a minute of work, if it is not told before that all is well.
void end_if_refused(const std::string& text) {
    alarm(30);
    try {
        quxml::from_string(text, false);
    } catch (const quxml::DomParserError&) {
        std::exit(0);
    }
    std::exit(1);
}

void expect_to_be_refused(const std::string& text) {
    EXPECT_EXIT(end_if_refused(text), ::testing::ExitedWithCode(0), "");
}
#else
/// There are no other processes: what is not refused never ends.
void expect_to_be_refused(const std::string& text) {
    EXPECT_THROW(quxml::from_string(text, false), quxml::DomParserError);
}
#endif

// Once 10,000 references have been counted libxml2 2.9.14 gives up, and then reads the next one again and
// again, unless it is stopped.
TEST_F(HostileInput, entity_bomb_of_parameter_entities_is_refused) {
    EXPECT_NE(read_within(parameter_entity_bomb("", 3), mebibyte).document, nullptr);
    for (const char* innermost : {"", "bomb"})
        expect_to_be_refused(parameter_entity_bomb(innermost, 10));
}

TEST_F(HostileInput, entity_loop_is_refused) {
    for (const char* body : {"<a b='&e;'/>", "<a>&e;</a>"}) {
        const Reading reading = read_within(
            "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&g;'><!ENTITY g '&e;'>]>" + std::string(body),
            mebibyte);
        EXPECT_EQ(reading.document, nullptr) << body;
    }
}

TEST_F(HostileInput, long_chain_of_entities_is_refused) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int i = 1; i < 20000; ++i)
        text += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    on_small_stack([&] {
        EXPECT_EQ(read_within(text + "]><a b='&e19999;'/>", 64 * mebibyte).document, nullptr);
        EXPECT_EQ(read_within(text + "]><a>&e19999;</a>", 64 * mebibyte).document, nullptr);
    });
}

// One entity of 100 KB, a thousand times: 100 MB.
TEST_F(HostileInput, quadratic_blow_up_in_one_attribute_takes_little) {
    const std::string dtd = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    read_within(dtd + "<a b='" + repeat("&e;", 1000) + "'/>", 8 * mebibyte);
}

// Deliberate: a value that begins with a reference is the text of the entity, each time.
TEST_F(HostileInput, quadratic_blow_up_in_many_attributes_is_followed) {
    const std::string dtd = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    const Reading reading = read_within(dtd + "<a>" + repeat("<b c='&e;'/>", 1000) + "</a>", 100 * mebibyte);
    ASSERT_NE(reading.document, nullptr);
    EXPECT_EQ(reading.document->get_root_node()->get_children().size(), 1000U);
}

TEST_F(HostileInput, quadratic_blow_up_in_content_takes_little) {
    const std::string dtd = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    read_within(dtd + "<a>" + repeat("&e;", 1000) + "</a>", 8 * mebibyte);
    read_within(dtd + "<a>" + repeat("<b>&e;</b>", 1000) + "</a>", 8 * mebibyte);
}

// libxml2 expands the whole value of an attribute of type ID when it takes it out of its table of identifiers.
TEST_F(HostileInput, quadratic_blow_up_in_identifiers_takes_little) {
    const std::string dtd = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    std::string text = dtd + "<a>";
    for (int i = 0; i < 2000; ++i)
        text += "<b xml:id='k" + std::to_string(i) + repeat("&e;", 10) + "'/>";
    const Reading reading = read_within(text + "</a>", 16 * mebibyte);
    ASSERT_NE(reading.document, nullptr);
    EXPECT_EQ(reading.document->get_root_node()->get_children().size(), 2000U);
}

struct Outside {
    const char* name;
    const char* text;
};

void PrintTo(const Outside& outside, std::ostream* out) {
    *out << outside.name;
}

const Outside things_outside[] = {
    {"dtd_of_system", "<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a>x</a>"},
    {"dtd_of_network", "<!DOCTYPE a SYSTEM 'http://localhost/a.dtd'><a>x</a>"},
    {"dtd_of_public", "<!DOCTYPE a PUBLIC '-//a//b' 'a.dtd' [<!ELEMENT a ANY>]><a>x</a>"},
    {"dtd_not_standalone", "<?xml version='1.0' standalone='no'?><!DOCTYPE a SYSTEM 'a.dtd'><a>&u;</a>"},
    {"entity_in_content", "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>&e;</a>"},
    {"entity_of_network", "<!DOCTYPE a [<!ENTITY e SYSTEM 'http://localhost/e'>]><a><b>&e;</b></a>"},
    {"entity_in_attribute", "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a b='&e;'/>"},
    {"entity_in_entity", "<!DOCTYPE a [<!ENTITY e SYSTEM 'e'><!ENTITY f 'x &e; y'>]><a>&f;</a>"},
    {"entity_in_default", "<!DOCTYPE a [<!ENTITY e SYSTEM 'e'><!ATTLIST a b CDATA '&e;'>]><a/>"},
    {"entity_not_parsed", "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'e' NDATA n>]><a b='e'/>"},
    {"parameter_entity", "<!DOCTYPE a [<!ENTITY % p SYSTEM 'file:///etc/hostname'>%p;]><a>x</a>"},
    {"parameter_entity_of_network",
     "<!DOCTYPE a [<!ENTITY % p PUBLIC 'p' 'http://localhost/p'>%p;]><a>x</a>"},
    {"parameter_entity_two_steps",
     R"(<!DOCTYPE a [<!ENTITY % p '<!ENTITY &#37; q SYSTEM "q">'>%p;%q;]><a>x</a>)"},
    {"inclusion", "<a xmlns:i='http://www.w3.org/2001/XInclude'><i:include href='/etc/hostname'/></a>"},
    {"style_sheet", "<?xml-stylesheet type='text/xsl' href='/etc/hostname'?><a>x</a>"},
    {"schema",
     "<a xmlns:s='http://www.w3.org/2001/XMLSchema-instance' s:noNamespaceSchemaLocation='/etc/hostname'/>"},
    {"catalog",
     "<?oasis-xml-catalog catalog='http://localhost/catalog.xml'?><!DOCTYPE a SYSTEM 'a.dtd'><a>x</a>"},
};

class HostileInputOutside : public HostileInput, public ::testing::WithParamInterface<Outside> {};

TEST_P(HostileInputOutside, is_never_loaded) {
    const Reading reading = read_within(GetParam().text, mebibyte);
    EXPECT_EQ(reading.document != nullptr, is_well_formed(GetParam().text));
    EXPECT_EQ(loads, 0);
}

INSTANTIATE_TEST_SUITE_P(Things, HostileInputOutside, ::testing::ValuesIn(things_outside),
                         [](const auto& outside) { return std::string(outside.param.name); });

// The check above can fail: libxml2 does ask the loader when it is set to load.
TEST_F(HostileInput, loader_is_asked_by_those_who_want_to) {
    const std::string text = "<!DOCTYPE a SYSTEM 'a.dtd'><a/>";
    xmlFreeDoc(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, XML_PARSE_DTDLOAD));
    EXPECT_EQ(loads, 1);
    loads = 0;
}

TEST_F(HostileInput, million_nested_tags_are_refused) {
    constexpr std::size_t levels = 1000000;
    const std::string open = repeat("<d>", levels);
    on_small_stack([&] {
        for (const std::string& text : {open, open + repeat("</d>", levels)}) {
            const Reading reading = read_within(text, 2 * text.size() + mebibyte);
            EXPECT_EQ(reading.error.rfind("Excessive depth in document", 0), 0U) << reading.error;
        }
    });
}

TEST_F(HostileInput, million_nested_groups_in_a_dtd_are_refused) {
    const std::string text =
        "<!DOCTYPE a [<!ELEMENT a " + std::string(1000000, '(') + "b" + std::string(1000000, ')') + ">]><a/>";
    on_small_stack([&] { EXPECT_EQ(read_within(text, 2 * text.size() + mebibyte).document, nullptr); });
}

/// A text with one over-long thing in it, and the size up to which it is accepted.
struct Size {
    const char* name;
    std::size_t limit;  // 0: none
    std::string before;
    std::string after;
};

constexpr std::size_t name_limit = 50000;
constexpr std::size_t text_limit = 10000000;

std::vector<Size> all_sizes() {
    return {
        {"element_name", name_limit, "<", "/>"},
        {"attribute_name", name_limit, "<a ", "='1'/>"},
        {"prefix", name_limit, "<", ":a/>"},
        {"instruction_target", name_limit, "<?", " x?><a/>"},
        {"entity_name", name_limit, "<a>&", ";</a>"},
        {"attribute_value", text_limit, "<a b='", "'/>"},
        {"text", text_limit, "<a>", "</a>"},
        {"comment", text_limit, "<!--", "--><a/>"},
        {"cdata", text_limit, "<a><![CDATA[", "]]></a>"},
        {"instruction", text_limit, "<?pi ", "?><a/>"},
        {"system_id", text_limit, "<!DOCTYPE a SYSTEM '", "'><a/>"},
        {"version", name_limit, "<?xml version='1.", "'?><a/>"},
        {"encoding", name_limit, "<?xml version='1.0' encoding='U", "'?><a/>"},
    };
}

void PrintTo(const Size& size, std::ostream* out) {
    *out << size.name;
}

class HostileInputSize : public HostileInput, public ::testing::WithParamInterface<Size> {
protected:
    static std::string text_of(std::size_t size) {
        return GetParam().before + std::string(size, GetParam().name == std::string("version") ? '1' : 'x') +
               GetParam().after;
    }
};

TEST_P(HostileInputSize, is_accepted_where_libxml2_accepts_it) {
    for (const std::size_t size :
         {GetParam().limit - 1, GetParam().limit, GetParam().limit + 1, std::size_t{20000000}}) {
        const std::string text = text_of(size);
        const Reading reading = read_within(text, 8 * text.size() + mebibyte);
        EXPECT_EQ(reading.document != nullptr, is_well_formed(text)) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, HostileInputSize, ::testing::ValuesIn(all_sizes()),
                         [](const auto& size) { return std::string(size.param.name); });

TEST_F(HostileInput, text_that_is_pieced_together_beyond_the_limit_is_read_whole_or_refused) {
    const std::size_t pieces = text_limit / 10 + 1;
    std::string text = "<a>";
    for (std::size_t i = 0; i < pieces; ++i)
        text += "xxxxxxxxx&amp;";
    const Reading reading = read_within(text + "</a>", 8 * text.size());
    if (reading.document != nullptr) {
        EXPECT_EQ(reading.document->get_root_node()->get_child_text()->get_content().size(), 10 * pieces);
    }
}

const std::string invalid_utf8[] = {
    "\x80",                      // a continuation byte alone
    "\xbf\xbf",                  // two of them
    "\xc3",                      // a continuation byte is missing
    "\xe2\x82",                  // the last one is missing
    "\xf0\x9f\x98",              // the last one is missing
    "\xc0\xaf",                  // "/" in two bytes
    "\xe0\x80\xaf",              // in three
    "\xf0\x80\x80\xaf",          // in four
    "\xed\xa0\x80",              // one half of a pair
    "\xed\xa0\x80\xed\xb0\x80",  // both halves
    "\xf4\x90\x80\x80",          // beyond the last code point
    "\xf8\x88\x80\x80\x80",      // five bytes
    "\xfc\x84\x80\x80\x80\x80",  // six bytes
    "\xfe",                      // no byte of UTF-8
    "\xff",
    "\xef\xbf\xbe",  // no character
    "\xef\xbf\xbf",
};

TEST_F(HostileInput, invalid_utf8_is_refused_wherever_it_stands) {
    for (const std::string& bytes : invalid_utf8) {
        for (const std::string& text :
             {"<a>" + bytes + "</a>", "<a>x" + bytes, "<a b='" + bytes + "'/>", "<a" + bytes + "/>",
              bytes + "<a/>", "<a/>" + bytes, "<!--" + bytes + "--><a/>", "<a><![CDATA[" + bytes + "]]></a>"})
            EXPECT_EQ(read_within(text, mebibyte).document, nullptr) << ::testing::PrintToString(text);
    }
}

TEST_F(HostileInput, wrong_encodings_are_read_as_libxml2_reads_them) {
    for (const char* encoding : {"UTF-8", "UTF-16", "UTF-16LE", "UCS-4", "UTF-7", "EBCDIC-CP-US",
                                 "ISO-8859-1", "HTML", "ASCII", "none", "", "\xff"}) {
        const std::string text =
            "<?xml version='1.0' encoding='" + std::string(encoding) + "'?><a b='\xc3\xa9'>\xc3\xa9</a>";
        for (const char* mark : {"", "\xef\xbb\xbf", "\xff\xfe", "\xfe\xff", "+/v8-"}) {
            const std::string marked = mark + text;
            EXPECT_EQ(read_within(marked, 2 * mebibyte).document != nullptr, is_well_formed(marked))
                << ::testing::PrintToString(marked);
        }
    }
}

TEST_F(HostileInput, nul_is_refused_up_to_the_end_of_the_root) {
    const std::string whole =
        "<?xml version='1.0'?><!--c--><a b='c'><d>text</d><?e f?><![CDATA[g]]></a><!--h-->";
    ASSERT_NE(read(whole).document, nullptr);
    for (std::size_t at = 0; at <= whole.size(); ++at) {
        std::string text = whole;
        text.insert(at, 1, '\0');
        const Reading reading = read_within(text, mebibyte);
        EXPECT_EQ(reading.document != nullptr, is_well_formed(text)) << "inserted at " << at;
        if (at < whole.find("<!--h")) {
            EXPECT_EQ(reading.document, nullptr) << "inserted at " << at;
        }
    }
    EXPECT_EQ(read(std::string(1, '\0')).document, nullptr);
    EXPECT_EQ(read(std::string(100000, '\0')).document, nullptr);
}

/// A document of 4 KB with everything in it.
std::string document_of_4_kilobytes() {
    std::string text =
        "<?xml version='1.0' encoding='UTF-8'?>\n<!-- first -->\n<?pi data?>\n"
        "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a d CDATA 'x'><!ENTITY e 'text &#65;'><!ENTITY % p 'q'>"
        "<!NOTATION n SYSTEM 'n'>]>\n<a xmlns='urn:a' xmlns:p='urn:p'>\n";
    for (int i = 0; text.size() < 4000; ++i) {
        const std::string number = std::to_string(i);
        text += "  <b item='" + number + "' p:c=\"&e; &lt; &#x41;\">t\xc3\xa9xt " + number +
                " &amp; &e;</b>\n  <p:d><![CDATA[<" + number + ">]]></p:d><!-- " + number + " --><?pi " +
                number + "?><e><f/><g> </g></e>\n";
    }
    return text + "</a>";
}

TEST_F(HostileInput, every_prefix_of_a_document_is_refused) {
    const std::string whole = document_of_4_kilobytes();
    ASSERT_GE(whole.size(), 4000U);
    ASSERT_NE(read(whole).document, nullptr);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(read(whole.substr(0, size), size % 2 == 0).document, nullptr) << size;
}

TEST_F(HostileInput, every_single_byte_change_gives_a_tree_or_is_refused) {
    const std::string whole =
        "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE a [<!ENTITY e '&#65;x'>]><a xmlns:p='u'><b item='1' "
        "p:c='&e;'>t&lt;\xc3\xa9</b>"
        "<!--c--><![CDATA[d]]><?e f?><p:g> </p:g></a>";
    ASSERT_NE(read(whole).document, nullptr);
    std::size_t accepted = 0;
    std::size_t memory = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string text = whole;
        for (int change = 1; change < 256; ++change) {
            text[at] = static_cast<char>(static_cast<unsigned char>(whole[at]) ^ change);
            const Reading reading = read(text, change % 2 == 0);
            memory = std::max(memory, reading.memory);
            accepted += reading.document != nullptr ? 1U : 0U;
        }
    }
    RecordProperty("accepted", static_cast<int>(accepted));
    EXPECT_GT(accepted, 1000U);
    EXPECT_LE(memory, mebibyte);
}

}  // namespace

}  // namespace quxml_test
