#include "query/QueryCriteria.h"

#include <Query.h>
#include <String.h>

#include <CaseName.h>
#include <Variable.h>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace norvane;

constexpr time_t kNow = 1'700'000'000;

struct CriteriaCase
{
    const char* label;
    QueryCriteria criteria;
    const char* predicate; // "none" and "dates" stand for the faults
};

QueryCriteria Name(const char* name, uint32 choice = kNameContains)
{
    QueryCriteria criteria;
    criteria.name = name;
    criteria.nameOperator = choice;
    return criteria;
}

QueryCriteria WithSize(QueryCriteria criteria, const char* size, uint32 choice, uint32 unit)
{
    criteria.hasSize = true;
    criteria.size = size;
    criteria.sizeOperator = choice;
    criteria.sizeUnit = unit;
    return criteria;
}

QueryCriteria WithAge(QueryCriteria criteria, const char* age, uint32 unit)
{
    criteria.isNotOlderThan = true;
    criteria.age = age;
    criteria.ageUnit = unit;
    return criteria;
}

QueryCriteria WithDates(QueryCriteria criteria, QueryCriteria::Date first,
                        QueryCriteria::Date second)
{
    criteria.isDateBetween = true;
    criteria.first = std::move(first);
    criteria.second = std::move(second);
    return criteria;
}

std::string PredicateOf(const QueryCriteria& criteria)
{
    BQuery query;
    switch (PushCriteria(criteria, kNow, &query)) {
    case QueryFault::kNoCriterion:
        return "none";
    case QueryFault::kDatesInOrder:
        return "dates";
    default:
        break;
    }
    BString predicate;
    return query.GetPredicate(&predicate) == B_OK ? predicate.String() : "broken";
}

class QueryCriteriaTest : public testing::TestWithParam<CriteriaCase>
{
protected:
    const Variable fZone{"TZ", "UTC"};
};

std::string NameOf(const testing::TestParamInfo<CriteriaCase>& info)
{
    return CaseName(info.param.label);
}

const QueryCriteria kNothing;

