// SPDX-License-Identifier: MIT
#include <quxml/version.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "manual/complaints.h"
#include "manual/completion.h"
#include "manual/help.h"
#include "manual/manual.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/memory.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* description =
    "Looks into XML documents, and changes them. set, unset, text, add, remove and edit change what\n"
    "they are asked to change, format only white space between elements, and sort only their order;\n"
    "all of them keep every other byte. Only format and sort with --canonical leave out what the\n"
    "library does not read, such as comments, CDATA sections and prefixes: \"quxml loss\" lists these,\n"
    "a warning says so, and a file that has any is changed in place only with --lossy.";

std::string get_version() {
    return "quxml " + std::to_string(QUXML_VERSION_MAJOR) + '.' + std::to_string(QUXML_VERSION_MINOR) + '.' +
           std::to_string(QUXML_VERSION_PATCH);
}

/// Names the help on the command in question.
Failure with_advice(const CLI::App& app, const std::string& message) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const std::string command = commands.empty() ? "" : commands.front()->get_name() + ' ';
    return {ExitCode::usage, message + "\nquxml " + command + "--help says more."};
}

/// Answers --help and --version, and refuses everything that cannot be understood.
ExitCode answer(const CLI::App& app, const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream complaint;
    if (app.exit(error, out, complaint) != 0) {
        const std::string misspelt = get_complaint(app);
        throw with_advice(app, misspelt.empty() ? error.what() : misspelt);
    }
    std::string text = out.str();
    write_output(text);
    return ExitCode::done;
}

void set_up(CLI::App& app, Action& action) {
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("--version", get_version(), "Write the version and exit");
    app.set_help_flag("-h,--help", "Write this help and exit");
    app.require_subcommand(1);
    app.footer(help_on_exit_codes);
    for (const auto add :
         {add_format, add_sort, add_check, add_loss, add_outline, add_query, add_explain, add_diff, add_set,
          add_unset, add_text, add_add, add_remove, add_edit, add_complete})
        add(app, action);
}

/// CLI11 takes the next argument for the value that is missing in "--attribute=".
void refuse_missing_values(int argc, const char* const* argv) {
    for (int i = 1; i < argc && std::string(argv[i]) != "--"; ++i) {
        const std::string argument = argv[i];
        if (begins_with(argument, "--") && argument.find('=') == argument.size() - 1)
            throw Failure(ExitCode::usage, argument + ": a value is missing after the equal sign");
    }
}

/// A missing value is reported first: it may be why the rest is not understood.
void parse(CLI::App& app, int argc, const char* const* argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError&) {
        refuse_missing_values(argc, argv);
        throw;
    }
    refuse_missing_values(argc, argv);
}

/// What is installed beside the program; no help names the options that write it.
std::string get_companion(const CLI::App& app, const std::string& option) {
    if (option == "--write-manual")
        return get_manual(app, get_version());
    if (option == "--write-bash-completion")
        return get_bash_completion(app);
    return option == "--write-zsh-completion" ? get_zsh_completion(app) : "";
}

ExitCode run(int argc, const char* const* argv) {
    CLI::App app(description, "quxml");
    Action action;
    set_up(app, action);
    std::string companion = argc == 2 ? get_companion(app, argv[1]) : "";
    if (!companion.empty()) {
        write_output(companion);
        return ExitCode::done;
    }
    try {
        parse(app, argc, argv);
        return action();
    } catch (const CLI::ParseError& error) {
        return answer(app, error);
    } catch (const Failure& failure) {
        if (failure.get_code() == ExitCode::usage)
            throw with_advice(app, failure.what());
        throw;
    }
}

int fail(ExitCode code, const std::string& message) {
    if (!message.empty())
        write_failure(message);
    return static_cast<int>(code);
}

}  // namespace

}  // namespace tool

int main(int argc, char** argv) {
    tool::end_libxml2_for_lack_of_memory();
    tool::start_clock();
    // A closed pipe then shows as an error of the write, which ends the program quietly.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    // So does a file that grows beyond what is allowed.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        const tool::ExitCode code = tool::run(argc, argv);
        tool::close_output();
        return static_cast<int>(code);
    } catch (const tool::Failure& failure) {
        return tool::fail(failure.get_code(), failure.what());
    } catch (const std::bad_alloc&) {
        tool::end_for_lack_of_memory();
    } catch (const std::exception& error) {
        return tool::fail(tool::ExitCode::io, error.what());
    } catch (...) {
        return tool::fail(tool::ExitCode::io, "unknown failure");
    }
}
