// SPDX-License-Identifier: MIT

// The notes on paths that mean something else here than in XPath, beside what these paths select.

#include <sstream>
#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class PathNotes : public Quxml {
protected:
    PathNotes() {
        write("a.xml", "<a><b id='1' item='3'><c>x</c></b><b id='2'>y</b><b id='3'><b id='4'/></b></a>");
    }

    Result run_with(const std::string& before, const std::string& path, const std::string& after) const {
        write("path", path);
        return run(before + " \"$(cat path)\" " + after);
    }
};

struct Noted {
    const char* path;
    const char* selected;  // the ids of what it selects
    std::vector<std::string> notes;
    const char* reason = nullptr;  // why nothing matches, if that is more than the notes say
};

const std::string root = "the first step names the root element itself, not a child of it";

std::string to_lines(const std::vector<std::string>& notes) {
    std::string lines;
    for (const std::string& note : notes)
        lines += "quxml: note: " + note + '\n';
    return lines;
}

/// Of which nothing matches, so that all notes are written.
const std::vector<Noted>& get_paths_without_match() {
    static const std::vector<Noted> paths = {
        {"", "", {"step 1, (empty): a name is missing here; any name is *"}},
        {"//", "", {"step 1, (empty): a name is missing here; any name is *"}},
        {"b/c", "", {"step 1, b: " + root}, "the root element is called a, not b"},
        {"'",
         "",
         {"step 1, ': " + root, "step 1, ': no element can have the name \"'\"; the quotes belong to it"}},
        {"/a/b/text()",
         "",
         {"step 3, text(): no element can have the name \"text()\"; a / at the end selects all that is in an "
          "element, its text too"}},
        {"/a/b/..", "", {"step 3, ..: no element can have the name \"..\"; there is no way up"}},
        {"/a/b|/a/c", "", {"step 2, b|: no element can have the name \"b|\"; ask for one path at a time"}},
        {"/a/b/@id",
         "",
         {"step 3, @id: no element can have the name \"@id\"; attributes are not selected; \"quxml query "
          "--attribute id\" writes them"}},
        {"/a/descendant::c",
         "",
         {"step 2, descendant::c: \"descendant::c\" is taken for a name, since there are no axes; // "
          "searches all below"}},
        {"count(//b)",
         "",
         {"step 1, count(: " + root,
          "step 1, count(: no element can have the name \"count(\"; there are no functions here",
          "step 2, b): no element can have the name \"b)\"; any name is *"}},
        {"/a/b [2]",
         "",
         {"step 2, b [2]: no element can have the name \"b \"; the blanks belong to it",
          "step 2, b [2]: this is not a position; for that, write [position()=2]"}},
        {"/a/b[@]", "", {"step 2, b[@]: a name is missing"}},
        {"/a/b[@*]", "", {"step 2, b[@*]: nothing can have the name \"*\""}},
        {"/a/b[.='x']", "", {"step 2, b[.='x']: nothing can have the name \".\""}},
        {"/a/[@id]", "", {"step 2, [@id]: a name is missing here; any name is *"}},
        {"/a/p:b",
         "",
         {"step 2, p:b: a declared prefix is dropped when a document is read, so that only \"b\" is left"},
         "/a has 3 children: b; none is called p:b"},
        {"//b[@id=2]",
         "",
         {"step 1, b[@id=2]: the character before = is not part of the name; for \"id\" write "
          "[@id "
          "=2]"}},
        {"//b[@id=\"O'Brien\"]",
         "",
         {"step 1, b[@id=\"O'Brien\"]: the character before = is not part of the name; for "
          "\"id\" write "
          "[@id =O'Brien]",
          "step 1, b[@id=\"O'Brien\"]: here quotes belong to the value"}},
        {"//b[@id = 2]", "", {"step 1, b[@id = 2]: the blank after = belongs to the value"}},
        {"//b[foo()]", "", {"step 1, b[foo()]: no such function is known; it is taken for a text"}},
        {"/a/b[foo()]", "", {"step 2, b[foo()]: no such function is known; it is taken for a text"}},
        {"/a/b[text()='y']",
         "",
         {"step 2, b[text()='y']: no such function is known; \"text()\" is taken for a name"}},
        {"/a/b[@item>1]", "", {"step 2, b[@item>1]: only = compares here; \">\" belongs to the name"}},
        {"//b[@item>1]", "", {"step 1, b[@item>1]: only = compares here; \">\" belongs to the name"}},
        {"/a/b[c>1]", "", {"step 2, b[c>1]: only = compares here; \">\" belongs to the text"}},
        {"/a/b[@id!='2']", "", {"step 2, b[@id!='2']: only = compares here; \"!\" belongs to the name"}},
        {"/a/b[c!='x']", "", {"step 2, b[c!='x']: only = compares here; \"!\" belongs to the name"}},
        {"/a/b[@id and @item]",
         "",
         {"step 2, b[@id and @item]: the blanks in \"id and @item\" belong to the name"}},
        {"//b[c]",
         "",
         {"step 1, b[c]: to compare an attribute write [@name =c], for the text of a child [name='c']"},
         "//b matches 4 nodes; none has \"c\" as its attribute item; there is \"3\""},
        {"/a/b[0]",
         "",
         {"step 2, b[0]: this is not a position; positions begin with 1; from the end they are [last()], "
          "[last()-1] and so on"},
         "/a/b matches 3 nodes; none has \"0\" as its attribute item; there is \"3\""},
        {"/a/b[-1]",
         "",
         {"step 2, b[-1]: this is not a position; positions begin with 1; from the end they are [last()], "
          "[last()-1] and so on"},
         "/a/b matches 3 nodes; none has \"-1\" as its attribute item; there is \"3\""},
        {"/a/b[-2]",
         "",
         {"step 2, b[-2]: this is not a position; positions begin with 1; from the end they are [last()], "
          "[last()-1] and so on"},
         "/a/b matches 3 nodes; none has \"-2\" as its attribute item; there is \"3\""},
        {"/a/b[position()=0]", "", {"step 2, b[position()=0]: positions begin with 1; the last is [last()]"}},
        {"/a/b[position()=-1]",
         "",
         {"step 2, b[position()=-1]: positions begin with 1; the last is [last()]"}},
        {"//b[99999999999999]",
         "",
         {"step 1, b[99999999999999]: this is not a position; positions count only after a single /",
          "step 1, b[99999999999999]: it is compared as text here; after a single / it would be too large"},
         "//b matches 4 nodes; none has \"99999999999999\" as its attribute item; there is \"3\""},
        {"/a/b[2 or 3]",
         "",
         {"step 2, b[2 or 3]: this is not a position; for that, write [position()=2]",
          "step 2, b[2 or 3]: the attribute \"item\" is compared with all of \"2 or 3\""}},
    };
    return paths;
}

