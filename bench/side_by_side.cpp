// SPDX-License-Identifier: MIT

// Measures the library against others: for each work and input, the libraries take turns, each in a forked
// child.

#include <libxml/parser.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iostream>
#include <iterator>
#include <stdexcept>

#include "support/measured_work.h"
#include "works.h"

namespace bench {

namespace {

constexpr int usual_repetitions = 7;
constexpr double usual_milliseconds = 40;

struct Options {
    std::vector<std::string> works;
    std::vector<std::string> once;  // work, input, library
    bool only_lists = false;
    bool only_peaks = false;
    int repetitions = usual_repetitions;
    double milliseconds = usual_milliseconds;
};

constexpr double nanoseconds_per_millisecond = 1e6;

template <class Named>
const Named& find_named(const std::vector<Named>& all, const std::string& name) {
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Named& one) { return one.name == name; });
    if (found == all.end())
        throw std::invalid_argument("no such name: " + name);
    return *found;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

std::string outcome(const Contestant& contestant, const std::string& text, const Path& path) {
    return in_child([&] {
        const Run run = contestant.prepare(text, path);
        if (run.before)
            run.before();
        run.work();
        return run.outcome();
    });
}

void check_equal_outcomes(const Work& work, const Input& input, const std::string& text) {
    const std::string expected = outcome(work.contestants.front(), text, input.path);
    for (const Contestant& contestant : work.contestants) {
        if (outcome(contestant, text, input.path) != expected)
            throw std::runtime_error(work.name + ' ' + input.name + ": " + contestant.name +
                                     " does something else");
    }
}

/// Nanoseconds: a list for each contestant, an entry for each repetition.
std::vector<std::vector<double>> measure(const Work& work, const Input& input, const std::string& text,
                                         const Options& options) {
    std::vector<std::vector<double>> times(work.contestants.size());
    for (int repetition = 0; repetition < options.repetitions; ++repetition) {
        for (std::size_t i = 0; i < times.size(); ++i) {
            const std::string time = in_child([&] {
                const Run run = work.contestants[i].prepare(text, input.path);
                return std::to_string(time_per_run(run, options.milliseconds * nanoseconds_per_millisecond));
            });
            times[i].push_back(std::stod(time));
        }
    }
    return times;
}

/// Prints, as JSON, the times of two contestants and the ratios of those that were measured one after the
/// other.
void print_record(const Work& work, const Input& input, const Contestant& rival,
                  const std::vector<double>& ours, const std::vector<double>& theirs) {
    std::vector<double> ratios;
    std::transform(ours.begin(), ours.end(), theirs.begin(), std::back_inserter(ratios), std::divides<>());
    std::sort(ratios.begin(), ratios.end());
    static const char* separator = "[\n";
    std::cout << separator << R"({"work": ")" << work.name << R"(", "input": ")" << input.name
              << R"(", "rival": ")" << rival.name << R"(", "ours": )" << median(ours) << R"(, "theirs": )"
              << median(theirs) << R"(, "ratio": )" << median(ratios) << R"(, "quartiles": [)"
              << ratios[ratios.size() / 4] << ", " << ratios[ratios.size() * 3 / 4] << "]}";
    separator = ",\n";
}

void compare(const Work& work, const Input& input, const Options& options) {
    std::cerr << work.name << ' ' << input.name << '\n';
    const std::string text = in_child(input.text);
    check_equal_outcomes(work, input, text);
    const std::vector<std::vector<double>> times = measure(work, input, text, options);
    for (std::size_t i = 1; i < times.size(); ++i)
        print_record(work, input, work.contestants[i], times[0], times[i]);
}

std::vector<std::string> names_of_works() {
    std::vector<std::string> names;
    for (const Work& work : works())
        names.push_back(work.name);
    return names;
}

bool is_asked_for(const Work& work, const Options& options) {
    return options.works.empty() ||
           std::find(options.works.begin(), options.works.end(), work.name) != options.works.end();
}

/// For a tool that counts instructions: all that counts happens in `quxml_measured_work`.
void run_once(const Options& options) {
    const std::vector<Work> all = works();
    const Work& work = find_named(all, options.once[0]);
    const Input& input = find_named(work.inputs, options.once[1]);
    const Run run = find_named(work.contestants, options.once[2]).prepare(input.text(), input.path);
    xmlInitParser();
    if (run.before)
        run.before();
    quxml_measured_work(run.work);
}

void list() {
    for (const Work& work : works()) {
        for (const Input& input : work.inputs)
            std::cout << work.name << ' ' << input.name << '\n';
    }
}

/// Prints, as JSON, how many bytes each library takes at most while it reads a large text and destroys the tree.
void print_peaks() {
    const std::vector<Work> all = works();
    const Work& work = find_named(all, "read");
    const std::string text = in_child(find_named(work.inputs, "siblings").text);
    std::cout << "{\"text\": " << text.size();
    for (const Contestant& contestant : work.contestants) {
        const std::string peak =
            in_child([&] { return std::to_string(peak_of(contestant.prepare(text, {}).work)); });
        std::cout << ",\n\"" << contestant.name << "\": " << peak;
    }
    std::cout << "}\n";
}

void compare_all(const Options& options) {
    for (const Work& work : works()) {
        for (const Input& input : work.inputs) {
            if (is_asked_for(work, options))
                compare(work, input, options);
        }
    }
    std::cout << "\n]\n";
}

void run(const Options& options) {
    if (options.only_lists)
        list();
    else if (options.only_peaks)
        print_peaks();
    else if (options.once.empty())
        compare_all(options);
    else
        run_once(options);
}

void add_options(CLI::App& app, Options& options) {
    app.add_option("--repetitions", options.repetitions, "How often each library has its turn")
        ->check(CLI::PositiveNumber);
    app.add_option("--milliseconds", options.milliseconds, "How long a turn takes at least");
    app.add_flag("--list", options.only_lists, "Only print the works and their inputs");
    app.add_flag("--peaks", options.only_peaks, "Only print how much memory reading takes at most");
    app.add_option("--once", options.once, "Only do WORK on INPUT by LIBRARY, once and untimed")->expected(3);
    app.add_option("WORK", options.works, "What is measured; everything, if nothing is named")
        ->check(CLI::IsMember(names_of_works()));
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
    try {
        CLI::App app(
            "Prints, as JSON, how long the library and others take for the same work, and the ratios.");
        bench::Options options;
        bench::add_options(app, options);
        CLI11_PARSE(app, argc, argv)
        bench::run(options);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "quxml_side_by_side: " << error.what() << '\n';
        return 1;
    }
}
