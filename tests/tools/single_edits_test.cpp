// SPDX-License-Identifier: MIT

// set, unset, text, add and remove, written to standard output. What they do to files is tested with
// --in-place.

#include "program.h"

#include <string>
#include <vector>

namespace quxml_test {

namespace {

class SingleEdits : public Quxml {
protected:
    SingleEdits() {
        write("a.xml",
              "<settings>\n"
              "  <host name=\"kitchen\" port=\"80\"/>\n"
              "  <host name=\"hall\"/>\n"
              "  <note>old</note>\n"
              "</settings>\n");
    }
};

struct Done {
    const char* command;
    const char* host_1;
    const char* host_2;
    const char* note;
};

constexpr const char* host_1 = "  <host name=\"kitchen\" port=\"80\"/>\n";
constexpr const char* host_2 = "  <host name=\"hall\"/>\n";
constexpr const char* note = "  <note>old</note>\n";

TEST_F(SingleEdits, changes_what_the_path_selects_and_leaves_the_rest_as_it_is) {
    const std::vector<Done> all = {
        {"set //host port=8080", "  <host name=\"kitchen\" port=\"8080\"/>\n",
         "  <host name=\"hall\" port=\"8080\"/>\n", note},
        {"set \"/settings/host[@name='hall']\" a=1 b=", host_1, "  <host name=\"hall\" a=\"1\" b=\"\"/>\n",
         note},
        {"set \"/settings/host[last()]\" name='x=\"<&>\"'", host_1,
         "  <host name=\"x=&quot;&lt;&amp;>&quot;\"/>\n", note},
        {"set //note name=kitchen", host_1, host_2, "  <note name=\"kitchen\">old</note>\n"},
        {"unset //host port", "  <host name=\"kitchen\"/>\n", host_2, note},
        {"unset //host port name nothing -", "  <host/>\n", "  <host/>\n", note},
        {"text //note new", host_1, host_2, "  <note>new</note>\n"},
        {"text //note ' a < b & c '", host_1, host_2, "  <note> a &lt; b &amp; c </note>\n"},
        {"text //note ''", host_1, host_2, "  <note></note>\n"},
        {"text //note -5", host_1, host_2, "  <note>-5</note>\n"},
        {"text //note -", host_1, host_2, "  <note>-</note>\n"},
        {"text -- //note -5", host_1, host_2, "  <note>-5</note>\n"},
        {"text --quiet //note -- -v", host_1, host_2, "  <note>-v</note>\n"},
        {"text --quiet -- //note --", host_1, host_2, "  <note>--</note>\n"},
        {"text //host x", "  <host name=\"kitchen\" port=\"80\">x</host>\n",
         "  <host name=\"hall\">x</host>\n", note},
        {"add \"/settings/host[last()]\" user", host_1, "  <host name=\"hall\">\n    <user/>\n  </host>\n",
         note},
        {"add \"/settings/host[last()]\" user --item 2 --text 'a & b' --attribute x=1 --attribute y=", host_1,
         "  <host name=\"hall\">\n    <user item=\"2\" x=\"1\" y=\"\">a &amp; b</user>\n  </host>\n", note},
        {"add /settings z --attribute x=1", host_1, host_2, "  <note>old</note>\n  <z x=\"1\"/>\n"},
        {"add /settings z --item -5", host_1, host_2, "  <note>old</note>\n  <z item=\"-5\"/>\n"},
        {"remove //note", host_1, host_2, ""},
        {"remove \"/settings/host[@port='80']\"", "", host_2, note},
        {"remove /settings/note/", host_1, host_2, "  <note></note>\n"},
    };
    for (const Done& one : all) {
        SCOPED_TRACE(one.command);
        const std::string expected =
            std::string("<settings>\n") + one.host_1 + one.host_2 + one.note + "</settings>\n";
        expect_done(run(std::string("quxml ") + one.command + " <a.xml"), expected);
    }
}

TEST_F(SingleEdits, takes_the_file_as_the_last_argument) {
    const std::string without_port =
        std::string("<settings>\n  <host name=\"kitchen\"/>\n") + host_2 + note + "</settings>\n";
    for (const char* command :
         {"set //nothing x=1", "text //nothing x", "add //nothing x", "remove //nothing"})
        EXPECT_EQ(run(std::string("quxml ") + command + " a.xml").code, 1) << command;
    expect_done(run("quxml unset //host port a.xml"), without_port);
    expect_done(run("quxml unset //host port nothing a.xml"), without_port);
    expect(run("quxml unset //host port nothing"), 5, "", "quxml: nothing: No such file or directory\n");
    write("x=1", "<a/>");
    expect_done(run("quxml set /a y=2 ./x=1"), R"(<a y="2"/>)");
}

TEST_F(SingleEdits, removes_what_is_inside_of_what_is_removed_only_once) {
    write("b.xml", "<a><b><b><c/></b></b><c/></a>");
    expect_done(run("quxml remove '/a//*' b.xml"), "<a></a>");
    expect_done(run("quxml remove '//c' b.xml"), "<a><b><b></b></b></a>");
}

// ---- What is refused ----

TEST_F(SingleEdits, exits_with_1_and_writes_nothing_if_nothing_matches) {
    for (const char* command : {"set //x a=1", "unset //x a", "text //x a", "add //x a", "text //note/ x"})
        expect(run(std::string("quxml ") + command + " --quiet a.xml"), 1, "",
               std::string("quxml: no element matches ") + (contains(command, "note") ? "//note/" : "//x") +
                   '\n');
    expect(run("quxml remove --quiet //x a.xml"), 1, "", "quxml: nothing matches //x\n");
}

TEST_F(SingleEdits, exits_with_4_for_a_bad_query) {
    for (const char* command : {"set P a=1", "unset P a", "text P a", "add P a", "remove P"}) {
        std::string quxml = std::string("quxml ") + command + " a.xml";
        quxml.replace(quxml.find('P'), 1, "'/settings/host[position()>=2]'");
        const Result result = run(quxml);
        EXPECT_EQ(result.code, 4) << quxml;
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(contains(result.err, "bad query \"/settings/host[position()>=2]\"")) << result.err;
    }
}

TEST_F(SingleEdits, exits_with_3_rather_than_lose_something) {
    const std::vector<Refused> all = {
        {"text /settings x", "/settings has elements in it; text beside them would be lost"},
        {"add //note x", "/settings/note has text, which would be lost beside an element"},
        {"remove /settings", "the root element cannot be removed"},
        {"remove '//*'", "the root element cannot be removed"},
    };
    for (const Refused& one : all)
        expect(run(std::string("quxml ") + one.arguments + " a.xml"), 3, "",
               std::string("quxml: ") + one.message + '\n');
}

TEST_F(SingleEdits, exits_with_3_rather_than_write_what_would_not_be_read_back) {
    for (const char* command :
         {"set //note \"x=$(printf '\\001')\"", "set //note \"x=$(printf '\\377')\"", "text //note '\n\t'",
          "text //note \"$(printf '\\033')\"", "add \"/settings/host[last()]\" x --text '\n '",
          "add //host x --attribute y=\"$(printf '\\001')\""}) {
        SCOPED_TRACE(command);
        const Result result = run(std::string("quxml ") + command + " a.xml");
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(contains(result.err, "quxml: a.xml: not written: ")) << result.err;
    }
    expect(run("quxml set //note \"x=$(printf 'a\\001')\" a.xml"), 3, "",
           "quxml: a.xml: not written: \"a\\x01\" holds a control character, which XML does not allow\n");
    expect(run("quxml add //host x --text \"$(printf '\\377')\" <a.xml"), 3, "",
           "quxml: standard input: not written: \"\\xff\" is not UTF-8\n");
    expect(run("quxml text //note '\n' <a.xml"), 3, "",
           "quxml: standard input: not written: it would be read back otherwise: ! /settings/note: \"\\n\" "
           "-> \"\"\n");
}

TEST_F(SingleEdits, writes_references_for_what_would_be_read_back_as_something_else) {
    expect_done(run("quxml text //note \"$(printf '\\r')\" a.xml | tail -n 2"),
                "  <note>&#13;</note>\n</settings>\n");
    expect_done(run("quxml set //note \"x=$(printf 'a\\tb\\r')\" a.xml | tail -n 2"),
                "  <note x=\"a&#9;b&#13;\">old</note>\n</settings>\n");
}

std::string get_command(const Refused& refused) {
    const std::string arguments = refused.arguments;
    return arguments.substr(0, arguments.find(' '));
}

TEST_F(SingleEdits, exits_with_2_for_a_command_line_it_cannot_understand) {
    const std::vector<Refused> all = {
        {"set //note", "SETTING is required"},
        {"set", "PATH is required"},
        {"set //note a.xml", "SETTING: \"a.xml\" is not NAME=VALUE, with a name without a prefix"},
        {"set //note 1x=2 a.xml", "SETTING: \"1x=2\" is not NAME=VALUE, with a name without a prefix"},
        {"set //note xml:lang=de a.xml",
         "SETTING: \"xml:lang=de\" is not NAME=VALUE, with a name without a prefix"},
        {"set //note =x a.xml", "SETTING: \"=x\" is not NAME=VALUE, with a name without a prefix"},
        {"set //note x=1 y a.xml", "SETTING: \"y\" is not NAME=VALUE, with a name without a prefix"},
        {"set //note xmlns=u a.xml",
         "SETTING: \"xmlns=u\" would declare a namespace, which is not an attribute"},
        {"unset //note", "NAME is required"},
        {"unset //note x=1 a.xml", "NAME: \"x=1\" is not a name without a prefix"},
        {"set //note x=1 y=2 x=1 a.xml", "SETTING: \"x\" is given more than once"},
        {"add //note b --attribute x=1 --attribute x=2 a.xml", "--attribute: \"x\" is given more than once"},
        {"add //note b --item 1 --attribute item=1 a.xml", "--attribute: \"item\" is given more than once"},
        {"add //note b --item foo a.xml", "--item: expected a whole number, not \"foo\""},
        {"add //note b --item 1x a.xml", "--item: expected a whole number, not \"1x\""},
        {"add //note b --item '' a.xml", "--item: expected a whole number, not \"\""},
        {"add //note b --item 99999999999 a.xml",
         "--item: \"99999999999\" is beyond the numbers from -2147483648 to 2147483647"},
        {"unset //note xml:lang a.xml", "NAME: \"xml:lang\" is not a name without a prefix"},
        {"text //note", "VALUE is required"},
        {"text //note -v a.xml", "there is no option -v"},
        {"text //note x a.xml b.xml",
         "with more than one FILE, -i changes the files, and --diff shows what would change; one of them is "
         "needed"},
        {"add //host", "NAME is required"},
        {"add //host 'a b' a.xml", "NAME: \"a b\" is not a name without a prefix"},
        {"add //host p:a a.xml", "NAME: \"p:a\" is not a name without a prefix"},
        {"add //host a --attribute b a.xml",
         "--attribute: \"b\" is not NAME=VALUE, with a name without a prefix"},
        {"remove", "PATH is required"},
        {"format --indent 17 a.xml", "--indent: expected a number up to 16 or \"tab\", not 17"},
        {"format --indent -1 a.xml", "--indent: expected a number up to 16 or \"tab\", not -1"},
        {"format --indent two a.xml", "--indent: expected a number up to 16 or \"tab\", not two"},
        {"format --indent 2 --compact a.xml", "--compact excludes --indent"},
        {"sort --backup a.xml", "--backup requires --in-place"},
        {"sort --lossy --canonical a.xml", "--lossy requires --in-place"},
        {"sort -i --lossy a.xml", "--lossy requires --canonical"},
        {"sort --compact a.xml", "there is no option --compact"},
        {"sort -i --backup=a/b a.xml", "--backup: expected a suffix for a file name, not \"a/b\""},
        {"sort -i", "--in-place needs a FILE"},
        {"sort -i -", "--in-place needs a FILE"},
        {"set -i /a k=1 x=1.xml", "--in-place needs a FILE; \"x=1.xml\" was taken for SETTING"},
        {"text -i /a/b a.xml", "--in-place needs a FILE; \"a.xml\" was taken for VALUE"},
        {"add -i /a a.xml", "--in-place needs a FILE; \"a.xml\" was taken for NAME"},
        {"set -i --diff /a x=1 a.xml", "--in-place excludes --diff"},
        {"set --lossy /a x=1 a.xml", "there is no option --lossy"},
        {"set --compact /a x=1 a.xml", "there is no option --compact"},
    };
    for (const Refused& one : all) {
        SCOPED_TRACE(one.arguments);
        expect(run(std::string("quxml ") + one.arguments), 2, "",
               std::string("quxml: ") + one.message + "\nquxml " + get_command(one) + " --help says more.\n");
    }
}

}  // namespace

}  // namespace quxml_test
