// SPDX-License-Identifier: MIT
#include "manual/help.h"

namespace tool {

namespace {

/// Flags that may take a value have it in braces, such as "--backup{~}".
bool has_optional_value(const CLI::Option& option) {
    return option.get_name(false, true).find('{') != std::string::npos;
}

std::vector<const CLI::Option*> get_all(const CLI::App& command, bool positional) {
    return command.get_options(
        [&](const CLI::Option* option) { return option->get_positional() == positional; });
}

std::string get_argument(const CLI::Option& argument) {
    const std::string name = argument.get_name(true) + (argument.get_expected_max() > 1 ? "..." : "");
    return argument.get_required() ? name : '[' + name + ']';
}

}  // namespace

HelpFormatter::HelpFormatter() {
    constexpr std::size_t width_of_names = 24;
    column_width(width_of_names);
}

std::vector<std::string> get_names(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back('-' + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::string get_value_name(const CLI::Option& option) {
    if (has_optional_value(option))
        return "[=SUFFIX]";
    return option.get_type_size() == 0 ? "" : option.get_type_name();
}

std::vector<const CLI::Option*> get_options(const CLI::App& command) {
    return get_all(command, false);
}

std::vector<const CLI::Option*> get_arguments(const CLI::App& command) {
    return get_all(command, true);
}

std::vector<const CLI::App*> get_commands(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::string get_synopsis(const CLI::App& command) {
    std::string synopsis = "quxml " + command.get_name() + " [OPTIONS]";
    for (const CLI::Option* argument : get_arguments(command))
        synopsis += ' ' + get_argument(*argument);
    return synopsis;
}

std::string HelpFormatter::make_option_name(const CLI::Option* option, bool is_positional) const {
    if (is_positional)
        return option->get_name(true);
    std::string text;
    for (const std::string& name : get_names(*option))
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    if (option->get_positional())
        return "";
    const std::string value = get_value_name(*option);
    return value.empty() || value[0] == '[' ? value : ' ' + value;
}

}  // namespace tool
