// SPDX-License-Identifier: MIT

// The predicates of steps that select among children: how they are cut, in which order the forms are tried,
// and the bare-literal form.

#include "quxml/XPathHelper.h"

#include <string>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"

namespace {

using quxml_test::at_most_one_equals_sign;
using quxml_test::not_a_number;
using quxml_test::number_too_large;
using quxml_test::one_equals_sign;
using quxml_test::QueryRow;

// #13 is the text after the elements.
const char* const candidates =
    "r{a(n=a1,id=x,item=1){k(n=k1){\"v\"}} a(n=a2,id=y,item=2){k(n=k2){\"w\"} k(n=k3){\"v\"}}"
    " a(n=a3){k(n=k4){\"v\"}} \"t\"}";

class ListFilter : public ::testing::TestWithParam<QueryRow> {};

TEST_P(ListFilter, selects) {
    quxml_test::check_exact(GetParam());
}

const QueryRow order_rows[] = {
    {"empty passes the list", candidates, "#1", "r/a[]", "a1 a2 a3"},
    {"empty passes text", candidates, "#1", "r/*[]", "a1 a2 a3 #13"},
    {"last", candidates, "#1", "r/a[last()]", "a3"},
    {"last counts text among any children", candidates, "#1", "r/*[last()]", "#13"},
    {"last anywhere in the predicate", candidates, "#1", "r/a[the last()]", "a3"},
    {"last before position", candidates, "#1", "r/a[position()=last()]", "a3"},
    {"last before position with less", candidates, "#1", "r/a[position()<last()]", "a3"},
    {"last before an attribute", candidates, "#1", "r/a[@id=last()]", "a3"},
    {"last before an attribute in quotes", candidates, "#1", "r/a[@id='last()']", not_a_number},
    {"last before a child value", candidates, "#1", "r/a[last()='x']", not_a_number},
    {"last before a number", candidates, "#1", "r/a[1last()]", "a3"},
    {"position", candidates, "#1", "r/a[position()=2]", "a2"},
    {"position anywhere in the predicate", candidates, "#1", "r/a[the position()=2]", "a2"},
    {"position without an operator", candidates, "#1", "r/a[position()]", "a1 a2 a3"},
    {"position before an attribute", candidates, "#1", "r/a[@position()=2]", "a2"},
    {"position before an attribute without an operator", candidates, "#1", "r/a[@position()]", "a1 a2 a3"},
    {"position before a child value", candidates, "#1", "r/a[position()='x']", not_a_number},
    {"position before a number", candidates, "#1", "r/a[1position()]", "a1 a2 a3"},
    {"attribute", candidates, "#1", "r/a[@id]", "a1 a2"},
    {"attribute before a child value", candidates, "#1", "r/a[@id=x]", "a1"},
    {"attribute with two equals signs", candidates, "#1", "r/a[@id=x=y]", at_most_one_equals_sign},
    {"an attribute drops text", candidates, "#1", "r/*[@id]", "a1 a2"},
    {"an at sign that is not first", candidates, "#1", "r/a[ @id=x]", ""},
    {"child value", candidates, "#1", "r/a[k=w]", "a2"},
    {"child value drops text", candidates, "#1", "r/*[k=v]", "a1 a2 a3"},
    {"child value before a number", candidates, "#1", "r/a[1=1]", ""},
    {"child value with two equals signs", candidates, "#1", "r/a[k=v=w]", one_equals_sign},
    {"an equals sign alone", candidates, "#1", "r/a[=]", ""},
    {"number", candidates, "#1", "r/a[2]", "a2"},
    {"number and nodes without an item", candidates, "#1", "r/a[1]", "a1 a3"},
    {"a number drops text", candidates, "#1", "r/*[1]", "a1 a3"},
    {"number with a blank", candidates, "#1", "r/a[ 1]", "a3"},
    {"number with a sign", candidates, "#1", "r/a[+1]", "a3"},
    {"number with text after it", candidates, "#1", "r/a[1st]", "a3"},
    {"number with a point", candidates, "#1", "r/a[1.5]", "a3"},
    {"number of another base", candidates, "#1", "r/a[0x1]", ""},
    {"largest number", candidates, "#1", "r/a[2147483647]", ""},
    {"smallest number", candidates, "#1", "r/a[-2147483648]", ""},
    {"number too large", candidates, "#1", "r/a[2147483648]", number_too_large},
    {"number too small", candidates, "#1", "r/a[-2147483649]", number_too_large},
    {"number far too large", candidates, "#1", "r/a[99999999999999999999999]", number_too_large},
    {"number too large with text after it", candidates, "#1", "r/a[99999999999x]", number_too_large},
};
INSTANTIATE_TEST_SUITE_P(Order, ListFilter, ::testing::ValuesIn(order_rows), quxml_test::note_of<QueryRow>);

const QueryRow run_rows[] = {
    {"each predicate filters what the one before left", candidates, "#1", "r/a[@id][last()]", "a2"},
    {"the order matters", candidates, "#1", "r/a[last()][@id]", ""},
    {"positions count what is left", candidates, "#1", "r/a[k=v][position()=3]", "a3"},
    {"positions count in the list of one parent", "r{b{a(n=1) a(n=2)} b{a(n=3) a(n=4)}}", "#1",
     "r/b/a[last()]", "2 4"},
    {"positions of one parent after another predicate", "r{b{a(n=1,x=1) a(n=2)} b{a(n=3) a(n=4,x=1)}}", "#1",
     "r/b/a[@x][position()=1]", "1 4"},
    {"items are not positions", candidates, "#1", "r/a[position()=2][1]", ""},
    {"three predicates", candidates, "#1", "r/a[@id][k=v][last()]", "a2"},
    {"a bad predicate is judged though nothing is left", candidates, "#1", "r/a[@none][k==v]",
     one_equals_sign},
    {"a number too large is judged though nothing is left", candidates, "#1", "r/a[9][99999999999]",
     number_too_large},
    {"the first bad predicate decides", candidates, "#1", "r/a[@a=b=c][k==v]", at_most_one_equals_sign},
    {"the first bad predicate decides in the other order", candidates, "#1", "r/a[k==v][@a=b=c]",
     one_equals_sign},
    {"a bad predicate is judged though no child has the name", candidates, "#1", "r/zzz[k==v]",
     one_equals_sign},
    {"a bad predicate is judged though there are no children", candidates, "#13", "*/*[last()x]",
     not_a_number},
    {"a bad number is judged though no child has the name", candidates, "#1", "r/zzz[99999999999]",
     number_too_large},
    {"a step that is not reached is not judged", candidates, "#1", "r/zzz/a[k==v]", ""},
    {"a step after a first step that fails is not judged", candidates, "#1", "zzz/a[k==v]", ""},
    {"a step after an empty list is not judged", candidates, "#1", "r/a[9]/k[a==b]", ""},
    {"a step after a search that finds nothing is not judged", candidates, "#1", "//zzz/a[k==v]", ""},
    {"a step that is reached is judged", candidates, "#1", "r/a[1]/zzz[k==v]", one_equals_sign},
};
INSTANTIATE_TEST_SUITE_P(Runs, ListFilter, ::testing::ValuesIn(run_rows), quxml_test::note_of<QueryRow>);

const QueryRow cut_rows[] = {
    {"it is deliberate that the last character is taken for the bracket", candidates, "#1", "r/a[22", "a2"},
    {"a predicate of one character without a bracket is empty", candidates, "#1", "r/a[2", "a1 a2 a3"},
    {"an opening bracket alone passes the list", candidates, "#1", "r/a[", "a1 a2 a3"},
    {"any character may stand for the bracket", candidates, "#1", "r/a[2)", "a2"},
    {"one character after the bracket", candidates, "#1", "r/a[2]x", "a2"},
    {"two characters after the bracket are a predicate", candidates, "#1", "r/a[@id]xy", ""},
    {"text between the brackets is a predicate", candidates, "#1", "r/a[@id]2[k=v]", "a2"},
    {"brackets without text pass the list", candidates, "#1", "r/a[][]", "a1 a2 a3"},
    {"two closing brackets", candidates, "#1", "r/a[2]]", "a2"},
    {"two opening brackets", candidates, "#1", "r/a[[2]", "a2"},
    {"nested brackets are cut", candidates, "#1", "r/a[@id[2]]", "a2"},
    {"a closing bracket within a value cuts it", candidates, "#1", "r/a[k='w]z']", ""},
    {"an opening bracket within a value cuts it", candidates, "#1", "r/a[@id='[2]", "a2"},
    {"a slash within a value cuts the step", candidates, "#1", "r/a[@id='x'/k", "k1"},
    {"the rest after a slash is a step", candidates, "#1", "r/a[k='w/x']", ""},
    {"an empty name test keeps nothing", candidates, "#1", "r/[1]", ""},
    {"an empty name test keeps no text", candidates, "#1", "r/[last()]", ""},
    {"an empty name test with an empty predicate keeps nothing", candidates, "#1", "r/[]", ""},
    {"an empty name test is judged all the same", candidates, "#1", "r/[k==v]", one_equals_sign},
    {"a closing bracket without an opening one belongs to the name", candidates, "#1", "r/a]", ""},
};
INSTANTIATE_TEST_SUITE_P(Cuts, ListFilter, ::testing::ValuesIn(cut_rows), quxml_test::note_of<QueryRow>);

const char* const one_book = "r{b(n=b){\"x\"}}";
const char* const two_books = "r{b(n=1,id=1){\"y\"} b(n=2){\"x\"}}";

const QueryRow literal_rows[] = {
    {"one node whose parent has a child of its name with that text", one_book, "#1", "r/b[x]", "b"},
    {"quotes are removed", one_book, "#1", "r/b['x']", "b"},
    {"mixed quotes are removed", one_book, "#1", "r/b[\"'x'']", "b"},
    {"a blank stops the trimming", one_book, "#1", "r/b['x' ]", ""},
    {"another text", one_book, "#1", "r/b[y]", ""},
    {"texts keep their case", one_book, "#1", "r/b[X]", ""},
    {"the node's own name is looked for", one_book, "#1", "r/B[x]", "b"},
    {"any name", one_book, "#1", "r/*[x]", "b"},
    {"several nodes give nothing", two_books, "#1", "r/b[x]", ""},
    {"no node gives nothing", two_books, "#1", "r/c[x]", ""},
    {"it is deliberate that a namesake's text decides", two_books, "#1", "r/b[@id][x]", "1"},
    {"the node's own text decides too", two_books, "#1", "r/b[@id][y]", "1"},
    {"no namesake has the text", two_books, "#1", "r/b[@id][z]", ""},
    {"a sibling of another name does not count", "r{b(n=b) c{\"x\"}}", "#1", "r/b[x]", ""},
    {"a child of the node does not count", "r{b(n=b){x(n=x) b{\"x\"}}}", "#1", "r/b[x]", ""},
    {"only the first text counts", "r{b(n=b){\"w\" \"x\"}}", "#1", "r/b[x]", ""},
    {"text after other children counts", "r{b(n=b){c \"x\"}}", "#1", "r/b[x]", "b"},
    {"one text node gives nothing", "r{\"x\"}", "#1", "r/*[x]", ""},
    {"an empty literal asks for an empty text", "r{b(n=b){\"\"}}", "#1", "r/b['']", "b"},
    {"an empty literal does not ask for no text", "r{b(n=b)}", "#1", "r/b['']", ""},
    {"a number in quotes is a literal", "r{b(n=b){\"1\"}}", "#1", "r/b['1']", "b"},
    {"a sign alone is a literal", "r{b(n=b){\"-\"}}", "#1", "r/b[-]", "b"},
    {"a sign apart from its number is a literal", "r{b(n=b){\"- 1\"}}", "#1", "r/b[- 1]", "b"},
    {"a comparison without an equals sign is a literal", R"(r{b(n=b){"a<b"}})", "#1", "r/b[a<b]", "b"},
    {"a blank is a literal", "r{b(n=b){\" \"}}", "#1", "r/b[ ]", "b"},
    {"an at sign within the text is a literal", "r{b(n=b){\"x@y\"}}", "#1", "r/b[x@y]", "b"},
    {"in any branch", "r{s{b(n=1){\"x\"}} s{b(n=2){\"y\"}} s{b(n=3){\"x\"}}}", "#1", "r/s/b[x]", "1 3"},
};
INSTANTIATE_TEST_SUITE_P(BareLiterals, ListFilter, ::testing::ValuesIn(literal_rows),
                         quxml_test::note_of<QueryRow>);

}  // namespace
