// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_MANUAL_HELP_H
#define QUXML_TOOLS_MANUAL_HELP_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

// The help, the manual page and the completions are all made from what the commands declare to CLI11.

/// Lays the help out: names, what they take, and what they do.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_option_name(const CLI::Option* option, bool is_positional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
};

/// The names of an option, such as "-i" and "--in-place"; none for an argument.
std::vector<std::string> get_names(const CLI::Option& option);

/// What an option takes, such as "NAME"; with its "=" if that has to stand between; empty for a flag.
std::string get_value_name(const CLI::Option& option);

/// The options of a command that have names, or its arguments.
std::vector<const CLI::Option*> get_options(const CLI::App& command);
std::vector<const CLI::Option*> get_arguments(const CLI::App& command);

/// The commands of the program, but for those that only shells call.
std::vector<const CLI::App*> get_commands(const CLI::App& app);

/// Such as "quxml set [OPTIONS] PATH SETTING... [FILE]".
std::string get_synopsis(const CLI::App& command);

}  // namespace tool

#endif
