// SPDX-License-Identifier: MIT

// Every handler of XPathHelper called directly: what it returns, which lists it changes, what it does with
// null entries, when it throws, and how results add up over several queries.

#include "quxml/XPathHelper.h"

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"
#include "support/expect_throw.h"

namespace {

using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::NodeSet;
using quxml::StringComparator;
using quxml::XPathHelper;
using quxml_test::Tree;

using Steps = std::deque<std::string>;

const char* const one_equals_sign_message = "Search for child node must contain exactly one equals sign";
const char* const at_most_one_equals_sign_message = "Can at most have one equal sign in attribute queries";

bool same(const std::string& name, const std::string& name_test) {
    return name == name_test;
}

/// A small tree and a helper that compares names exactly. #9 is the text after the elements.
class Handlers : public ::testing::Test {
protected:
    Tree tree{"r{a(n=a1,id=x,item=1){k(n=k1){\"v\"}} a(n=a2,id=y,item=2){k(n=k2){\"w\"}} b(n=b1) \"t\"}"};
    XPathHelper helper{same};
    Node* root = tree.node("#1");

    /// What the helper holds: a path that selects nothing gives a copy of it.
    std::string held() const { return tree.names(helper.find(root, "nothing")); }
};

// ---- find ----

TEST_F(Handlers, find_returns_what_the_path_selects) {
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
}

TEST_F(Handlers, find_takes_its_name_tests_from_the_comparator) {
    EXPECT_EQ(tree.names(helper.find(root, "R/a")), "");
    const XPathHelper anything([](const std::string&, const std::string&) { return true; });
    EXPECT_EQ(tree.names(anything.find(root, "x/y")), "a1 a2 b1 #9");
}

TEST_F(Handlers, it_is_deliberate_that_results_of_several_queries_add_up) {
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
    EXPECT_EQ(tree.names(helper.find(root, "r/b")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "nothing")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "//")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "/")), "a1 a2 b1");
}

TEST_F(Handlers, results_of_several_trees_add_up) {
    const Tree other("s{a}");
    helper.find(root, "r/b");
    const NodeSet both = helper.find(other.node("#1"), "s/a");
    EXPECT_EQ(both, NodeSet({tree.node("b1"), other.node("#2")}));
}

TEST_F(Handlers, an_empty_path_gives_an_empty_set_though_results_are_held) {
    helper.find(root, "r/a");
    EXPECT_EQ(helper.find(root, ""), NodeSet());
    EXPECT_EQ(held(), "a1 a2") << "and they are still held afterwards";
}

TEST_F(Handlers, a_path_of_white_space_gives_an_empty_set_though_results_are_held) {
    helper.find(root, "r/a");
    EXPECT_EQ(helper.find(root, " "), NodeSet());
    EXPECT_EQ(helper.find(root, "\t \n\v\f\r"), NodeSet());
    EXPECT_EQ(held(), "a1 a2");
}

TEST_F(Handlers, results_are_held_though_the_next_query_throws) {
    helper.find(root, "r/b");
    EXPECT_THROW_MESSAGE(helper.find(root, "r/a[k==v]"), std::invalid_argument, one_equals_sign_message);
    EXPECT_EQ(held(), "b1");
}

TEST_F(Handlers, results_that_a_query_found_before_it_threw_are_held) {
    const XPathHelper afraid([](const std::string& name, const std::string& name_test) {
        if (name == "b")
            throw std::runtime_error("afraid of b");
        return name == name_test;
    });
    EXPECT_THROW_MESSAGE(afraid.find(root, "//a"), std::runtime_error, "afraid of b");
    EXPECT_EQ(tree.names(afraid.find(root, "nothing")), "a1 a2");
}

TEST_F(Handlers, the_set_that_find_returns_is_a_copy) {
    NodeSet found = helper.find(root, "r/a");
    found.clear();
    EXPECT_EQ(held(), "a1 a2");
}

TEST_F(Handlers, find_selects_nothing_from_null) {
    for (const char* path : {"", "*", "//*", "a", "/a", "//a", "*/*", "*/", "*[1]", "a[k==v]"})
        EXPECT_EQ(helper.find(nullptr, path), NodeSet()) << path;
}

