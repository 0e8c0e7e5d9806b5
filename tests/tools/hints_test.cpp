// SPDX-License-Identifier: MIT

// What is said when standard input is read and that may be a mistake.

#include <string>
#include <utility>
#include <vector>

#include "program.h"
#include "terminal.h"

namespace quxml_test {

namespace {

class Hints : public Quxml {
protected:
    Hints() { write("a.xml", "<a><b x='1'/></a>"); }
};

TEST_F(Hints, name_an_argument_that_is_a_file_and_is_not_taken_for_one) {
    const std::vector<std::pair<const char*, const char*>> all = {
        {"query a.xml", "PATH"},  {"remove a.xml", "PATH"},  {"set a.xml x=1", "PATH"},
        {"text a.xml x", "PATH"}, {"add //b a.xml", "NAME"}, {"unset //b a.xml", "NAME"},
    };
    for (const auto& [command, argument] : all) {
        SCOPED_TRACE(command);
        const std::string hint = std::string("quxml: hint: reading standard input; \"a.xml\" is taken for ") +
                                 argument + ", though it is also a file\n";
        const Result result = run(std::string("quxml ") + command + " <a.xml");
        EXPECT_EQ(result.err.substr(0, hint.size()), hint);
        EXPECT_FALSE(contains(run(std::string("quxml ") + command + " --quiet <a.xml").err, "note: "));
        EXPECT_FALSE(
            contains(run(std::string("quxml ") + command + " ./a.xml").err, "reading standard input"));
    }
    expect_done(run("quxml unset //b x <a.xml"), "<a><b/></a>");
}

TEST_F(Hints, say_that_a_terminal_is_read) {
    skip_without_terminal();
    if (IsSkipped())
        return;
    const std::vector<std::pair<std::string, const char*>> all = {
        {"query //b", "FILE"},   {"format", "FILE"},   {"sort", "FILE"},
        {"check", "FILE"},       {"loss", "FILE"},     {"outline", "FILE"},
        {"set //b x=1", "FILE"}, {"edit a.xml", "-e"}, {"edit -i a.xml", "-e"},
    };
    for (const auto& [command, missing] : all) {
        const std::string hint =
            std::string("quxml: hint: reading standard input from the terminal, since no ") + missing +
            " is given; Ctrl-D ends it\r\n";
        const std::string quxml = "'" QUXML_TOOL "' " + command;
        const std::string shown =
            run_on_terminal("stty -icanon min 0 time 0 <&2; " + quxml + " <&2 >/dev/null");
        EXPECT_EQ(shown.substr(0, hint.size()), hint) << command;
    }
    EXPECT_FALSE(contains(run_on_terminal("'" QUXML_TOOL "' check </dev/null"), "hint: "));
    EXPECT_FALSE(
        contains(run_on_terminal("'" QUXML_TOOL "' edit -e 'remove //b' a.xml </dev/null"), "hint: "));
}

}  // namespace

}  // namespace quxml_test
