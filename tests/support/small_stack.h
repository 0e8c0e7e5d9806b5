// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_SMALL_STACK_H
#define QUXML_TESTS_SUPPORT_SMALL_STACK_H

#include <pthread.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <system_error>

namespace quxml_test {

// AddressSanitizer makes frames larger and runs its own allocator on the caller's stack; by how much depends
// on the compiler and on the optimisation, so it gets twice the room. A call for each of a million levels
// needs a hundred times as much.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUXML_TEST_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(QUXML_TEST_ASAN)
constexpr std::size_t small_stack_size = 256 * std::size_t{1024};
#else
constexpr std::size_t small_stack_size = 128 * std::size_t{1024};
#endif
#undef QUXML_TEST_ASAN

/// What the thread is given and what it hands back.
struct SmallStackRun {
    const std::function<void()>& work;
    std::exception_ptr failure;

    static void* start(void* argument) noexcept {
        auto* run = static_cast<SmallStackRun*>(argument);
        try {
            run->work();
        } catch (...) {
            run->failure = std::current_exception();
        }
        return nullptr;
    }
};

/// Runs `work` on a thread with a stack of 128 KiB, the size of a small device's, and waits for it; what it
/// throws is thrown here. A deeper stack ends the test program with a segmentation fault. GoogleTest's
/// expectations may be used inside.
#ifdef __EMSCRIPTEN__
// There are no threads, and the whole program has a stack of that size.
inline void on_small_stack(const std::function<void()>& work) {
    work();
}
#else
inline void on_small_stack(const std::function<void()>& work) {
    SmallStackRun run = {work, nullptr};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    int error = pthread_attr_setstacksize(&attributes, small_stack_size);
    pthread_t thread = {};
    if (error == 0)
        error = pthread_create(&thread, &attributes, SmallStackRun::start, &run);
    pthread_attr_destroy(&attributes);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "a thread with a small stack");
    pthread_join(thread, nullptr);
    if (run.failure)
        std::rethrow_exception(run.failure);
}
#endif

}  // namespace quxml_test

#endif
