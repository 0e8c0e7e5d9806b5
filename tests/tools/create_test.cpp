// SPDX-License-Identifier: MIT

// --create: elements that a path misses are made, once.

#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class Create : public Quxml {
protected:
    Create() { write("zone.xml", zone); }

    /// Runs an edit twice: the first time it gives a document, the second time it changes nothing.
    void expect_made(const std::string& edit, const std::string& text) const {
        SCOPED_TRACE(edit);
        write("new.xml", zone);
        expect_done(run("quxml " + edit + " -i new.xml"), "");
        EXPECT_EQ(written("new.xml"), text);
        expect_done(run("quxml " + edit + " -i --backup new.xml && ls"),
                    "err.txt\nnew.xml\nout.txt\nzone.xml\n");
        expect_done(run("quxml " + edit + " --diff new.xml"), "");
    }

    const std::string head =
        "<?xml version=\"1.0\"?>\n"
        "<zone name='public'>  <!-- kept -->\n"
        "\t<short>Public</short>\n"
        "\t<service name='ssh'/>\n"
        "\t<service name='dns'/>\n";
    const std::string zone = head + "</zone>\n";
};

TEST_F(Create, makes_what_a_path_misses_in_the_layout_of_the_document) {
    expect_made("set --create '/zone/helper' a=b", head + "\t<helper a=\"b\"/>\n</zone>\n");
    expect_made("text --create '/zone/helper' x", head + "\t<helper>x</helper>\n</zone>\n");
    expect_made("set --create \"/zone/service[@name='ftp']\" a=b",
                head + "\t<service name=\"ftp\" a=\"b\"/>\n</zone>\n");
    expect_made("set --create '/zone/service[@name=$n][2]' --arg 'n=a/\"b\"' a=b",
                head + "\t<service name=\"a/&quot;b&quot;\" item=\"2\" a=\"b\"/>\n</zone>\n");
    expect_made("text --create '/zone/rule[@f=ipv4][source=$s]/log/level' --arg s=10.0.0.1/24 7",
                head +
                    "\t<rule f=\"ipv4\">\n\t\t<source>10.0.0.1/24</source>\n\t\t<log>\n"
                    "\t\t\t<level>7</level>\n\t\t</log>\n\t</rule>\n</zone>\n");
    expect_made("add --create '/zone/helper' sub --item 3 --attribute a=b --text t",
                head + "\t<helper>\n\t\t<sub item=\"3\" a=\"b\">t</sub>\n\t</helper>\n</zone>\n");
    expect_made("add --create '/zone' service --attribute name=ftp",
                head + "\t<service name=\"ftp\"/>\n</zone>\n");
    expect_made(
        "edit -e 'set --create /zone/a b=1' -e 'text --create /zone/a/c 2' -e 'add --create /zone/a d'",
        head + "\t<a b=\"1\">\n\t\t<c>2</c>\n\t\t<d/>\n\t</a>\n</zone>\n");
}

TEST_F(Create, makes_nothing_where_the_path_selects_something) {
    expect_made("set --create /ZONE/service a=b",
                "<?xml version=\"1.0\"?>\n"
                "<zone name='public'>  <!-- kept -->\n"
                "\t<short>Public</short>\n"
                "\t<service name='ssh' a='b'/>\n"
                "\t<service name='dns' a='b'/>\n"
                "</zone>\n");
    expect_made("add --create /zone service --attribute name=ssh", zone);
    expect_made("add --create /zone short --text Public", zone);
    expect_made("add --create \"/zone[short='Public']\" service", zone);
}

TEST_F(Create, lets_the_path_select_exactly_what_was_made) {
    for (const std::string path : {"/zone/x[@a='1'][@b='2'][c='3'][d='4'][5]", "/zone/x[1]/y/z[@item='1']",
                                   "zone/service[@name='x'][n='1']/m"}) {
        SCOPED_TRACE(path);
        write("path", path);
        expect_done(run("quxml set --create \"$(cat path)\" made=1 zone.xml >new.xml && "
                        "quxml query --quiet --attribute made \"$(cat path)\" new.xml"),
                    "1\n");
    }
}

