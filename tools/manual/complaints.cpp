// SPDX-License-Identifier: MIT
#include "manual/complaints.h"

#include <algorithm>
#include <vector>

#include "manual/help.h"
#include "terminal/files.h"
#include "terminal/similar.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

std::vector<std::string> get_command_names(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : get_commands(app))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> get_option_names(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : get_options(command)) {
        for (const std::string& name : get_names(*option))
            names.push_back(name);
    }
    return names;
}

/// The command that was named, or the program itself if there is none.
const CLI::App& get_command(const CLI::App& app) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
}

std::string get_complaint(const CLI::App& app, const std::string& word) {
    const std::string unknown = to_printable(word);
    const CLI::App& command = get_command(app);
    if (begins_with(word, "-") && is_file(word))
        return "there is no option " + unknown + "; for the file of that name write ./" + unknown +
               ", or -- before it";
    if (begins_with(unknown, "-"))
        return "there is no option " + unknown + ask_for_similar(unknown, get_option_names(command));
    return "there is no command " + quote(unknown) + ask_for_similar(unknown, get_command_names(app));
}

/// A word that is neither a command nor an option; empty if there is none.
std::string get_unknown(const CLI::App& app) {
    const std::vector<std::string> words = app.remaining(true);
    const auto option = std::find_if(words.begin(), words.end(), [](const std::string& word) {
        return begins_with(word, "-") && word != "--";
    });
    if (option != words.end())
        return app.get_subcommands().empty() ? words.front() : *option;
    return app.get_subcommands().empty() && !words.empty() ? words.front() : "";
}

}  // namespace

std::string get_complaint(const CLI::App& app) {
    const std::string unknown = get_unknown(app);
    return unknown.empty() ? "" : get_complaint(app, unknown);
}

}  // namespace tool