/// Which match, so that only surprises are written.
const std::vector<Noted>& get_paths_with_matches() {
    static const std::vector<Noted> paths = {
        {"/a/b", "1\n2\n3\n", {}},
        {"//b", "1\n2\n3\n", {}},
        {"/a/b[]", "1\n2\n3\n", {"step 2, b[]: [] asks for nothing; brackets count between quotes too"}},
        {"/a/b[",
         "1\n2\n3\n",
         {"step 2, b[: there is no ] at the end; a path is cut at every /, also between quotes"}},
        {"/a/b[@id='']",
         "1\n2\n3\n",
         {"step 2, b[@id='']: without a value it only asks for the attribute, whatever that is"}},
        {"/a/b[position()]",
         "1\n2\n3\n",
         {"step 2, b[position()]: without < > or = and a number it keeps everything"}},
        {"/a/b[3]", "1\n", {}},
        {"/a/b[1]", "2\n", {"step 2, b[1]: this is not a position; for that, write [position()=1]"}},
        {"//b[1]", "2\n3\n", {"step 1, b[1]: this is not a position; positions count only after a single /"}},
        {"//b[3]", "1\n", {}},
        {"/a/b[position()>1]",
         "2\n",
         {"step 2, b[position()>1]: a predicate with > never keeps the last one"}},
        {"/a/b[position()=last()]", "3\n", {}},
        {"/a/b[position()<last()]",
         "3\n",
         {"step 2, b[position()<last()]: what stands before last() is ignored"}},
        {"/a/b[position()!=2]", "2\n", {"step 2, b[position()!=2]: != is taken for ="}},
        {"/a/b[position()=1 or position()=3]",
         "1\n",
         {"step 2, b[position()=1 or position()=3]: only the first < > = count, each with the number after "
          "it"}},
        {"/a/b[position() mod 2=1]",
         "1\n",
         {"step 2, b[position() mod 2=1]: only the first < > = count, each with the number after it"}},
        {"//b[@id!=2]", "2\n", {"step 1, b[@id!=2]: != is taken for ="}},
        {"//b[@id>=2]", "2\n", {"step 1, b[@id>=2]: >= is taken for ="}},
        {"//b[@id][3]",
         "1\n2\n3\n",
         {"step 1, b[@id][3]: only one predicate counts in the first step and after //; ignored: [3]"}},
    };
    return paths;
}

