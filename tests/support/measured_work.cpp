// SPDX-License-Identifier: MIT
#include "support/measured_work.h"

#include <ctime>

[[gnu::noinline]] void quxml_measured_work(const std::function<void()>& work) {
    work();
    // Otherwise the function would end before the work, with a jump there.
    __asm__ volatile("");
}

#ifdef __GLIBC__
/// Takes the place of the C library's function: libxml2 seeds its dictionaries with the time of day, and the way
/// they grow then would change, by chance, what is counted.
extern "C" std::time_t time(std::time_t* out) noexcept {
    if (out != nullptr)
        *out = 1;
    return 1;
}
#endif
