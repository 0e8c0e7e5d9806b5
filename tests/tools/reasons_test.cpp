// SPDX-License-Identifier: MIT

// Why nothing matches: what is said about it, by which commands, and when nothing is said.

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

class Reasons : public Quxml {
protected:
    Reasons() {
        write("zone.xml",
              "<zone name='public'>\n"
              "  <short>Public</short>\n"
              "  <service name='ssh' item='1'/>\n"
              "  <service name='dhcpv6-client'/>\n"
              "  <rule><source address='10.0.0.1/24'/><accept/></rule>\n"
              "  <rule><port>80</port><port>81</port></rule>\n"
              "</zone>\n");
    }
};

struct Unmatched {
    const char* path;
    const char* reason;
};

TEST_F(Reasons, say_how_far_a_path_leads_and_what_stands_there) {
    const std::vector<Unmatched> all = {
        {"/zon", "the root element is called zone, not zon"},
        {"/zon/service/x", "the root element is called zone, not zon"},
        {"/zone/servise",
         "/zone has 5 children: short, service, rule; none is called servise; is it service?"},
        {"/zone/x/y", "/zone has 5 children: short, service, rule; none is called x"},
        {"/zone/name",
         "/zone has 5 children: short, service, rule; none is called name; there is an attribute of that "
         "name: "
         "write [@name], or --attribute name"},
        {"/zone/service/x", "/zone/service matches 2 nodes, which have no elements in them"},
        {"/zone/short/x", "/zone/short has no elements in it"},
        {"/zone/rule/prot",
         "/zone/rule matches 2 nodes, which have 4 children: source, accept, port; none is called prot; is "
         "it "
         "port?"},
        {"/zone/service/", "/zone/service matches 2 nodes; there is nothing in them"},
        {"/zone/rule/accept/", "/zone/rule/accept matches 1 node; there is nothing in it"},
        {"//sevice", "nothing in the document is called sevice; is it service?"},
        {"//address",
         "nothing in the document is called address; there is an attribute of that name: write [@address], "
         "or "
         "--attribute address"},
        {"/zone//x", "nothing below /zone is called x"},
        {"/zone/rule//prot/x", "nothing below /zone/rule is called prot; is it port?"},
    };
    for (const Unmatched& one : all) {
        SCOPED_TRACE(one.path);
        const std::string query = std::string("quxml query '") + one.path + "' zone.xml";
        expect(run(query), 1, "", std::string("quxml: note: ") + one.reason + '\n');
        expect(run(query + " --quiet"), 1, "", "");
        expect(run(query + " --count"), 1, "0\n", std::string("quxml: note: ") + one.reason + '\n');
    }
}

TEST_F(Reasons, say_which_predicate_leaves_nothing_and_what_there_is_instead) {
    const std::vector<Unmatched> all = {
        {"/zone[@nam]", "/zone matches 1 node; none has an attribute nam; there is name; is it name?"},
        {"/zone/service[@Name]",
         "/zone/service matches 2 nodes; none has an attribute Name; there is name, item; is it name?"},
        {"/zone/short[@x]", "/zone/short matches 1 node; none has any attribute"},
        {"/zone[@short]",
         "/zone matches 1 node; none has an attribute short; there is a child of that name: write "
         "[short=...], or "
         "/short"},
        {"/zone/service[@name='shh']",
         "/zone/service matches 2 nodes; none has \"shh\" as its attribute name; there is \"ssh\", "
         "\"dhcpv6-client\"; is it ssh?"},
        {"//service[@name =ftp]",
         "//service matches 2 nodes; none has \"ftp\" as its attribute name; there is \"ssh\", "
         "\"dhcpv6-client\""},
        {"/zone/service[@name='ssh'][@x]",
         "/zone/service[@name='ssh'] matches 1 node; none has an attribute x; there is name, item"},
        {"/zone/service[@name='ssh'][position()=2]",
         "/zone/service[@name='ssh'] matches 1 node; none is at such a position among the children of its "
         "parent"},
        {"/zone/rule[last()-2]",
         "/zone/rule matches 2 nodes; none is at such a position among the children of its parent"},
        {"/zone/rule[prot='80']",
         "/zone/rule matches 2 nodes; none has a child prot; there is source, accept, port; is it port?"},
        {"/zone/rule[port='82']",
         "/zone/rule matches 2 nodes; none has a child port with the text \"82\"; there is \"80\", \"81\""},
        {"/zone/service[name='ssh']",
         "/zone/service matches 2 nodes; none has a child name; there is an attribute of that name: write "
         "[@name=...]"},
        {"/zone/rule/accept[x='1']",
         "/zone/rule/accept matches 1 node; none has a child x; there are no children"},
        {"//rule/source[@address=$a]",
         "//rule/source matches 1 node; none has \"10.0.0.1/25\" as its attribute address; there is "
         "\"10.0.0.1/24\"; is it 10.0.0.1/24?"},
    };
    for (const Unmatched& one : all) {
        SCOPED_TRACE(one.path);
        const std::string values = contains(one.path, "$a") ? " --arg a=10.0.0.1/25" : "";
        write("path", one.path);
        expect(run("quxml query \"$(cat path)\" zone.xml" + values), 1, "",
               std::string("quxml: note: ") + one.reason + '\n');
    }
    expect(
        run("quxml query '/zone/service[2]' zone.xml"), 1, "",
        "quxml: note: step 2, service[2]: this is not a position; for that, write [position()=2]\n"
        "quxml: note: /zone/service matches 2 nodes; none has \"2\" as its attribute item; there is \"1\"\n");
    expect(run("quxml query '/zone/rule[2]' zone.xml"), 1, "",
           "quxml: note: step 2, rule[2]: this is not a position; for that, write [position()=2]\n"
           "quxml: note: /zone/rule matches 2 nodes; none has an attribute item\n");
    expect(run("quxml query --prefix '/zo/x' zone.xml"), 1, "",
           "quxml: note: /zo has 5 children: short, service, rule; none begins with x\n");
}

