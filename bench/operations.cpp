// The library's own operations at three sizes, so that their growth shows.

#include <benchmark/benchmark.h>
#include <quxml/quxml.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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
                quxml::Element* root = document->create_root_node("root");
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
    const Order ascending = [](std::size_t i, std::size_t /*n*/) { return i; };
    const Order descending = [](std::size_t i, std::size_t n) { return n - 1 - i; };
    const Order scattered = [](std::size_t i, std::size_t n) { return i * 7919 % n; };
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
    for (auto _ : state) {
        const std::function<void()> work = operation.prepare(size);
        const Clock::time_point start = Clock::now();
        work();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
    state.SetComplexityN(state.range(0));
}

void add(const MeasuredOperation& operation) {
    constexpr int iterations = 3;
    constexpr int repetitions = 5;
    benchmark::RegisterBenchmark(operation.name,
                                 [operation](benchmark::State& state) { run(state, operation); })
        ->Arg(small)
        ->Arg(medium)
        ->Arg(large)
        ->Iterations(iterations)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly()
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Complexity();
}

}  // namespace

int main(int argc, char** argv) {
    for (const MeasuredOperation& operation : quxml_test::measured_operations())
        add(operation);
    for (const MeasuredOperation& operation : sorted_additions())
        add(operation);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
