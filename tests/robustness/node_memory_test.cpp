// SPDX-License-Identifier: MIT

// What a node takes from the heap: the fields that its class is documented to have, an entry in a list of its
// parent, and nothing else. The lists of a standard library that checks them are larger.

#ifndef _GLIBCXX_DEBUG

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>

#include "counting_heap.h"
#include "quxml/quxml.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;
using quxml_test::cpp_heap;

constexpr bool is_64_bit = sizeof(void*) == 8;

/// What glibc's allocator takes for so many bytes: the length of the block stands beside it.
constexpr std::size_t block(std::size_t bytes) {
    const std::size_t alignment = std::max(alignof(std::max_align_t), 2 * sizeof(std::size_t));
    return (bytes + sizeof(std::size_t) + alignment - 1) / alignment * alignment;
}

constexpr std::size_t list_entry = block(3 * sizeof(void*));

struct Taken {
    std::size_t allocations;
    std::size_t bytes;
    std::size_t requested;
};

/// For each of many nodes that `add` adds to an element, one by one.
Taken taken_by_each(const std::function<void(Element&, int)>& add) {
    constexpr int count = 1000;
    Document document(false);
    Element& parent = *document.create_root_node("r");
    const quxml_test::CountingHeap before = cpp_heap();
    for (int i = 0; i < count; ++i)
        add(parent, i);
    const quxml_test::CountingHeap& after = cpp_heap();
    const std::size_t beside = (after.blocks - before.blocks) * sizeof(std::size_t);
    return {(after.allocations - before.allocations) / count, (after.bytes + beside - before.bytes) / count,
            (after.requested - before.requested) / count};
}

TEST(NodeMemory, objects_hold_their_fields_and_nothing_else) {
    EXPECT_EQ(sizeof(Node), is_64_bit ? 96U : 56U);
    EXPECT_EQ(sizeof(Element), is_64_bit ? 120U : 68U);
    EXPECT_EQ(sizeof(Attribute), is_64_bit ? 128U : 80U);
    EXPECT_EQ(sizeof(TextNode), is_64_bit ? 128U : 80U);
}

/// A block that was free before may be a little larger than asked for; hence the tenth.
void expect_one_object_and_one_entry(const Taken& taken, std::size_t size) {
    EXPECT_EQ(taken.allocations, 2U);
    EXPECT_EQ(taken.requested, size + 3 * sizeof(void*));
    EXPECT_LE(taken.bytes, (block(size) + list_entry) * 11 / 10);
}

TEST(NodeMemory, an_element_takes_its_object_and_an_entry) {
    const std::string name = "entry";
    expect_one_object_and_one_entry(
        taken_by_each([&name](Element& parent, int /*i*/) { parent.add_child(name); }), sizeof(Element));
}

TEST(NodeMemory, an_attribute_takes_its_object_and_an_entry) {
    const std::string value = "value";
    expect_one_object_and_one_entry(
        taken_by_each([&value](Element& parent, int i) { parent.set_attribute(std::to_string(i), value); }),
        sizeof(Attribute));
}

TEST(NodeMemory, a_text_takes_its_object_and_an_entry) {
    const std::string text = "text";
    expect_one_object_and_one_entry(
        taken_by_each([&text](Element& parent, int /*i*/) { parent.add_child_text(text); }),
        sizeof(TextNode));
}

}  // namespace

#endif
