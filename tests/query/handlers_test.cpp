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

/// A small tree and a helper that compares names exactly. #9 is the text behind the elements.
class Handlers : public ::testing::Test {
protected:
    Tree tree{"r{a(n=a1,id=x,item=1){k(n=k1){\"v\"}} a(n=a2,id=y,item=2){k(n=k2){\"w\"}} b(n=b1) \"t\"}"};
    XPathHelper helper{same};
    Node* root = tree.node("#1");

    /// What the helper holds: a path that selects nothing gives a copy of it.
    std::string held() const { return tree.names(helper.find(root, "nothing")); }
};

// find

TEST_F(Handlers, FindReturnsWhatThePathSelects) {
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
}

TEST_F(Handlers, FindTakesItsNameTestsFromTheComparator) {
    EXPECT_EQ(tree.names(helper.find(root, "R/a")), "");
    const XPathHelper anything([](const std::string&, const std::string&) { return true; });
    EXPECT_EQ(tree.names(anything.find(root, "x/y")), "a1 a2 b1 #9");
}

TEST_F(Handlers, ItIsDeliberateThatResultsOfSeveralQueriesAddUp) {
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
    EXPECT_EQ(tree.names(helper.find(root, "r/b")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "nothing")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "//")), "a1 a2 b1");
    EXPECT_EQ(tree.names(helper.find(root, "/")), "a1 a2 b1");
}

TEST_F(Handlers, ResultsOfSeveralTreesAddUp) {
    const Tree other("s{a}");
    helper.find(root, "r/b");
    const NodeSet both = helper.find(other.node("#1"), "s/a");
    EXPECT_EQ(both, NodeSet({tree.node("b1"), other.node("#2")}));
}

TEST_F(Handlers, AnEmptyPathGivesAnEmptySetThoughResultsAreHeld) {
    helper.find(root, "r/a");
    EXPECT_EQ(helper.find(root, ""), NodeSet());
    EXPECT_EQ(held(), "a1 a2") << "and they are still held afterwards";
}

TEST_F(Handlers, APathOfWhiteSpaceGivesAnEmptySetThoughResultsAreHeld) {
    helper.find(root, "r/a");
    EXPECT_EQ(helper.find(root, " "), NodeSet());
    EXPECT_EQ(helper.find(root, "\t \n\v\f\r"), NodeSet());
    EXPECT_EQ(held(), "a1 a2");
}

TEST_F(Handlers, ResultsAreHeldThoughTheNextQueryThrows) {
    helper.find(root, "r/b");
    EXPECT_THROW_MESSAGE(helper.find(root, "r/a[k==v]"), std::invalid_argument, one_equals_sign_message);
    EXPECT_EQ(held(), "b1");
}

TEST_F(Handlers, ResultsThatAQueryFoundBeforeItThrewAreHeld) {
    const XPathHelper afraid([](const std::string& name, const std::string& name_test) {
        if (name == "b")
            throw std::runtime_error("afraid of b");
        return name == name_test;
    });
    EXPECT_THROW_MESSAGE(afraid.find(root, "//a"), std::runtime_error, "afraid of b");
    EXPECT_EQ(tree.names(afraid.find(root, "nothing")), "a1 a2");
}

TEST_F(Handlers, TheSetThatFindReturnsIsACopy) {
    NodeSet found = helper.find(root, "r/a");
    found.clear();
    EXPECT_EQ(held(), "a1 a2");
}

TEST_F(Handlers, FindSelectsNothingFromNull) {
    for (const char* path : {"", "*", "//*", "a", "/a", "//a", "*/*", "*/", "*[1]", "a[k==v]"})
        EXPECT_EQ(helper.find(nullptr, path), NodeSet()) << path;
}

TEST_F(Handlers, FindTakesAChildThatIsNullAsAnyNode) {
    quxml::Document document(false);
    Element* parent = document.create_root_node("p");
    parent->add_new_node(nullptr);
    for (const char* const path : {"p/", "p/*", "p/*[last()]"})
        EXPECT_EQ(parent->find_exact_match(path), NodeSet{nullptr}) << path;
    for (const char* const path : {"p/*[1]", "p/*[@a=b]", "p/*[a=b]", "p/*[a]", "p/*['']"})
        EXPECT_EQ(parent->find_exact_match(path), NodeSet()) << path;
}

