// SPDX-License-Identifier: MIT
#include "robustness/counting_heap.h"

#include <libxml/xmlmemory.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace quxml_test {

namespace {

CountingHeap heap_of_cpp;
CountingHeap heap_of_xml;

bool is_failing(CountingHeap& heap) noexcept {
    ++heap.allocations;
    const bool fails = heap.failing_from != 0 && (heap.keeps_failing ? heap.allocations >= heap.failing_from
                                                                     : heap.allocations == heap.failing_from);
    heap.failures += fails ? 1U : 0U;
    return fails;
}

void* count_in(CountingHeap& heap, void* block, std::size_t size) noexcept {
    if (block == nullptr)
        return nullptr;
    ++heap.blocks;
    heap.requested += size;
    heap.bytes += malloc_usable_size(block);
    heap.peak = std::max(heap.peak, heap.bytes);
    if (size == heap.watched_size && heap.watched_block == nullptr)
        heap.watched_block = block;
    return block;
}

void count_out(CountingHeap& heap, void* block) noexcept {
    if (block == nullptr)
        return;
    --heap.blocks;
    heap.bytes -= malloc_usable_size(block);
}

// NOLINTBEGIN(cppcoreguidelines-no-malloc): this is what memory is managed with
void* allocate(CountingHeap& heap, std::size_t size) noexcept {
    if (is_failing(heap))
        return nullptr;
    return count_in(heap, std::malloc(size == 0 ? 1 : size), size);
}

void release(CountingHeap& heap, void* block) noexcept {
    count_out(heap, block);
    std::free(block);
}

extern "C" void* quxml_test_xml_malloc(std::size_t size) {
    return allocate(heap_of_xml, size);
}

extern "C" void quxml_test_xml_free(void* block) {
    release(heap_of_xml, block);
}

extern "C" void* quxml_test_xml_realloc(void* block, std::size_t size) {
    if (is_failing(heap_of_xml))
        return nullptr;
    count_out(heap_of_xml, block);
    void* moved = std::realloc(block, size == 0 ? 1 : size);
    count_in(heap_of_xml, moved == nullptr ? block : moved, size);
    return moved;
}

// NOLINTEND(cppcoreguidelines-no-malloc)

extern "C" char* quxml_test_xml_strdup(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    void* copy = allocate(heap_of_xml, size);
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

const int is_set_up =
    xmlMemSetup(quxml_test_xml_free, quxml_test_xml_malloc, quxml_test_xml_realloc, quxml_test_xml_strdup);

}  // namespace

CountingHeap& cpp_heap() noexcept {
    return heap_of_cpp;
}

CountingHeap& xml_heap() noexcept {
    return heap_of_xml;
}

}  // namespace quxml_test

using quxml_test::cpp_heap;

void* operator new(std::size_t size) {
    if (void* block = quxml_test::allocate(cpp_heap(), size))
        return block;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
    return quxml_test::allocate(cpp_heap(), size);
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return operator new(size, nothrow);
}

void operator delete(void* block) noexcept {
    quxml_test::release(cpp_heap(), block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

void operator delete(void* block, const std::nothrow_t& /*nothrow*/) noexcept {
    operator delete(block);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

void operator delete[](void* block, const std::nothrow_t& /*nothrow*/) noexcept {
    operator delete(block);
}
