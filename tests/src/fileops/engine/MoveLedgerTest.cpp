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
        fLedger.Add(Place("tree"), Folder(1, 500), node_ref(9, 101));
        fLedger.Add(Place("tree", "a"), File(2), node_ref(9, 102));
        fLedger.Add(Place("tree", "b"), File(3), node_ref(9, 103));
    }

    static uint64 Place(const char* name) { return PlaceBelow(0, name); }
    static uint64 Place(const char* folder, const char* name)
    {
        return PlaceBelow(Place(folder), name);
    }
    bool Holds(uint64 place, const struct stat& record)
    {
        return fLedger.Holds(place, record, &fTarget);
    }

    ino_t fTarget = 0;

    MoveLedger fLedger;
};

TEST_F(MoveLedgerTest, HoldsWhatWasReadAsItWas)
{
    EXPECT_TRUE(Holds(Place("tree", "a"), File(2)));
    EXPECT_TRUE(Holds(Place("tree", "b"), File(3)));
    EXPECT_FALSE(Holds(Place("tree", "c"), File(4)));
}

TEST_F(MoveLedgerTest, HoldsNothingThatChanged)
{
    EXPECT_FALSE(Holds(Place("tree", "a"), File(9)));
    EXPECT_FALSE(Holds(Place("tree", "a"), File(2, 11)));
    EXPECT_FALSE(Holds(Place("tree", "a"), File(2, 10, 1001)));
    EXPECT_FALSE(Holds(Place("tree", "a"), File(2, 10, 1000, 6)));
    struct stat elsewhere = File(2);
    elsewhere.st_dev = 8;
    EXPECT_FALSE(Holds(Place("tree", "a"), elsewhere));
}

TEST_F(MoveLedgerTest, AnotherNameOfAFileThatWasReadIsNew)
{
    EXPECT_FALSE(Holds(Place("tree", "link-to-a"), File(2)));
    EXPECT_FALSE(Holds(Place("tree", "a"), File(3)));
}

TEST_F(MoveLedgerTest, AFolderIsKnownByItsNodeAlone)
{
    EXPECT_TRUE(Holds(Place("tree"), Folder(1, 900)));
    EXPECT_FALSE(Holds(Place("tree"), Folder(5, 500)));
    EXPECT_FALSE(Holds(Place("tree"), File(1)));
}

TEST_F(MoveLedgerTest, CanBeAddedToAfterItWasAsked)
{
    EXPECT_FALSE(Holds(Place("tree", "0"), File(4)));
    fLedger.Add(Place("tree", "0"), File(4), node_ref(9, 104));
    EXPECT_TRUE(Holds(Place("tree", "0"), File(4)));
}

TEST_F(MoveLedgerTest, KnowsWhatAnEntryBecame)
{
    EXPECT_TRUE(Holds(Place("tree", "b"), File(3)));
    EXPECT_EQ(fTarget, ino_t(103));
    EXPECT_TRUE(Holds(Place("tree"), Folder(1, 900)));
    EXPECT_EQ(fTarget, ino_t(101));
}

TEST_F(MoveLedgerTest, PlacesOfTheSameNamesDiffer)
{
    EXPECT_NE(Place("tree", "a"), Place("a", "tree"));
    EXPECT_NE(Place("a"), Place("tree", "a"));
    EXPECT_NE(PlaceBelow(Place("a", "b"), "a"), Place("b", "a"));
}

TEST_F(MoveLedgerTest, WhereNodeNumbersAreMadeUpTheRestCounts)
{
    MoveLedger ledger(false);
    ledger.Add(Place("tree"), Folder(1, 500), node_ref(9, 101));
    ledger.Add(Place("tree", "a"), File(2), node_ref(9, 102));
    EXPECT_TRUE(ledger.Holds(Place("tree"), Folder(77, 900), &fTarget));
    EXPECT_TRUE(ledger.Holds(Place("tree", "a"), File(77), &fTarget));
    EXPECT_FALSE(ledger.Holds(Place("tree", "a"), File(2, 11), &fTarget));
    EXPECT_FALSE(ledger.Holds(Place("tree", "a"), File(2, 10, 1001), &fTarget));
    EXPECT_FALSE(ledger.Holds(Place("tree", "a"), Folder(2, 1000), &fTarget));
}

} // namespace norvane
