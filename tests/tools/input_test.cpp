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

TEST_F(Input, exits_with_5_for_files_that_can_not_be_read) {
    expect(run("quxml format nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml query a nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml format ''"), 5, "", "quxml: : No such file or directory\n");
    expect(run("mkdir folder; quxml format folder"), 5, "", "quxml: folder: Is a directory\n");
    expect(run("mkdir -p folder; quxml format <folder"), 5, "", "quxml: standard input: Is a directory\n");
    expect(run("quxml format <&-"), 5, "", "quxml: standard input: Bad file descriptor\n");
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
        EXPECT_TRUE(result.err == "quxml: out of memory\n" ||
                    result.err == "quxml: books.xml: out of memory\n")
            << result.err;
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(run_within(4000000).code, 0);
}

}  // namespace

}  // namespace quxml_test
