#include "settings/Numbers.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

std::string Itoa(int number)
{
    char text[12];
    norvane::itoa(number, text);
    return text;
}

TEST(NumbersTest, WritesDecimal)
{
    EXPECT_EQ(Itoa(0), "0");
    EXPECT_EQ(Itoa(7), "7");
    EXPECT_EQ(Itoa(1200), "1200");
    EXPECT_EQ(Itoa(-42), "-42");
}

TEST(NumbersTest, WritesTheSmallestAndTheLargestNumber)
{
    EXPECT_EQ(Itoa(INT_MAX), "2147483647");
    EXPECT_EQ(Itoa(INT_MIN), "-2147483648");
}

TEST(NumbersTest, WritesLongNumbers)
{
    char text[24];
    norvane::ltoa(LONG_MIN, text);
    EXPECT_EQ(std::string(text), std::to_string(LONG_MIN));
}

TEST(NumbersTest, ReversesInPlace)
{
    char odd[] = "abc";
    char even[] = "abcd";
    char empty[] = "";
    norvane::reverse(odd);
    norvane::reverse(even);
    norvane::reverse(empty);
    EXPECT_STREQ(odd, "cba");
    EXPECT_STREQ(even, "dcba");
    EXPECT_STREQ(empty, "");
}

TEST(NumbersTest, ReadsLeadingDigitsOnly)
{
    EXPECT_EQ(norvane::atoi("007"), 7);
    EXPECT_EQ(norvane::atoi("12px"), 12);
    EXPECT_EQ(norvane::atoi("-42"), 0);
    EXPECT_EQ(norvane::atoi(" 5"), 0);
    EXPECT_EQ(norvane::atoi(""), 0);
}

TEST(NumbersTest, StopsAtTheLargestNumber)
{
    EXPECT_EQ(norvane::atoi("2147483647"), INT_MAX);
    EXPECT_EQ(norvane::atoi("99999999999999999999999"), INT_MAX);
}

} // namespace
