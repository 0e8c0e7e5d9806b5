// SPDX-License-Identifier: MIT

// The predicates of steps that test one node at a time: the first step of a path and a step after "//".

#include "quxml/XPathHelper.h"

#include <string>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::NodeSet;
using quxml_test::one_equals_sign;
using quxml_test::QueryRow;

// #13 is the text after the elements.
const char* const candidates =
    "r{a(n=a1,id=x,item=1){k(n=k1){\"v\"}} a(n=a2,id=y,item=2){k(n=k2){\"w\"} k(n=k3){\"v\"}}"
    " a(n=a3){k(n=k4){\"v\"}} \"t\"}";

class SingleNode : public ::testing::TestWithParam<QueryRow> {};

TEST_P(SingleNode, selects) {
    quxml_test::check_exact(GetParam());
}

const QueryRow attribute_rows[] = {
    {"an attribute exists", candidates, "#1", "//a[@id]", "a1 a2"},
    {"an attribute is absent", candidates, "#1", "//a[@none]", ""},
    {"attribute names keep their case", candidates, "#1", "//a[@ID]", ""},
    {"names of elements ignore case", candidates, "#1", "//A[@id]", "a1 a2"},
    {"the first step", candidates, "a1", "a[@id]", "a1"},
    {"the first step that fails", candidates, "a3", "a[@id]", ""},
    {"the first step after a slash", candidates, "a1", "/a[@id]/k", "k1"},
    {"a step after a search within the path", candidates, "#1", "r//a[@id]/k", "k1 k2 k3"},
    {"any name", candidates, "#1", "r//*[@id]", "a1 a2"},
    {"it is deliberate that the character before the equals sign is not part of the name", candidates, "#1",
     "//a[@idd=x]", "a1"},
    {"a blank before the equals sign is that character", candidates, "#1", "//a[@id =x]", "a1"},
    {"the name as it is lacks its last letter", candidates, "#1", "//a[@id=x]", ""},
    {"it is deliberate that quotes are compared", candidates, "#1", "//a[@id ='x']", ""},
    {"a value that carries the quotes", "r{a(n=a,id='\\'x\\'')}", "#1", "//a[@id ='x']", "a"},
    {"a value may hold equals signs", "r{a(n=a,id='x=y')}", "#1", "//a[@id =x=y]", "a"},
    {"nothing after the equals sign asks for an empty value", "r{a(n=1,id='') a(n=2,id=x)}", "#1",
     "//a[@id =]", "1"},
    {"an at sign alone", candidates, "#1", "//a[@]", ""},
    {"the same predicate among children takes the whole name", candidates, "#1", "r/a[@id='x']", "a1"},
    {"text has no attributes", candidates, "#13", "*[@id]", ""},
};
INSTANTIATE_TEST_SUITE_P(Attributes, SingleNode, ::testing::ValuesIn(attribute_rows),
                         quxml_test::note_of<QueryRow>);

const QueryRow item_rows[] = {
    {"item 1 and nodes without an item", candidates, "#1", "//a[1]", "a1 a3"},
    {"item 2", candidates, "#1", "//a[2]", "a2"},
    {"items are compared as text", candidates, "#1", "//a[02]", ""},
    {"without an item only the very text 1 counts", candidates, "#1", "//a[01]", ""},
    {"a sign", candidates, "#1", "//a[+1]", ""},
    {"a blank", candidates, "#1", "//a[ 1]", ""},
    {"a number too large is only a text", candidates, "#1", "//a[99999999999]", ""},
    {"any text", "r{a(n=1,item=red) a(n=2,item=blue)}", "#1", "//a[red]", "1"},
    {"quotes are compared", "r{a(n=1,item=red)}", "#1", "//a['red']", ""},
    {"it is deliberate that last is compared with the item", "r{a(n=1,item='last()') a(n=2)}", "#1",
     "//a[last()]", "1"},
    {"last with an offset is not an error", candidates, "#1", "//a[last() - 1]", ""},
    {"position is compared with the item", "r{a(n=1,item='position()<2') a(n=2)}", "#1", "//a[position()<2]",
     "1"},
    {"position with an equals sign names a child", candidates, "#1", "//a[position()=1]", ""},
    {"position with two operators is not an error", candidates, "#1", "//a[position()<=2]", ""},
    {"an empty predicate asks for an empty item", "r{a(n=1,item='') a(n=2) a(n=3,item=1)}", "#1", "//a[]",
     "1"},
    {"an empty item is not item 1", "r{a(n=1,item='')}", "#1", "//a[1]", ""},
    {"any start node without an item counts as item 1", candidates, "#1", "//*[1]", "#1"},
    {"any node with item 2", candidates, "#1", "//*[2]", "a2"},
    {"text has no item", candidates, "#13", "*[1]", ""},
    {"steps after it filter lists", candidates, "#1", "//a[2]/k[position()=2]", "k3"},
};
INSTANTIATE_TEST_SUITE_P(Items, SingleNode, ::testing::ValuesIn(item_rows), quxml_test::note_of<QueryRow>);

