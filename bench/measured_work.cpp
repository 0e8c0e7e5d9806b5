#include "measured_work.h"

[[gnu::noinline]] void quxml_measured_work(const std::function<void()>& work) {
    work();
}