TEST_F(Handlers, find_takes_a_child_that_is_null_as_any_node) {
    quxml::Document document(false);
    Element* parent = document.create_root_node("p");
    parent->add_new_node(nullptr);
    for (const char* const path : {"p/", "p/*", "p/*[last()]"})
        EXPECT_EQ(parent->find_exact_match(path), NodeSet{nullptr}) << path;
    for (const char* const path : {"p/*[1]", "p/*[@a=b]", "p/*[a=b]", "p/*[a]", "p/*['']"})
        EXPECT_EQ(parent->find_exact_match(path), NodeSet()) << path;
}

TEST_F(Handlers, find_is_not_disturbed_by_a_comparator_that_moves_the_children) {
    quxml::Document document(false);
    Element* parent = document.create_root_node("r");
    for (const char* const name : {"x", "c", "b", "a"})
        parent->add_child(name);
    std::string calls;
    const XPathHelper moving([&](const std::string& name, const std::string& /*name_test*/) {
        calls += name;
        if (name == "x")
            parent->sort_children();
        return false;
    });
    moving.find(parent, "//q/q");
    EXPECT_EQ(calls, "rxcba");
}

TEST_F(Handlers, find_from_null_returns_what_was_found_before) {
    const NodeSet found = helper.find(root, "r/a");
    EXPECT_EQ(helper.find(nullptr, "a"), found);
}

TEST_F(Handlers, a_new_helper_holds_nothing) {
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, a_helper_does_not_own_its_results) {
    { XPathHelper(same).find(root, "//*"); }
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
}

// ---- The comparator ----

TEST_F(Handlers, the_comparator_is_given_the_nodes_name_and_then_the_name_test) {
    std::vector<std::pair<std::string, std::string>> calls;
    const XPathHelper recording([&](const std::string& name, const std::string& name_test) {
        calls.emplace_back(name, name_test);
        return true;
    });
    recording.find(root, "test[1]/child[last()]");
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"r", "test"}, {"a", "child"}, {"a", "child"}, {"b", "child"}, {"", "child"}};
    EXPECT_EQ(calls, expected);
}

TEST_F(Handlers, the_comparator_is_not_asked_for_stars_empty_steps_and_predicates) {
    const XPathHelper never(
        [](const std::string&, const std::string&) -> bool { throw std::logic_error("asked"); });
    EXPECT_EQ(tree.names(never.find(root, "*/*")), "a1 a2 b1 #9");
    EXPECT_EQ(tree.names(never.find(root, "*/*[@id='y']/*[1]")), "a1 a2 k2 b1 #9");
    EXPECT_EQ(tree.names(never.find(root, "*[k='none']/")), "a1 a2 k2 b1 #9");
    EXPECT_EQ(never.find(root, "//").size(), 5U);
    EXPECT_THROW_MESSAGE(never.find(root, "*/a"), std::logic_error, "asked");
    EXPECT_THROW_MESSAGE(never.find(root, "//**"), std::logic_error, "asked");
}

