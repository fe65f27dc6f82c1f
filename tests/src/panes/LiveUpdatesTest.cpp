#include "panes/LiveUpdates.h"

#include "PaneRowsFixture.h"
#include "WatchLooper.h"
#include "panes/FolderSource.h"

#include <NodeMonitor.h>

#include <sys/stat.h>

namespace {

using namespace norvane;

class LiveUpdatesTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fTree.MakeFolder("one");
        fTree.MakeFolder("two");
        fUpdates = std::make_unique<LiveUpdates>(*fRows);
        fLooper = new WatchLooper; // deletes itself
        fLooper->Run();
        fWatcher = BMessenger(nullptr, fLooper);
    }

    void TearDown() override
    {
        fUpdates.reset();
        fWatcher.SendMessage(B_QUIT_REQUESTED);
        PaneRowsFixture::TearDown();
    }

    /// Begins the watch of a folder.
    std::optional<WatchedFolder> Watched(const char* name)
    {
        FolderSource source(fTree.Path(name));
        NoTaker nobody;
        EXPECT_EQ(source.Open({"%D %R", fWatcher}, nobody), B_OK);
        return source.Folder();
    }

    bool Hears(const char* folder, const std::string& name)
    {
        fTree.Write(std::string(folder) + "/" + name, "");
        return kits::testing::WaitFor([&] { return fLooper->Heard(name); });
    }

    BMessage Created(const char* folder, const std::string& name) const
    {
        struct stat st = {};
        stat(fTree.Path(folder).c_str(), &st);
        BMessage notice(B_NODE_MONITOR);
        notice.AddInt32("opcode", B_ENTRY_CREATED);
        notice.AddInt32("device", static_cast<int32>(st.st_dev));
        notice.AddInt64("directory", static_cast<int64>(st.st_ino));
        stat(fTree.Path(folder + ("/" + name)).c_str(), &st);
        notice.AddInt64("node", static_cast<int64>(st.st_ino));
        notice.AddString("name", name.c_str());
        return notice;
    }

    TempTree fTree;
    BMessenger fWatcher;
    WatchLooper* fLooper = nullptr;
    std::unique_ptr<LiveUpdates> fUpdates;
};

TEST_F(LiveUpdatesTest, EndsTheWatchOfAFolderThatIsLeft)
{
    fUpdates->Follow(Watched("one"));
    EXPECT_TRUE(Hears("one", "a"));
    fUpdates->Follow(Watched("two"));
    fTree.Write("one/b", "");
    EXPECT_TRUE(Hears("two", "c")); // notices come in turn: that of "b" would be there
    EXPECT_FALSE(fLooper->Heard("b"));
}

TEST_F(LiveUpdatesTest, KeepsTheWatchOfAFolderThatIsReadAgain)
{
    fUpdates->Follow(Watched("one"));
    fUpdates->Follow(Watched("one"));
    EXPECT_TRUE(Hears("one", "a"));
    fUpdates->Release(Watched("one")); // read once more, in vain
    EXPECT_TRUE(Hears("one", "b"));
}

TEST_F(LiveUpdatesTest, EndsTheWatchOfAFolderThatIsNotShownAfterAll)
{
    fUpdates->Follow(Watched("one"));
    fUpdates->Release(Watched("two"));
    fTree.Write("two/a", "");
    EXPECT_TRUE(Hears("one", "b"));
    EXPECT_FALSE(fLooper->Heard("a"));
}

TEST_F(LiveUpdatesTest, AddsWhatIsMadeInTheFolderItFollows)
{
    fUpdates->Follow(Watched("one"));
    fTree.Write("one/a", "");
    fTree.Write("two/b", "");
    fUpdates->NodeChanged(Created("one", "a"));
    fUpdates->NodeChanged(Created("two", "b"));
    EXPECT_EQ(Names(), "a ");
}

// The watch leaves out what was written to it in the moment in which it came.
TEST_F(LiveUpdatesTest, LooksAgainAtWhatWasListedBeforeItWasTold)
{
    fUpdates->Follow(Watched("one"));
    fTree.Write("one/a", "");
    fUpdates->AddEntry("a");
    ASSERT_EQ(fRows->CountRows(), 1);
    EXPECT_EQ(fRows->RowAt(0)->GetSize(), 0);
    fTree.Write("one/a", "12345");

    fUpdates->NodeChanged(Created("one", "a"));

    ASSERT_EQ(fRows->CountRows(), 1);
    EXPECT_EQ(fRows->RowAt(0)->GetSize(), 5);
}

TEST_F(LiveUpdatesTest, FollowsNothingInAPlaceThatIsNoFolder)
{
    fUpdates->Follow(Watched("one"));
    fUpdates->Follow(std::nullopt);
    EXPECT_FALSE(fUpdates->IsFollowing());
    fTree.Write("one/a", "");
    fUpdates->NodeChanged(Created("one", "a"));
    EXPECT_EQ(fUpdates->AddEntry("a"), 0);
    EXPECT_EQ(Names(), "");
}

TEST_F(LiveUpdatesTest, NoticesOnTheirWayCountAfterTheWatchEnded)
{
    fUpdates->Follow(Watched("one"));
    fUpdates->Stop();
    fTree.Write("one/a", "");
    fUpdates->NodeChanged(Created("one", "a"));
    EXPECT_EQ(Names(), "a ");
}

} // namespace
