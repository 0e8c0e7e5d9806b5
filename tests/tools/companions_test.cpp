// SPDX-License-Identifier: MIT

// The manual page and the completions of shells, which are installed as they stand in tools/manual/companions. The program
// itself writes them, from what also makes its help.

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

const std::string folder_of_companions = QUXML_REPOSITORY "/tools/manual/companions/";

const std::vector<std::string>& get_commands() {
    static const std::vector<std::string> commands{"format", "sort",    "check",  "loss", "outline",
                                                   "query",  "explain", "diff",   "set",  "unset",
                                                   "text",   "add",     "remove", "edit"};
    return commands;
}

/// The options that the help of a command names, each line of which begins with them.
std::vector<std::string> get_options(const std::string& help) {
    constexpr std::size_t width_of_names = 24;
    std::vector<std::string> options;
    std::istringstream lines(help.substr(help.find("Options:\n")));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && !line.empty()) {
        std::istringstream words(line.substr(0, width_of_names));
        for (std::string word; words >> word;) {
            if (word[0] == '-')
                options.push_back(word.substr(0, word.find_first_of("[,")));
        }
    }
    return options;
}

std::string escape_for_troff(const std::string& text) {
    std::string escaped;
    for (const char character : text)
        escaped += character == '-' ? "\\-" : std::string(1, character);
    return escaped;
}

class Companions : public Quxml {
protected:
    Companions() : manual(run("quxml --write-manual").out), help(run("quxml --help").out) {}

    std::string help_on(const std::string& command) const { return run("quxml " + command + " --help").out; }

    std::string manual;
    std::string help;
};

TEST_F(Companions, are_those_that_the_program_writes) {
    const std::vector<std::pair<const char*, const char*>> all = {{"--write-manual", "quxml.1"},
                                                                  {"--write-bash-completion", "quxml.bash"},
                                                                  {"--write-zsh-completion", "_quxml"}};
    for (const auto& [option, file] : all)
        EXPECT_EQ(run(std::string("quxml ") + option).out, read(folder_of_companions + file))
            << "renew it: quxml " << option << " >tools/manual/companions/" << file;
}

TEST_F(Companions, help_names_every_command_with_examples) {
    for (const std::string& command : get_commands()) {
        SCOPED_TRACE(command);
        EXPECT_TRUE(contains(help, "\n  " + command + ' '));
        const std::string text = help_on(command);
        EXPECT_TRUE(contains(text, "Usage: quxml " + command + " [OPTIONS]"));
        EXPECT_TRUE(contains(text, "\nExamples:\n  quxml " + command + ' '));
    }
}

TEST_F(Companions, manual_has_every_command_and_option_of_the_help) {
    EXPECT_GT(get_options(help_on("set")).size(), 6U);
    for (const std::string& command : get_commands()) {
        const std::size_t begin = manual.find(".SS \"quxml " + command + ' ');
        ASSERT_NE(begin, std::string::npos) << command;
        const std::string section = manual.substr(begin, manual.find("\n.S", begin + 1) - begin);
        for (const std::string& option : get_options(help_on(command))) {
            const bool is_help = option == "-h" || option == "--help";
            EXPECT_NE(contains(section, "\\fB" + escape_for_troff(option) + "\\fR"), is_help)
                << command << ' ' << option;
        }
        EXPECT_TRUE(contains(section, "Examples:\n")) << command;
    }
    for (const char* section :
         {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "PATHS", "LIMITS", "\"EXIT STATUS\"", "ENVIRONMENT"})
        EXPECT_TRUE(contains(manual, std::string("\n.SH ") + section + '\n')) << section;
}

TEST_F(Companions, manual_names_the_surprises_of_paths_and_the_limits) {
    for (const char* part :
         {"[position()>1] leaves out the last", "[2] is not a position", "//b stops at the first b",
          "only of ASCII letters", "names of more than 50,000 bytes"})
        EXPECT_TRUE(contains(manual, part)) << part;
}

