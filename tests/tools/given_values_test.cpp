// SPDX-License-Identifier: MIT

// --arg NAME=VALUE, and $NAME in a path.

#include <string>
#include <utility>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class GivenValues : public Quxml {
protected:
    GivenValues() {
        write("types.xml",
              "<types>\n"
              "  <type n=\"text/plain\" item=\"a/b\"><c>[x] = \"y\"</c></type>\n"
              "  <type n='say \"hi\"' item=\"2\"><c>it's</c></type>\n"
              "  <type n=\"it's &quot;it&quot;\" item=\"@n=1\"><c>10.0.0.1/24</c></type>\n"
              "  <type n=\"\"><c>$v</c></type>\n"
              "  <type n=\"$v\"><c>last()</c></type>\n"
              "</types>\n");
    }
};

struct Asked {
    const char* predicate;
    const char* argument;
    const char* selected;  // the positions of what is selected
};

TEST_F(GivenValues, are_compared_as_they_are_alike_behind_one_slash_and_two) {
    const std::vector<Asked> all = {
        {"[@n=$v]", "'v=text/plain'", "1"},
        {"[@n=$v]", "'v=say \"hi\"'", "2"},
        {"[@n=$v]", "\"v=it's \\\"it\\\"\"", "3"},
        {"[@n=$v]", "v=", "4"},
        {"[@n=$v]", "'v=$v'", "5"},
        {"[@n=$v]", "v=text", ""},
        {"[@n=$v]", "\"v='text/plain'\"", ""},
        {"[@n=$v]", "'v= text/plain'", ""},
        {"[@n = $v ]", "v=text/plain", "1"},
        {"[c=$v]", "'v=[x] = \"y\"'", "1"},
        {"[c=$v]", "\"v=it's\"", "2"},
        {"[c=$v]", "v=10.0.0.1/24", "3"},
        {"[c=$v]", "'v=$v'", "4"},
        {"[c=$v]", "'v=last()'", "5"},
        {"[c=$v]", "v=", ""},
        {"[$v]", "v=a/b", "1"},
        {"[$v]", "v=2", "2"},
        {"[$v]", "v=@n=1", "3"},
        {"[$v]", "v=", ""},
        {"[$v]", "v=99999999999", ""},
        {"[$v]", "'v=last()'", ""},
        {"[$long-name_1.2]", "long-name_1.2=2", "2"},
    };
    for (const Asked& one : all) {
        const std::string selected = one.selected;
        const std::string expected = selected.empty() ? "" : "/types/type[position()=" + selected + "]\n";
        for (const std::string head : {"/types/type", "//type", "/types/*", "//types/type", "/types//type"}) {
            SCOPED_TRACE(head + one.predicate + one.argument);
            const Result result = run("quxml query --quiet --path '" + head + one.predicate + "' --arg " +
                                      one.argument + " types.xml");
            expect(result, selected.empty() ? 1 : 0, expected, "");
        }
    }
}

TEST_F(GivenValues, stand_beside_all_other_predicates_and_each_other) {
    expect_done(run("quxml query --path '/types/type[@n][c=$c][last()]/c' --arg c=10.0.0.1/24 types.xml"),
                "/types/type[position()=3]/c\n");
    expect_done(run("quxml query --count '/types/type[position()<3][@n=$n]' --arg n='say \"hi\"' types.xml"),
                "1\n");
    expect(
        run("quxml query --quiet --count '/types/type[@n=$n][position()=2]' --arg n='say \"hi\"' types.xml"),
        1, "0\n", "");
    expect_done(
        run("quxml query --value '//type[@n=$n]/c' --arg c=1 --arg n=text/plain types.xml 2>/dev/null || "
            "quxml query --value '/types/type[@n=$n][c=$c]/c' --arg 'c=[x] = \"y\"' --arg n=text/plain "
            "types.xml"),
        "[x] = \"y\"\n");
    expect_done(run("quxml query --prefix --count '/ty/ty[@n=$n]' --arg n=text/plain types.xml"), "1\n");
}