TEST_F(Reasons, are_given_for_an_attribute_that_no_match_has) {
    expect(run("quxml query --attribute nam //service zone.xml"), 1, "",
           "quxml: note: //service matches 2 nodes; none has an attribute nam; there is name, item; is it "
           "name?\n");
    expect(run("quxml query --attribute port /zone/rule zone.xml"), 1, "",
           "quxml: note: /zone/rule matches 2 nodes; none has an attribute port; there is a child of that "
           "name: write "
           "[port=...], or /port\n");
    expect(run("quxml query --quiet --attribute nam //service zone.xml"), 1, "", "");
    expect_done(run("quxml query --attribute item //service zone.xml"), "1\n");
}

TEST_F(Reasons, are_given_by_commands_that_change_a_document) {
    const std::string reason =
        "quxml: note: /zone has 5 children: short, service, rule; none is called servise; is it service?\n";
    for (const std::string command :
         {"set /zone/servise a=b", "unset /zone/servise a", "text /zone/servise a", "add /zone/servise a",
          "remove /zone/servise"}) {
        const std::string complaint = command[0] == 'r' ? "quxml: nothing matches /zone/servise\n"
                                                        : "quxml: no element matches /zone/servise\n";
        const std::string file = " zone.xml";
        expect(run("quxml " + command + file), 1, "", reason + complaint);
        expect(run("quxml " + command + " --quiet" + file), 1, "", complaint);
    }
}

TEST_F(Reasons, are_not_repeated_where_a_note_on_the_step_says_it_all) {
    expect(run("quxml query /zone/@name zone.xml"), 1, "",
           "quxml: note: step 2, @name: no element can have the name \"@name\"; attributes are not selected; "
           "\"quxml "
           "query --attribute name\" writes them\n");
}

TEST_F(Reasons, list_a_few_names_only_and_no_long_ones) {
    std::string text = "<a><" + std::string(60, 'x') + "/>";
    for (int i = 0; i != 20; ++i)
        text += "<n" + std::to_string(i) + " v='&#9;&#10;" + std::string(100, 'y') + "'/>";
    write("a.xml", text + "</a>");
    expect(run("quxml query /a/z a.xml"), 1, "",
           "quxml: note: /a has 21 children: " + std::string(40, 'x') +
               "..., n0, n1, n2, n3, n4, n5, n6 and 13 more; none is called z\n");
    expect(run("quxml query '/a/*[@v=1]' a.xml"), 1, "",
           "quxml: note: /a/* matches 21 nodes; none has \"1\" as its attribute v; there is \"\\t\\n" +
               std::string(36, 'y') + "...\"\n");
}

/// Seconds that it takes to say why nothing matches.
double measure(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST_F(Reasons, take_time_in_proportion_to_the_document) {
    std::string text = "<a>";
    for (int i = 0; i != 100000; ++i)
        text += "<b k='" + std::to_string(i) + "'><c" + std::to_string(i) + "/></b>";
    write("a.xml", text + "</a>");
    const double quiet = measure([&] { run("quxml query --quiet '/a/b[@k=x]' a.xml"); });
    for (const char* path : {"/a/b/none", "//none", "/a/b[@k='none']", "//b[@k =none]", "/a/b[none='1']"}) {
        SCOPED_TRACE(path);
        const double reasoned = measure([&] {
            EXPECT_TRUE(contains(run(std::string("quxml query \"") + path + "\" a.xml").err, "none"));
        });
        EXPECT_LT(reasoned, 20 * quiet + 2);
    }
}

}  // namespace

}  // namespace quxml_test
