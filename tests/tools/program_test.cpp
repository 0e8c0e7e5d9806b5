// SPDX-License-Identifier: MIT
#include "program.h"

#include <array>
#include <string>

namespace quxml_test {

namespace {

using Program = Quxml;

TEST_F(Program, says_its_version) {
    expect_done(run("quxml --version"), "quxml 1.0.0\n");
}

TEST_F(Program, help_names_the_commands_and_the_exit_codes) {
    const Result result = run("quxml --help");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    for (const char* part : {"Usage: quxml [OPTIONS] SUBCOMMAND", "\n  format ", "\n  query ",
                             "\n  1  no match", "\n  5  reading, writing or memory failed;"})
        EXPECT_TRUE(contains(result.out, part)) << part;
    EXPECT_EQ(run("quxml -h").out, result.out);
}

TEST_F(Program, help_on_a_command_names_its_options) {
    const Result format = run("quxml format --help");
    EXPECT_EQ(format.code, 0);
    EXPECT_EQ(format.err, "");
    for (const char* part : {"Usage: quxml format [OPTIONS] [FILE...]", "--compact", "--sorted",
                             "--no-declaration", "Everything on one line, with a line feed at its end"})
        EXPECT_TRUE(contains(format.out, part)) << part;

    const Result query = run("quxml query --help");
    EXPECT_EQ(query.code, 0);
    EXPECT_EQ(query.err, "");
    for (const char* part : {"Usage: quxml query [OPTIONS] PATH [FILE...]", "--prefix", "in document order"})
        EXPECT_TRUE(contains(query.out, part)) << part;
}

/// The command in question, if there is one, and a blank.
std::string help_of(const Refused& refused) {
    const std::string command = std::string(refused.arguments).substr(0, 6);
    return command == "format" || command == "query " || command == "query"
               ? command.substr(0, command.find(' ')) + ' '
               : "";
}

TEST_F(Program, exits_with_2_for_a_command_line_it_cannot_understand) {
    write("a.xml", "<a/>");
    write("-x.xml", "<a/>");
    const std::array<Refused, 17> refused{{
        {"", "A subcommand is required"},
        {"frobnicate", "there is no command \"frobnicate\""},
        {"frobnicate -x a.xml", "there is no command \"frobnicate\""},
        {"fromat a.xml", "there is no command \"fromat\"; is it format?"},
        {"remov //a a.xml", "there is no command \"remov\"; is it remove?"},
        {"--frobnicate", "there is no option --frobnicate"},
        {"format --frobnicate a.xml", "there is no option --frobnicate"},
        {"format --prefix a.xml", "there is no option --prefix"},
        {"format --version a.xml", "there is no option --version"},
        {"format --compact=perhaps a.xml", "Could not convert: --compact = perhaps"},
        {"query", "PATH is required"},
        {"query --prefix", "PATH is required"},
        {"query --compact a a.xml", "there is no option --compact"},
        {"query --quite a a.xml", "there is no option --quite; is it --quiet?"},
        {"query /a -x.xml",
         "there is no option -x.xml; for the file of that name write ./-x.xml, or -- before it"},
        {"query --attribute '' a a.xml", "--attribute: expected a name"},
        {"query --attribute= a a.xml", "--attribute=: a value is missing after the equal sign"},
    }};
    for (const Refused& one : refused) {
        SCOPED_TRACE(one.arguments);
        expect(run(std::string("quxml ") + one.arguments), 2, "",
               std::string("quxml: ") + one.message + "\nquxml " + help_of(one) + "--help says more.\n");
    }
}

}  // namespace

}  // namespace quxml_test
