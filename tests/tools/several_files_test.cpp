// SPDX-License-Identifier: MIT

// Commands that do the same with several files.

#include <string>
#include <utility>
#include <vector>

#include "program.h"
#include "terminal.h"

namespace quxml_test {

namespace {

class SeveralFiles : public Quxml {
protected:
    SeveralFiles() {
        write("a.xml", "<zone><service name=\"ssh\"/><service name=\"http\"/></zone>\n");
        write("b.xml", "<zone>\n  <service name=\"dhcp\"/>\n</zone>\n");
        write("c.xml", "<policy/>\n");
        write("bad.xml", "<zone>");
    }
};

constexpr const char* error_of_bad =
    "bad.xml:1:7: error: Premature end of data in tag zone line 1\n    <zone>\n          ^\n";

// ---- Queries ----

TEST_F(SeveralFiles, have_their_names_before_matches) {
    expect_done(
        run("quxml query //service a.xml b.xml c.xml"),
        "a.xml:<service name=\"ssh\"/>\na.xml:<service name=\"http\"/>\nb.xml:<service name=\"dhcp\"/>\n");
    expect_done(run("quxml query --attribute name //service - b.xml <a.xml"),
                "standard input:ssh\nstandard input:http\nb.xml:dhcp\n");
    expect_done(
        run("quxml query --path //service b.xml a.xml"),
        "b.xml:/zone/service\na.xml:/zone/service[position()=1]\na.xml:/zone/service[position()=2]\n");
    expect_done(run("quxml query --count //service a.xml b.xml c.xml"), "a.xml:2\nb.xml:1\nc.xml:0\n");
    expect_done(run("quxml query --attribute name '//service[@name=$n]' --arg n=dhcp a.xml b.xml"),
                "b.xml:dhcp\n");
}

TEST_F(SeveralFiles, have_their_names_where_that_is_wanted) {
    expect_done(run("quxml query --no-filename --attribute name //service a.xml b.xml"), "ssh\nhttp\ndhcp\n");
    expect_done(run("quxml query --with-filename --attribute name //service b.xml"), "b.xml:dhcp\n");
    expect_done(run("quxml query --attribute name //service b.xml"), "dhcp\n");
    expect(run("quxml query --with-filename --no-filename //service b.xml"), 2, "",
           "quxml: --with-filename excludes --no-filename\nquxml query --help says more.\n");
}

TEST_F(SeveralFiles, are_a_column) {
    expect_done(run("quxml query --header --columns @name,. //service a.xml b.xml"),
                "file\t@name\t.\na.xml\tssh\t\na.xml\thttp\t\nb.xml\tdhcp\t\n");
    expect_done(run("quxml query --columns @name //service --with-filename b.xml"), "b.xml\tdhcp\n");
    expect(run("quxml query --quiet --header --columns @name //host a.xml b.xml"), 1, "file\t@name\n", "");
    for (const char* options : {"--json", "--header"}) {
        const std::string command = std::string("quxml query --columns file ") + options + " /zone ";
        expect(run(command + "a.xml b.xml"), 2, "",
               "quxml: --columns: \"file\" is also what the files of matches are called; --no-filename "
               "leaves these "
               "out\nquxml query --help says more.\n");
        EXPECT_EQ(run(command + "a.xml").code, 0);
        EXPECT_EQ(run(command + "--no-filename a.xml b.xml").code, 0);
    }
}

TEST_F(SeveralFiles, are_members_in_json) {
    const std::string a = "{\"file\": \"a.xml\", ";
    const std::string b = "{\"file\": \"b.xml\", ";
    expect_done(run("quxml query --json --attribute name //service a.xml b.xml"),
                "[\n  " + a + "\"value\": \"ssh\"},\n  " + a + "\"value\": \"http\"},\n  " + b +
                    "\"value\": \"dhcp\"}\n]\n");
    expect_done(run("quxml query --json --columns @name,x '//service[@name =dhcp]' a.xml b.xml"),
                "[\n  " + b + "\"@name\": \"dhcp\", \"x\": null}\n]\n");
    expect_done(
        run("quxml query --json /zone/service b.xml --with-filename"),
        "[\n  " + b +
            "\"name\": \"service\", \"path\": \"/zone/service\", \"attributes\": {\"name\": \"dhcp\"}, "
            "\"text\": \"\"}\n]\n");
    expect_done(run("quxml query --json --no-filename --attribute name //service a.xml b.xml"),
                "[\n  \"ssh\",\n  \"http\",\n  \"dhcp\"\n]\n");
    expect_done(run("quxml query --json --count //service a.xml c.xml"),
                "[\n  " + a + "\"count\": 2},\n  {\"file\": \"c.xml\", \"count\": 0}\n]\n");
    expect_done(run("quxml query --json --count --no-filename //service a.xml c.xml"), "[\n  2,\n  0\n]\n");
    expect_done(run("quxml query --json --count //service a.xml"), "2\n");
    expect(run("quxml query --quiet --json //host a.xml b.xml"), 1, "[]\n", "");
}

TEST_F(SeveralFiles, that_fail_leave_json_whole) {
    expect(run("quxml query --json --attribute name //service bad.xml b.xml"), 3,
           "[\n  {\"file\": \"b.xml\", \"value\": \"dhcp\"}\n]\n", error_of_bad);
    expect(
        run("quxml query --json --attribute name //service b.xml bad.xml a.xml 2>&1"), 3,
        std::string(error_of_bad) +
            "[\n  {\"file\": \"b.xml\", \"value\": \"dhcp\"},\n  {\"file\": \"a.xml\", \"value\": \"ssh\"},\n"
            "  {\"file\": \"a.xml\", \"value\": \"http\"}\n]\n",
        "");
    expect(run("quxml query --json //service bad.xml bad.xml"), 3, "",
           std::string(error_of_bad) + error_of_bad);
}

TEST_F(SeveralFiles, may_have_any_name) {
    using std::string_literals::operator""s;
    const std::string text = "<zone x='1'/>";
    for (const char* name : {"a:b c.xml", "l\nf.xml", "[x,y].xml", "k=v.xml", "\"q\".xml"})
        write(name, text);
    expect_done(
        run("quxml query --attribute x /zone 'a:b c.xml' \"$(printf 'l\\nf.xml')\" '[x,y].xml' k=v.xml "
            "'\"q\".xml'"),
        "a:b c.xml:1\nl\\nf.xml:1\n[x,y].xml:1\nk=v.xml:1\n\\\"q\\\".xml:1\n");
    expect_done(
        run("quxml query --null --attribute x /zone 'a:b c.xml' \"$(printf 'l\\nf.xml')\" '\"q\".xml'"),
        "a:b c.xml\0"
        "1\0l\nf.xml\0"
        "1\0\"q\".xml\0"
        "1\0"s);
    expect_done(run("quxml query --null --count /zone 'a:b c.xml' \"$(printf 'l\\nf.xml')\""),
                "a:b c.xml\0"
                "1\0l\nf.xml\0"
                "1\0"s);
    expect_done(run("quxml query --columns @x /zone \"$(printf 'l\\nf.xml')\" b.xml"),
                "l\\nf.xml\t1\nb.xml\t\n");
    expect_done(
        run("quxml query --json --attribute x /zone \"$(printf 'l\\nf.xml')\" '\"q\".xml'"),
        "[\n  {\"file\": \"l\\nf.xml\", \"value\": \"1\"},\n  {\"file\": \"\\\"q\\\".xml\", \"value\": "
        "\"1\"}\n]\n");
    expect_done(run("quxml set -i /zone x=2 'a:b c.xml' \"$(printf 'l\\nf.xml')\" '[x,y].xml' ./k=v.xml"),
                "");
    for (const char* name : {"a:b c.xml", "l\nf.xml", "[x,y].xml", "k=v.xml"})
        EXPECT_EQ(written(name), "<zone x='2'/>") << name;
}

// ---- Exit codes ----

TEST_F(SeveralFiles, give_the_worst_exit_code) {
    write("many.xml", "<zone><x/><x/></zone>");
    const std::vector<std::pair<const char*, int>> all = {
        {"query //service a.xml b.xml", 0},
        {"query //service c.xml a.xml", 0},
        {"query //host a.xml b.xml", 1},
        {"query //service a.xml bad.xml", 3},
        {"query //host a.xml bad.xml", 3},
        {"query //service bad.xml missing.xml a.xml", 5},
        {"query '/zone/service[position()>=2]' a.xml b.xml", 4},
        {"loss a.xml b.xml", 0},
        {"check a.xml b.xml", 0},
        {"check a.xml bad.xml missing.xml", 5},
        {"outline a.xml bad.xml", 3},
        {"set --diff //service k=1 a.xml c.xml", 1},
        {"set --diff //service name=dhcp b.xml c.xml", 0},
        {"set --diff //host k=1 a.xml c.xml", 1},
        {"set --diff --create /zone/x/y k=1 many.xml a.xml", 4},
        {"set --diff --create /zone/x/y k=1 many.xml bad.xml missing.xml", 5},
        {"format --diff c.xml missing.xml", 5},
        {"remove -i //host a.xml b.xml", 1},
        {"remove -i //host a.xml bad.xml", 3},
    };
    for (const auto& [arguments, code] : all)
        EXPECT_EQ(run(std::string("quxml ") + arguments).code, code) << arguments;
    write("lossy.xml", "<a><!-- x --></a>");
    expect(run("quxml loss a.xml lossy.xml c.xml 2>&1 | grep -v note"), 0,
           "lossy.xml:1:4: comment: <!-- x -->\n", "");
    EXPECT_EQ(run("quxml loss a.xml lossy.xml c.xml").code, 1);
}

TEST_F(SeveralFiles, are_done_even_if_one_fails) {
    expect(run("mkdir d; quxml query --attribute name //service missing.xml a.xml bad.xml d b.xml"), 5,
           "a.xml:ssh\na.xml:http\nb.xml:dhcp\n",
           std::string("quxml: missing.xml: No such file or directory\n") + error_of_bad +
               "quxml: d: Is a directory\n");
    expect(run("quxml set -i //service k=1 missing.xml bad.xml d a.xml b.xml"), 5, "",
           std::string("quxml: missing.xml: No such file or directory\n") + error_of_bad +
               "quxml: d: is not a regular file\n");
    EXPECT_EQ(written("b.xml"), "<zone>\n  <service name=\"dhcp\" k=\"1\"/>\n</zone>\n");
    EXPECT_TRUE(contains(written("a.xml"), "<service name=\"http\" k=\"1\"/>"));
    EXPECT_EQ(written("bad.xml"), "<zone>");
}

TEST_F(SeveralFiles, are_named_in_messages_that_do_not_name_them) {
    write("text.xml", "<zone>text</zone>");
    expect(run("quxml add -i /zone x text.xml a.xml"), 3, "",
           "quxml: text.xml: /zone has text, which would be lost beside an element\n");
    EXPECT_TRUE(contains(written("a.xml"), "<x/></zone>"));
    expect(run("quxml text -i /zone/x \"$(printf '\\001')\" a.xml b.xml"), 3, "",
           "quxml: a.xml: not written: \"\\x01\" holds a control character, which XML does not allow\n"
           "quxml: note: b.xml: no element matches /zone/x\n");
}

TEST_F(SeveralFiles, are_not_read_for_a_path_that_is_bad_with_all) {
    for (const char* command :
         {"query '/zone/service[position()>=2]'", "set -i '/zone/service[position()>=2]' k=1",
          "edit -i -e 'set \"/zone/service[position()>=2]\" k=1'"}) {
        const Result result = run(std::string("quxml ") + command + " missing.xml a.xml b.xml");
        EXPECT_EQ(result.code, 4) << command;
        EXPECT_EQ(result.err.find("bad query"), result.err.rfind("bad query")) << result.err;
        EXPECT_FALSE(contains(result.err, "missing.xml")) << result.err;
    }
    EXPECT_EQ(run("quxml set -i --create //x k=1 missing.xml a.xml").code, 4);
}

// ---- Notes ----

TEST_F(SeveralFiles, share_notes_on_the_path) {
    expect(run("quxml query --count '/zone/service[position()>0]' a.xml b.xml c.xml"), 0,
           "a.xml:1\nb.xml:0\nc.xml:0\n",
           "quxml: note: step 2, service[position()>0]: a predicate with > never keeps the last one\n");
    expect(run("quxml set --diff '/zone/service[position()>0]' name=ssh a.xml b.xml c.xml"), 0, "",
           "quxml: note: step 2, service[position()>0]: a predicate with > never keeps the last one\n"
           "quxml: note: b.xml, c.xml: no element matches /zone/service[position()>0]\n");
}

TEST_F(SeveralFiles, get_a_reason_only_if_nothing_matches_in_any) {
    expect(run("quxml query /zone/servise a.xml b.xml c.xml"), 1, "",
           "quxml: note: a.xml: /zone has 2 children: service; none is called servise; is it service?\n");
    expect(run("quxml query --quiet /zone/servise a.xml b.xml c.xml"), 1, "", "");
    expect(run("quxml query --count /policy a.xml b.xml c.xml"), 0, "a.xml:0\nb.xml:0\nc.xml:1\n", "");
    const Result attribute = run("quxml query --attribute id /zone a.xml b.xml");
    EXPECT_EQ(attribute.code, 1);
    EXPECT_EQ(attribute.err.find("quxml: note: a.xml: "), 0U) << attribute.err;
}

TEST_F(SeveralFiles, without_a_match_are_listed_in_the_end) {
    for (const char* name : {"d.xml", "e.xml", "f.xml"})
        write(name, "<policy/>");
    expect(run("quxml remove -i //service c.xml d.xml b.xml e.xml f.xml"), 0, "",
           "quxml: note: c.xml, d.xml, e.xml and 1 more: nothing matches //service\n");
    expect(run("quxml set -i --quiet //service k=1 c.xml a.xml"), 0, "", "");
    expect(run("quxml set -i --quiet //service k=1 c.xml d.xml"), 1, "",
           "quxml: c.xml, d.xml: no element matches //service\n");
    expect(run("quxml edit -i -e 'set /policy k=1' -e 'set /policy/x k=1' c.xml a.xml --quiet"), 1, "",
           "quxml: c.xml: edit 2, set /policy/x k=1: no element matches /policy/x\n"
           "quxml: a.xml: edit 1, set /policy k=1: no element matches /policy\n");
    EXPECT_EQ(written("c.xml"), "<policy/>\n");
}

// ---- Changes ----

TEST_F(SeveralFiles, are_changed_each_as_a_whole_or_not_at_all) {
    expect_done(run("quxml edit -i --backup -e 'set //service k=1' -e 'set //service m=2' a.xml b.xml"), "");
    EXPECT_EQ(written("b.xml"), "<zone>\n  <service name=\"dhcp\" k=\"1\" m=\"2\"/>\n</zone>\n");
    EXPECT_EQ(written("b.xml~"), "<zone>\n  <service name=\"dhcp\"/>\n</zone>\n");
    EXPECT_TRUE(fs::exists(folder / "a.xml~"));
    expect_done(run("quxml unset -i //service k m a.xml b.xml; quxml format -i a.xml b.xml; quxml sort -i "
                    "a.xml b.xml"),
                "");
    EXPECT_EQ(written("a.xml"), "<zone>\n  <service name=\"ssh\"/>\n  <service name=\"http\"/>\n</zone>\n");
    expect_done(run("quxml text -i //service on a.xml b.xml; quxml remove -i '/zone/service[@name=$n]' --arg "
                    "n=ssh a.xml"),
                "");
    EXPECT_EQ(written("a.xml"), "<zone>\n  <service name=\"http\">on</service>\n</zone>\n");
    expect(run("quxml set -i --create /zone/x k=1 a.xml b.xml c.xml"), 0, "",
           "quxml: note: c.xml: no element matches /zone/x\n");
    EXPECT_EQ(written("b.xml"), "<zone>\n  <service name=\"dhcp\">on</service>\n  <x k=\"1\"/>\n</zone>\n");
}

TEST_F(SeveralFiles, have_a_difference_each) {
    const std::string difference_of_b =
        "--- b.xml\n+++ b.xml\n@@ -1,3 +1,3 @@\n <zone>\n-  <service name=\"dhcp\"/>\n+  <service "
        "name=\"x\"/>\n </zone>\n";
    const Result result = run("quxml set --diff //service name=x a.xml b.xml");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out.find("--- a.xml\n+++ a.xml\n"), 0U);
    EXPECT_EQ(result.out.substr(result.out.find("--- b.xml")), difference_of_b);
    if (run("patch --version").code != 0)
        GTEST_SKIP() << "there is no patch";
    run("quxml set --diff //service name=x a.xml b.xml >x.diff; patch -p0 <x.diff");
    expect_done(run("quxml query --attribute name //service a.xml b.xml"), "a.xml:x\na.xml:x\nb.xml:x\n");
}

TEST_F(SeveralFiles, are_refused_before_anything_is_done) {
    write("k=v.xml", "<zone/>");
    write("id", "<zone/>");
    run("ln -s a.xml link.xml");
    const std::string before = written("a.xml");
    const std::string no_place =
        "with more than one FILE, -i changes the files, and --diff shows what would change; one of them is "
        "needed";
    const std::string edit_takes = "; \"quxml edit -e\" takes it for ";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"set //service k=1 a.xml b.xml", no_place},
        {"format a.xml b.xml", no_place},
        {"sort - a.xml", no_place},
        {"edit -e 'set /zone k=1' a.xml b.xml", no_place},
        {"query //service - a.xml -", "only one FILE can be standard input"},
        {"check - -", "only one FILE can be standard input"},
        {"set --diff //service k=1 - -", "FILE: \"-\" is given more than once"},
        {"set -i //service k=1 a.xml a.xml", "FILE: \"a.xml\" is given more than once"},
        {"set --diff //service k=1 a.xml b.xml a.xml", "FILE: \"a.xml\" is given more than once"},
        {"set -i //service k=1 a.xml ./a.xml", "FILE: \"a.xml\" and \"./a.xml\" are the same file"},
        {"add -i /zone x a.xml link.xml", "FILE: \"a.xml\" and \"link.xml\" are the same file"},
        {"set -i //service k=1 a.xml -", "--in-place cannot change standard input"},
        {"edit -i a.xml -", "standard input has the edits, so a FILE is needed"},
        {"edit -i a.xml b.xml - -e 'set /zone k=1'", "--in-place cannot change standard input"},
        // words that could be a file and something else
        {"set -i /zone k=1 x=1.xml", "--in-place needs a FILE; \"x=1.xml\" was taken for SETTING"},
        {"set -i /zone m=1 k=v.xml a.xml",
         "SETTING: \"k=v.xml\" is also a file; for the file write ./k=v.xml" + edit_takes + "SETTING"},
        {"set -i /zone m=1 a.xml k=v.xml b.xml",
         "SETTING: \"k=v.xml\" stands after a FILE; put it before that; for the file write ./k=v.xml"},
        {"set -i /zone m=1 a.xml n=2",
         "SETTING: \"n=2\" stands after a FILE; put it before that; for the file write ./n=2"},
        {"set -i /zone a.xml b.xml", "SETTING: \"a.xml\" is not NAME=VALUE, with a name without a prefix"},
        {"unset -i //service name id a.xml",
         "NAME: \"id\" is also a file; for the file write ./id" + edit_takes + "NAME"},
        {"unset -i //service a.xml b.xml c.xml",
         "NAME: \"a.xml\" is also a file; for the file write ./a.xml" + edit_takes + "NAME"},
        {"unset -i //service a.xml", "--in-place needs a FILE; \"a.xml\" was taken for NAME"},
        {"text -i /zone/service a.xml", "--in-place needs a FILE; \"a.xml\" was taken for VALUE"},
        {"text -i /zone/service a.xml b.xml c.xml",
         "VALUE: \"a.xml\" is also a file; perhaps VALUE is missing" + edit_takes + "VALUE"},
        {"add -i /zone a.xml b.xml c.xml",
         "NAME: \"a.xml\" is also a file; perhaps NAME is missing" + edit_takes + "NAME"},
        {"remove -i a.xml b.xml c.xml",
         "PATH: \"a.xml\" is also a file; perhaps PATH is missing" + edit_takes + "PATH"},
    };
    for (const auto& [arguments, message] : all) {
        SCOPED_TRACE(arguments);
        expect(run("quxml " + arguments), 2, "",
               "quxml: " + message + "\nquxml " + arguments.substr(0, arguments.find(' ')) +
                   " --help says more.\n");
        EXPECT_EQ(written("a.xml"), before);
    }
}