TEST_F(Companions, manual_is_true_about_the_limits) {
    const auto check = [&](const std::string& text) {
        write("a.xml", text);
        return run("quxml check --quiet a.xml").code;
    };
    const auto nest = [](int levels) {
        std::string text;
        for (int i = 0; i < levels; ++i)
            text = "<a>" + text + "</a>";
        return text;
    };
    const std::string manual = run("quxml --write-manual").out;
    const std::string sentence = "too many levels of elements: with libxml2 2.9.14, more than ";
    ASSERT_TRUE(contains(manual, sentence));
    const int most_levels = std::stoi(manual.substr(manual.find(sentence) + sentence.size()));
    EXPECT_EQ(check(nest(most_levels)), 0);
    EXPECT_EQ(check(nest(most_levels + 1)), 3);
    EXPECT_EQ(check('<' + std::string(50000, 'a') + "/>"), 0);
    EXPECT_EQ(check('<' + std::string(50001, 'a') + "/>"), 3);
    EXPECT_EQ(check("<a b='" + std::string(9990000, 'x') + "'/>"), 0);
    EXPECT_EQ(check("<a b='" + std::string(10000000, 'x') + "'/>"), 3);
}

TEST_F(Companions, manual_is_true_about_upper_and_lower_case) {
    write("a.xml", "<a><B c='1'/><\xc3\x84/></a>");
    for (const char* locale : {"C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"}) {
        const std::string setting = std::string("LC_ALL=") + locale + "; export LC_ALL; ";
        expect_done(run(setting + "quxml query --count /A/b a.xml"), "1\n");
        expect_done(run(setting + "quxml query --count '/a/\xc3\x84' a.xml"), "1\n");
        expect(run(setting + "quxml query --quiet --count '/a/\xc3\xa4' a.xml"), 1, "0\n", "");
        expect(run(setting + "quxml query --quiet --count '/a/b[@C]' a.xml"), 1, "0\n", "");
    }
}

TEST_F(Companions, manual_is_understood_by_man) {
    if (run("command -v man && command -v groff").code != 0)
        GTEST_SKIP() << "there is no man";
    const Result result = run("quxml --write-manual >quxml.1; man --warnings -l -Tutf8 ./quxml.1 | col -b");
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(contains(result.out, "quxml set [OPTIONS] PATH SETTING... [FILE...]")) << result.out;
}

/// What a shell would offer for a command line that ends with `words`.
std::string completion_of(const std::string& words) {
    return ". '" + folder_of_companions + "quxml.bash'; COMP_WORDS=(" + words +
           "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quxml; echo \"${COMPREPLY[*]}\"";
}

TEST_F(Companions, bash_completes_commands_options_and_files) {
    write("script", "");
    const auto complete = [&](const std::string& words) {
        write("script", completion_of(words));
        return run("bash script");
    };
    if (run("command -v bash").code != 0)
        GTEST_SKIP() << "there is no bash";
    write("settings.xml", "<a/>");
    expect_done(complete("quxml for"), "format\n");
    expect_done(complete("quxml s"), "sort set\n");
    expect_done(complete("quxml --ver"), "--version\n");
    expect_done(complete("quxml set --in"), "--in-place\n");
    expect_done(complete("quxml query --cou"), "--count\n");
    expect_done(complete("quxml format sett"), "settings.xml\n");
    std::string commands;
    for (const std::string& command : get_commands())
        commands += command + ' ';
    EXPECT_EQ(complete("quxml ''").out.rfind(commands, 0), 0U);
}

TEST_F(Companions, zsh_understands_its_completion) {
    const std::string text = read(folder_of_companions + "_quxml");
    for (const std::string& command : get_commands()) {
        EXPECT_TRUE(contains(text, "        '" + command + ':')) << command;
        EXPECT_TRUE(contains(text, "        " + command + ")\n            _arguments")) << command;
    }
    if (run("command -v zsh").code != 0)
        GTEST_SKIP() << "there is no zsh";
    expect_done(run("zsh -n '" + folder_of_companions + "_quxml'"), "");
}

}  // namespace

}  // namespace quxml_test
