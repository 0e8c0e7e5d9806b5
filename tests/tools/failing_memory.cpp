// SPDX-License-Identifier: MIT

// Loaded before the C library, this refuses memory to a program: from the allocation on whose number is in QUXML_FAIL_FROM,
// or only that one if its number is in QUXML_FAIL_ONCE. `operator new` allocates with malloc, so it fails as well. With
// QUXML_COUNT, it writes to standard error how many allocations there were.

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming): the names are the C library's
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

namespace {

long allocations = 0;

long read_number(const char* variable) {
    const char* value = std::getenv(variable);
    return value == nullptr ? 0 : std::strtol(value, nullptr, 10);
}

/// Whether this allocation is one to be refused.
bool is_refused() {
    static const long from = read_number("QUXML_FAIL_FROM");
    static const long once = read_number("QUXML_FAIL_ONCE");
    ++allocations;
    const bool refused = allocations == once || (from > 0 && allocations >= from);
    if (refused)
        errno = ENOMEM;
    return refused;
}

[[gnu::destructor]] void write_count() {
    if (std::getenv("QUXML_COUNT") == nullptr)
        return;
    char text[32];
    const int size = std::snprintf(text, sizeof text, "%ld", allocations);
    const ssize_t ignored = ::write(STDERR_FILENO, text, static_cast<std::size_t>(size));
    static_cast<void>(ignored);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    return is_refused() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return is_refused() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    return is_refused() ? nullptr : __libc_realloc(memory, size);
}
}