TEST_F(SeveralFiles, begin_where_words_are_no_longer_settings_or_names) {
    write("id", "<zone><service id='1' name='x' a.b='2'/></zone>");
    expect_done(run("quxml set -i //service k=v.w n=1 a.xml b.xml"), "");
    expect_done(run("quxml query --columns @k,@n //service b.xml"), "v.w\t1\n");
    expect_done(run("quxml unset -i //service k n ./a.xml b.xml"), "");
    EXPECT_EQ(written("b.xml"), "<zone>\n  <service name=\"dhcp\"/>\n</zone>\n");
    expect_done(run("quxml unset -i //service id id; quxml unset -i //service a.b name id"), "");
    EXPECT_EQ(written("id"), "<zone><service/></zone>");
    expect(run("quxml unset -i //service name missing.xml b.xml"), 5, "",
           "quxml: missing.xml: No such file or directory\n");
    EXPECT_EQ(written("b.xml"), "<zone>\n  <service/>\n</zone>\n");
    write("a.xml", "<zone/>");
    expect_done(run("quxml edit -i -e 'text /zone a.xml' a.xml b.xml --quiet 2>/dev/null || quxml query "
                    "--value /zone a.xml"),
                "a.xml\n");
}

// ---- On a terminal ----

class FilesOnTerminal : public SeveralFiles {
protected:
    void SetUp() override { skip_without_terminal(); }

