// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_MEASURED_WORK_H
#define QUXML_TESTS_SUPPORT_MEASURED_WORK_H

#include <functional>

/// Does the work. A tool that counts instructions counts in this function alone, which it knows by its plain name.
/// In a program that links it, `time` always returns the same.
extern "C" void quxml_measured_work(const std::function<void()>& work);

#endif
