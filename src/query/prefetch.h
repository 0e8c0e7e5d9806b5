// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_PREFETCH_H
#define QUXML_QUERY_PREFETCH_H

// Memory that is asked for before it is needed.
//
// A walk follows pointers, and waits for each node's memory before it knows where the next node is. But a tree
// that was read, copied or built in document order lies in memory in that order. So the walk guesses, by
// address alone, where the nodes that come next lie, and asks the processor for that memory. Nothing is read,
// and a wrong guess costs next to nothing: the order of nodes in memory never changes a result.
//
// All functions here are inlined, whatever the compiler thinks of it: g++ takes one that does nothing but ask for
// memory for one that does nothing, and leaves out the call.

#include <cstddef>
#include <cstdint>

#include "quxml/Attribute.h"
#include "quxml/Element.h"

namespace quxml {

/// Bytes that processors load at once.
constexpr std::size_t line = 64;

/// Asks for some lines from `address` on. Written out, as a loop would take longer than what it does.
template <std::size_t Lines>
[[gnu::always_inline]] inline void prefetch(const char* address) {
    __builtin_prefetch(address);
    if constexpr (Lines > 1)
        prefetch<Lines - 1>(address + line);
}

/// The same from `offset` bytes after the beginning of a node on.
template <std::size_t Lines>
[[gnu::always_inline]] inline void prefetch(const Node* node, std::size_t offset) {
    prefetch<Lines>(reinterpret_cast<const char*>(node) + offset);
}

/// For a node that a walk passes by: asks for what lies a few elements after it.
[[gnu::always_inline]] inline void prefetch_following(const Node* node) {
    prefetch<3>(node, 4 * sizeof(Element));
}

/// For a child that is looked at after `before`, its previous sibling or its parent: asks for the child a few
/// places on, which lies there if all of them lie equally far apart.
[[gnu::always_inline]] inline void prefetch_sibling(const Node* before, const Node* child) {
    constexpr std::size_t far = 1U << 16U;
    const auto address = reinterpret_cast<std::uintptr_t>(child);
    const auto address_before = reinterpret_cast<std::uintptr_t>(before);
    if (address > address_before && address - address_before < far)
        prefetch<3>(child, 4 * (address - address_before));
}

/// For a node whose name has been looked at, and whose attributes or children will be: asks for what lies
/// after the name.
[[gnu::always_inline]] inline void prefetch_attributes(const Node* node) {
    constexpr std::size_t entry = 4 * sizeof(void*);  // of the list, with the allocator's header
    constexpr std::size_t two_attributes = 2 * (sizeof(Attribute) + entry) / line;
    if (node != nullptr)
        prefetch<two_attributes>(node, line);
}

}  // namespace quxml

#endif
