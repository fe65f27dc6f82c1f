#include "ftp/transfers/ListedTime.h"

#include <gtest/gtest.h>

namespace norvane {

namespace {

constexpr std::time_t kHour = 3600;
constexpr std::time_t kNow = 1'600'000'000; // 2020-09-13 12:26:40

/// Seconds of the middle between both moments, without the zones.
std::time_t Read(const std::string& date, std::time_t now = kNow)
{
    const auto time = ReadListedTime(date, now);
    return time ? time->earliest + 14 * kHour : -1;
}

} // namespace

TEST(ListedTimeTest, ReadsDays)
{
    EXPECT_EQ(Read("Jan  1  1970"), 0);
    EXPECT_EQ(Read("Feb 29  2000"), 951'782'400);
    EXPECT_EQ(Read("29 Feb 2000"), 951'782'400);
    EXPECT_EQ(Read("Dec 31  2037"), 2'145'830'400);
}

TEST(ListedTimeTest, ReadsTimesOfTheLastTwelveMonths)
{
    EXPECT_EQ(Read("Sep 13 12:00"), 1'599'998'400);
    EXPECT_EQ(Read("Sep 14 12:00"), 1'600'084'800) << "its clock may be ahead";
    EXPECT_EQ(Read("Sep 30 12:00"), 1'569'844'800) << "of last year";
    EXPECT_EQ(Read("Dec 31 23:59", 1'577'836'800 - 60), 1'577'836'740);
    EXPECT_EQ(Read("Jan  1 00:30", 1'577'836'800 - 60), 1'577'838'600) << "ahead, of the next year";
}

TEST(ListedTimeTest, LeavesRoomForZones)
{
    const auto time = ReadListedTime("Jan  2  1970", kNow);
    ASSERT_TRUE(time.has_value());
    EXPECT_EQ(time->earliest, 24 * kHour - 14 * kHour);
    EXPECT_EQ(time->latest, 48 * kHour - 1 + 12 * kHour);
}

TEST(ListedTimeTest, OtherWordsAreNoTimes)
{
    for (const char* date : {"", "Jan", "Jan 5", "Mai 5 2020", "Jan 0 2020", "Jan 32 2020",
                             "Jan -5 2020", "Jan 5 year", "Jan 5 24:00", "Jan 5 12:60", "Jan 5 :12",
                             "5 5 2020", "Jan 5x 2020", "Jan 5 1900"}) {
        EXPECT_EQ(Read(date), -1) << date;
    }
}

} // namespace norvane