TEST_F(Handlers, an_empty_comparator_is_accepted_until_a_name_is_tested) {
    const XPathHelper empty{StringComparator()};
    EXPECT_EQ(empty.find(root, ""), NodeSet());
    EXPECT_EQ(tree.names(empty.find(root, "*/*[1]")), "a1 b1");
    EXPECT_EQ(tree.names(empty.find(root, "//*[2]")), "a1 a2 b1");
    EXPECT_EQ(tree.names(empty.find(root, "/")), "a1 a2 b1") << "an empty step is not a name";
    EXPECT_EQ(tree.names(empty.find(tree.node("b1"), "*/a")), "a1 a2 b1") << "there is no child to be tested";
    const std::string message = std::bad_function_call().what();
    EXPECT_THROW_MESSAGE(empty.find(root, "r"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(root, "//r"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(root, "*/a"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(root, "r[k==v]"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(root, "[1]"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(root, "*/a[k==v]"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.find(tree.node("b1"), "*/a[k==v]"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(empty.is_correct_node(root, "r"), std::bad_function_call, message);
    EXPECT_THROW_MESSAGE(empty.get_child_nodes(root, "a"), std::bad_function_call, message);
    EXPECT_TRUE(empty.is_correct_node(root, "*"));
    EXPECT_FALSE(empty.is_correct_node(root, ""));
}

// ---- get_nodes_from_path ----

TEST_F(Handlers, get_nodes_from_path_takes_the_first_step_as_satisfied) {
    helper.get_nodes_from_path(root, Steps{"nothing"});
    EXPECT_EQ(held(), "#1");
    helper.get_nodes_from_path(root, Steps{"nothing[k==v]", "a"});
    EXPECT_EQ(held(), "#1 a1 a2");
}

TEST_F(Handlers, get_nodes_from_path_follows_further_steps) {
    helper.get_nodes_from_path(root, Steps{"r", "a[2]", "k"});
    EXPECT_EQ(held(), "k2");
}

TEST_F(Handlers, get_nodes_from_path_searches_after_an_empty_first_step) {
    helper.get_nodes_from_path(root, Steps{"", "k"});
    EXPECT_EQ(held(), "k1 k2");
    helper.get_nodes_from_path(root, Steps{"", "r"});
    EXPECT_EQ(held(), "#1 k1 k2") << "the node itself is searched too";
}

TEST_F(Handlers, get_nodes_from_path_takes_the_node_for_a_single_empty_step) {
    helper.get_nodes_from_path(root, Steps{""});
    EXPECT_EQ(held(), "#1");
}

TEST_F(Handlers, get_nodes_from_path_takes_all_children_for_an_empty_last_step) {
    helper.get_nodes_from_path(root, Steps{"r", ""});
    EXPECT_EQ(held(), "a1 a2 b1 #9");
}

TEST_F(Handlers, get_nodes_from_path_does_nothing_without_steps) {
    helper.get_nodes_from_path(root, Steps());
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, get_nodes_from_path_judges_a_predicate_when_it_is_reached) {
    helper.get_nodes_from_path(root, Steps{"r", "nothing", "a[k==v]"});
    EXPECT_EQ(held(), "");
    EXPECT_THROW_MESSAGE(helper.get_nodes_from_path(root, Steps{"r", "nothing[k==v]"}), std::invalid_argument,
                         one_equals_sign_message);
}

TEST_F(Handlers, get_nodes_from_path_does_not_cut_steps_at_slashes) {
    helper.get_nodes_from_path(root, Steps{"r", "a[k='v/w']"});
    EXPECT_EQ(held(), "");
    Element* const own = tree.element("#1")->add_child("own/name");
    helper.get_nodes_from_path(root, Steps{"r", "own/name"});
    EXPECT_EQ(helper.find(root, "nothing"), NodeSet({own}));
}

// ---- skip_all_until_first_match ----

TEST_F(Handlers, skip_all_until_first_match_searches_the_node_and_everything_below) {
    const Steps steps{"k"};
    helper.skip_all_until_first_match(root, steps);
    EXPECT_EQ(held(), "k1 k2");
    EXPECT_EQ(steps, Steps{"k"});
}

TEST_F(Handlers, skip_all_until_first_match_stops_at_the_node_itself) {
    helper.skip_all_until_first_match(root, Steps{"r"});
    EXPECT_EQ(held(), "#1");
}

TEST_F(Handlers, skip_all_until_first_match_follows_the_remaining_steps) {
    helper.skip_all_until_first_match(root, Steps{"a[2]", "k"});
    EXPECT_EQ(held(), "k2");
}

TEST_F(Handlers, skip_all_until_first_match_collects_all_for_a_star) {
    helper.skip_all_until_first_match(tree.node("a1"), Steps{"*"});
    EXPECT_EQ(held(), "a1 k1 #4");
}

TEST_F(Handlers, skip_all_until_first_match_finds_nothing_for_an_empty_step) {
    helper.skip_all_until_first_match(root, Steps{""});
    helper.skip_all_until_first_match(root, Steps{"", "a"});
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, skip_all_until_first_match_does_nothing_without_steps) {
    helper.skip_all_until_first_match(root, Steps());
    EXPECT_EQ(held(), "");
}

// ---- how often a comparator is asked ----

/// What a helper asks its comparator about a path, as "name~test" for each call.
std::string asked_about(Node* start, const std::string& path) {
    std::string asked;
    const XPathHelper listener([&](const std::string& name, const std::string& name_test) {
        asked += name + "~" + name_test + " ";
        return name == name_test;
    });
    listener.find(start, path);
    return asked;
}

TEST_F(Handlers, it_is_deliberate_that_a_search_asks_twice_before_the_last_step_is_refused) {
    EXPECT_EQ(asked_about(tree.node("a1"), "//k"), "a~k a~k k~k ");
    EXPECT_EQ(asked_about(root, "r//k[x]"), "r~r a~k a~k k~k k~k ~k ~k a~k a~k k~k k~k ~k ~k b~k b~k ~k ~k ");
    EXPECT_EQ(asked_about(tree.node("k1"), "//k[2]"), "k~k k~k ~k ~k ");
}

TEST_F(Handlers, a_search_takes_what_a_comparator_accepts_only_when_it_is_asked_again) {
    int calls = 0;
    const XPathHelper fickle([&](const std::string&, const std::string&) { return ++calls % 2 == 0; });
    EXPECT_EQ(tree.names(fickle.find(root, "//x")), "#1");
    EXPECT_EQ(calls, 2);
}

TEST_F(Handlers, every_other_name_test_asks_once) {
    EXPECT_EQ(asked_about(root, "r/b"), "r~r a~b a~b b~b ~b ");
    EXPECT_EQ(asked_about(tree.node("b1"), "//r/x"), "b~r ");
}

// ---- get_child_nodes ----

TEST_F(Handlers, get_child_nodes_gives_children_in_order) {
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "a")), "a1 a2");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "*")), "a1 a2 b1 #9");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "")), "a1 a2 b1 #9");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "a[2]")), "a2");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "*[last()]")), "#9");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "a[@id][last()]")), "a2");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "[2]")), "");
    EXPECT_EQ(tree.names(helper.get_child_nodes(root, "k")), "");
    EXPECT_EQ(tree.names(helper.get_child_nodes(tree.node("b1"), "*")), "");
    EXPECT_EQ(held(), "") << "none of this is a result";
}

