// SPDX-License-Identifier: MIT

// How shells complete a path from the file that stands on the command line: by what the program lists.

#include <string>
#include <utility>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

const std::string folder_of_companions = QUXML_REPOSITORY "/tools/manual/companions/";

class Complete : public Quxml {
protected:
    Complete() {
        write("zone.xml",
              "<zone name='public'>\n"
              "  <short>Public</short>\n"
              "  <service name='ssh'/><service name='dns' item='1'/>\n"
              "  <rule xml:lang='en'><p:source xmlns:q='u'/></rule>\n"
              "</zone>\n");
        write("quxml", "#!/bin/sh\nexec '" QUXML_TOOL "' \"$@\"\n");
        run("chmod +x ./quxml");
    }

    bool has(const std::string& shell) const { return run("command -v " + shell).code == 0; }
};

TEST_F(Complete, lists_how_the_beginning_of_a_path_may_go_on) {
    const std::vector<std::pair<std::string, std::string>> all = {
        {"", "zone\n"},
        {"/", "/zone\n"},
        {"z", "zone\n"},
        {"/zone/", "/zone/short\n/zone/service\n/zone/rule\n"},
        {"/zone/s", "/zone/short\n/zone/service\n"},
        {"/ZONE/s", "/ZONE/short\n/ZONE/service\n"},
        {"/zone/rule/", "/zone/rule/p:source\n"},
        {"//s", "//short\n//service\n"},
        {"/zone//s", "/zone//short\n/zone//service\n"},
        {"/zone[@", "/zone[@name\n"},
        {"//service[@", "//service[@name\n//service[@item\n"},
        {"/zone/service[@n", "/zone/service[@name\n"},
        {"/zone/service[@name='ssh'][@", "/zone/service[@name='ssh'][@name\n"},
        {"/zone/*[position()=2]/../", ""},
        {"/zone/service[@name='ssh']/", ""},
        {"/zone/service[position()>=1]/", ""},
        {"/zone/service[na", ""},
        {"/zone/service[@name=s", ""},
        {"/zone/short/", ""},
        {"/x", ""},
        {"/x/", ""},
    };
    for (const auto& [path, expected] : all) {
        SCOPED_TRACE(path);
        write("path", path);
        expect(run("quxml complete -- \"$(cat path)\" zone.xml"), expected.empty() ? 1 : 0, expected, "");
    }
}

TEST_F(Complete, says_nothing_of_a_document_that_cannot_be_read) {
    write("bad.xml", "<a><b></a>");
    expect(run("quxml complete / bad.xml"), 3, "", "");
    EXPECT_EQ(run("quxml complete / missing.xml").code, 5);
}

TEST_F(Complete, is_no_command_of_the_help) {
    EXPECT_FALSE(contains(run("quxml --help").out, "complete"));
    EXPECT_FALSE(contains(run("quxml --write-manual").out, "quxml complete"));
}

/// What bash would offer for a command line with the cursor at a bar.
std::string bash_at(const std::string& line) {
    const std::size_t cursor = line.find('|');
    return ". '" + folder_of_companions +
           "quxml.bash'\n"
           "complete_line() {\n"
           "    COMP_LINE=${1/|/} COMP_POINT=" +
           std::to_string(cursor) +
           "\n"
           "    shift\n"
           "    COMP_CWORD=$1\n"
           "    shift\n"
           "    COMP_WORDS=(\"$@\")\n"
           "    _quxml\n"
           "    printf '%s\\n' \"${COMPREPLY[@]}\"\n"
           "}\n"
           "complete_line '" +
           line + "' ";
}

TEST_F(Complete, is_what_bash_asks_if_a_file_stands_after_the_path) {
    if (!has("bash"))
        GTEST_SKIP() << "there is no bash";
    const auto complete = [&](const std::string& line, const std::string& words) {
        write("script", bash_at(line) + words);
        return run("bash script");
    };
    const std::string program = "./quxml ";
    expect_done(complete("quxml query /zone/s| zone.xml", "2 " + program + "query /zone/s zone.xml"),
                "/zone/short\n/zone/service\n");
    expect_done(
        complete("quxml set -i \"/zone/s|\" zone.xml", "3 " + program + "set -i '\"/zone/s\"' zone.xml"),
        "/zone/short\n/zone/service\n");
    // Outside of quotes bash completes what follows the @.
    expect_done(complete("quxml query /zone/service[@n| zone.xml",
                         "4 " + program + "query '/zone/service[' '@' n zone.xml"),
                "name\n");
    // Of several files the first answers.
    expect_done(complete("quxml query /zone/s| zone.xml other.xml",
                         "2 " + program + "query /zone/s zone.xml other.xml"),
                "/zone/short\n/zone/service\n");
    expect_done(complete("quxml set -i /zone/s| k=1 missing.xml zone.xml",
                         "3 " + program + "set -i /zone/s k=1 missing.xml zone.xml"),
                "/zone/short\n/zone/service\n");
    expect_done(complete("quxml query /zone zo| other.xml", "3 " + program + "query /zone zo other.xml"),
                "zone.xml\n");
    expect_done(complete("quxml query <zone.xml /zone/sh|", "4 " + program + "query '<' zone.xml /zone/sh"),
                "/zone/short\n");
    // Without a file, or where the path is no path, it completes files.
    expect_done(complete("quxml query zo|", "2 " + program + "query zo"), "zone.xml\n");
    expect_done(complete("quxml query x zo| other.xml", "3 " + program + "query x zo other.xml"),
                "zone.xml\n");
    expect_done(complete("quxml check zo| zone.xml", "2 " + program + "check zo zone.xml"), "zone.xml\n");
    expect_done(complete("quxml query ./zo| zone.xml", "2 " + program + "query ./zo zone.xml"),
                "./zone.xml\n");
}

TEST_F(Complete, is_what_zsh_asks_if_a_file_stands_after_the_path) {
    if (!has("zsh"))
        GTEST_SKIP() << "there is no zsh";
    const auto complete = [&](const std::string& prefix, const std::string& words, int current) {
        write("script",
              "_arguments() { : }\n_describe() { : }\n_files() { print files }\n"
              "compadd() { print -rl -- $found }\nwords=(quxml)\nCURRENT=2\n. '" +
                  folder_of_companions + "_quxml'\nPREFIX=" + prefix + "\nwords=(./quxml " + words +
                  ")\nCURRENT=" + std::to_string(current) + "\n_quxml_paths\n");
        return run("zsh -f script");
    };
    expect_done(complete("/zone/s", "query /zone/s zone.xml", 3), "/zone/short\n/zone/service\n");
    expect_done(complete("'/zone/service\\[@n'", "query '/zone/service\\[@n' zone.xml", 3),
                "/zone/service[@name\n");
    expect_done(complete("/zone/s", "query /zone/s zone.xml other.xml", 3), "/zone/short\n/zone/service\n");
    expect_done(complete("zo", "query zo", 3), "files\n");
    expect_done(complete("x", "query x zone.xml", 3), "files\n");
}

}  // namespace

}  // namespace quxml_test