TEST_F(Handlers, FindIsNotDisturbedByAComparatorThatMovesTheChildren) {
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
    moving.find(parent, "//q");
    EXPECT_EQ(calls, "rxcba");
}

TEST_F(Handlers, FindFromNullReturnsWhatWasFoundBefore) {
    const NodeSet found = helper.find(root, "r/a");
    EXPECT_EQ(helper.find(nullptr, "a"), found);
}

TEST_F(Handlers, ANewHelperHoldsNothing) {
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, AHelperDoesNotOwnItsResults) {
    { XPathHelper(same).find(root, "//*"); }
    EXPECT_EQ(tree.names(helper.find(root, "r/a")), "a1 a2");
}

// the comparator

TEST_F(Handlers, TheComparatorIsGivenTheNodesNameAndThenTheNameTest) {
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

TEST_F(Handlers, TheComparatorIsNotAskedForStarsEmptyStepsAndPredicates) {
    const XPathHelper never(
        [](const std::string&, const std::string&) -> bool { throw std::logic_error("asked"); });
    EXPECT_EQ(tree.names(never.find(root, "*/*")), "a1 a2 b1 #9");
    EXPECT_EQ(tree.names(never.find(root, "*/*[@id='y']/*[1]")), "a1 a2 k2 b1 #9");
    EXPECT_EQ(tree.names(never.find(root, "*[k='none']/")), "a1 a2 k2 b1 #9");
    EXPECT_EQ(never.find(root, "//").size(), 5U);
    EXPECT_THROW_MESSAGE(never.find(root, "*/a"), std::logic_error, "asked");
    EXPECT_THROW_MESSAGE(never.find(root, "//**"), std::logic_error, "asked");
}

TEST_F(Handlers, AnEmptyComparatorIsAcceptedUntilANameIsTested) {
    const XPathHelper empty{StringComparator()};
    EXPECT_EQ(empty.find(root, ""), NodeSet());
    EXPECT_EQ(tree.names(empty.find(root, "*/*[1]")), "a1 b1");
    EXPECT_EQ(tree.names(empty.find(root, "//*[2]")), "a1 a2 b1");
    EXPECT_EQ(tree.names(empty.find(root, "/")), "a1 a2 b1") << "an empty step is no name";
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

// get_nodes_from_path

TEST_F(Handlers, GetNodesFromPathTakesTheFirstStepAsSatisfied) {
    helper.get_nodes_from_path(root, Steps{"nothing"});
    EXPECT_EQ(held(), "#1");
    helper.get_nodes_from_path(root, Steps{"nothing[k==v]", "a"});
    EXPECT_EQ(held(), "#1 a1 a2");
}

TEST_F(Handlers, GetNodesFromPathFollowsFurtherSteps) {
    helper.get_nodes_from_path(root, Steps{"r", "a[2]", "k"});
    EXPECT_EQ(held(), "k2");
}

TEST_F(Handlers, GetNodesFromPathSearchesBehindAnEmptyFirstStep) {
    helper.get_nodes_from_path(root, Steps{"", "k"});
    EXPECT_EQ(held(), "k1 k2");
    helper.get_nodes_from_path(root, Steps{"", "r"});
    EXPECT_EQ(held(), "#1 k1 k2") << "the node itself is searched too";
}

TEST_F(Handlers, GetNodesFromPathTakesTheNodeForASingleEmptyStep) {
    helper.get_nodes_from_path(root, Steps{""});
    EXPECT_EQ(held(), "#1");
}

TEST_F(Handlers, GetNodesFromPathTakesAllChildrenForAnEmptyLastStep) {
    helper.get_nodes_from_path(root, Steps{"r", ""});
    EXPECT_EQ(held(), "a1 a2 b1 #9");
}

TEST_F(Handlers, GetNodesFromPathDoesNothingWithoutSteps) {
    helper.get_nodes_from_path(root, Steps());
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, GetNodesFromPathJudgesAPredicateWhenItIsReached) {
    helper.get_nodes_from_path(root, Steps{"r", "nothing", "a[k==v]"});
    EXPECT_EQ(held(), "");
    EXPECT_THROW_MESSAGE(helper.get_nodes_from_path(root, Steps{"r", "nothing[k==v]"}), std::invalid_argument,
                         one_equals_sign_message);
}

TEST_F(Handlers, GetNodesFromPathDoesNotCutStepsAtSlashes) {
    helper.get_nodes_from_path(root, Steps{"r", "a[k='v/w']"});
    EXPECT_EQ(held(), "");
    Element* const own = tree.element("#1")->add_child("own/name");
    helper.get_nodes_from_path(root, Steps{"r", "own/name"});
    EXPECT_EQ(helper.find(root, "nothing"), NodeSet({own}));
}

// skip_all_until_first_match

TEST_F(Handlers, SkipAllUntilFirstMatchSearchesTheNodeAndEverythingBelow) {
    const Steps steps{"k"};
    helper.skip_all_until_first_match(root, steps);
    EXPECT_EQ(held(), "k1 k2");
    EXPECT_EQ(steps, Steps{"k"});
}

TEST_F(Handlers, SkipAllUntilFirstMatchStopsAtTheNodeItself) {
    helper.skip_all_until_first_match(root, Steps{"r"});
    EXPECT_EQ(held(), "#1");
}

TEST_F(Handlers, SkipAllUntilFirstMatchFollowsTheRemainingSteps) {
    helper.skip_all_until_first_match(root, Steps{"a[2]", "k"});
    EXPECT_EQ(held(), "k2");
}

TEST_F(Handlers, SkipAllUntilFirstMatchCollectsAllForAStar) {
    helper.skip_all_until_first_match(tree.node("a1"), Steps{"*"});
    EXPECT_EQ(held(), "a1 k1 #4");
}

TEST_F(Handlers, SkipAllUntilFirstMatchFindsNothingForAnEmptyStep) {
    helper.skip_all_until_first_match(root, Steps{""});
    helper.skip_all_until_first_match(root, Steps{"", "a"});
    EXPECT_EQ(held(), "");
}

TEST_F(Handlers, SkipAllUntilFirstMatchDoesNothingWithoutSteps) {
    helper.skip_all_until_first_match(root, Steps());
    EXPECT_EQ(held(), "");
}

// get_child_nodes

TEST_F(Handlers, GetChildNodesGivesChildrenInOrder) {
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

TEST_F(Handlers, GetChildNodesJudgesPredicatesThoughThereAreNoChildren) {
    EXPECT_THROW_MESSAGE(helper.get_child_nodes(tree.node("b1"), "a[k==v]"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.get_child_nodes(tree.node("b1"), "[99999999999]"), std::out_of_range, "stoi");
}

// is_correct_node

TEST_F(Handlers, IsCorrectNodeTestsOneNode) {
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

TEST_F(Handlers, IsCorrectNodeDoesNotLookAtTheNodeForAStar) {
    EXPECT_TRUE(helper.is_correct_node(nullptr, "*"));
}

TEST_F(Handlers, IsCorrectNodeDoesNotLookAtTheNodeForAnEmptyStep) {
    EXPECT_FALSE(helper.is_correct_node(nullptr, ""));
}

TEST_F(Handlers, IsCorrectNodeJudgesAPredicateOnceTheNameHasPassed) {
    EXPECT_FALSE(helper.is_correct_node(root, "a[k==v]"));
    EXPECT_THROW_MESSAGE(helper.is_correct_node(root, "r[k==v]"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_THROW_MESSAGE(helper.is_correct_node(tree.node("#9"), "*[==]"), std::invalid_argument,
                         one_equals_sign_message);
}

// get_nodes_matching_attributes

TEST_F(Handlers, GetNodesMatchingAttributesChangesTheCallersList) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "@id][last()")), "a2");
    EXPECT_EQ(tree.names(nodes), "a2");
}

TEST_F(Handlers, GetNodesMatchingAttributesLeavesTheListWithoutPredicates) {
    NodeList nodes = tree.list("b1 a1 #9");
    nodes.push_back(nullptr);
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "")), "b1 a1 #9 null");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "][")), "b1 a1 #9 null");
    EXPECT_EQ(tree.names(nodes), "b1 a1 #9 null");
}

