// SPDX-License-Identifier: MIT
#include "commands/file_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <map>

#include "terminal/Failure.h"
#include "terminal/files.h"
#include "terminal/words.h"

namespace tool {

void add_files_argument(CLI::App& command, std::vector<std::string>& files) {
    command.add_option("FILE", files, "The documents; standard input if there is none, or for -");
}

bool is_standard_input(const std::vector<std::string>& files) {
    return files == std::vector<std::string>{standard_input};
}

std::vector<std::string> take_files(std::vector<std::string>& words,
                                    bool (*is_other)(const std::string& word)) {
    const auto after_first = words.begin() + 1;
    auto first = std::find_if(after_first, words.end(), [&](const std::string& word) {
        return looks_like_file(word) && !is_other(word);
    });
    if (first == words.end() && first != after_first && !is_other(words.back()))
        --first;
    std::vector<std::string> files(std::make_move_iterator(first), std::make_move_iterator(words.end()));
    words.erase(first, words.end());
    return files;
}

void require_no_file(const Argument& argument, const std::string& advice) {
    if (is_file(argument.value))
        throw Failure(ExitCode::usage, std::string(argument.name) + ": " + quote(argument.value) +
                                           " is also a file; " + advice +
                                           "; \"quxml edit -e\" takes it for " + argument.name);
}

std::string get_advice_on_files(const std::string& word) {
    return "for the file write ./" + word;
}

void require_one_standard_input(const std::vector<std::string>& files) {
    if (std::count(files.begin(), files.end(), standard_input) > 1)
        throw Failure(ExitCode::usage, "only one FILE can be standard input");
}

void require_distinct_files(const std::vector<std::string>& files) {
    std::map<std::string, std::string> names;
    for (const std::string& file : files) {
        const auto [other, is_new] = names.emplace(get_true_name(file), file);
        if (is_new)
            continue;
        throw Failure(ExitCode::usage,
                      other->second == file
                          ? "FILE: " + quote(file) + " is given more than once"
                          : "FILE: " + quote(other->second) + " and " + quote(file) + " are the same file");
    }
}

}  // namespace tool