TEST_F(Create, is_refused_where_a_path_does_not_say_what_to_make) {
    const std::string advice = "\n\"quxml explain\" shows how a path is taken; put it in quotes.\n";
    const std::string makeable =
        ": --create takes names, [@name='value'], [name='text'] and [item] only, since it makes what they "
        "ask for";
    struct Path {
        const char* path;
        const char* place;
    };
    const std::vector<Path> all = {
        {"//x", "step 1, x"},
        {"/*/x", "step 1, *"},
        {"/zone//x", "step 2, x"},
        {"/zone/*", "step 2, *"},
        {"/zone/*/x", "step 2, *"},
        {"/zone/x/", "step 3, (empty)"},
        {"/zone/p:x", "step 2, p:x"},
        {"/zone/x[position()=1]", "step 2, x[position()=1]"},
        {"/zone/x[last()]", "step 2, x[last()]"},
        {"/zone/x[@a]", "step 2, x[@a]"},
        {"/zone/x[@p:a=1]", "step 2, x[@p:a=1]"},
        {"/zone/x[a=]", "step 2, x[a=]"},
        {"/zone/x[text]", "step 2, x[text]"},
        // Whatever the document holds.
        {"/zone/service[last()]", "step 2, service[last()]"},
        {"/other//x", "step 2, x"},
    };
    for (const Path& one : all) {
        for (const std::string command : {"set", "text", "add"}) {
            SCOPED_TRACE(command + ' ' + one.path);
            expect(
                run("quxml " + command + " --create '" + one.path + "' a=b zone.xml"),
                command == "add" ? 2 : 4, "",
                command == "add"
                    ? "quxml: NAME: \"a=b\" is not a name without a prefix\nquxml add --help says more.\n"
                    : std::string("quxml: bad query \"") + one.path + "\": " + one.place + makeable + advice);
        }
        expect(run(std::string("quxml add --create '") + one.path + "' a zone.xml"), 4, "",
               std::string("quxml: bad query \"") + one.path + "\": " + one.place + makeable + advice);
    }
    const std::vector<Refused> others = {
        {"/zone/service/x",
         "step 3, x: it is missing, and the steps before select 2 elements; name the one in which it is to "
         "be made"},
        {"/zone/x[@a=1][@a=2]", "step 2, x[@a=1][@a=2]: no element can have two values of one attribute"},
        {"/zone/x/y[2][3]", "step 3, y[2][3]: no element can have two values of one attribute"},
    };
    for (const Refused& one : others)
        expect(run(std::string("quxml set --create '") + one.arguments + "' a=b zone.xml"), 4, "",
               std::string("quxml: bad query \"") + one.arguments + "\": " + one.message + advice);
}

TEST_F(Create, never_makes_the_root_element) {
    expect(run("quxml set --create /zon/x a=b zone.xml"), 1, "",
           "quxml: note: the root element is called zone, not zon\nquxml: no element matches /zon/x\n");
    expect(run("quxml set --quiet --create /zone[@x=1]/y a=b zone.xml"), 1, "",
           "quxml: no element matches /zone[@x=1]/y\n");
}

TEST_F(Create, is_refused_where_something_would_be_lost) {
    expect(run("quxml set --create /zone/short/x a=b zone.xml"), 3, "",
           "quxml: /zone/short has text, which would be lost beside an element\n");
    expect(run("quxml text --create \"/zone/service[@name='ftp'][x='1']\" y zone.xml"), 3, "",
           "quxml: /zone/service[position()=3] has elements in it; text beside them would be lost\n");
    EXPECT_EQ(written("zone.xml"), zone);
}

TEST_F(Create, is_known_to_the_commands_that_give_something_to_an_element) {
    for (const std::string command :
         {"unset /zone a", "remove /zone/x", "query /zone/x", "edit -e 'set /zone a=b'"})
        EXPECT_EQ(run("quxml " + command + " --create zone.xml").code, 2) << command;
}

}  // namespace

}  // namespace quxml_test
