// SPDX-License-Identifier: MIT

// Runs one measured operation, for a tool that counts instructions:
//
//     complexity_probe                 prints each operation's name, its largest size and the limit of its growth
//     complexity_probe OPERATION N     runs it; all that counts happens in `quxml_measured_work`

#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <string>

#include "robustness/measured_operations.h"
#include "support/measured_work.h"

namespace {

using quxml_test::measured_operations;
using quxml_test::MeasuredOperation;

void print_operations() {
    for (const MeasuredOperation& operation : measured_operations()) {
        const bool is_linear = operation.growth == quxml_test::Growth::linear;
        std::cout << operation.name << ' ' << operation.size << ' '
                  << (is_linear ? quxml_test::linear_limit : quxml_test::quadratic_limit) << '\n';
    }
}

int run(const char* name, std::size_t size) {
    for (const MeasuredOperation& operation : measured_operations()) {
        if (std::strcmp(operation.name, name) != 0)
            continue;
        const std::function<void()> work = operation.prepare(size);
        quxml_measured_work(work);
        return 0;
    }
    std::cerr << "complexity_probe: no such operation: " << name << '\n';
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 3)
            return run(argv[1], std::stoul(argv[2]));
        print_operations();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "complexity_probe: " << error.what() << '\n';
        return 1;
    }
}