    std::string show(const std::string& command) const {
        return run_on_terminal("cd '" + folder.string() +
                               "'\nNO_COLOR=1; export NO_COLOR\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n{\n" +
                               command + "\n} >out");
    }
};

TEST_F(FilesOnTerminal, are_counted_in_the_end) {
    EXPECT_EQ(show("quxml query //service a.xml c.xml b.xml"),
              "quxml: 3 files: 2 with a match, 1 without a match\r\n");
    EXPECT_EQ(show("quxml set -i //service name=dhcp a.xml b.xml"),
              "quxml: 2 files: 1 changed, 1 unchanged\r\n");
    EXPECT_EQ(
        show("quxml set --diff //service name=ssh a.xml b.xml missing.xml"),
        "quxml: missing.xml: No such file or directory\r\nquxml: 3 files: 2 would change, 1 failed\r\n");
    EXPECT_EQ(show("quxml loss a.xml b.xml"), "quxml: 2 files: 2 would lose nothing\r\n");
    EXPECT_EQ(show("quxml check a.xml b.xml"), "quxml: 2 files: 2 well-formed\r\n");
    EXPECT_EQ(show("quxml query --quiet //service a.xml b.xml; quxml query //service a.xml; quxml outline "
                   "a.xml b.xml"),
              "");
}

TEST_F(FilesOnTerminal, have_a_bar_that_counts_them) {
    const std::string shown = show("{ sleep 1.5; echo '<a>'; } | quxml check b.xml - a.xml");
    EXPECT_TRUE(contains(shown, "\r\033[Kfile 2 of 3, reading standard input [##########")) << shown;
    EXPECT_TRUE(contains(shown, "] 33%")) << shown;
    EXPECT_TRUE(contains(shown, "\r\033[Kstandard input:2:1: error: ")) << shown;
}

}  // namespace

}  // namespace quxml_test