TEST_F(Handlers, get_child_nodes_judges_predicates_though_there_are_no_children) {
    EXPECT_THROW_MESSAGE(helper.get_child_nodes(tree.node("b1"), "a[k==v]"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.get_child_nodes(tree.node("b1"), "[99999999999]"), std::out_of_range, "stoi");
}

// ---- is_correct_node ----

TEST_F(Handlers, is_correct_node_tests_one_node) {
    EXPECT_TRUE(helper.is_correct_node(root, "r"));
    EXPECT_TRUE(helper.is_correct_node(root, "*"));
    EXPECT_FALSE(helper.is_correct_node(root, "a"));
    EXPECT_FALSE(helper.is_correct_node(root, ""));
    EXPECT_TRUE(helper.is_correct_node(tree.node("#9"), "*"));
    EXPECT_FALSE(helper.is_correct_node(tree.node("#9"), "*[1]"));
    EXPECT_TRUE(helper.is_correct_node(tree.node("a2"), "a[2]"));
    EXPECT_TRUE(helper.is_correct_node(tree.node("a2"), "*[k='w']"));
    EXPECT_TRUE(helper.is_correct_node(tree.node("a2"), "a[@id][@none]"));
    EXPECT_FALSE(helper.is_correct_node(tree.node("a2"), "a[@id='y']"));
    EXPECT_EQ(held(), "") << "none of this is a result";
}

TEST_F(Handlers, is_correct_node_does_not_look_at_the_node_for_a_star) {
    EXPECT_TRUE(helper.is_correct_node(nullptr, "*"));
}

TEST_F(Handlers, is_correct_node_does_not_look_at_the_node_for_an_empty_step) {
    EXPECT_FALSE(helper.is_correct_node(nullptr, ""));
}

TEST_F(Handlers, is_correct_node_judges_a_predicate_once_the_name_has_passed) {
    EXPECT_FALSE(helper.is_correct_node(root, "a[k==v]"));
    EXPECT_THROW_MESSAGE(helper.is_correct_node(root, "r[k==v]"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.is_correct_node(tree.node("#9"), "*[==]"), std::invalid_argument,
                         one_equals_sign_message);
}

// ---- get_nodes_matching_attributes ----

TEST_F(Handlers, get_nodes_matching_attributes_changes_the_callers_list) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "@id][last()")), "a2");
    EXPECT_EQ(tree.names(nodes), "a2");
}

