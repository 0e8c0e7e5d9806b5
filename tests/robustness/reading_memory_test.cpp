// SPDX-License-Identifier: MIT

// The memory of reading: all of libxml2's tree is freed, whatever is in it and whatever happens.

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "quxml/quxml.h"
#include "robustness/counting_heap.h"
#include "support/read_file.h"

namespace quxml_test {

namespace {

using quxml::from_string;

/// Elements in groups of ten, each with an attribute and a text.
std::string text_of(std::size_t elements) {
    std::string text = "<r>";
    for (std::size_t i = 0; i < elements; ++i) {
        text += i % 10 == 0 ? "<g>" : "";
        text += "<e a='value'>text of an element</e>";
        text += i % 10 == 9 || i + 1 == elements ? "</g>" : "";
    }
    return text + "</r>";
}

void expect_no_leak(const std::string& text) {
    const std::size_t cpp_blocks = cpp_heap().blocks;
    const std::size_t xml_blocks = xml_heap().blocks;
    for (const bool keep_sorted : {false, true})
        from_string(text, keep_sorted);
    EXPECT_EQ(cpp_heap().blocks, cpp_blocks);
    EXPECT_EQ(xml_heap().blocks, xml_blocks);
}

TEST(ReadingMemory, is_all_freed_whatever_the_number_of_nodes) {
    from_string("<r/>", false);  // libxml2 keeps what it sets up for the first text
    for (const std::size_t elements : {1U, 2U, 100U, 10000U}) {
        SCOPED_TRACE(elements);
        expect_no_leak(text_of(elements));
    }
}

TEST(ReadingMemory, is_all_freed_whatever_the_kind_of_nodes) {
    from_string("<r/>", false);
    const std::string entity = "<!DOCTYPE r [<!ENTITY e 'x<y/>'>]>";
    const std::string identifier = "<!DOCTYPE r [<!ATTLIST b i ID #IMPLIED d CDATA 'default'>]>";
    const std::string texts[] = {
        "<r>only text</r>",
        "<r>\n</r>",
        "<r><!-- c --></r>",
        "<r>a<b/>c</r>",
        "<r><![CDATA[d]]></r>",
        "<r><?p i?></r>",
        "<r xmlns='urn:a' xmlns:p='urn:b'><p:b p:c='d'/></r>",
        entity + "<r>&e;<b>&e;</b></r>",
        identifier + "<r><b i='one'/><b i='two' xml:id='three'/></r>",
    };
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        expect_no_leak(text);
    }
}

TEST(ReadingMemory, is_all_freed_when_a_text_is_refused) {
    EXPECT_THROW(from_string("<r", false), quxml::DomParserError);
    const std::size_t cpp_blocks = cpp_heap().blocks;
    const std::size_t xml_blocks = xml_heap().blocks;
    for (const char* const text : {"<r>", "<r><b a='c'></r>", "<r a='&e;'/>", "<r/><r/>"})
        EXPECT_THROW(from_string(text, false), quxml::DomParserError) << text;
    EXPECT_EQ(cpp_heap().blocks, cpp_blocks);
    EXPECT_EQ(xml_heap().blocks, xml_blocks);
}

TEST(ReadingMemory, is_all_freed_when_the_new_tree_finds_no_memory_halfway) {
    from_string("<r/>", false);
    const std::string text = text_of(10000);
    for (const std::size_t number : {2U, 100U, 10000U, 50000U}) {
        SCOPED_TRACE(number);
        const std::size_t cpp_blocks = cpp_heap().blocks;
        const std::size_t xml_blocks = xml_heap().blocks;
        {
            const FailingAllocation failing(cpp_heap(), number, false);
            EXPECT_THROW(from_string(text, false), std::bad_alloc);
        }
        EXPECT_EQ(cpp_heap().blocks, cpp_blocks);
        EXPECT_EQ(xml_heap().blocks, xml_blocks);
    }
}

#ifndef _GLIBCXX_DEBUG
// docs/devices.md has the figures. The file has 55 elements, 37 attributes and 38 texts, with two blocks each but for
// the root, and the document and its five strings of more than 15 bytes have one more each.
TEST(ReadingMemory, of_a_small_configuration_is_known) {
    const std::string text = read_file(QUXML_REPOSITORY "/examples/device.xml");
    ASSERT_EQ(text.size(), 2005U);
    const CountingHeap before = cpp_heap();
    const auto document = from_string(text, false);
    EXPECT_EQ(cpp_heap().blocks - before.blocks, 265U);
    EXPECT_LE(cpp_heap().bytes - before.bytes, sizeof(void*) == 8 ? 22000U : 15000U);
}
#endif

}  // namespace

}  // namespace quxml_test