TEST_F(Handlers, GetNodesMatchingAttributesCutsAtEveryBracket) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_nodes_matching_attributes(nodes, "[@id]2[]")), "a2");
}

TEST_F(Handlers, GetNodesMatchingAttributesKeepsWhatWasLeftBeforeAnError) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attributes(nodes, "@id][k==v"), std::invalid_argument,
                         one_equals_sign_message);
    EXPECT_EQ(tree.names(nodes), "a1 a2");
}

TEST_F(Handlers, GetNodesMatchingAttributesJudgesEveryPredicateOfAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_nodes_matching_attributes(none, "@id][1][k=v][last()"), none);
    EXPECT_THROW_MESSAGE(helper.get_nodes_matching_attributes(none, "1][last()x"), std::invalid_argument,
                         "stoi");
}

// get_nodes_matching_attribute

TEST_F(Handlers, GetNodesMatchingAttributeChoosesTheHandler) {
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

TEST_F(Handlers, GetNodesMatchingAttributeJudgesThePredicateOfAnEmptyList) {
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

TEST_F(Handlers, GetNodesMatchingAttributeLooksForABareLiteralBelowTheParent) {
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

TEST_F(Handlers, GetNodesMatchingAttributeFindsNoBareLiteralForANodeWithoutParent) {
    NodeList nodes = {root};
    EXPECT_EQ(helper.get_nodes_matching_attribute(nodes, "x"), NodeList());
}

// get_node_by_number

TEST_F(Handlers, GetNodeByNumberDropsNullTextAndAttributes) {
    Node* const attribute = tree.element("a1")->get_attribute("id");
    NodeList nodes = {nullptr, attribute, tree.node("#9"), tree.node("b1"), nullptr, tree.node("a1")};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_node_by_number("1", nodes)), "b1 a1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("2", nodes)), "");
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, GetNodeByNumberKeepsElementsThatAreListedTwice) {
    NodeList nodes = tree.list("a1 b1 a1 b1 a2 a2");
    EXPECT_EQ(tree.names(helper.get_node_by_number("1", nodes)), "a1 b1 a1")
        << "the second b1 is in its own run";
    EXPECT_EQ(tree.names(helper.get_node_by_number("2", nodes)), "a2 a2");
}

TEST_F(Handlers, GetNodeByNumberComparesItemsAsText) {
    NodeList nodes = tree.list("a1 a2 b1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("01", nodes)), "b1");
    EXPECT_EQ(tree.names(helper.get_node_by_number("02", nodes)), "");
}

TEST_F(Handlers, GetNodeByNumberGivesNothingForAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_node_by_number("1", none), none);
    EXPECT_EQ(helper.get_node_by_number("7", none), none);
}

TEST_F(Handlers, GetNodeByNumberForgetsAnEmptyNameAtTheStart) {
    Element nameless("", nullptr, false);
    NodeList nodes = {&nameless};
    EXPECT_EQ(helper.get_node_by_number("1", nodes), NodeList()) << "its name is the one remembered at first";
    nodes = {tree.node("b1"), &nameless};
    EXPECT_EQ(helper.get_node_by_number("1", nodes), nodes);
}

// get_last_node

TEST_F(Handlers, GetLastNodeCountsEveryEntry) {
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

TEST_F(Handlers, GetLastNodeReadsTheOffsetOfAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_last_node("last()", none), none);
    EXPECT_EQ(helper.get_last_node("last()+1", none), none);
    EXPECT_THROW_MESSAGE(helper.get_last_node("last() - 1", none), std::invalid_argument, "stoi");
    EXPECT_THROW_MESSAGE(helper.get_last_node("last()-99999999999", none), std::out_of_range, "stoi");
}

TEST_F(Handlers, IndexFromLastThrowsForWhatIsNoNumber) {
    for (const char* predicate : {"last() - 1", "last()-x", "last() ", "last()-", "last())", "last()last()"})
        EXPECT_THROW_MESSAGE(helper.index_from_last(predicate), std::invalid_argument, "stoi") << predicate;
    EXPECT_THROW_MESSAGE(helper.index_from_last("last()+2147483648"), std::out_of_range, "stoi");
    EXPECT_THROW_MESSAGE(helper.index_from_last("last()-2147483649"), std::out_of_range, "stoi");
}

// get_positioned_nodes

TEST_F(Handlers, GetPositionedNodesCountsEveryEntry) {
    NodeList nodes = {nullptr, tree.node("a1"), tree.node("#9"), nullptr};
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()", nodes)), "null a1 #9 null");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()<3", nodes)), "null a1");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()>1", nodes)), "a1 #9");
    EXPECT_EQ(tree.names(helper.get_positioned_nodes("position()=4", nodes)), "null");
    EXPECT_EQ(helper.get_positioned_nodes("position()=5", nodes), NodeList());
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, GetPositionedNodesReadsThePredicateOfAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_positioned_nodes("position()", none), none);
    EXPECT_EQ(helper.get_positioned_nodes("position()>-1", none), none);
    EXPECT_EQ(helper.get_positioned_nodes("position()=1", none), none);
    EXPECT_THROW_MESSAGE(helper.get_positioned_nodes("position()=x", none), std::invalid_argument, "stoi");
    EXPECT_THROW_MESSAGE(helper.get_positioned_nodes("position()<99999999999", none), std::out_of_range,
                         "stoi");
}

TEST_F(Handlers, GetPositionRangeThrowsForWhatIsNoNumber) {
    for (const char* predicate :
         {"position()<=1", "position()>=1", "position()<", "position()>", "position()=", "position()=x",
          "position()<x", "position()>-", "1<position()", "position()=<1"})
        EXPECT_THROW_MESSAGE(helper.get_position_range(predicate, 4), std::invalid_argument, "stoi")
            << predicate;
    for (const char* predicate : {"position()<2147483648", "position()>2147483648", "position()=-2147483649"})
        EXPECT_THROW_MESSAGE(helper.get_position_range(predicate, 4), std::out_of_range, "stoi") << predicate;
}

// get_node_containing_attribute

TEST_F(Handlers, GetNodeContainingAttributeDropsNullTextAndAttributes) {
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

TEST_F(Handlers, GetNodeContainingAttributeKeepsElementsThatAreListedTwice) {
    NodeList nodes = tree.list("a1 a2 a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_attribute("id=x", nodes)), "a1 a1");
}

TEST_F(Handlers, GetNodeContainingAttributeJudgesTheQueryOfAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_node_containing_attribute("id", none), none);
    EXPECT_THROW_MESSAGE(helper.get_node_containing_attribute("a==b", none), std::invalid_argument,
                         at_most_one_equals_sign_message);
}

// get_node_containing_child_value

TEST_F(Handlers, GetNodeContainingChildValueKeepsNodesInListOrder) {
    NodeList nodes = tree.list("b1 a2 #9 a1 a2");
    const NodeList before = nodes;
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k=w", nodes)), "a2 a2");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k='v'", nodes)), "a1");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("k=", nodes)), "");
    EXPECT_EQ(tree.names(helper.get_node_containing_child_value("=", nodes)), "");
    EXPECT_EQ(nodes, before);
}

