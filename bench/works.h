// SPDX-License-Identifier: MIT
#ifndef QUXML_BENCH_WORKS_H
#define QUXML_BENCH_WORKS_H

// What is measured: a piece of work, the inputs that it is done on, and the libraries that do it.

#include <functional>
#include <string>
#include <vector>

#include "forked_timing.h"
#include "libraries.h"

namespace bench {

struct Input {
    std::string name;
    std::function<std::string()> text;
    Path path;
};

struct Contestant {
    std::string name;
    std::function<Run(const std::string& text, const Path& path)> prepare;
};

struct Work {
    std::string name;
    std::vector<Input> inputs;
    std::vector<Contestant> contestants;  // the first is what the others are compared with
};

std::vector<Work> works();

}  // namespace bench

#endif