const QueryRow child_rows[] = {
    {"child value in quotes", candidates, "#1", "//a[k='v']", "a1 a2 a3"},
    {"child value in double quotes", candidates, "#1", "//a[k=\"w\"]", "a2"},
    {"child value without quotes", candidates, "#1", "//a[k=w]", "a2"},
    {"quotes need not pair", candidates, "#1", "//a[k=\"w']", "a2"},
    {"quotes may be many", candidates, "#1", "//a[k=''w\"'\"]", "a2"},
    {"quotes at one side", candidates, "#1", "//a[k=w']", "a2"},
    {"a blank stops the trimming", candidates, "#1", "//a[k='w' ]", ""},
    {"a blank belongs to the child name", candidates, "#1", "//a[k ='w']", ""},
    {"quotes belong to the child name", candidates, "#1", "//a['k'='w']", ""},
    {"child names keep their case", candidates, "#1", "//a[K='w']", ""},
    {"child values keep their case", candidates, "#1", "//a[k='W']", ""},
    {"the child of the first step", candidates, "a2", "a[k=w]", "a2"},
    {"the child of the start node and not of its parent", candidates, "#1", "r[a=v]", ""},
    {"the child of the start node", "r{a{\"x\"}}", "#1", "r[a='x']/a", "#2"},
    {"an empty value asks for an empty text", "r{a(n=1){k{\"\"}} a(n=2){k} a(n=3){k{\"v\"}}}", "#1",
     "//a[k='']", "1"},
    {"an empty child name", candidates, "#1", "//a[='v']", ""},
    {"an equals sign alone", candidates, "#1", "//a[=]", ""},
    {"text has no children", candidates, "#13", "*[k=v]", ""},
    {"two equals signs throw", candidates, "#1", "//a[k==v]", one_equals_sign},
    {"two equals signs apart throw", candidates, "#1", "//a[k=v=w]", one_equals_sign},
    {"two equals signs throw in the first step", candidates, "a1", "a[k==v]", one_equals_sign},
    {"two equals signs throw for any name", candidates, "#1", "*[==]", one_equals_sign},
    {"two equals signs throw for text too", candidates, "#13", "*[k==v]", one_equals_sign},
    {"a name that fails is not judged further", candidates, "#1", "zzz[k==v]", ""},
    {"a search that matches no name is not judged further", candidates, "#1", "//zzz[k==v]", ""},
    {"a step that is not reached is not judged", candidates, "#1", "r/zzz//a[k==v]", ""},
    {"an at sign allows several equals signs", candidates, "#1", "//a[@k==v]", ""},
};
INSTANTIATE_TEST_SUITE_P(ChildValues, SingleNode, ::testing::ValuesIn(child_rows),
                         quxml_test::note_of<QueryRow>);

const QueryRow bracket_rows[] = {
    {"it is deliberate that further predicates are ignored", candidates, "#1", "//a[@id][@none]", "a1 a2"},
    {"a bad further predicate is ignored", candidates, "#1", "//a[@id][k==v]", "a1 a2"},
    {"text after the bracket is ignored", candidates, "#1", "//a[@id]none", "a1 a2"},
    {"without a closing bracket the predicate runs to the end", candidates, "#1", "//a[@id", "a1 a2"},
    {"an item without a closing bracket", candidates, "#1", "//a[2", "a2"},
    {"a child value without a closing bracket", candidates, "#1", "//a[k='w'", "a2"},
    {"an opening bracket alone is an empty predicate", "r{a(n=1,item='') a(n=2)}", "#1", "//a[", "1"},
    {"a bracket within a predicate is part of it", "r{a(n=1,item='[2')}", "#1", "//a[[2]", "1"},
    {"a closing bracket within a value ends it", candidates, "#1", "//a[k='w]z']", "a2"},
    {"a slash within a value ends the step", candidates, "#1", "//a[@id/k", "k1 k2 k3"},
    {"the rest after a slash is a step", candidates, "#1", "//a[k='w/x']", ""},
    {"a closing bracket without an opening one belongs to the name", candidates, "#1", "//a]", ""},
};
INSTANTIATE_TEST_SUITE_P(Brackets, SingleNode, ::testing::ValuesIn(bracket_rows),
                         quxml_test::note_of<QueryRow>);

TEST(SingleNodeTest, a_closing_bracket_before_the_opening_one_lets_the_predicate_run_to_the_end) {
    Document document(false);
    Element* const root = document.create_root_node("r");
    Element* const with_item = root->add_child("a]b", "1]");
    Element* const without_item = root->add_child("a]b");
    without_item->set_attribute("x]", "");
    EXPECT_EQ(root->find_exact_match("//a]b"), NodeSet({with_item, without_item}));
    EXPECT_EQ(root->find_exact_match("//a]b[1]"), NodeSet({with_item}));
    EXPECT_EQ(root->find_exact_match("//a]b[1"), NodeSet({without_item}));
    EXPECT_EQ(root->find_exact_match("//a]b[@x]"), NodeSet({without_item}));
    EXPECT_EQ(root->find_exact_match("//]b[1]"), NodeSet());
}

TEST(SingleNodeTest, attribute_names_that_only_this_route_can_reach) {
    Document document(false);
    Element* const root = document.create_root_node("r");
    EXPECT_EQ(root->find_exact_match("r[@]"), NodeSet());
    EXPECT_EQ(root->find_exact_match("r[@a=x]"), NodeSet());
    EXPECT_EQ(root->find_exact_match("r[@=x]"), NodeSet());
    root->set_attribute("", "x");
    EXPECT_EQ(root->find_exact_match("r[@]"), NodeSet({root}));
    EXPECT_EQ(root->find_exact_match("r[@a=x]"), NodeSet({root})) << "no character is left for the name";
    EXPECT_EQ(root->find_exact_match("r[@=x]"), NodeSet());
    root->set_attribute("=x", "x");
    EXPECT_EQ(root->find_exact_match("r[@=x]"), NodeSet({root})) << "the name is all after the at sign";
    EXPECT_EQ(root->find_exact_match("r[@=y]"), NodeSet());
}

}  // namespace