TEST_F(GivenValues, are_taken_by_all_commands_that_change_what_a_path_selects) {
    const std::string type = "'/types/type[@n=$n]' --arg n=text/plain";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"set " + type + " k=1", "<type n=\"text/plain\" item=\"a/b\" k=\"1\"><c>[x] = \"y\"</c></type>"},
        {"unset " + type + " item -", "<type n=\"text/plain\"><c>[x] = \"y\"</c></type>"},
        {"text '//type[@n=$n]/c' --arg n=text/plain z",
         "<type n=\"text/plain\" item=\"a/b\"><c>z</c></type>"},
        {"add " + type + " d", "<type n=\"text/plain\" item=\"a/b\"><c>[x] = \"y\"</c><d/></type>"},
        {"remove '//type[$n]/c' --arg n=a/b", "<type n=\"text/plain\" item=\"a/b\"></type>"},
    };
    for (const auto& [command, line] : all) {
        SCOPED_TRACE(command);
        const Result result = run("quxml " + command + " <types.xml | sed -n 2p");
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(contains(result.out, line) || contains(line, "</type>")) << result.out;
        EXPECT_EQ(result.out, "  " + line + '\n');
    }
}

TEST_F(GivenValues, are_given_to_all_edits_at_once_or_to_one) {
    expect_done(run("quxml edit -e 'set //type[@n=$n] k=$n' -e 'remove //type[@n=$n]/c' --arg n=text/plain "
                    "types.xml | sed -n 2p"),
                "  <type n=\"text/plain\" item=\"a/b\" k=\"$n\"></type>\n");
    expect_done(
        run("quxml edit -e 'set //type[@n=$n][1] --arg n=text/plain k=1' -e 'set //type[$i] k=2 --arg i=2' "
            "--quiet types.xml | sed -n 2,3p"),
        "  <type n=\"text/plain\" item=\"a/b\" k=\"1\"><c>[x] = \"y\"</c></type>\n"
        "  <type n='say \"hi\"' item=\"2\" k=\"2\"><c>it's</c></type>\n");
    expect(
        run("quxml edit -e 'set //type[@n=$n] k=1' -e 'set //type[@n=$m] --arg m=1 k=2' --arg n=text/plain "
            "types.xml"),
        1, "",
        "quxml: note: //type matches 5 nodes; none has \"1\" as its attribute n; there is \"text/plain\", "
        "\"say \\\"hi\\\"\", \"it's \\\"it\\\"\", \"\", \"$v\"\n"
        "quxml: edit 2, set //type[@n=$m] --arg m=1 k=2: no element matches //type[@n=$m]\n");
}

TEST_F(GivenValues, are_shown_by_explain) {
    expect_done(run("quxml explain '/a/b[@k=$v][c=$w][$i]' --arg 'v=x\"/y' --arg w= --arg i=7"),
                "step 1: a\n"
                "  start node: the root element, if it has the name \"a\" in upper or lower case\n"
                "step 2: b[@k=$v][c=$w][$i]\n"
                "  children: those with the name \"b\" in upper or lower case\n"
                "  [@k=$v] attribute: keeps those that have \"x\\\"/y\" (--arg v) as their attribute \"k\"\n"
                "  [c=$w] child's text: keeps those that have a child \"c\" whose text is \"\" (--arg w)\n"
                "  [$i] item: keeps those that have \"7\" (--arg i) as their attribute \"item\"\n"
                "  note: this is not a position; for that, write [position()=7]\n");
    expect_done(run("quxml explain 'b[@k=$v]//c[$i]//d[e=$v]' --arg v=1 --arg i=a/b | grep '\\['"),
                "step 1: b[@k=$v]\n"
                "  [@k=$v] attribute of the node: passes if it has \"1\" (--arg v) as its attribute \"k\"\n"
                "step 2: c[$i]\n"
                "  [$i] item of the node: passes if it has \"a/b\" (--arg i) as its attribute \"item\"\n"
                "  note: to compare an attribute write [@name=$i], for the text of a child [name=$i]\n"
                "step 3: d[e=$v]\n"
                "  [e=$v] child's text: passes if it has a child \"e\" whose text is \"1\" (--arg v)\n");
}

