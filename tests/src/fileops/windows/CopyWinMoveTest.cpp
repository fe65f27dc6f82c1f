#include "fileops/windows/CopyWin.h"

#include "OperationFixture.h"
#include "PrivateMounts.h"

#include <StatusBar.h>

#include <sys/stat.h>

namespace norvane {

using kits::testing::WaitFor;
using kits::testing::WaitForWindow;

/// Moves and deletions in their windows.
class CopyWinMoveTest : public OperationFixture
{
protected:
    BMessage Deletion(const std::vector<std::string>& names)
    {
        BMessage request = Request(names);
        request.what = kDeleteRequest;
        return request;
    }

    CopyWin* StartIn(const std::string& folder, BMessage request)
    {
        return new CopyWin(BRect(0, 0, 1000, 700), "Copy", fTree.Path(folder).c_str(), &request,
                           fListener);
    }
};

TEST_F(CopyWinMoveTest, MovesItsItems)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/b", "2");
    Start(Request({"from/tree", "from/b"}, "Move"));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(fTree.List("to"), "b\ntree\n");
}

TEST_F(CopyWinMoveTest, CancelStopsAfterItsItemWhichLeavesForTheTrash)
{
    for (const char* name : {"from/a", "from/b", "from/c"}) {
        fTree.Write(name, "new");
    }
    fTree.Write("to/b", "old");
    Start(Request({"from/a", "from/b", "from/c"}, "Move"));
    Answer("Cancel");
    std::string told;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &told));
    EXPECT_EQ(told, "Some items could not be handled whole:\n\tb: it is in the Trash");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("to"), "a\nb\n");
    EXPECT_EQ(fTree.Read("to/b"), "old");
    EXPECT_EQ(fTree.List("from"), "c\n");
    EXPECT_EQ(fTree.List("data/Trash/files"), "b\n");
}

TEST_F(CopyWinMoveTest, QuittingDeletesNothingMore)
{
    for (const char* name : {"from/a", "from/b", "from/c"}) {
        fTree.Write(name, "new");
    }
    fTree.Write("to/b", "old");
    Start(Request({"from/a", "from/b", "from/c"}, "Move"));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    Operations::BeginQuit();
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("from"), "b\nc\n");
    EXPECT_EQ(fTree.List("to"), "a\nb\n");
    EXPECT_EQ(fTree.List("data/Trash/files"), "");
}

TEST_F(CopyWinMoveTest, DeletesIntoTheTrash)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/b", "2");
    StartIn("from", Deletion({"from/tree", "from/b"}));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(fTree.List("data/Trash/files"), "b\ntree\n");
    EXPECT_EQ(fTree.List("data/Trash/info"), "b.trashinfo\ntree.trashinfo\n");
}

TEST_F(CopyWinMoveTest, DeletesInTheTrashForGood)
{
    fTree.Write("data/Trash/files/tree/a", "1");
    fTree.Write("data/Trash/files/b", "2");
    fTree.Write("data/Trash/info/tree.trashinfo", "[Trash Info]\n");
    StartIn("data/Trash/files", Deletion({"data/Trash/files/tree"}));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("data/Trash/files"), "b\n");
    EXPECT_EQ(fTree.List("data/Trash/info"), "");
}

TEST_F(CopyWinMoveTest, ADeletionWithoutItemsTellsItsEnd)
{
    StartIn("from", BMessage(kDeleteRequest));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(kits::testing::CountShown("Item Exists"), 0);
}

TEST_F(CopyWinMoveTest, ADeletionIsLabelledAsCopyingAndItsTitleHasTheShareDone)
{
    fTree.Write("from/a", std::string(5000, 'x'));
    fTree.Write("from/b", "2");
    BMessage request = Deletion({"from/a", "from/b"});
    fTree.Remove("from/b");
    CopyWin* window = StartIn("from", request);
    // The alert about what is gone keeps the window. It holds its own lock, so it is looked at
    // without.
    ASSERT_NE(WaitForWindow("Err"), nullptr);
    const auto* bar = dynamic_cast<BStatusBar*>(window->ChildAt(0)->ChildAt(5));
    ASSERT_NE(bar, nullptr);
    EXPECT_STREQ(bar->Text(), "Copying 2 files or directories");
    EXPECT_STREQ(bar->TrailingText(), "4 K");
    EXPECT_EQ(bar->CurrentValue(), 5000);
    EXPECT_STREQ(window->Title(), "Copy - 100 %");
    EXPECT_EQ(window->Frame().Height(), 96);
    ASSERT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinMoveTest, ADeletionOfOneItemHasBothBars)
{
    fTree.Write("from/a", "1");
    BMessage request = Deletion({"from/a"});
    fTree.Remove("from/a");
    CopyWin* window = StartIn("from", request);
    ASSERT_NE(WaitForWindow("Err"), nullptr);
    EXPECT_EQ(window->Frame().Height(), 96);
    ASSERT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinMoveTest, TellsOnceWhatStays)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    BMessage request = Deletion({"from/a", "from/b"});
    fTree.Remove("from/a");
    StartIn("from", request);
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Some items could not be handled whole:\n\ta: it is not there any more");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("data/Trash/files"), "b\n");
}

TEST_F(CopyWinMoveTest, EmptiesAFolderWithoutBeingSeen)
{
    for (int number = 0; number < 50; number++) {
        fTree.Write("full/" + std::to_string(number) + "/x", "1");
    }
    BMessage request(kEmptyRequest);
    StartIn("full", request);
    bool isSeen = false;
    EXPECT_TRUE(WaitFor([&] {
        isSeen = isSeen || kits::testing::CountShown("Copy") > 0;
        return fListener->ended == 1;
    }));
    EXPECT_FALSE(isSeen);
    EXPECT_EQ(fTree.List("full"), "");
    EXPECT_TRUE(fTree.IsFolder("full"));
}

TEST_F(CopyWinMoveTest, TellsThatWhatItEmptiesCannotBeListed)
{
    fTree.Write("full", "no folder");
    StartIn("full", BMessage(kEmptyRequest));
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Some items could not be handled whole:\n\t"
                    "full: something that is no folder is in the way");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("full"), "no folder");
}

TEST_F(CopyWinMoveTest, AnEmptyFolderIsEmptiedWithoutAWord)
{
    fTree.MakeFolder("full");
    StartIn("full", BMessage(kEmptyRequest));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
}

TEST_F(CopyWinMoveTest, SoIsOneThatIsGone)
{
    StartIn("gone", BMessage(kEmptyRequest));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
}

} // namespace norvane
