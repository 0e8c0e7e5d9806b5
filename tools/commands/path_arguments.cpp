// SPDX-License-Identifier: MIT
#include "commands/path_arguments.h"

#include <CLI/CLI.hpp>
#include <set>

#include "commands/argument_checks.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

std::string check_value(const std::string& text) {
    return is_setting(text) ? "" : quote(text) + " is not NAME=VALUE";
}

void take_values(const std::vector<std::string>& settings, Values& values) {
    require_distinct("--arg", get_setting_names(settings));
    for (const auto& [name, value] : split_settings(settings))
        values[name] = value;
}

/// The names that stand in a path, with or without a value.
std::set<std::string> get_names_in(const Path& path) {
    std::set<std::string> names;
    for (const PathStep& step : get_steps(path)) {
        for (const Predicate& predicate : step.predicates)
            names.insert(predicate.given);
    }
    names.erase("");
    return names;
}

std::string get_complaint_about_unused(const std::string& name) {
    return "no predicate of the path has $" + name +
           " as its value; it is written without quotes, as in [@name=$" + name + ']';
}

}  // namespace

void add_values_option(CLI::App& command, Values& values) {
    command
        .add_option_function<std::vector<std::string>>(
            "--arg", [&values](const std::vector<std::string>& settings) { take_values(settings, values); },
            "What $NAME in PATH is, whatever it holds; may be given several times")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(check_value, ""));
}

void add_path_arguments(CLI::App& command, Path& path, const std::string& description) {
    add_values_option(command, path.values);
    command.add_option("PATH", path.text, description)->required();
}

void require_all_named(const Values& values, const std::vector<Path>& paths) {
    std::set<std::string> named;
    for (const Path& path : paths) {
        for (const std::string& name : get_names_in(path)) {
            if (path.values.count(name) == 0)
                return;
            named.insert(name);
        }
    }
    for (const auto& [name, value] : values) {
        if (named.count(name) == 0)
            throw Failure(ExitCode::usage, "--arg " + name + ": " + get_complaint_about_unused(name));
    }
}

}  // namespace tool
