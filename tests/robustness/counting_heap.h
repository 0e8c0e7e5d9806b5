// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_ROBUSTNESS_COUNTING_HEAP_H
#define QUXML_TESTS_ROBUSTNESS_COUNTING_HEAP_H

// The two allocators of a test program that links counting_heap.cpp: `operator new` and, set by `xmlMemSetup`
// before libxml2 is used for the first time, libxml2's own. Both count what they hand out and fail on demand.
// They are meant for one thread at a time.

#include <cstddef>

namespace quxml_test {

/// What one allocator has handed out, and which of its next allocations fail.
struct CountingHeap {
    std::size_t blocks = 0;       // that are in use
    std::size_t bytes = 0;        // in these blocks
    std::size_t peak = 0;         // of `bytes`, since it was last set
    std::size_t requested = 0;    // bytes that were asked for and given, ever
    std::size_t allocations = 0;  // asked for, whether they failed or not, since it was last set
    std::size_t failures = 0;     // of these

    std::size_t failing_from = 0;  // the number of the first allocation that fails, from 1; 0: none
    bool keeps_failing = false;    // whether those after it fail as well

    std::size_t watched_size = 0;   // the first block of exactly this size ...
    void* watched_block = nullptr;  // ... that was handed out
};

/// For `operator new` and `operator delete`.
CountingHeap& cpp_heap() noexcept;

/// For libxml2's `xmlMalloc`, `xmlRealloc`, `xmlFree` and `xmlMemStrdup`.
CountingHeap& xml_heap() noexcept;

/// As long as it lives, one allocation fails, or all from that one on.
class FailingAllocation {
public:
    /// \param number of the allocation, the next one being 1.
    FailingAllocation(CountingHeap& failing_heap, std::size_t number, bool keeps_failing)
        : heap(failing_heap) {
        heap.allocations = 0;
        heap.failures = 0;
        heap.keeps_failing = keeps_failing;
        heap.failing_from = number;
    }

    ~FailingAllocation() { heap.failing_from = 0; }

    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

private:
    CountingHeap& heap;
};

}  // namespace quxml_test

#endif
