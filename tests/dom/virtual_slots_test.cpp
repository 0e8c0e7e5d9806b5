// SPDX-License-Identifier: MIT

// Where virtual functions stand in their class's table is part of the binary interface: programs compiled before a change
// of the order would call the wrong ones. The compiler's ABI is that of Itanium, which all our targets use. There a
// destructor takes two slots.

#include <gtest/gtest.h>
#include <quxml/quxml.h>

#include <cstdint>
#include <cstring>

namespace {

constexpr std::uintptr_t after_the_destructor = 2;

// A pointer to a virtual function holds the function's offset in the table, on some machines plus 1.
template <typename MemberFunction>
std::uintptr_t slot_of(MemberFunction function) {
    std::uintptr_t offset = 0;
    static_assert(sizeof function >= sizeof offset, "not the Itanium ABI");
    std::memcpy(&offset, &function, sizeof offset);
    return offset / sizeof(void*);
}

template <typename AnyNode>
void expect_slots_of_a_node() {
    EXPECT_EQ(slot_of(&AnyNode::write_to_string), after_the_destructor);
    EXPECT_EQ(slot_of(&AnyNode::get_deep_copy_of_node), after_the_destructor + 1);
}

}  // namespace

TEST(VirtualSlots, are_the_same_for_all_nodes) {
    expect_slots_of_a_node<quxml::Node>();
    expect_slots_of_a_node<quxml::Element>();
    expect_slots_of_a_node<quxml::Attribute>();
    expect_slots_of_a_node<quxml::TextNode>();
}

TEST(VirtualSlots, of_the_error_are_those_of_standard_exceptions) {
    EXPECT_EQ(slot_of(&quxml::DomParserError::what), after_the_destructor);
    EXPECT_EQ(slot_of(&std::exception::what), after_the_destructor);
}
