// The memory of reading: libxml2's tree is freed while the new one grows, all of it, and a large document is never there
// twice.

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "quxml/quxml.h"
#include "robustness/counting_heap.h"

namespace quxml_test {

namespace {

using quxml::Document;
using quxml::from_string;

constexpr std::size_t batch = 8192;  // so many nodes of libxml2 are freed at a time

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

std::size_t bytes_in_use() {
    return cpp_heap().bytes + xml_heap().bytes;
}

/// The most that is in use while `work` runs, beyond what was before.
template <class Work>
std::size_t peak_of(Work work) {
    const std::size_t before = bytes_in_use();
    common_peak() = before;
    work();
    return common_peak() - before;
}

TEST(ReadingMemory, HoldsALargeDocumentOnceAndNotTwice) {
    const std::string text = text_of(10 * batch);
    const std::size_t peak_of_libxml2 = peak_of(
        [&] { xmlFreeDoc(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, 0)); });
    const std::size_t before = cpp_heap().bytes;
    std::shared_ptr<Document> document;
    const std::size_t peak = peak_of([&] { document = from_string(text, false); });
    const std::size_t tree = cpp_heap().bytes - before;
    EXPECT_LT(peak, std::max(peak_of_libxml2, tree) + std::min(peak_of_libxml2, tree) / 4);
}

void expect_no_leak(const std::string& text) {
    const std::size_t cpp_blocks = cpp_heap().blocks;
    const std::size_t xml_blocks = xml_heap().blocks;
    for (const bool keep_sorted : {false, true})
        from_string(text, keep_sorted);
    EXPECT_EQ(cpp_heap().blocks, cpp_blocks);
    EXPECT_EQ(xml_heap().blocks, xml_blocks);
}

TEST(ReadingMemory, IsAllFreedWhateverTheNumberOfNodes) {
    from_string("<r/>", false);  // libxml2 keeps what it sets up for the first text
    for (const std::size_t elements :
         {std::size_t{1}, batch / 2, batch - 2, batch - 1, batch, batch + 1, 2 * batch}) {
        SCOPED_TRACE(elements);
        expect_no_leak(text_of(elements));
    }
}

TEST(ReadingMemory, IsAllFreedWhateverTheKindOfNodes) {
    from_string("<r/>", false);
    for (const char* const text :
         {"<r>only text</r>", "<r>\n</r>", "<r><!-- c --></r>", "<r>a<b/>c</r>", "<r><![CDATA[d]]></r>",
          "<r><?p i?></r>", "<!DOCTYPE r [<!ENTITY e 'x<y/>'>]><r>&e;<b>&e;</b><b c='&e2;'/></r>",
          "<!DOCTYPE r [<!ENTITY e 'x<y/>'>]><r>&e;<b>&e;</b></r>",
          "<!DOCTYPE r [<!ATTLIST b i ID #IMPLIED d CDATA 'default'>]><r><b i='one'/><b i='two' "
          "xml:id='three'/></r>",
          "<r xmlns='urn:a' xmlns:p='urn:b'><p:b p:c='d'/></r>"}) {
        SCOPED_TRACE(text);
        try {
            expect_no_leak(text);
        } catch (const quxml::DomParserError&) {
            EXPECT_NE(std::string(text).find("&e2;"), std::string::npos)
                << "only the undeclared entity is refused";
        }
    }
}

TEST(ReadingMemory, IsAllFreedWhenTheNewTreeFindsNoMemoryHalfway) {
    from_string("<r/>", false);
    const std::string text = text_of(2 * batch);
    for (const std::size_t number : {std::size_t{2}, batch, 3 * batch, 6 * batch, 9 * batch}) {
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

}  // namespace

}  // namespace quxml_test
