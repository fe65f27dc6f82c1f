#include "properties/Tally.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

struct stat Record(mode_t mode, off_t size = 0, blkcnt_t blocks = 0)
{
    struct stat record = {};
    record.st_mode = mode;
    record.st_size = size;
    record.st_blocks = blocks;
    return record;
}

TEST(TallyTest, CountsKindsAndBytes)
{
    Tally tally;
    tally.Add(Record(S_IFREG | 0644, 1000, 8));
    tally.Add(Record(S_IFREG | 0644, 1, 8));
    tally.Add(Record(S_IFDIR | 0755, 4096, 8));
    tally.Add(Record(S_IFLNK | 0777, 12));
    tally.Add(Record(S_IFIFO | 0600));

    EXPECT_EQ(tally.Text(), "2 files, 1 folder, 1 link, 1 special file");
    EXPECT_EQ(tally.bytes, 1001);
    EXPECT_EQ(tally.occupiedBytes, 3 * 8 * 512);
    EXPECT_EQ(tally.Count(), 5);
    EXPECT_EQ(Tally().Text(), "nothing");
}

TEST(TallyTest, SumsAreSums)
{
    Tally one;
    one.Add(Record(S_IFREG | 0644, 10));
    Tally sum = one;
    one.unreadable = 2;
    sum.Add(one);

    EXPECT_EQ(sum.files, 2);
    EXPECT_EQ(sum.bytes, 20);
    EXPECT_EQ(sum.unreadable, 2);
    EXPECT_EQ(sum.modes.at(S_IFREG | 0644), 2);
}

TEST(TallyTest, KnowsHowManyAChangeConcerns)
{
    Tally tally;
    tally.Add(Record(S_IFREG | 0644));
    tally.Add(Record(S_IFREG | 0644));
    tally.Add(Record(S_IFREG | 0755));
    tally.Add(Record(S_IFREG | 0744));
    tally.Add(Record(S_IFDIR | 0700));
    tally.Add(Record(S_IFLNK | 0777));

    EXPECT_EQ(tally.ChangedBy({0111, 0}), 2); // the program that lacks some, and the folder
    EXPECT_EQ(tally.ChangedBy({0, 0044}), 4);
    EXPECT_EQ(tally.ChangedBy({}), 0);
}

TEST(TallyTest, NumbersAreGrouped)
{
    EXPECT_EQ(GroupedNumber(0), "0");
    EXPECT_EQ(GroupedNumber(999), "999");
    EXPECT_EQ(GroupedNumber(1000), "1,000");
    EXPECT_EQ(GroupedNumber(1234567), "1,234,567");
    EXPECT_EQ(GroupedNumber(-123), "-123");
    EXPECT_EQ(GroupedNumber(-1234), "-1,234");
    EXPECT_EQ(Counted(1, "entry", "entries"), "1 entry");
    EXPECT_EQ(SizeInFull(1023), "1,023 bytes");
    EXPECT_EQ(SizeInFull(1), "1 byte");
    EXPECT_EQ(SizeInFull(1536), "1,536 bytes (1.5 KiB)");
}

} // namespace
