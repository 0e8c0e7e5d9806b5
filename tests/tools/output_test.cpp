// SPDX-License-Identifier: MIT
#include "program.h"

#include <string>
#include <utility>
#include <vector>

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
    for (const char* command :
         {"sort a.xml", "set a x=1 a.xml", "text a x a.xml", "add a b a.xml", "query --count a a.xml",
          "query --path a a.xml", "explain a", "outline a.xml", "--write-manual", "--write-bash-completion"})
        expect(run(std::string("quxml ") + command + " >/dev/full"), 5, "", message);
    expect(run("echo '<a><?p?></a>' | quxml loss >/dev/full"), 5, "", message);
    expect(run("quxml --help >/dev/full"), 5, "", message);
    expect(run("quxml --version >/dev/full"), 5, "", message);
}

TEST_F(Output, a_full_disk_does_not_matter_when_there_is_nothing_to_write) {
    expect(run("quxml query --quiet b a.xml >/dev/full"), 1, "", "");
    expect(run("quxml query --quiet b a.xml >&-"), 1, "", "");
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

/// What `head` did not want to see is not a failure.
TEST_F(Output, ends_quietly_on_a_closed_pipe_as_though_all_had_been_read) {
    const std::vector<std::pair<const char*, const char*>> all = {
        {"format books.xml", "0\n"},
        {"format --compact books.xml", "0\n"},
        {"sort books.xml", "0\n"},
        {"query //book books.xml", "0\n"},
        {"query --value //book books.xml", "0\n"},
        {"query --path //book books.xml", "0\n"},
        {"set //book x=1 books.xml", "0\n"},
        {"remove '/catalog/book[position()=2]' books.xml", "0\n"},
        {"loss losses.xml", "1\n"},
        {"diff books.xml a.xml", "1\n"},
        {"diff many.xml books.xml", "1\n"},
    };
    std::string losses = "<a>";
    for (int i = 0; i < 20000; ++i)
        losses += "<?p?>";
    write("losses.xml", losses + "</a>");
    write("many.xml", "<catalog/>");
    for (const auto& [command, code] : all) {
        SCOPED_TRACE(command);
        const Result result = run(std::string("{ quxml ") + command + "; echo $? >code; } 2>err | head -c 5");
        EXPECT_LE(result.out.size(), 5U);
        EXPECT_EQ(written("err").find("ipe"), std::string::npos);
        EXPECT_EQ(written("code"), code);
    }
}

TEST_F(Output, ends_quietly_on_a_closed_pipe_where_its_signal_is_ignored) {
    const Result result = run("trap '' PIPE; { quxml query //book books.xml; echo $? >code; } | head -n 1");
    expect_done(result, "<book>Nuts &amp; bolts, volume 0</book>\n");
    EXPECT_EQ(written("code"), "0\n");
}

}  // namespace

}  // namespace quxml_test