TEST_F(Handlers, get_nodes_matching_attributes_leaves_the_list_without_predicates) {
    NodeList nodes = tree.list("b1 a1 #9");
    nodes.push_back(nullptr);
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "")), "b1 a1 #9 null");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "][")), "b1 a1 #9 null");
    EXPECT_EQ(tree.names(nodes), "b1 a1 #9 null");
}

TEST_F(Handlers, get_nodes_matching_attributes_cuts_at_every_bracket) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "[@id]2[]")), "a2");
}

TEST_F(Handlers, get_nodes_matching_attributes_keeps_what_was_left_before_an_error) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attributes(nodes, "@id][k==v"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_EQ(tree.names(nodes), "a1 a2");
}

TEST_F(Handlers, get_nodes_matching_attributes_judges_every_predicate_of_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_nodes_matching_attributes(none, "@id][1][k=v][last()"), none);
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attributes(none, "1][last()x"), std::invalid_argument,
                         "stoi");
}

// ---- get_nodes_matching_attribute ----

TEST_F(Handlers, get_nodes_matching_attribute_chooses_the_handler) {
    NodeList nodes = tree.list("a1 a2 b1 #9");
    const auto filtered = [&](const std::string& predicate) {
        return tree.outcome([&] { return helper.get_nodes_matching_attribute(nodes, predicate); });
    };
    EXPECT_EQ(filtered(""), "a1 a2 b1 #9");
    EXPECT_EQ(filtered("last()"), "#9");
    EXPECT_EQ(filtered("position()<3"), "a1 a2");
    EXPECT_EQ(filtered("@id=y"), "a2");
    EXPECT_EQ(filtered("k=v"), "a1");
    EXPECT_EQ(filtered("2"), "a2");
    EXPECT_EQ(filtered("v"), "");
    EXPECT_EQ(filtered("[2]"), "") << "brackets are no part of a predicate";
    EXPECT_EQ(filtered("@a==b"), quxml_test::at_most_one_equals_sign);
    EXPECT_EQ(filtered("a==b"), quxml_test::one_equals_sign);
    EXPECT_EQ(filtered("last()x"), quxml_test::not_a_number);
    EXPECT_EQ(filtered("99999999999"), quxml_test::number_too_large);
    EXPECT_EQ(tree.names(nodes), "a1 a2 b1 #9") << "the list is not changed";
}

TEST_F(Handlers, get_nodes_matching_attribute_judges_the_predicate_of_an_empty_list) {
    NodeList none;
    for (const char* predicate : {"", "last()", "position()=1", "@id", "k=v", "1", "v"})
        EXPECT_EQ(helper.get_nodes_matching_attribute(none, predicate), none) << predicate;
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attribute(none, "@a==b"), std::invalid_argument,
                         at_most_one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attribute(none, "a==b"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attribute(none, "last()x"), std::invalid_argument, "stoi");
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attribute(none, "position()>=1"), std::invalid_argument,
                         "stoi");
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attribute(none, "-99999999999"), std::out_of_range,
                         "stoi");
}

TEST_F(Handlers, get_nodes_matching_attribute_looks_for_a_bare_literal_below_the_parent) {
    const Tree other("r{b(n=1){\"x\"} b(n=2){\"y\"}}");
    NodeList nodes = other.list("2");
    EXPECT_EQ(other.names(helper.get_nodes_matching_attribute(nodes, "x")), "2") << "a namesake has the text";
    EXPECT_EQ(other.names(helper.get_nodes_matching_attribute(nodes, "'y\"")), "2");
    EXPECT_EQ(other.names(helper.get_nodes_matching_attribute(nodes, "z")), "");
    EXPECT_EQ(other.names(nodes), "2");
    nodes = other.list("1 2");
    EXPECT_EQ(other.names(helper.get_nodes_matching_attribute(nodes, "x")), "");
    nodes = other.list("1 1");
    EXPECT_EQ(other.names(helper.get_nodes_matching_attribute(nodes, "x")), "") << "twice the same is two";
}