// Deliberate: a path that holds a $ means what it always did as long as no value is given.
TEST_F(GivenValues, are_needed_for_a_dollar_to_mean_anything) {
    expect_done(run("quxml query --count '/types/type[@n=$v]' types.xml"), "1\n");
    expect_done(run("quxml query --count '//type[c=$v]' types.xml"), "1\n");
    expect(
        run("quxml query --count '/types/type[c=$w]' types.xml"), 1, "0\n",
        "quxml: note: step 2, type[c=$w]: $w stands for itself here; with --arg w=VALUE and without "
        "quotes it "
        "stands for VALUE\n"
        "quxml: note: /types/type matches 5 nodes; none has a child c with the text \"$w\"; there is \"[x] = "
        "\\\"y\\\"\", \"it's\", \"10.0.0.1/24\", \"$v\", \"last()\"\n");
    expect_done(run("quxml query --count '/types/type[@n=$w][c=\"$v\"]' --arg w= types.xml"), "1\n");
}

TEST_F(GivenValues, are_refused_if_they_are_malformed_unknown_or_not_used) {
    const std::string help = "\nquxml query --help says more.\n";
    const std::string unused =
        ": no predicate of the path has $v as its value; it is written without quotes, as in [@name=$v]";
    const std::vector<Refused> usage = {
        {"--arg v", "--arg: \"v\" is not NAME=VALUE"},
        {"--arg =v", "--arg: \"=v\" is not NAME=VALUE"},
        {"--arg 'a b=v'", "--arg: \"a b=v\" is not NAME=VALUE"},
        {"--arg v=1 --arg v=2", "--arg: \"v\" is given more than once"},
        {"--arg=", "--arg=: a value is missing after the equal sign"},
    };
    for (const Refused& one : usage)
        expect(run(std::string("quxml query '//type[@n=$v]' ") + one.arguments + " types.xml"), 2, "",
               std::string("quxml: ") + one.message + help);
    for (const char* path :
         {"//type", "//type[@n=\"$v\"]", "//type[@n=x$v]", "//$v", "/types/type[position()=$v]"}) {
        SCOPED_TRACE(path);
        expect(run(std::string("quxml query '") + path + "' --arg v=1 types.xml"), 2, "",
               "quxml: --arg v" + unused + help);
    }
    expect_done(run("quxml query --count '//type[@n=$v]' --arg=v= types.xml"), "1\n");
    const std::string advice = "\n\"quxml explain\" shows how a path is taken; put it in quotes.\n";
    expect(run("quxml query '//type[@n=$w]' --arg v=1 types.xml"), 4, "",
           "quxml: bad query \"//type[@n=$w]\": step 1, [@n=$w]: no --arg gives a value for $w" + advice);
    expect(
        run("quxml query '/types/type[@n=$v][$5]' --arg v=1 types.xml"), 4, "",
        "quxml: bad query \"/types/type[@n=$v][$5]\": step 2, [$5]: no --arg gives a value for $5" + advice);
    const Result explained = run("quxml explain '//type[@n=$w]' --arg v=1");
    EXPECT_EQ(explained.code, 4);
    EXPECT_TRUE(contains(explained.out, "  error: [@n=$w] no --arg gives a value for $w\n")) << explained.out;
    expect(run("quxml set '//type[@n=$w]' k=1 --arg v=1 types.xml"), 4, "",
           "quxml: bad query \"//type[@n=$w]\": step 1, [@n=$w]: no --arg gives a value for $w" + advice);
}

