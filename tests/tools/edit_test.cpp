// SPDX-License-Identifier: MIT

// The command edit, which makes several edits, all or none.

#include <string>
#include <tuple>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class Edit : public Quxml {
protected:
    Edit() { write("a.xml", "<!-- c -->\n<a>\n  <b x='1'/>\n</a>\n"); }
};

TEST_F(Edit, lets_each_edit_see_what_earlier_ones_made) {
    write("edits.txt",
          "# a comment\n"
          "\n"
          "set /a/b x=2 'y=a b'\n"
          "  set \"/a/b[@y='a b']\" x=\"\\\"3\\\"\" z=a\\ b\n"
          "add /a n --text one --attribute k=v\r\n"
          "text -- /a/n -two\n"
          "unset /a/b y\n"
          "add /a/n/.. m\n"
          "remove /a/n\n");
    write("edits.txt", written("edits.txt").erase(written("edits.txt").find("add /a/n/.."), 14));
    const std::string after = "<!-- c -->\n<a>\n  <b x='\"3\"' z='a b'/>\n</a>\n";
    expect_done(run("quxml edit a.xml <edits.txt"), after);
    expect_done(run("quxml edit -i a.xml <edits.txt"), "");
    EXPECT_EQ(written("a.xml"), after);
    expect_done(run("quxml edit -e 'set /a x=1' -e 'set /a x=2' -e 'unset /a/b x z' <a.xml"),
                "<!-- c -->\n<a x=\"2\">\n  <b/>\n</a>\n");
}

TEST_F(Edit, makes_all_edits_or_none) {
    const std::string before = written("a.xml");
    const std::vector<std::tuple<const char*, int, const char*>> all = {
        {"'set /a/c x=1'", 1, "edit 2, set /a/c x=1: no element matches /a/c"},
        {"'text /a x'", 3, "edit 2, text /a x: /a has elements in it; text beside them would be lost"},
        {"'set /a/b[position()>=2] x=1'", 4, "edit 2, set /a/b[position()>=2] x=1: bad query"},
        {"\"text /a/b '\n'\"", 3,
         "edit 2, text /a/b '\n': a.xml: not written: it would be read back otherwise"},
        {"'set /a'", 2, "edit 2, set /a: SETTING is required"},
        {"'sort /a'", 2, "edit 2, sort /a: \"sort\" is not set, unset, text, add or remove"},
        {"'set /a \"x=1'", 2, "edit 2, set /a \"x=1: there is no second \""},
        {"''", 2, "edit 2, : it is empty"},
    };
    for (const auto& [edit, code, message] : all) {
        SCOPED_TRACE(edit);
        const Result result =
            run(std::string("quxml edit --quiet -i -e 'set /a k=1' -e ") + edit + " -e 'set /a m=1' a.xml");
        EXPECT_EQ(result.code, code);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.substr(0, std::string("quxml: ").size() + std::string(message).size()),
                  std::string("quxml: ") + message);
        EXPECT_EQ(written("a.xml"), before);
    }
    expect(run("quxml edit"), 2, "",
           "quxml: standard input has the edits, so a FILE is needed\nquxml edit --help says more.\n");
}

}  // namespace

}  // namespace quxml_test