TEST_F(Handlers, get_nodes_matching_attribute_finds_no_bare_literal_for_a_node_without_parent) {
    NodeList nodes = {root};
    EXPECT_EQ(helper.get_nodes_matching_attribute(nodes, "x"), NodeList());
}

// ---- get_node_by_number ----

TEST_F(Handlers, get_node_by_number_drops_null_text_and_attributes) {
    Node* const attribute = tree.element("a1")->get_attribute("id");
    NodeList nodes = {nullptr, attribute, tree.node("#9"), tree.node("b1"), nullptr, tree.node("a1")};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_node_by_number("1", nodes)), "b1 a1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("2", nodes)), "");
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, get_node_by_number_keeps_elements_that_are_listed_twice) {
    NodeList nodes = tree.list("a1 b1 a1 b1 a2 a2");
    EXPECT_EQ(tree.names(helper.get_node_by_number("1", nodes)), "a1 b1 a1")
        << "the second b1 is in its own run";
    EXPECT_EQ(tree.names(helper.get_node_by_number("2", nodes)), "a2 a2");
}

TEST_F(Handlers, get_node_by_number_compares_items_as_text) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("01", nodes)), "b1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("02", nodes)), "");
}

TEST_F(Handlers, get_node_by_number_gives_nothing_for_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_node_by_number("1", none), none);
    EXPECT_EQ(helper.get_node_by_number("7", none), none);
}

TEST_F(Handlers, get_node_by_number_forgets_an_empty_name_at_the_start) {
    Element nameless("", nullptr, false);
    NodeList nodes = {&nameless};
    EXPECT_EQ(helper.get_node_by_number("1", nodes), NodeList()) << "its name is the one remembered at first";
    nodes = {tree.node("b1"), &nameless};
    EXPECT_EQ(helper.get_node_by_number("1", nodes), nodes);
}

// ---- get_last_node ----

TEST_F(Handlers, get_last_node_counts_every_entry) {
    NodeList nodes = {tree.node("a1"), nullptr, tree.node("#9"), nullptr};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_last_node("last()", nodes)), "null");
    EXPECT_EQ(tree.names(helper.get_last_node("last()-1", nodes)), "#9");
    EXPECT_EQ(tree.names(helper.get_last_node("last()-2", nodes)), "null");
    EXPECT_EQ(tree.names(helper.get_last_node("last()-3", nodes)), "a1");
    EXPECT_EQ(helper.get_last_node("last()-4", nodes), NodeList());
    EXPECT_EQ(helper.get_last_node("last()-5", nodes), NodeList());
    EXPECT_EQ(helper.get_last_node("last()+1", nodes), NodeList());
    EXPECT_EQ(helper.get_last_node("last()+2147483647", nodes), NodeList());
    EXPECT_EQ(helper.get_last_node("last()-2147483648", nodes), NodeList());
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, get_last_node_reads_the_offset_of_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_last_node("last()", none), none);
    EXPECT_EQ(helper.get_last_node("last()+1", none), none);
    EXPECT_THROW_MESSAGE(helper.get_last_node("last() - 1", none), std::invalid_argument, "stoi");
    EXPECT_THROW_MESSAGE(helper.get_last_node("last()-99999999999", none), std::out_of_range, "stoi");
}

TEST_F(Handlers, index_from_last_throws_for_what_is_no_number) {
    for (const char* predicate : {"last() - 1", "last()-x", "last() ", "last()-", "last())", "last()last()"})
        EXPECT_THROW_MESSAGE(helper.index_from_last(predicate), std::invalid_argument, "stoi") << predicate;
    EXPECT_THROW_MESSAGE(helper.index_from_last("last()+2147483648"), std::out_of_range, "stoi");
    EXPECT_THROW_MESSAGE(helper.index_from_last("last()-2147483649"), std::out_of_range, "stoi");
}

// ---- get_positioned_nodes ----

