// SPDX-License-Identifier: MIT

// What differs when standard error is a terminal.

#include "terminal.h"

#include <string>

#include "program.h"

namespace quxml_test {

namespace {

class Terminal : public Quxml {
protected:
    Terminal() {
        write("bad.xml", "<a>&u;</a>");
        write("comment.xml", "<a><!-- x --></a>");
    }

    void SetUp() override { skip_without_terminal(); }

    /// A terminal puts a carriage return before each line feed.
    std::string show(const std::string& command) const {
        std::string shown = run_on_terminal(
            "cd '" + folder.string() +
            "'\nunset NO_COLOR\nTERM=xterm\nexport TERM\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n" + command);
        for (std::size_t at = shown.find('\r'); at != std::string::npos; at = shown.find('\r', at + 1)) {
            if (shown.substr(at, 2) == "\r\n")
                shown.erase(at, 1);
        }
        return shown;
    }
};

constexpr const char* plain_error =
    "bad.xml:1:7: error: Entity 'u' not defined\n    <a>&u;</a>\n          ^\n";

TEST_F(Terminal, shows_errors_in_colours) {
    EXPECT_EQ(show("quxml check bad.xml"),
              "\033[1mbad.xml:1:7: \033[0m\033[1;31merror: \033[0mEntity 'u' not defined\n"
              "    <a>&u;</a>\n"
              "          \033[1;32m^\033[0m\n");
}

TEST_F(Terminal, shows_warnings_in_colours) {
    EXPECT_EQ(show("quxml format --canonical comment.xml >out"),
              "\033[1mcomment.xml: \033[0m\033[1;35mwarning: \033[0mleft out of the output: 1 comment; "
              "\"quxml loss "
              "comment.xml\" "
              "lists them\n");
}

TEST_F(Terminal, shows_no_colours_where_they_are_not_wanted) {
    EXPECT_EQ(show("NO_COLOR=1 quxml check bad.xml"), plain_error);
    EXPECT_EQ(show("NO_COLOR=1; export NO_COLOR; quxml check bad.xml"), plain_error);
    EXPECT_EQ(show("TERM=dumb; quxml check bad.xml"), plain_error);
    EXPECT_EQ(show("unset TERM; quxml check bad.xml"), plain_error);
    EXPECT_EQ(run("TERM=xterm; export TERM; quxml check bad.xml").err, plain_error);
    EXPECT_NE(show("NO_COLOR=; export NO_COLOR; quxml check bad.xml"), plain_error);
}

TEST_F(Terminal, shows_a_bar_while_something_takes_longer_than_a_second) {
    const std::string shown = show("{ sleep 1.5; echo '<a/>'; } | quxml format >out");
    EXPECT_TRUE(contains(shown, "\r\033[Kreading standard input [#####....")) << shown;
    EXPECT_TRUE(contains(shown, "\r\033[Kreading standard input [.#####...")) << shown;
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\033[K") << shown;
    EXPECT_EQ(written("out"), "<a/>\n");
}

TEST_F(Terminal, shows_no_bar_for_quick_work_nor_without_a_terminal) {
    EXPECT_EQ(show("echo '<a/>' | quxml format >out"), "");
    expect_done(run("{ sleep 1.3; echo '<a/>'; } | quxml format --compact --no-declaration"), "<a/>\n");
}

TEST_F(Terminal, takes_the_bar_away_before_it_shows_errors) {
    const std::string shown =
        show("NO_COLOR=1; export NO_COLOR; { sleep 1.5; echo '<a>'; } | quxml format >out");
    EXPECT_TRUE(contains(shown, "\r\033[Kstandard input:2:1: error: ")) << shown;
}

}  // namespace

}  // namespace quxml_test