TEST_F(Handlers, GetNodeContainingChildValueJudgesTheQueryOfAnEmptyList) {
    NodeList none;
    EXPECT_EQ(helper.get_node_containing_child_value("k=v", none), none);
    for (const char* query : {"", "k", "k==v", "k=v=w", "=="})
        EXPECT_THROW_MESSAGE(helper.get_node_containing_child_value(query, none), std::invalid_argument,
                             one_equals_sign_message)
            << query;
}

TEST_F(Handlers, NamesInPredicatesAreNeverGivenToTheComparator) {
    const XPathHelper anything([](const std::string&, const std::string&) { return true; });
    NodeList nodes = tree.list("a1 a2");
    EXPECT_EQ(anything.get_node_containing_child_value("K=v", nodes), NodeList());
    EXPECT_EQ(anything.get_node_containing_attribute("ID", nodes), NodeList());
    EXPECT_FALSE(anything.contains_child_value(root, "A", "v"));
    EXPECT_FALSE(anything.attribute_matches_node(tree.element("a1"), "@ID"));
}

TEST_F(Handlers, NothingHereChangesTheTree) {
    const std::string before = tree.line();
    helper.find(root, "//*");
    helper.find(root, "r/a[1][k='v']/k[last()]/");
    EXPECT_THROW_MESSAGE(helper.find(root, "//a[k==v]"), std::invalid_argument, one_equals_sign_message);
    NodeList nodes = tree.list("a1 a2 b1 #9");
    helper.get_nodes_matching_attributes(nodes, "@id][1][v");
    EXPECT_EQ(tree.line(), before);
}

}  // namespace