TEST_F(Handlers, get_positioned_nodes_counts_every_entry) {
    NodeList nodes = {nullptr, tree.node("a1"), tree.node("#9"), nullptr};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()", nodes)), "null a1 #9 null");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()<3", nodes)), "null a1");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()>1", nodes)), "a1 #9");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()=4", nodes)), "null");
    EXPECT_EQ(helper.get_positioned_nodes("position()=5", nodes), NodeList());
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, get_positioned_nodes_reads_the_predicate_of_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_positioned_nodes("position()", none), none);
    EXPECT_EQ(helper.get_positioned_nodes("position()>-1", none), none);
    EXPECT_EQ(helper.get_positioned_nodes("position()=1", none), none);
    EXPECT_THROW_MESSAGE(helper.get_positioned_nodes("position()=x", none), std::invalid_argument, "stoi");
    EXPECT_THROW_MESSAGE(helper.get_positioned_nodes("position()<99999999999", none), std::out_of_range,
                         "stoi");
}

TEST_F(Handlers, get_position_range_throws_for_what_is_no_number) {
    for (const char* predicate :
         {"position()<=1", "position()>=1", "position()<", "position()>", "position()=", "position()=x",
          "position()<x", "position()>-", "1<position()", "position()=<1"})
        EXPECT_THROW_MESSAGE(helper.get_position_range(predicate, 4), std::invalid_argument, "stoi")
            << predicate;
    for (const char* predicate : {"position()<2147483648", "position()>2147483648", "position()=-2147483649"})
        EXPECT_THROW_MESSAGE(helper.get_position_range(predicate, 4), std::out_of_range, "stoi") << predicate;
}

// ---- get_node_containing_attribute ----

TEST_F(Handlers, get_node_containing_attribute_drops_null_text_and_attributes) {
    Node* const attribute = tree.element("a1")->get_attribute("id");
    NodeList nodes = {nullptr,         tree.node("a2"), attribute, tree.node("#9"),
                      tree.node("b1"), tree.node("a1"), nullptr};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("id", nodes)), "a2 a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("id='x'", nodes)), "a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("id=''", nodes)), "a2 a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("@id", nodes)), "");
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, get_node_containing_attribute_keeps_elements_that_are_listed_twice) {
    NodeList nodes = tree.list("a1 a2 a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("id=x", nodes)), "a1 a1");
}

TEST_F(Handlers, get_node_containing_attribute_judges_the_query_of_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_node_containing_attribute("id", none), none);
    EXPECT_THROW_MESSAGE(helper.get_node_containing_attribute("a==b", none), std::invalid_argument,
                         at_most_one_equals_sign_message);
}

// ---- get_node_containing_child_value ----

TEST_F(Handlers, get_node_containing_child_value_keeps_nodes_in_list_order) {
    NodeList nodes = tree.list("b1 a2 #9 a1 a2");
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k=w", nodes)), "a2 a2");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k='v'", nodes)), "a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k=", nodes)), "");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("=", nodes)), "");
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, get_node_containing_child_value_judges_the_query_of_an_empty_list) {
    NodeList none;
    EXPECT_EQ(helper.get_node_containing_child_value("k=v", none), none);
    for (const char* query : {"", "k", "k==v", "k=v=w", "=="})
        EXPECT_THROW_MESSAGE(helper.get_node_containing_child_value(query, none), std::invalid_argument,
                             one_equals_sign_message)
            << query;
}

TEST_F(Handlers, names_in_predicates_are_never_given_to_the_comparator) {
    const XPathHelper anything([](const std::string&, const std::string&) { return true; });
    NodeList nodes = tree.list("a1 a2");
    EXPECT_EQ(anything.get_node_containing_child_value("K=v", nodes), NodeList());
    EXPECT_EQ(anything.get_node_containing_attribute("ID", nodes), NodeList());
    EXPECT_FALSE(anything.contains_child_value(root, "A", "v"));
    EXPECT_FALSE(anything.attribute_matches_node(tree.element("a1"), "@ID"));
}

TEST_F(Handlers, nothing_here_changes_the_tree) {
    const std::string before = tree.line();
    helper.find(root, "//*");
    helper.find(root, "r/a[1][k='v']/k[last()]/");
    EXPECT_THROW_MESSAGE(helper.find(root, "//a[k==v]"), std::invalid_argument, one_equals_sign_message);
    NodeList nodes = tree.list("a1 a2 b1 #9");
    helper.get_nodes_matching_attributes(nodes, "@id][1][v");
    EXPECT_EQ(tree.line(), before);
}

}  // namespace
