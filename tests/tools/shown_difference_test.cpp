// SPDX-License-Identifier: MIT

// What --diff shows, with every command that has it.

#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class ShownDifference : public Quxml {};

TEST_F(ShownDifference, is_shown_and_nothing_is_written) {
    std::string text = "<a>\n";
    for (int i = 0; i < 20; ++i)
        text += "  <b n=\"" + std::to_string(i) + "\"/>\n";
    text += "</a>";
    write("a.xml", text);
    expect(run("quxml edit --diff -e 'unset /a/b[@n=2] n' -e 'add /a c' a.xml"), 1,
           "--- a.xml\n+++ a.xml\n@@ -1,7 +1,7 @@\n <a>\n   <b n=\"0\"/>\n   <b n=\"1\"/>\n-  <b "
           "n=\"2\"/>\n+  <b/>\n"
           "   <b n=\"3\"/>\n   <b n=\"4\"/>\n   <b n=\"5\"/>\n@@ -19,4 +19,5 @@\n   <b n=\"17\"/>\n   <b "
           "n=\"18\"/>\n"
           "   <b n=\"19\"/>\n+  <c/>\n </a>\n\\ No newline at end of file\n",
           "");
    EXPECT_EQ(written("a.xml"), text);
    expect_done(run("quxml set --diff '/a/b[@n=2]' n=2 a.xml"), "");
}

TEST_F(ShownDifference, is_what_patch_reads) {
    if (run("patch --version").code != 0)
        GTEST_SKIP() << "there is no patch";
    std::string text = "<a>\r\n";
    for (int i = 0; i < 300; ++i)
        text += "  <b n=\"" + std::to_string(i * 7 % 300) + "\">\n    <c/>\n  </b>" +
                (i % 3 == 0 ? "\n" : "\n\n");
    text += "</a>";
    const std::vector<std::string> commands = {
        "set /a x=1",
        "set //b x=1",
        "remove '/a/b[position()>150]'",
        "remove //c",
        "text //c x",
        "add //c d",
        "remove //b",
        "add /a b",
        "unset //b n -",
        "sort --quiet --canonical",
        "format --quiet",
        "format --quiet --compact",
        "edit -e 'remove /a/b[@n=7]' -e 'set /a/b[@n=14] k=1' -",
    };
    for (const std::string file : {"a.xml", "a b.xml", "\"\xc3\xa4\n\\.xml"}) {
        write("edits.xml", text);
        for (const std::string& command : commands) {
            SCOPED_TRACE(command);
            const std::string first = command.substr(0, command.find(' '));
            const std::string rest = command.substr(first.size());
            const bool has_input = rest.compare(rest.size() - 2, 2, " -") == 0;
            const std::string options = has_input ? rest.substr(0, rest.size() - 2) : rest;
            write(file, text);
            const std::string name =
                file[0] == 'a' ? "'" + file + "'" : "\"$(printf '\"\xc3\xa4\\n\\\\.xml')\"";
            EXPECT_EQ(run("quxml " + first + " --diff" + options + ' ' + name + " >diff.txt").code, 1);
            EXPECT_EQ(run("quxml " + first + options + " - <edits.xml >expected.xml").code, 0);
            EXPECT_EQ(run("patch -p0 <diff.txt").code, 0) << written("out.txt");
            EXPECT_EQ(written(file), written("expected.xml"));
        }
    }
}

}  // namespace

}  // namespace quxml_test
