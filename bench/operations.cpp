// The library's own operations at three sizes, so that their growth shows:
//
//     quxml_operations [FLAG...]         times all of them, see --help
//     quxml_operations OPERATION N       does one of them once, in `quxml_measured_work`

#include <benchmark/benchmark.h>
#include <quxml/quxml.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "measured_work.h"
#include "robustness/measured_operations.h"

namespace {

using quxml_test::Growth;
using quxml_test::MeasuredOperation;

constexpr std::size_t small = 1000;
constexpr std::size_t medium = 4000;
constexpr std::size_t large = 16000;

/// The number of the child that is added after i others.
using Order = std::size_t (*)(std::size_t i, std::size_t n);

/// Adds n children to an element that is kept sorted, each with a name or an item of its own.
MeasuredOperation measure_sorted_additions(const char* name, Order order, bool by_item) {
    return {name, Growth::quadratic, large, [order, by_item](std::size_t n) -> std::function<void()> {
                const auto document = std::make_shared<quxml::Document>(true);
                quxml::Element* root = document->create_root_node("list");
                if (by_item)
                    return [document, root, order, n] {
                        for (std::size_t i = 0; i < n; ++i)
                            root->add_child("entry", static_cast<int>(order(i, n)));
                    };
                return [document, root, order, n] {
                    for (std::size_t i = 0; i < n; ++i)
                        root->add_child("n" + std::to_string(n + order(i, n)));
                };
            }};
}

std::vector<MeasuredOperation> sorted_additions() {
    static constexpr std::size_t prime = 7919;
    const Order ascending = [](std::size_t i, std::size_t /*n*/) { return i; };
    const Order descending = [](std::size_t i, std::size_t n) { return n - 1 - i; };
    const Order scattered = [](std::size_t i, std::size_t n) { return i * prime % n; };
    return {
        measure_sorted_additions("add_child_sorted_names_ascending", ascending, false),
        measure_sorted_additions("add_child_sorted_names_descending", descending, false),
        measure_sorted_additions("add_child_sorted_names_scattered", scattered, false),
        measure_sorted_additions("add_child_sorted_items_ascending", ascending, true),
        measure_sorted_additions("add_child_sorted_items_descending", descending, true),
        measure_sorted_additions("add_child_sorted_items_scattered", scattered, true),
    };
}

/// A piece of work can be done only once, so each iteration prepares one of its own, untimed.
void run(benchmark::State& state, const MeasuredOperation& operation) {
    using Clock = std::chrono::steady_clock;
    const auto size = static_cast<std::size_t>(state.range(0));
    while (state.KeepRunning()) {
        const std::function<void()> work = operation.prepare(size);
        const Clock::time_point start = Clock::now();
        work();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
    state.SetComplexityN(state.range(0));
}

void add(const MeasuredOperation& operation) {
    constexpr int repetitions = 5;
    const bool is_slow = operation.growth == Growth::quadratic;
    benchmark::RegisterBenchmark(operation.name,
                                 [operation](benchmark::State& state) { run(state, operation); })
        ->Arg(small)
        ->Arg(medium)
        ->Arg(large)
        ->Iterations(is_slow ? 1 : 4)
        ->Repetitions(repetitions)
        ->ComputeStatistics(
            "least",
            [](const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); })
        ->ReportAggregatesOnly()
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Complexity();
}

std::vector<MeasuredOperation> all_operations() {
    std::vector<MeasuredOperation> all = quxml_test::measured_operations();
    for (const MeasuredOperation& operation : sorted_additions())
        all.push_back(operation);
    return all;
}

/// For a tool that counts instructions.
int run_once(const std::string& name, std::size_t size) {
    for (const MeasuredOperation& operation : all_operations()) {
        if (operation.name != name)
            continue;
        quxml_measured_work(operation.prepare(size));
        return 0;
    }
    std::cerr << "quxml_operations: no such operation: " << name << '\n';
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && argv[1][0] != '-')
        return run_once(argv[1], std::stoul(argv[2]));
    for (const MeasuredOperation& operation : all_operations())
        add(operation);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
