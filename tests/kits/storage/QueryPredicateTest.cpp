#include "storage/QueryPredicate.h"

#include <CaseName.h>
#include <gtest/gtest.h>
#include <string>

using kits::QueryPredicate;
using Answer = QueryPredicate::Answer;

namespace {

struct PredicateCase
{
    const char* label;
    std::string text;
    bool holds; // for a file "Note.txt" of 2000 bytes, changed in second 1000000000
};

class QueryPredicateTest : public testing::TestWithParam<PredicateCase>
{
};

std::string NameOf(const testing::TestParamInfo<PredicateCase>& info)
{
    return CaseName(info.param.label);
}

BEntryRecord Record()
{
    BEntryRecord record;
    record.size = 2000;
    record.modified = 1'000'000'000;
    return record;
}

const PredicateCase kCases[] = {
    {"name", "name==Note.txt", true},
    {"name in quotes", "name == \"Note.txt\"", true},
    {"name in other quotes", "name=='Note.txt'", true},
    {"attribute in quotes", "\"name\"==Note.txt", true},
    {"single sign", "name=Note.txt", true},
    {"pattern", "name==\"*.txt\"", true},
    {"pattern of others", "name!=\"*.txt\"", false},
    {"quote within quotes", "name==\"No\\\"te\"", false},
    {"order of names", "name<\"Notf\"", true},
    {"order of names the other way", "name>\"Notf\"", false},
    {"order of names at least", "name>=\"Note.txt\"", true},
    {"empty value", "name==\"\"", false},
    {"size", "size==2000", true},
    {"size at most", "size<=2000", true},
    {"size below", "size<2000", false},
    {"size above", "size>1999", true},
    {"size other", "size!=2000", false},
    {"size in quotes", "size==\"2000\"", true},
    {"size with a fraction", "size<2000.5", true},
    {"size with a sign", "size==+2000", true},
    {"size below zero", "size>-1", true},
    {"size beyond all numbers of the machine", "size<99999999999999999999999999", true},
    {"size of more digits than any number", "size<1" + std::string(6000, '0'), true},
    {"negative size of more digits", "size>-1" + std::string(6000, '0'), true},
    {"letters for a number", "size!=abc", false},
    {"digits and letters", "size>1k", false},
    {"no number but a word for one", "size<inf", false},
    {"time", "last_modified>=1000000000", true},
    {"time later", "last_modified>1000000000", false},
    {"attribute that nobody has", "MAIL:from==x", false},
    {"not an attribute that nobody has", "!(MAIL:from==x)", true},
    {"both", "((name==\"*\")&&(size==2000))", true},
    {"both but one", "(name==\"*\")&&(size==1)", false},
    {"either", "(name==x)||(size==2000)", true},
    {"neither", "(name==x)||(size==1)", false},
    {"and before or", "size==2000||size==1&&size==2", true},
    {"parentheses first", "(size==2000||size==1)&&size==2", false},
    {"not", "!(name==x)", true},
    {"not without parentheses", "!name==x", true},
    {"not twice", "!!(size==2000)", true},
    {"not before and", "!size==2000&&size==1", false},
    {"side by side", "(name==\"*\")(size==2000)", true},
    {"side by side but one", "(name==\"*\")(size==1)", false},
    {"side by side with a blank", "name==\"*\" size==1", false},
    {"line breaks", "name==\"*\"\n&&\n\tsize==2000", true},
};

const char* const kRefused[] = {"",
                                " ",
                                "name",
                                "name==",
                                "==x",
                                "name=x)",
                                "(",
                                "()",
                                "(name==x",
                                "name==\"x",
                                "name==x&&",
                                "||name==x",
                                "!",
                                "name~x",
                                "name==x&&&",
                                "name==x||||a=b",
                                "name==x & a==b",
                                "name==(x)",
                                "name",
                                "name==x|a=b"};

} // namespace

