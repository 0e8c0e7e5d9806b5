// SPDX-License-Identifier: MIT

// The words of "quxml explain". Whether they are true is tested with the steps of paths.

#include <string>
#include <vector>

#include "program.h"
#include "terminal/words.h"

namespace quxml_test {

namespace {

using Explain = Quxml;

struct Explained {
    const char* path;
    const char* text;
};

TEST_F(Explain, says_where_each_step_looks) {
    const std::vector<Explained> all = {
        {"a",
         "step 1: a\n"
         "  start node: the root element, if it has the name \"a\" in upper or lower case\n"
         "  note: the first step names the root element itself, not a child of it\n"},
        {"/a/b",
         "step 1: a\n"
         "  start node: the root element, if it has the name \"a\" in upper or lower case\n"
         "step 2: b\n"
         "  children: those with the name \"b\" in upper or lower case\n"},
        {"//a/*/",
         "step 1: a\n"
         "  search: the root element and all below it, for the name \"a\" in upper or lower case\n"
         "  note: the search stops at the first match of each branch; what is inside a match is not "
         "found\n"
         "step 2: *\n"
         "  children: those with any name\n"
         "step 3: (empty)\n"
         "  children: all of them, texts too\n"},
        {"a//*",
         "step 1: a\n"
         "  start node: the root element, if it has the name \"a\" in upper or lower case\n"
         "  note: the first step names the root element itself, not a child of it\n"
         "step 2: *\n"
         "  search: all below the nodes so far, for any name\n"
         "  note: every node is a match, texts too\n"},
        {"//*/a",
         "step 1: *\n"
         "  search: the root element and all below it, for any name\n"
         "  note: everything matches, so the search does not go deeper than where it begins\n"
         "step 2: a\n"
         "  children: those with the name \"a\" in upper or lower case\n"},
        {"//",
         "step 1: (empty)\n"
         "  nothing: an empty step here never matches\n"
         "  note: a name is missing here; any name is *\n"},
    };
    for (const Explained& one : all)
        expect_done(run(std::string("quxml explain '") + one.path + "'"), one.text);
}

TEST_F(Explain, knows_names_that_are_beginnings) {
    expect_done(run("quxml explain --prefix //a"),
                "step 1: a\n"
                "  search: the root element and all below it, for a name that begins with \"a\" in upper or "
                "lower case\n"
                "  note: the search stops at the first match of each branch; what is inside a match is "
                "not found\n");
}

/// What is said about the last step, after the line that says where it looks.
std::string get_last_lines(const std::string& text) {
    const std::size_t first_line = tool::get_place_after(text.rfind("\nstep "));
    const std::size_t second_line = text.find('\n', first_line) + 1;
    return text.substr(tool::get_place_after(text.find('\n', second_line)));
}

TEST_F(Explain, says_what_predicates_keep_of_a_list) {
    const std::vector<Explained> all = {
        {"[last()]", "  [last()] position from the end: keeps the last\n"},
        {"[last()-2]", "  [last()-2] position from the end: keeps the one 2 before the last\n"},
        {"[last()+1]",
         "  [last()+1] position from the end: keeps none, since nothing comes after the last\n"},
        {"[position()=last()]",
         "  [position()=last()] position from the end: keeps the last\n"
         "  note: what stands before last() is ignored\n"},
        {"[position()=2]", "  [position()=2] position: keeps the one at position 2\n"},
        {"[position()=-1]",
         "  [position()=-1] position: keeps the one at position 4294967295\n"
         "  note: positions begin with 1; the last is [last()]\n"},
        {"[position()<3]", "  [position()<3] position: keeps those from position 1 up to 2\n"},
        {"[position()<1]", "  [position()<1] position: keeps none\n"},
        {"[position()<0]",
         "  [position()<0] position: keeps those from position 1 to the last\n"
         "  note: 0 after < stands for no limit\n"},
        {"[position()>2]",
         "  [position()>2] position: keeps those from position 3 up to the last but one\n"
         "  note: a predicate with > never keeps the last one\n"},
        {"[position()<5 and position()>2]",
         "  [position()<5 and position()>2] position: keeps those from position 3 up to the last but one\n"
         "  note: a predicate with > never keeps the last one\n"
         "  note: what < says is ignored beside >\n"
         "  note: only the first < > = count, each with the number after it\n"},
        {"[position()]",
         "  [position()] position: keeps those from position 1 to the last\n"
         "  note: without < > or = and a number it keeps everything\n"},
        {"[@id]", "  [@id] attribute: keeps those that have the attribute \"id\"\n"},
        {"[@id=\"1\"]", "  [@id=\"1\"] attribute: keeps those that have \"1\" as their attribute \"id\"\n"},
        {"[@id = x]",
         "  [@id = x] attribute: keeps those that have \" x\" as their attribute \"id \"\n"
         "  note: the blanks in \"id \" belong to the name\n"},
        {"[b= \"x\"]",
         "  [b= \"x\"] child's text: keeps those that have a child \"b\" whose text is \" \"x\"\n"
         "  note: the quotes belong to the value, since blanks stand outside them\n"},
        {"[@id=\"it's\"]",
         "  [@id=\"it's\"] attribute: keeps those that have \"it's\" as their attribute \"id\"\n"},
        {"[@id=\"say 'hi'\"]",
         "  [@id=\"say 'hi'\"] attribute: keeps those that have \"say 'hi\" as their attribute \"id\"\n"
         "  note: all quotes at the ends are dropped, so that say 'hi is compared; for all of it write "
         "[@id=$V] and "
         "--arg V=VALUE\n"},
        {"[b=x]", "  [b=x] child's text: keeps those that have a child \"b\" whose text is \"x\"\n"},
        {"[2]",
         "  [2] item: keeps those that have \"2\" as their attribute \"item\"\n"
         "  note: this is not a position; for that, write [position()=2]\n"},
        {"[1]",
         "  [1] item: keeps those that have \"1\" as their attribute \"item\", and of those without it the "
         "first of each "
         "name\n"
         "  note: this is not a position; for that, write [position()=1]\n"},
        {"[x]",
         "  [x] bare text: keeps the only one there is, if a child of its parent with its name has the text "
         "\"x\"\n"
         "  note: to compare an attribute write [@name='x'], for the text of a child [name='x']\n"},
        {"[@id][2]",
         "  [@id] attribute: keeps those that have the attribute \"id\"\n"
         "  [2] item: keeps those that have \"2\" as their attribute \"item\"\n"
         "  note: this is not a position; for that, write [position()=2]\n"},
        {"[@id",
         "  note: there is no ] at the end; a path is cut at every /, also between quotes\n"
         "  [@i] attribute: keeps those that have the attribute \"i\"\n"},
    };
    for (const Explained& one : all) {
        SCOPED_TRACE(one.path);
        write("path", std::string("a/b") + one.path);
        const Result result = run("quxml explain \"$(cat path)\"");
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(get_last_lines(result.out), one.text);
    }
    EXPECT_TRUE(contains(run("quxml explain 'a/[1]'").out,
                         "  children: none, since there is no name before the predicate; any name is *\n"));
}

TEST_F(Explain, says_what_predicates_of_single_nodes_compare) {
    const std::string stops =
        "  note: the search stops at the first match of each branch; what is inside a match is not "
        "found\n";
    const std::vector<Explained> all = {
        {"[@id]", "  [@id] attribute of the node: passes if it has the attribute \"id\"\n"},
        {"[@id='x']",
         "  [@id='x'] attribute of the node: passes if it has \"'x'\" as its attribute \"i\"\n"
         "  note: the character before = is not part of the name; for \"id\" write [@id =x]\n"
         "  note: here quotes belong to the value\n"},
        {"[@id =x]", "  [@id =x] attribute of the node: passes if it has \"x\" as its attribute \"id\"\n"},
        {"[2]",
         "  [2] item of the node: passes if it has \"2\" as its attribute \"item\"\n"
         "  note: this is not a position; positions count only after a single /\n"},
        {"[1]",
         "  [1] item of the node: passes if it has \"1\" as its attribute \"item\" or does not have that "
         "attribute\n"
         "  note: this is not a position; positions count only after a single /\n"},
        {"[last()]",
         "  [last()] item of the node: passes if it has \"last()\" as its attribute \"item\"\n"
         "  note: last() means no position in the first step and after //\n"},
        {"[position()=2]",
         "  [position()=2] child's text: passes if it has a child \"position()\" whose text is \"2\"\n"
         "  note: position() means no position in the first step and after //\n"},
        {"[b='x']", "  [b='x'] child's text: passes if it has a child \"b\" whose text is \"x\"\n"},
        {"[@id][2]",
         "  note: only one predicate counts in the first step and after //; ignored: [2]\n"
         "  [@id] attribute of the node: passes if it has the attribute \"id\"\n"},
    };
    for (const Explained& one : all) {
        SCOPED_TRACE(one.path);
        write("path", std::string("//b") + one.path);
        const Result result = run("quxml explain \"$(cat path)\"");
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(get_last_lines(result.out), stops + one.text);
    }
}

TEST_F(Explain, exits_with_4_for_a_path_that_queries_refuse) {
    expect(run("quxml explain 'a/b[position()>=2]/c'"), 4,
           "step 1: a\n"
           "  start node: the root element, if it has the name \"a\" in upper or lower case\n"
           "  note: the first step names the root element itself, not a child of it\n"
           "step 2: b[position()>=2]\n"
           "  children: those with the name \"b\" in upper or lower case\n"
           "  error: [position()>=2] >= is not known; use > and the number before, and [last()] for the last "
           "node, which > leaves out\n"
           "step 3: c\n"
           "  children: those with the name \"c\" in upper or lower case\n",
           "");
    expect(run("quxml explain"), 2, "", "quxml: PATH is required\nquxml explain --help says more.\n");
}

}  // namespace

}  // namespace quxml_test