TEST_F(PathNotes, are_written_by_a_query_that_matches_nothing_if_they_may_be_the_reason) {
    for (const Noted& one : get_paths_without_match()) {
        SCOPED_TRACE(one.path);
        const std::string reason = one.reason == nullptr ? "" : to_lines({one.reason});
        expect(run_with("quxml query", one.path, "a.xml"), 1, one.selected, to_lines(one.notes) + reason);
    }
}

TEST_F(PathNotes, are_written_by_a_query_that_matches_if_they_are_surprises) {
    for (const Noted& one : get_paths_with_matches()) {
        SCOPED_TRACE(one.path);
        expect(run_with("quxml query --attribute id", one.path, "a.xml"), 0, one.selected,
               to_lines(one.notes));
    }
}

TEST_F(PathNotes, are_silenced_by_quiet) {
    expect(run("quxml query --quiet '/a/b/text()' a.xml"), 1, "", "");
}

/// The texts of notes, without the places.
std::vector<std::string> get_texts(const std::vector<std::string>& notes) {
    std::vector<std::string> texts;
    for (const std::string& note : notes)
        texts.push_back(note.substr(note.find(": ") + 2));
    return texts;
}

std::vector<std::string> get_explained(const std::string& text) {
    const std::string mark = "  note: ";
    std::vector<std::string> notes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(mark, 0) == 0)
            notes.push_back(line.substr(mark.size()));
    }
    return notes;
}

/// In the same order.
bool are_among(const std::vector<std::string>& texts, const std::vector<std::string>& all) {
    auto next = texts.begin();
    for (const std::string& one : all) {
        if (next != texts.end() && *next == one)
            ++next;
    }
    return next == texts.end();
}

TEST_F(PathNotes, are_among_those_that_explain_gives) {
    for (const Noted& one : get_paths_without_match()) {
        SCOPED_TRACE(one.path);
        const Result result = run_with("quxml explain", one.path, "");
        EXPECT_EQ(result.code, 0);
        EXPECT_TRUE(are_among(get_texts(one.notes), get_explained(result.out))) << result.out;
    }
}

