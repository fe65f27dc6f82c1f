#include "panes/ListingJob.h"

#include "NoThreads.h"
#include "TempTree.h"
#include "WatchLooper.h"

#include <testing/Driver.h>

#include <gtest/gtest.h>

namespace {

using namespace norvane;

class ListingJobTest : public ::testing::Test
{
protected:
    ListingJobTest()
    {
        fTree.MakeFolder("shown/below");
        fTree.Write("shown/file", "12");
        fLooper->Run();
        fOrder.watcher = BMessenger(nullptr, fLooper);
    }
    ~ListingJobTest() override { fOrder.watcher.SendMessage(B_QUIT_REQUESTED); }

    bool Hears(const std::string& name)
    {
        fTree.Write("shown/" + name, "");
        return kits::testing::WaitFor([&] { return fLooper->Heard(name); }, 500'000);
    }

    TempTree fTree;
    WatchLooper* fLooper = new WatchLooper; // deletes itself
    OpenOrder fOrder{"%D %R", BMessenger(), BMessenger()};
};

TEST_F(ListingJobTest, ReadsAFolderAndHasItWatched)
{
    ListingJob job(fTree.Path("shown"), fOrder);
    ASSERT_TRUE(job.WaitUntil(B_INFINITE_TIMEOUT));
    EXPECT_EQ(job.Status(), B_OK);
    EXPECT_EQ(job.Look().entries, 3);
    EXPECT_EQ(job.Look().read, 2);
    const ListedRows rows = job.TakeRows();
    EXPECT_EQ(rows.folders.size(), 2u); // with ".."
    EXPECT_EQ(rows.files.size(), 1u);
    const WatchedFolder folder = job.TakeFolder();
    EXPECT_EQ(folder.status, B_OK);
    EXPECT_TRUE(Hears("new"));
    watch_node(&folder.node, B_STOP_WATCHING, folder.watcher);
}

TEST_F(ListingJobTest, EndsTheWatchWhenItIsLetGoOf)
{
    {
        ListingJob job(fTree.Path("shown"), fOrder);
        ASSERT_TRUE(job.WaitUntil(B_INFINITE_TIMEOUT));
    }
    EXPECT_FALSE(Hears("new"));
}

TEST_F(ListingJobTest, AnotherOnesWatchGoesOn)
{
    ListingJob kept(fTree.Path("shown"), fOrder);
    ASSERT_TRUE(kept.WaitUntil(B_INFINITE_TIMEOUT));
    {
        ListingJob job(fTree.Path("shown"), fOrder);
        ASSERT_TRUE(job.WaitUntil(B_INFINITE_TIMEOUT));
    }
    EXPECT_TRUE(Hears("new"));
}

TEST_F(ListingJobTest, WorksWithoutAThread)
{
    const NoThreads none;
    fOrder.watcher = BMessenger(); // a watch has a thread of its own
    ListingJob job(fTree.Path("shown"), fOrder);
    EXPECT_TRUE(job.WaitUntil(0));
    EXPECT_EQ(job.Status(), B_OK);
    EXPECT_EQ(job.TakeRows().files.size(), 1u);
}

TEST_F(ListingJobTest, SaysWhyAFolderCannotBeRead)
{
    ListingJob job(fTree.Path("missing"), fOrder);
    ASSERT_TRUE(job.WaitUntil(B_INFINITE_TIMEOUT));
    EXPECT_EQ(job.Status(), B_ENTRY_NOT_FOUND);
}

} // namespace
