// SPDX-License-Identifier: MIT

// What a query takes from the heap for its path, which may be as long as a hostile text.

#ifndef _GLIBCXX_DEBUG

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "counting_heap.h"
#include "quxml/quxml.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml_test::cpp_heap;

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

/// The most bytes in use at once, beside the tree and the path, for each byte of the path.
std::size_t bytes_for_each_byte(Element& start, const std::string& path) {
    const std::size_t before = cpp_heap().bytes;
    cpp_heap().peak = before;
    start.find_exact_match(path);
    return (cpp_heap().peak - before) / path.size();
}

TEST(QueryMemory, a_path_takes_at_most_forty_bytes_for_each_of_its_own) {
    constexpr std::size_t count = 100000;
    constexpr std::size_t limit = 40;
    Document document(false);
    Element* const root = document.create_root_node("x");
    root->add_child("x")->set_attribute("a", "1");
    for (const char* const piece : {"/", "//", "/x", "//x", "/x[1]", "//x[@a]", "/longer-names"})
        EXPECT_LE(bytes_for_each_byte(*root, "x" + repeated(piece, count)), limit) << piece;
    for (const char* const piece :
         {"[", "[1]", "[a", "[@a]", "[@a=1]", "[x=1]", "[last()]", "[position()=1]"})
        EXPECT_LE(bytes_for_each_byte(*root, "x/x" + repeated(piece, count)), limit) << piece;
}

}  // namespace

#endif