TEST_F(PathNotes, are_written_before_a_document_is_changed) {
    const std::string spared =
        "quxml: note: step 2, b[position()>1]: a predicate with > never keeps the last one\n";
    write("b.xml", "<a><b/><b/><b/></a>");
    expect(run("quxml remove '/a/b[position()>1]' b.xml"), 0, "<a><b/><b/></a>", spared);
    for (const char* command : {"set P x=1", "unset P x", "text P x", "add P x", "remove P"}) {
        std::string quxml = std::string("quxml ") + command + " b.xml";
        quxml.replace(quxml.find('P'), 1, "'/a/b[position()>1]'");
        EXPECT_EQ(run(quxml).err, spared) << quxml;
        EXPECT_EQ(run(quxml + " --quiet").err, "") << quxml;
    }
    expect(run("quxml remove -i '/a/b[position()>1]' b.xml"), 0, "", spared);
    EXPECT_EQ(written("b.xml"), "<a><b/><b/></a>");
    expect_done(run("quxml remove -i //b b.xml"), "");
    EXPECT_EQ(written("b.xml"), "<a></a>");
    write("b.xml", "<a><b/><B/><c/></a>");
    const std::string cases = "quxml: note: matches differ in case: B and b\n";
    expect(run("quxml remove /a/b b.xml"), 0, "<a><c/></a>", cases);
    expect(run("quxml query --count //b b.xml"), 0, "2\n", cases);
    expect_done(run("quxml query --count '/a/*' b.xml"), "3\n");
    expect_done(run("quxml query --count --prefix /a/b b.xml"), "2\n");
}

struct Gap {
    const char* path;
    const char* complaint;
};

/// They select too much, and come from variables that are not set.
TEST_F(PathNotes, of_gaps_are_errors_where_a_document_is_changed) {
    const std::vector<Gap> all = {
        {"/a/b[@id='']", "step 2, b[@id='']: [@id=''] has no value"},
        {"/a/b[@id=]", "step 2, b[@id=]: [@id=] has no value"},
        {"/a/b[]", "step 2, b[]: [] asks for nothing"},
        {"/a/b[2", "step 2, b[2: there is no ] at the end"},
    };
    for (const Gap& one : all) {
        for (const auto& [command, rest] :
             std::vector<std::pair<const char*, const char*>>{{"remove", "a.xml"},
                                                              {"text", "x a.xml"},
                                                              {"add", "x a.xml"},
                                                              {"set", "x=1 a.xml"},
                                                              {"unset", "x a.xml"}}) {
            SCOPED_TRACE(std::string(command) + ' ' + one.path);
            expect(run_with(std::string("quxml ") + command + " -i", one.path, rest), 4, "",
                   std::string("quxml: bad query \"") + one.path + "\": " + one.complaint +
                       ", and nothing is changed on a guess\n"
                       "\"quxml explain\" shows how a path is taken; put it in quotes.\n");
        }
    }
}

TEST_F(PathNotes, are_written_when_there_is_nothing_to_change) {
    expect(
        run("quxml set /a/@id x=1 a.xml"), 1, "",
        to_lines({"step 2, @id: no element can have the name \"@id\"; attributes are not selected; \"quxml "
                  "query --attribute id\" writes them"}) +
            "quxml: no element matches /a/@id\n");
    expect(run("quxml remove --quiet /a/@id a.xml"), 1, "", "quxml: nothing matches /a/@id\n");
}

TEST_F(PathNotes, have_nothing_in_them_that_a_terminal_would_obey) {
    expect(run("quxml query \"/a/b$(printf '\\033')[3]\" a.xml"), 1, "",
           to_lines({"step 2, b?[3]: no element can have the name \"b?\"; any name is *",
                     "step 2, b?[3]: this is not a position; for that, write [position()=3]"}));
}

TEST_F(PathNotes, say_why_a_number_that_is_an_error_among_children_is_not_one_after_a_search) {
    expect(run("quxml query '/a/b[99999999999999]' a.xml"), 4, "",
           "quxml: bad query \"/a/b[99999999999999]\": step 2, [99999999999999]: the number is too large; "
           "after // it would be compared as text\n\"quxml explain\" shows how a path is taken; put it in "
           "quotes.\n");
}

}  // namespace

}  // namespace quxml_test
