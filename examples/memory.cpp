// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <cstdlib>
#include <iostream>
#include <new>

// Measures the memory of a tree by counting what is allocated while it is built.

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables,cppcoreguidelines-no-malloc): it is the allocator.
static std::size_t allocations = 0;
static std::size_t bytes = 0;

void* operator new(std::size_t size) {
    ++allocations;
    bytes += size;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables,cppcoreguidelines-no-malloc)

int main() {
    constexpr std::size_t count = 1000;
    constexpr std::size_t limit = 200;
    quxml::Document document(false);
    quxml::Element* list = document.create_root_node("list");
    const std::string name = "entry";
    allocations = 0;
    bytes = 0;
    for (std::size_t i = 0; i < count; ++i)
        list->add_child(name);
    std::cout << "allocations for an element: " << allocations / count << '\n';
    std::cout << "bytes for an element: " << (bytes / count <= limit ? "at most 200" : "more than 200")
              << '\n';
}
