// SPDX-License-Identifier: MIT
#include "program.h"

#include <string>

namespace quxml_test {

namespace {

using Input = Quxml;

TEST_F(Input, exits_with_3_for_malformed_text_and_shows_the_place) {
    write("bad.xml", "<a>\n<b>\n</a>\n");
    const std::string errors =
        ":3:5: error: Opening and ending tag mismatch: b line 2 and a\n"
        "    </a>\n"
        "        ^\n";
    for (const char* command : {"format", "sort", "loss", "check", "query //b", "set //b x=1", "unset //b x",
                                "text //b x", "add //b x", "remove //b"}) {
        SCOPED_TRACE(command);
        const std::string quxml = std::string("quxml ") + command;
        const Result file = run(quxml + " bad.xml");
        EXPECT_EQ(file.code, 3);
        EXPECT_EQ(file.out, "");
        EXPECT_EQ(file.err.rfind("bad.xml" + errors, 0), 0U) << file.err;
        const Result standard_input = run(quxml + " <bad.xml");
        EXPECT_EQ(standard_input.code, 3);
        EXPECT_EQ(standard_input.out, "");
        EXPECT_EQ(standard_input.err.rfind("standard input" + errors, 0), 0U) << standard_input.err;
    }
}

TEST_F(Input, exits_with_3_for_nothing_at_all) {
    write("empty.xml", "");
    expect(run("quxml format empty.xml"), 3, "", "empty.xml:1:1: error: Empty document.\n");
    expect(run("quxml query a"), 3, "", "standard input:1:1: error: Empty document.\n");
}

TEST_F(Input, a_bad_query_does_not_hide_malformed_text) {
    write("bad.xml", "<a>");
    EXPECT_EQ(run("quxml query 'a/b[99999999999]' bad.xml").code, 3);
}

TEST_F(Input, exits_with_5_for_files_that_cannot_be_read) {
    expect(run("quxml format nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml query a nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml format ''"), 5, "", "quxml: : No such file or directory\n");
    expect(run("mkdir folder; quxml format folder"), 5, "", "quxml: folder: Is a directory\n");
    expect(run("mkdir -p folder; quxml format <folder"), 5, "", "quxml: standard input: Is a directory\n");
    expect(run("quxml format <&-"), 5, "", "quxml: standard input: Bad file descriptor\n");
}

/// A name is one line of a message, and no terminal obeys it.
TEST_F(Input, shows_names_of_files_without_control_characters) {
    const std::string name = "\033[31mx\n\"\xff\\.xml";
    const std::string shown = "\\x1b[31mx\\n\\\"\\xff\\\\.xml";
    const auto run_on = [&](const std::string& command) { return run(command + " '" + name + "'"); };
    for (const char* command : {"format", "check", "loss", "query a", "set -i /a x=1"})
        EXPECT_TRUE(
            contains(run_on(std::string("quxml ") + command).err, shown + ": No such file or directory\n"))
            << command;
    write(name, "<a><!-- x --></a>");
    EXPECT_EQ(run_on("quxml loss").out, shown + ":1:4: comment: <!-- x -->\n");
    EXPECT_EQ(
        run_on("quxml format --canonical").err,
        shown + ": warning: left out of the output: 1 comment; \"quxml loss " + shown + "\" lists them\n");
    EXPECT_EQ(run_on("quxml format -i --canonical").err,
              "quxml: " + shown + ": not touched, this would be lost: 1 comment; \"quxml loss " + shown +
                  "\" lists them, --lossy changes the file anyway\n");
    write(name, "<a>");
    EXPECT_EQ(run_on("quxml check").err.rfind(shown + ":1:4: error: ", 0), 0U);
    EXPECT_EQ(run("mkdir '\033'; quxml format -i '\033'").err, "quxml: \\x1b: is not a regular file\n");
}

TEST_F(Input, shows_arguments_without_control_characters) {
    EXPECT_EQ(run("quxml '\033[31m'").err.find('\033'), std::string::npos);
    EXPECT_EQ(run("echo '<a/>' | quxml set '/a[\033[31m' x=1").err.find('\033'), std::string::npos);
    EXPECT_EQ(run("quxml format --indent '\033[31m'").err.find('\033'), std::string::npos);
}

TEST_F(Input, exits_with_5_and_never_with_3_when_memory_runs_out) {
    write("books.xml", many_books(60000));
    const auto run_within = [&](int kilobytes) {
        return run("ulimit -v " + std::to_string(kilobytes) + "; quxml format books.xml");
    };
    if (run("ulimit -v 60000; quxml --version").code != 0)
        GTEST_SKIP() << "the program itself does not start within 60 MB: built with a sanitizer, or run in "
                        "an emulator";
    int refused = 0;
    for (int kilobytes = 60000; kilobytes <= 180000; kilobytes += 10000) {
        const Result result = run_within(kilobytes);
        SCOPED_TRACE(kilobytes);
        if (result.code == 0)
            continue;
        ++refused;
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "quxml: out of memory\n") << result.err;
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(run_within(4000000).code, 0);
}

}  // namespace

}  // namespace quxml_test