TEST_F(GivenValues, are_refused_if_no_edit_uses_them) {
    const std::string help = "\nquxml edit --help says more.\n";
    const std::string unused =
        "--arg v: no predicate of the path has $v as its value; it is written without quotes, as in "
        "[@name=$v]";
    expect(run("quxml edit -e 'set //type k=1' --arg v=1 types.xml"), 2, "", "quxml: " + unused + help);
    expect(run("quxml edit -e 'set //type k=1 --arg v=1' types.xml"), 2, "",
           "quxml: edit 1, set //type k=1 --arg v=1: " + unused + help);
    expect(run("quxml edit -e 'set //type k=1 --arg v=1 --arg v=2' types.xml"), 2, "",
           "quxml: edit 1, set //type k=1 --arg v=1 --arg v=2: --arg: \"v\" is given more than once" + help);
    expect(run("quxml edit -e 'set //type[@n=$v] k=1' -e 'set //type[@n=$w] k=1' --arg v= types.xml"), 4, "",
           "quxml: edit 2, set //type[@n=$w] k=1: bad query \"//type[@n=$w]\": step 1, [@n=$w]: no --arg "
           "gives a "
           "value for $w\n\"quxml explain\" shows how a path is taken; put it in quotes.\n");
}

TEST_F(GivenValues, are_named_by_notes_on_values_that_a_path_cannot_hold) {
    const std::string advice = "write [@n=$V] and --arg V=VALUE\n";
    const std::vector<std::pair<std::string, std::string>> all = {
        {"//type[@n='text/plain']",
         "step 1, type[@n='text: there is no ] at the end; a path is cut at every /, also between quotes; "
         "for a "
         "value with a / " +
             advice},
        {"/types/type[@n=text/plain]",
         "step 2, type[@n=text: there is no ] at the end; a path is cut at every /, also between quotes; for "
         "a "
         "value with a / " +
             advice},
        {"/types/type[@n='say \"hi\"']",
         "step 2, type[@n='say \"hi\"']: all quotes at the ends are dropped, so that say \"hi is compared; "
         "for all "
         "of it " +
             advice},
        {"//type[@n='say \"hi\"']",
         "step 1, type[@n='say \"hi\"']: the character before = is not part of the name; for \"n\" " +
             advice},
        {"/types/type[@n='[x]']",
         "step 2, type[@n='[x]']: the quote is not closed before the ], which counts between quotes too; " +
             advice},
        {"//type[@n='[x]']",
         "step 1, type[@n='[x]']: the quote is not closed before the ], which counts between quotes too; " +
             advice},
    };
    for (const auto& [path, note] : all) {
        SCOPED_TRACE(path);
        write("path", path);
        const Result result = run("quxml query \"$(cat path)\" types.xml");
        EXPECT_EQ(result.code, 1);
        EXPECT_TRUE(contains(result.err, "quxml: note: " + note)) << result.err;
    }
    expect(run("quxml query \"/types/type[@n='a=b']\" types.xml"), 4, "",
           "quxml: bad query \"/types/type[@n='a=b']\": step 2, [@n='a=b']: at most one equal sign can stand "
           "in the "
           "predicate of an attribute; for a value with more write [@n=$V] and --arg V=VALUE\n"
           "\"quxml explain\" shows how a path is taken; put it in quotes.\n");
    expect(run("quxml remove \"//type[c='10.0.0.1/24']\" types.xml"), 4, "",
           "quxml: bad query \"//type[c='10.0.0.1/24']\": step 1, type[c='10.0.0.1: there is no ] at the "
           "end, and "
           "nothing is changed on a guess; for a value with a / write [c=$V] and --arg V=VALUE\n"
           "\"quxml explain\" shows how a path is taken; put it in quotes.\n");
}

}  // namespace

}  // namespace quxml_test
