#include "program.h"

#include <string>

namespace quxml_test {

namespace {

class Output : public Quxml {
protected:
    Output() {
        write("a.xml", "<a/>");
        write("books.xml", many_books(20000));
    }
};

TEST_F(Output, exits_with_5_on_a_full_disk) {
    const char* message = "quxml: standard output: No space left on device\n";
    expect(run("quxml format a.xml >/dev/full"), 5, "", message);
    expect(run("quxml format --compact books.xml >/dev/full"), 5, "", message);
    expect(run("quxml query a a.xml >/dev/full"), 5, "", message);
    expect(run("quxml query //book books.xml >/dev/full"), 5, "", message);
    expect(run("quxml --help >/dev/full"), 5, "", message);
    expect(run("quxml --version >/dev/full"), 5, "", message);
}

TEST_F(Output, a_full_disk_does_not_matter_when_there_is_nothing_to_write) {
    expect(run("quxml query b a.xml >/dev/full"), 1, "", "");
    expect(run("quxml query b a.xml >&-"), 1, "", "");
}

TEST_F(Output, exits_with_5_without_a_standard_output) {
    const char* message = "quxml: standard output: Bad file descriptor\n";
    expect(run("quxml format a.xml >&-"), 5, "", message);
    expect(run("quxml query a a.xml >&-"), 5, "", message);
    EXPECT_EQ(written("a.xml"), "<a/>");
}

TEST_F(Output, exits_with_the_same_codes_without_a_standard_error) {
    EXPECT_EQ(run("quxml format nothing.xml 2>&-").code, 5);
    EXPECT_EQ(run("quxml format nothing.xml 2>/dev/full").code, 5);
    EXPECT_EQ(run("quxml 2>&-").code, 2);
    EXPECT_EQ(written("a.xml"), "<a/>");
}

// What `head` did not want to see is no failure.
TEST_F(Output, ends_quietly_on_a_closed_pipe_as_though_all_had_been_read) {
    for (const char* command : {"format books.xml", "format --compact books.xml", "query //book books.xml"}) {
        SCOPED_TRACE(command);
        const Result result = run(std::string("{ quxml ") + command + "; echo $? >code; } | head -c 5");
        EXPECT_EQ(result.out.size(), 5U);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(written("code"), "0\n");
    }
}

TEST_F(Output, ends_quietly_on_a_closed_pipe_where_its_signal_is_ignored) {
    const Result result = run("trap '' PIPE; { quxml query //book books.xml; echo $? >code; } | head -n 1");
    expect_done(result, "<book>Nuts &amp; bolts, volume 0</book>\n");
    EXPECT_EQ(written("code"), "0\n");
}

}  // namespace

}  // namespace quxml_test
