// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_MEMORY_H
#define QUXML_TOOLS_TERMINAL_MEMORY_H

#include <cstddef>
#include <new>

namespace tool {

/// Writes "quxml: out of memory" and ends the program with code 5, without any allocation. Nothing is destroyed.
[[noreturn]] void end_for_lack_of_memory() noexcept;

/// Has libxml2 end the program, too, when it gets no memory; `operator new` does so from the start. To be called before
/// anything else of libxml2.
void end_libxml2_for_lack_of_memory();

/// Takes address space for so many bytes at once, and asks the system for large pages there, so that filling them with
/// small pieces is faster. For programs that soon need that much; without effect where there is not that much.
void expect_memory(std::size_t size);

/// While it lives, `operator new` throws std::bad_alloc instead of ending the program, for work that has to be undone.
class LackOfMemoryThrown {
public:
    LackOfMemoryThrown() : former(std::set_new_handler(nullptr)) {}
    ~LackOfMemoryThrown() { std::set_new_handler(former); }

    LackOfMemoryThrown(const LackOfMemoryThrown&) = delete;
    LackOfMemoryThrown& operator=(const LackOfMemoryThrown&) = delete;

private:
    std::new_handler former;
};

}  // namespace tool

#endif
