#include "fileops/engine/Measurement.h"

#include "NoThreads.h"
#include "ScriptedUI.h"
#include "TempTree.h"

#include <Entry.h>

#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace norvane {
namespace {

using Keep = Measurement::Keep;

class MeasurementTest : public ::testing::Test
{
protected:
    MeasurementTest()
    {
        fTree.Write("a", "12345");
        fTree.Write("tree/b", "123");
        fTree.Write("tree/sub/c", "12");
        fTree.Link("link", "a");
    }

    std::vector<entry_ref> Items()
    {
        std::vector<entry_ref> items;
        for (const char* name : {"a", "tree", "link", "gone"}) {
            entry_ref item;
            EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &item), B_OK);
            items.push_back(item);
        }
        return items;
    }

    void ExpectFound(const Measurement& measurement)
    {
        EXPECT_EQ(measurement.TotalBytes(), 10);
        const int64 bytes[] = {5, 5, 0, 0};
        for (size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(measurement.BytesOf(i), bytes[i]) << i;
            EXPECT_EQ(measurement.WasFile(i), i == 0) << i;
        }
        EXPECT_GE(measurement.CountEntries(), 3);
    }

    TempTree fTree;
    ScriptedUI fUI;
};

TEST_F(MeasurementTest, TellsOfEachItem)
{
    Measurement measurement([this] { return Items(); }, Keep::kSizes);
    measurement.Finish(fUI);
    ExpectFound(measurement);
    EXPECT_EQ(measurement.RecordOf(0).st_mode, 0u) << "not kept";
}

TEST_F(MeasurementTest, BegunBeforeItTellsTheSame)
{
    Measurement early([this] { return Items(); }, Keep::kRecords);
    early.Start();
    early.Finish(fUI);
    ExpectFound(early);
    Measurement late([this] { return Items(); }, Keep::kRecords);
    late.Finish(fUI);
    EXPECT_EQ(early.CountEntries(), late.CountEntries());
}

TEST_F(MeasurementTest, BegunBeforeWithoutAThreadItTellsTheSame)
{
    Measurement measurement([this] { return Items(); }, Keep::kSizes);
    {
        const NoThreads none;
        measurement.Start();
    }
    EXPECT_GT(NoThreads::CountRefused(), 0);
    measurement.Finish(fUI);
    ExpectFound(measurement);
}

TEST_F(MeasurementTest, KeepsWhatItemsWere)
{
    struct stat before = {};
    ASSERT_EQ(lstat(fTree.Path("tree").c_str(), &before), 0);
    Measurement measurement([this] { return Items(); }, Keep::kRecords);
    measurement.Start();
    measurement.Finish(fUI);
    EXPECT_EQ(measurement.RecordOf(1).st_ino, before.st_ino);
    EXPECT_TRUE(S_ISLNK(measurement.RecordOf(2).st_mode));
    EXPECT_EQ(measurement.RecordOf(3).st_mode, 0u);
    EXPECT_EQ(measurement.RecordOf(4).st_mode, 0u) << "there are but four";
}

// As on a volume that does not answer.
TEST_F(MeasurementTest, AStopWaitsForNobody)
{
    std::promise<void> gate;
    {
        Measurement measurement(
            [items = Items(), opened = gate.get_future().share()] {
                opened.wait();
                return items;
            },
            Keep::kSizes);
        measurement.Start();
        fUI.onVisit = [this](int64) {
            fUI.isStopped = true;
        };
        measurement.Finish(fUI);
        EXPECT_EQ(measurement.TotalBytes(), 0);
        EXPECT_FALSE(measurement.WasFile(0));
    }
    gate.set_value();
}

} // namespace
} // namespace norvane
