#include "fileops/engine/MoveLedger.h"

#include <gtest/gtest.h>

namespace norvane {

namespace {

struct stat File(ino_t node, off_t sizeBytes = 10, time_t seconds = 1000, long nanoseconds = 5)
{
    struct stat record = {};
    record.st_dev = 7;
    record.st_ino = node;
    record.st_mode = S_IFREG | 0644;
    record.st_size = sizeBytes;
    record.st_mtim = {seconds, nanoseconds};
    return record;
}

struct stat Folder(ino_t node, time_t seconds)
{
    struct stat record = File(node, 4096, seconds);
    record.st_mode = S_IFDIR | 0755;
    return record;
}

} // namespace

class MoveLedgerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fLedger.Begin("/home/from");
        fLedger.Add("/home/from/tree", Folder(1, 500));
        fLedger.Add("/home/from/tree/a", File(2));
        fLedger.Add("/home/from/tree/b", File(3));
    }

    MoveLedger fLedger;
};

TEST_F(MoveLedgerTest, HoldsWhatWasReadAsItWas)
{
    EXPECT_TRUE(fLedger.Holds("tree/a", File(2)));
    EXPECT_TRUE(fLedger.Holds("tree/b", File(3)));
    EXPECT_FALSE(fLedger.Holds("tree/c", File(4)));
}

TEST_F(MoveLedgerTest, HoldsNothingThatChanged)
{
    EXPECT_FALSE(fLedger.Holds("tree/a", File(9)));
    EXPECT_FALSE(fLedger.Holds("tree/a", File(2, 11)));
    EXPECT_FALSE(fLedger.Holds("tree/a", File(2, 10, 1001)));
    EXPECT_FALSE(fLedger.Holds("tree/a", File(2, 10, 1000, 6)));
    struct stat elsewhere = File(2);
    elsewhere.st_dev = 8;
    EXPECT_FALSE(fLedger.Holds("tree/a", elsewhere));
}

TEST_F(MoveLedgerTest, AnotherNameOfAFileThatWasReadIsNew)
{
    EXPECT_FALSE(fLedger.Holds("tree/link-to-a", File(2)));
    EXPECT_FALSE(fLedger.Holds("tree/a", File(3)));
}

TEST_F(MoveLedgerTest, AFolderIsKnownByItsNodeAlone)
{
    EXPECT_TRUE(fLedger.Holds("tree", Folder(1, 900)));
    EXPECT_FALSE(fLedger.Holds("tree", Folder(5, 500)));
    EXPECT_FALSE(fLedger.Holds("tree", File(1)));
}

TEST_F(MoveLedgerTest, CanBeAddedToAfterItWasAsked)
{
    EXPECT_FALSE(fLedger.Holds("tree/0", File(4)));
    fLedger.Add("/home/from/tree/0", File(4));
    EXPECT_TRUE(fLedger.Holds("tree/0", File(4)));
}

TEST_F(MoveLedgerTest, StartsAnew)
{
    fLedger.Begin("");
    EXPECT_FALSE(fLedger.Holds("tree/a", File(2)));
    fLedger.Add("/in-the-root", File(2));
    EXPECT_TRUE(fLedger.Holds("in-the-root", File(2)));
}

} // namespace norvane
