#include "panes/NamePart.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using namespace norvane;

struct PartCase
{
    const char* part;
    const char* name;
    bool isIn;
};

void PrintTo(const PartCase& value, std::ostream* out)
{
    *out << '"' << value.part << "\" in \"" << value.name << '"';
}

class NamePartTest : public ::testing::TestWithParam<PartCase>
{
};

TEST_P(NamePartTest, IsIn)
{
    EXPECT_EQ(NamePart(GetParam().part).IsIn(GetParam().name), GetParam().isIn);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NamePartTest,
    ::testing::Values(
        PartCase{"", "a", true}, PartCase{"b", "abc", true}, PartCase{"bd", "abcbd", true},
        PartCase{"bd", "abcb", false}, PartCase{"aab", "aaab", true}, PartCase{"b", "ABC", true},
        PartCase{"B", "abc", false}, PartCase{"B", "ABC", true}, PartCase{"aB", "xaBy", true},
        PartCase{"\xc3\xa4", "x\xc3\x84", true}, PartCase{"\xc3\x84", "x\xc3\xa4", false},
        PartCase{"\xc3\xa4r", "\xc3\xa4\xc3\x84R", true},
        PartCase{"\xd0\xb6", "\xd0\x96uk", true}, // another script
        PartCase{"\xff", "a\xff", true}, PartCase{"\xff", "a\xfe", false},
        PartCase{"\n", "a\nb", true}, PartCase{"*", "a", false}, PartCase{"a b", "xa by", true}),
    [](const auto& test) { return std::string("Case").append(std::to_string(test.index)); });

TEST(NamePartNarrowerTest, IsSoWhenItHoldsTheOther)
{
    EXPECT_TRUE(NamePart("abc").IsNarrowerThan(NamePart("bc")));
    EXPECT_TRUE(NamePart("aBc").IsNarrowerThan(NamePart("c")));
    EXPECT_TRUE(NamePart("a").IsNarrowerThan(NamePart("")));
    EXPECT_FALSE(NamePart("ab").IsNarrowerThan(NamePart("aB")));
    EXPECT_FALSE(NamePart("ab").IsNarrowerThan(NamePart("abc")));
}

} // namespace
