#ifndef QUXML_BENCH_MEASURED_WORK_H
#define QUXML_BENCH_MEASURED_WORK_H

#include <functional>

/// Does the work. A tool that counts instructions is told to count in this function only, by its plain name.
extern "C" void quxml_measured_work(const std::function<void()>& work);

#endif