const CriteriaCase kCases[] = {
    {"nothing", kNothing, "none"},
    {"a name contains", Name("ab"), "(name==\"*ab*\")"},
    {"a name is not", Name("ab", kNameIsNot), "(name!=\"ab\")"},
    {"a name is", Name("ab", kNameIs), "(name==\"ab\")"},
    {"a name starts", Name("ab", kNameStartsWith), "(name==\"ab*\")"},
    {"a name ends", Name("ab", kNameEndsWith), "(name==\"*ab\")"},
    {"at most", WithSize(kNothing, "10", kSizeAtMost, kKilobytes), "(size<=10240)"},
    {"at least", WithSize(kNothing, "3", kSizeAtLeast, kMegabytes), "(size>=3145728)"},
    {"equal", WithSize(kNothing, "7", kSizeEqual, kBytes), "(size==7)"},
    {"no size typed", WithSize(kNothing, "", kSizeEqual, kBytes), "(size==0)"},
    {"letters for a size", WithSize(kNothing, "abc", kSizeEqual, kMegabytes), "(size==0)"},
    {"digits before letters", WithSize(kNothing, " 12k", kSizeEqual, kBytes), "(size==12)"},
    {"below zero", WithSize(kNothing, "-2", kSizeAtLeast, kKilobytes), "(size>=-2048)"},
    {"more than 31 bits", WithSize(kNothing, "4096", kSizeAtLeast, kMegabytes),
     "(size>=4294967296)"},
    {"more than 64 bits", WithSize(kNothing, "99999999999999999999", kSizeAtMost, kBytes),
     "(size<=9223372036854775807)"},
    {"more than 64 bits by its unit",
     WithSize(kNothing, "9223372036854775807", kSizeAtMost, kKilobytes),
     "(size<=9223372036854775807)"},
    {"less than 64 bits by its unit",
     WithSize(kNothing, "-9223372036854775807", kSizeAtLeast, kMegabytes),
     "(size>=-9223372036854775807)"},
    {"name and size", WithSize(Name("ab"), "1", kSizeEqual, kBytes),
     "((name==\"*ab*\")&&(size==1))"},
    {"short name and size", WithSize(Name("a"), "1", kSizeEqual, kBytes),
     "(name==\"*a*\")(size==1)"},
    {"hours", WithAge(kNothing, "1", kHours), "(last_modified>=1699996400)"},
    {"days", WithAge(kNothing, "1", kDays), "(last_modified>=1699913600)"},
    {"two weeks", WithAge(kNothing, "2", kWeeks), "(last_modified>=1698790400)"},
    {"years", WithAge(kNothing, "2", kYears), "(last_modified>=1636884800)"},
    {"no age typed", WithAge(kNothing, "", kDays), "(last_modified>=1700000000)"},
    {"an age beyond all", WithAge(kNothing, "9223372036854775807", kYears),
     "(last_modified>=-9223372035154775807)"},
    {"name and age", WithAge(Name("ab"), "0", kDays),
     "((name==\"*ab*\")&&(last_modified>=1700000000))"},
    {"short name and age", WithAge(Name("a"), "0", kDays),
     "(name==\"*a*\")(last_modified>=1700000000)"},
    {"size and age", WithAge(WithSize(kNothing, "1", kSizeEqual, kBytes), "0", kDays),
     "((size==1)&&(last_modified>=1700000000))"},
    {"short name and size and age",
     WithAge(WithSize(Name("a"), "1", kSizeEqual, kBytes), "0", kDays),
     "(name==\"*a*\")((size==1)&&(last_modified>=1700000000))"},
    {"all three", WithAge(WithSize(Name("ab"), "1", kSizeEqual, kBytes), "0", kDays),
     "(((name==\"*ab*\")&&(size==1))&&(last_modified>=1700000000))"},
    {"dates", WithDates(kNothing, {"1", "1", "2000"}, {"1", "2", "2000"}),
     "((last_modified>=946684800)&&(last_modified<=946771200))"},
    {"dates and name", WithDates(Name("ab"), {"1", "1", "2000"}, {"1", "2", "2000"}),
     "((name==\"*ab*\")&&((last_modified>=946684800)&&(last_modified<=946771200)))"},
    {"the same date twice", WithDates(kNothing, {"1", "1", "2000"}, {"1", "1", "2000"}), "dates"},
    {"dates the other way", WithDates(Name("ab"), {"1", "2", "2000"}, {"1", "1", "2000"}), "dates"},
    {"the last of February and what comes after",
     WithDates(kNothing, {"2", "29", "2001"}, {"2", "31", "2001"}),
     "((last_modified>=983404800)&&(last_modified<=983577600))"},
    {"a date before 1970", WithDates(kNothing, {"12", "31", "1969"}, {"1", "1", "1970"}),
     "((last_modified>=-86400)&&(last_modified<=0))"},
    {"no dates typed", WithDates(kNothing, {}, {}), "dates"},
    {"years beyond all",
     WithDates(kNothing, {"1", "1", "2000"}, {"1", "1", "99999999999999999999"}),
     "((last_modified>=946684800)&&(last_modified<=33883957001577600))"},
    {"dates count before an age",
     WithAge(WithDates(kNothing, {"1", "1", "1970"}, {"1", "2", "1970"}), "1", kDays),
     "((last_modified>=0)&&(last_modified<=86400))"},
};

} // namespace

TEST_P(QueryCriteriaTest, MakesThePredicate)
{
    EXPECT_EQ(PredicateOf(GetParam().criteria), GetParam().predicate);
}

INSTANTIATE_TEST_SUITE_P(Controls, QueryCriteriaTest, testing::ValuesIn(kCases), NameOf);

TEST(QueryCriteriaZoneTest, TakesMidnightOfTheLocalClock)
{
    const Variable zone("TZ", "UTC-2");
    tzset();

    EXPECT_EQ(PredicateOf(WithDates(kNothing, {"1", "1", "2000"}, {"1", "2", "2000"})),
              "((last_modified>=946677600)&&(last_modified<=946764000))");
}
