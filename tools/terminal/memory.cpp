// SPDX-License-Identifier: MIT

// When memory runs out, the program says so and ends with code 5, at once. There is nothing to undo, since a file is only
// replaced as a whole, and nothing that could still be done is reliable: libxml2 does not report each allocation that
// failed, so that a document seems malformed, or an encoding unknown; an exception takes memory itself; and nobody
// catches what is thrown before main.
//
// Only while a file is being replaced is there something to undo, a new file beside it. There std::bad_alloc is thrown.

#include "terminal/memory.h"

#include <libxml/xmlmemory.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/exit_codes.h"

namespace tool {

namespace {

/// What is constructed before main may allocate as well, and no order among source files is promised, so this comes
/// first.
[[gnu::constructor(101)]] void end_new_for_lack_of_memory() {
    std::set_new_handler(end_for_lack_of_memory);
}

void* require(void* memory) {
    if (memory == nullptr)
        end_for_lack_of_memory();
    return memory;
}

// NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory,hicpp-no-malloc): libxml2 frees with free
void* allocate(std::size_t size) {
    return require(std::malloc(size));
}

void* reallocate(void* memory, std::size_t size) {
    return require(std::realloc(memory, size));
}

char* duplicate(const char* text) {
    return static_cast<char*>(std::memcpy(allocate(std::strlen(text) + 1), text, std::strlen(text) + 1));
}

void release(void* memory) {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory,hicpp-no-malloc)

}  // namespace

void end_for_lack_of_memory() noexcept {
    constexpr std::string_view message = "quxml: out of memory\n";
    const ssize_t ignored = ::write(STDERR_FILENO, message.data(), message.size());
    static_cast<void>(ignored);
    std::_Exit(static_cast<int>(ExitCode::io));
}

// The end of the heap is taken with the first piece that does not fit into what is left of it. Other C libraries than
// GNU's have no such knobs.
void expect_memory(std::size_t size) {
#ifdef M_TOP_PAD
    constexpr int large_page = 1 << 21;
    constexpr int usual_pad = 1 << 17;
    constexpr std::size_t most = 1 << 28;
    if (size < large_page)
        return;
    std::size_t expected = std::min(size, most);
    mallopt(M_MMAP_THRESHOLD, 2 * large_page);
    mallopt(M_TRIM_THRESHOLD, static_cast<int>(expected) + 2 * large_page);
    mallopt(M_TOP_PAD, static_cast<int>(expected));
    std::string beginning;
    beginning.reserve(large_page);
    mallopt(M_TOP_PAD, usual_pad);
    void* first_page = beginning.data();
    if (std::align(static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), 1, first_page, expected) != nullptr)
        madvise(first_page, expected, MADV_HUGEPAGE);
#else
    static_cast<void>(size);
#endif
}

void end_libxml2_for_lack_of_memory() {
    xmlMemSetup(release, allocate, reallocate, duplicate);
}

}  // namespace tool
