// SPDX-License-Identifier: MIT

// Predicates that select by number or position: [3], [last()-1], [position()<3], by paths and by their
// handlers.

#include "quxml/XPathHelper.h"

#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "query/query_table.h"
#include "quxml/quxml.h"

namespace {

using quxml::NodeList;
using quxml::XPathHelper;
using quxml_test::not_a_number;
using quxml_test::number_too_large;
using quxml_test::QueryRow;
using quxml_test::SlowEngine;

const char* const four = "r{a(n=1) a(n=2) a(n=3) a(n=4)}";
const char* const two = "r{a(n=1) a(n=2)}";
const char* const one = "r{a(n=1)}";

class Positional : public ::testing::TestWithParam<QueryRow> {};

TEST_P(Positional, selects) {
    quxml_test::check_exact(GetParam());
}

const QueryRow number_rows[] = {
    {"1 selects the first of namesakes without an item", "r{a(n=1) a(n=2) a(n=3)}", "#1", "r/a[1]", "1"},
    {"it is deliberate that 1 selects the first of each run", "r{a(n=1) b(n=2) a(n=3)}", "#1", "r/*[1]",
     "1 2 3"},
    {"runs of several", "r{a(n=1) a(n=2) b(n=3) b(n=4) a(n=5) a(n=6)}", "#1", "r/*[1]", "1 3 5"},
    {"text does not end a run", "r{a(n=1) \"x\" a(n=2)}", "#1", "r/*[1]", "1"},
    {"an element with an item does not end a run", "r{a(n=1) b(n=2,item=7) a(n=3)}", "#1", "r/*[1]", "1"},
    {"a selected element with an item does not end a run", "r{a(n=1) b(n=2,item=1) a(n=3)}", "#1", "r/*[1]",
     "1 2"},
    {"a namesake with an item does not begin a run", "r{a(n=1,item=5) a(n=2) a(n=3)}", "#1", "r/a[1]", "2"},
    {"names of a run keep their case", "r{a(n=1) A(n=2) a(n=3)}", "#1", "r/a[1]", "1 2 3"},
    {"1 selects items that are 1", "r{a(n=1,item=1) a(n=2,item=2) a(n=3,item=1)}", "#1", "r/a[1]", "1 3"},
    {"1 selects both kinds", "r{a(n=1,item=1) a(n=2) a(n=3) a(n=4,item=1)}", "#1", "r/a[1]", "1 2 4"},
    {"3 selects the item 3", "r{a(n=1,item=1) a(n=2,item=2) a(n=3,item=3)}", "#1", "r/a[3]", "3"},
    {"it is deliberate that 3 is not the third node", four, "#1", "r/a[3]", ""},
    {"the item decides and not the position", "r{a(n=1,item=2) a(n=2,item=1)}", "#1", "r/a[2]", "1"},
    {"items are compared as text", "r{a(n=1,item=1) a(n=2,item=2)}", "#1", "r/a[02]", ""},
    {"a leading zero of the item counts", "r{a(n=1,item=02) a(n=2,item=2)}", "#1", "r/a[02]", "1"},
    {"01 selects the first without an item and the very text",
     "r{a(n=1) a(n=2) a(n=3,item=1) a(n=4,item=01)}", "#1", "r/a[01]", "1 4"},
    {"plus 1 selects the first without an item", "r{a(n=1) a(n=2,item=1) a(n=3,item=+1)}", "#1", "r/a[+1]",
     "1 3"},
    {"0 selects the item 0", "r{a(n=1,item=0) a(n=2)}", "#1", "r/a[0]", "1"},
    {"a negative number selects its item", "r{a(n=1,item=-3) a(n=2)}", "#1", "r/a[-3]", "1"},
    {"text after the number is part of the item", "r{a(n=1,item=2nd) a(n=2,item=2)}", "#1", "r/a[2nd]", "1"},
    {"blanks are part of the item", "r{a(n=1,item=2) a(n=2,item=' 2')}", "#1", "r/a[ 2]", "2"},
    {"an empty item is not a missing item", "r{a(n=1,item='') a(n=2)}", "#1", "r/a[1]", "2"},
    {"several numbers", "r{a(n=1,item=1) a(n=2,item=2)}", "#1", "r/a[1][2]", ""},
    {"the same number again", "r{a(n=1,item=1) a(n=2)}", "#1", "r/a[1][1]", "1 2"},
};
INSTANTIATE_TEST_SUITE_P(Number, Positional, ::testing::ValuesIn(number_rows), quxml_test::note_of<QueryRow>);

const QueryRow last_rows[] = {
    {"the last", four, "#1", "r/a[last()]", "4"},
    {"the last of one", one, "#1", "r/a[last()]", "1"},
    {"the last of none", four, "#1", "r/b[last()]", ""},
    {"the last but one", four, "#1", "r/a[last()-1]", "3"},
    {"the first from the end", four, "#1", "r/a[last()-3]", "1"},
    {"before the first", four, "#1", "r/a[last()-4]", ""},
    {"far before the first", "r{a(n=1) a(n=2) a(n=3)}", "#1", "r/a[last()-5]", ""},
    {"after the last", "r{a(n=1) a(n=2) a(n=3)}", "#1", "r/a[last()+1]", ""},
    {"an offset of zero", four, "#1", "r/a[last()-0]", "4"},
    {"a positive offset of zero", four, "#1", "r/a[last()+0]", "4"},
    {"an offset without a sign", four, "#1", "r/a[last()0]", "4"},
    {"blanks before the offset", four, "#1", "r/a[last() -1]", "3"},
    {"text after the offset", four, "#1", "r/a[last()-1 or so]", "3"},
    {"text before last", four, "#1", "r/a[-1last()]", "4"},
    {"the largest offset", four, "#1", "r/a[last()+2147483647]", ""},
    {"the smallest offset", four, "#1", "r/a[last()-2147483648]", ""},
    {"blanks within the offset throw", four, "#1", "r/a[last() - 1]", not_a_number},
    {"a blank alone after last throws", four, "#1", "r/a[last() ]", not_a_number},
    {"an offset that is not a number throws", four, "#1", "r/a[last()-x]", not_a_number},
    {"a second last throws", four, "#1", "r/a[last()last()]", not_a_number},
    {"a second last after an offset is ignored", four, "#1", "r/a[last()-1last()]", "3"},
    {"an offset too large throws", four, "#1", "r/a[last()+2147483648]", number_too_large},
    {"an offset too small throws", four, "#1", "r/a[last()-2147483649]", number_too_large},
    {"a bad offset throws for no nodes too", four, "#1", "r/b[last()-x]", not_a_number},
    {"last in another case is not last", four, "#1", "r/a[LAST()]", ""},
    {"last with a blank within is not last", four, "#1", "r/a[last( )]", ""},
};
INSTANTIATE_TEST_SUITE_P(Last, Positional, ::testing::ValuesIn(last_rows), quxml_test::note_of<QueryRow>);

const QueryRow position_rows[] = {
    {"no operator", four, "#1", "r/a[position()]", "1 2 3 4"},
    {"less", four, "#1", "r/a[position()<3]", "1 2"},
    {"less than 1", four, "#1", "r/a[position()<1]", ""},
    {"it is deliberate that less than 0 is not a bound", four, "#1", "r/a[position()<0]", "1 2 3 4"},
    {"less than a negative number is hardly a bound", four, "#1", "r/a[position()<-1]", "1 2 3 4"},
    {"less than the count", four, "#1", "r/a[position()<4]", "1 2 3"},
    {"less than more than the count", four, "#1", "r/a[position()<9]", "1 2 3 4"},
    {"less than the largest number", four, "#1", "r/a[position()<2147483647]", "1 2 3 4"},
    {"it is deliberate that greater leaves out the last", four, "#1", "r/a[position()>1]", "2 3"},
    {"greater than 0", four, "#1", "r/a[position()>0]", "1 2 3"},
    {"greater than minus 1", four, "#1", "r/a[position()>-1]", "1 2 3"},
    {"greater than minus 2 wraps around", four, "#1", "r/a[position()>-2]", ""},
    {"greater than the last but one", four, "#1", "r/a[position()>3]", ""},
    {"greater than the count", four, "#1", "r/a[position()>4]", ""},
    {"greater than the largest number", four, "#1", "r/a[position()>2147483647]", ""},
    {"greater than 1 of two", two, "#1", "r/a[position()>1]", ""},
    {"greater than 0 of two", two, "#1", "r/a[position()>0]", "1"},
    {"greater than 0 of one", one, "#1", "r/a[position()>0]", ""},
    {"greater of none", four, "#1", "r/b[position()>0]", ""},
    {"equal", four, "#1", "r/a[position()=3]", "3"},
    {"equal to the first", four, "#1", "r/a[position()=1]", "1"},
    {"equal to the last", four, "#1", "r/a[position()=4]", "4"},
    {"equal to more than the count", four, "#1", "r/a[position()=5]", ""},
    {"equal to 0", four, "#1", "r/a[position()=0]", ""},
    {"equal to minus 1", four, "#1", "r/a[position()=-1]", ""},
    {"equal to minus 2", four, "#1", "r/a[position()=-2]", ""},
    {"equal to the largest number", four, "#1", "r/a[position()=2147483647]", ""},
    {"equal to the smallest number", four, "#1", "r/a[position()=-2147483648]", ""},
    {"blanks before the number", four, "#1", "r/a[position() = 2]", "2"},
    {"text after the number", four, "#1", "r/a[position()<3)]", "1 2"},
    {"text before position", four, "#1", "r/a[(position()<3]", "1 2"},
    {"it is deliberate that greater overrides less", four, "#1", "r/a[position()<3 and position()>0]",
     "1 2 3"},
    {"less after greater is overridden too", four, "#1", "r/a[position()>1 and position()<3]", "2 3"},
    {"equal overrides less", four, "#1", "r/a[position()<3 or position()=4]", "4"},
    {"equal overrides greater", four, "#1", "r/a[position()>1 and position()=1]", "1"},
    {"the first of several equal numbers counts", four, "#1", "r/a[position()=2 or position()=3]", "2"},
    {"the first of several less counts", four, "#1", "r/a[position()<2 or position()<4]", "1"},
    {"it is deliberate that less or equal throws", four, "#1", "r/a[position()<=2]", not_a_number},
    {"it is deliberate that greater or equal throws", four, "#1", "r/a[position()>=2]", not_a_number},
    {"less or equal after less throws", four, "#1", "r/a[position()<2 or position()<=3]", not_a_number},
    {"equal or less throws", four, "#1", "r/a[position()=<2]", not_a_number},
    {"two equals signs throw", four, "#1", "r/a[position()==2]", not_a_number},
    {"not equal reads its equals sign", four, "#1", "r/a[position()!=2]", "2"},
    {"no number after less throws", four, "#1", "r/a[position()<]", not_a_number},
    {"no number after greater throws", four, "#1", "r/a[position()>]", not_a_number},
    {"no number after equal throws", four, "#1", "r/a[position()=]", not_a_number},
    {"a name after equal throws", four, "#1", "r/a[position()=x]", not_a_number},
    {"the number before the operator throws", four, "#1", "r/a[2=position()]", not_a_number},
    {"a number too large after less throws", four, "#1", "r/a[position()<2147483648]", number_too_large},
    {"a number too large after greater throws", four, "#1", "r/a[position()>2147483648]", number_too_large},
    {"a number too large after equal throws", four, "#1", "r/a[position()=2147483648]", number_too_large},
    {"a number too small throws", four, "#1", "r/a[position()=-2147483649]", number_too_large},
    {"a bad number throws for no nodes too", four, "#1", "r/b[position()=x]", not_a_number},
    {"the tests are made in order", four, "#1", "r/a[position()<99999999999 and position()=x]",
     number_too_large},
    {"last wins over position", four, "#1", "r/a[position()=last()]", "4"},
    {"last wins over position with less", four, "#1", "r/a[position()<last()]", "4"},
    {"last wins over position with an offset", four, "#1", "r/a[position()=last()-1]", "3"},
};
INSTANTIATE_TEST_SUITE_P(Position, Positional, ::testing::ValuesIn(position_rows),
                         quxml_test::note_of<QueryRow>);

struct RangeRow {
    const char* note;
    const char* predicate;
    unsigned int count;
    unsigned int first;
    unsigned int second;
};

void PrintTo(const RangeRow& row, std::ostream* out) {
    *out << row.note;
}

class PositionRange : public ::testing::TestWithParam<RangeRow> {};

TEST_P(PositionRange, is_read) {
    const RangeRow& row = GetParam();
    const std::pair<unsigned int, unsigned int> expected(row.first, row.second);
    EXPECT_EQ(XPathHelper(nullptr).get_position_range(row.predicate, row.count), expected) << row.predicate;
    EXPECT_EQ(SlowEngine(nullptr).get_position_range(row.predicate, row.count), expected) << row.predicate;
}

const unsigned int largest = std::numeric_limits<unsigned int>::max();

const RangeRow range_rows[] = {
    {"no operator", "position()", 4, 0, 0},
    {"not even position", "", 4, 0, 0},
    {"less", "position()<3", 4, 0, 3},
    {"less than 0", "position()<0", 4, 0, 0},
    {"less than minus 1", "position()<-1", 4, 0, largest},
    {"greater", "position()>1", 4, 2, 4},
    {"greater takes the count as it is", "position()>1", 0, 2, 0},
    {"greater takes any count", "position()>1", largest, 2, largest},
    {"greater than minus 1", "position()>-1", 4, 0, 4},
    {"greater than minus 2", "position()>-2", 4, largest, 4},
    {"greater than the largest number", "position()>2147483647", 4, 2147483648U, 4},
    {"equal", "position()=2", 4, 2, 3},
    {"equal to 0", "position()=0", 4, 0, 1},
    {"equal to minus 1", "position()=-1", 4, largest, 0},
    {"equal to the largest number", "position()=2147483647", 4, 2147483647U, 2147483648U},
    {"equal to the smallest number", "position()=-2147483648", 4, 2147483648U, 2147483649U},
    {"less and greater", "<3>1", 4, 2, 4},
    {"less and equal", "<3 =1", 4, 1, 2},
    {"greater and equal", ">3 =1", 4, 1, 2},
    {"all three", "<9 >3 =1", 4, 1, 2},
    {"white space", "position() < \t\n3", 4, 0, 3},
    {"a plus sign", "position()<+3", 4, 0, 3},
    {"text after", "position()<3)abc", 4, 0, 3},
};
INSTANTIATE_TEST_SUITE_P(Rows, PositionRange, ::testing::ValuesIn(range_rows), quxml_test::note_of<RangeRow>);

struct OffsetRow {
    const char* note;
    const char* predicate;
    int offset;
};

void PrintTo(const OffsetRow& row, std::ostream* out) {
    *out << row.note;
}

class IndexFromLast : public ::testing::TestWithParam<OffsetRow> {};

TEST_P(IndexFromLast, is_read) {
    const OffsetRow& row = GetParam();
    EXPECT_EQ(XPathHelper(nullptr).index_from_last(row.predicate), row.offset) << row.predicate;
    EXPECT_EQ(SlowEngine(nullptr).index_from_last(row.predicate), row.offset) << row.predicate;
}

const OffsetRow offset_rows[] = {
    {"nothing", "last()", 0},
    {"minus 1", "last()-1", -1},
    {"plus 2", "last()+2", 2},
    {"minus 0", "last()-0", 0},
    {"a number without a sign", "last()7", 7},
    {"white space before the sign", "last() \t-1", -1},
    {"text after the number", "last()-12x", -12},
    {"text before last", "position()=last()-1", -1},
    {"the first last counts", "last()-1 last()-2", -1},
    {"the largest number", "last()+2147483647", std::numeric_limits<int>::max()},
    {"the smallest number", "last()-2147483648", std::numeric_limits<int>::min()},
};
INSTANTIATE_TEST_SUITE_P(Rows, IndexFromLast, ::testing::ValuesIn(offset_rows),
                         quxml_test::note_of<OffsetRow>);

}  // namespace