TEST_P(QueryPredicateTest, Holds)
{
    const BEntryRecord record = Record();
    QueryPredicate predicate;

    ASSERT_EQ(predicate.SetTo(GetParam().text), B_OK);

    EXPECT_EQ(predicate.Match({"Note.txt", false, &record}),
              GetParam().holds ? Answer::kYes : Answer::kNo);
}

INSTANTIATE_TEST_SUITE_P(Cases, QueryPredicateTest, testing::ValuesIn(kCases), NameOf);

TEST(QueryPredicateTextTest, RefusesWhatIsNone)
{
    for (const char* text : kRefused) {
        QueryPredicate predicate;
        EXPECT_EQ(predicate.SetTo(text), B_BAD_VALUE) << text;
    }
}

TEST(QueryPredicateTextTest, KeepsTheOneBeforeWhenRefused)
{
    QueryPredicate predicate;
    ASSERT_EQ(predicate.SetTo("name==a"), B_OK);

    EXPECT_EQ(predicate.SetTo("name=="), B_BAD_VALUE);

    EXPECT_EQ(predicate.Match({"a", false, nullptr}), Answer::kYes);
}

TEST(QueryPredicateTextTest, TakesDepthToALimit)
{
    const auto nested = [](size_t depth, const std::string& open) {
        std::string text;
        for (size_t i = 0; i < depth; i++) {
            text += open;
        }
        return text + "name==a" + std::string(depth, ')');
    };
    QueryPredicate predicate;

    // Two sides wait on each level.
    ASSERT_EQ(predicate.SetTo(nested(256, "name==x||name==a&&(")), B_OK);
    EXPECT_EQ(predicate.Match({"a", false, nullptr}), Answer::kYes);
    EXPECT_EQ(predicate.SetTo(nested(257, "(")), B_BAD_VALUE);
    EXPECT_EQ(predicate.SetTo(std::string(100'000, '!') + "name==a"), B_BAD_VALUE);
    EXPECT_EQ(predicate.SetTo(std::string(100'000, '(')), B_BAD_VALUE);
}

TEST(QueryPredicateAnswerTest, AsksForTheRecordOnlyWhenItDecides)
{
    QueryPredicate both;
    QueryPredicate either;
    ASSERT_EQ(both.SetTo("name==a&&size==1"), B_OK);
    ASSERT_EQ(either.SetTo("size==1||name==a"), B_OK);

    EXPECT_EQ(both.Match({"b", false, nullptr}), Answer::kNo);
    EXPECT_EQ(both.Match({"a", false, nullptr}), Answer::kUnknown);
    EXPECT_EQ(either.Match({"a", false, nullptr}), Answer::kYes);
    EXPECT_EQ(either.Match({"b", false, nullptr}), Answer::kUnknown);
}

TEST(QueryPredicateAnswerTest, TurnsUnknownIntoNothingElse)
{
    QueryPredicate predicate;
    ASSERT_EQ(predicate.SetTo("!(size==1)"), B_OK);
    const BEntryRecord record = Record();

    EXPECT_EQ(predicate.Match({"a", false, nullptr}), Answer::kUnknown);
    EXPECT_EQ(predicate.Match({"a", false, &record}), Answer::kYes);
}

TEST(QueryPredicateAnswerTest, KnowsThatFoldersHaveNoSize)
{
    QueryPredicate predicate;
    ASSERT_EQ(predicate.SetTo("size>=0"), B_OK);
    const BEntryRecord record = Record();

    EXPECT_EQ(predicate.Match({"a", true, nullptr}), Answer::kNo);
    EXPECT_EQ(predicate.Match({"a", true, &record}), Answer::kNo);
}

TEST(QueryPredicateAnswerTest, FindsNothingByTheRecordOfAnEntryThatWent)
{
    QueryPredicate predicate;
    ASSERT_EQ(predicate.SetTo("size==0"), B_OK);
    BEntryRecord record;
    record.status = B_ENTRY_NOT_FOUND;

    EXPECT_EQ(predicate.Match({"a", false, &record}), Answer::kNo);
}
