#include "PaneWindowFixture.h"
#include "PrivateMounts.h"
#include "clv/CLVColumnLabelView.h"

#include <StatusBar.h>

namespace {

using namespace norvane;
using kits::testing::WaitFor;

/// What a pane does not do, and what it says then; and what it knows its rows by.
class PaneRefusalsTest : public PaneWindowFixture
{
protected:
    void Fill()
    {
        for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
            fTree.Write(name, "12");
        }
        fTree.MakeFolder("shown/folder");
    }

    std::string Path()
    {
        return Locked([this] { return fList->Path(); });
    }

    void Drop(const std::string& from, const std::string& name)
    {
        BMessage dropped(kLocalEntries);
        if (!name.empty()) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            dropped.AddRef("refs", &ref);
        }
        dropped.AddString("From", from.c_str());
        fWindow->PostMessage(&dropped, fList);
    }
};

TEST_F(PaneRefusalsTest, AFolderThatMayNotBeReadLeavesThePaneAsItWas)
{
    Fill();
    Open();
    Click(4, B_COMMAND_KEY);
    ASSERT_EQ(chmod(fTree.Path("shown/folder").c_str(), 0), 0);
    const std::string path = fTree.Path("shown/folder");
    fWindow->RunHere([&] {
        const WithoutFileRights rights;
        fList->Populate(path.c_str());
    });
    std::string text;
    EXPECT_TRUE(kits::testing::AnswerAlert("OK", &text));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    chmod(path.c_str(), 0755);
    EXPECT_EQ(text, "The directory, " + path + ", cannot be read.");
    EXPECT_EQ(Path(), fTree.Path("shown"));
    EXPECT_EQ(Names(), ".. folder a b c ");
    EXPECT_EQ(Marked(), "c ");
    EXPECT_EQ(Locked([this] { return fPane->Header()->Text(); }), fTree.Path("shown"));
    EXPECT_EQ(Locked([this] { return fPane->Footer()->Bar()->Parent(); }), nullptr);
    // And it still follows the folder that it shows.
    fTree.Write("shown/d", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. folder a b c d "));
}

TEST_F(PaneRefusalsTest, RefusesEntriesDroppedOnTheRoot)
{
    Fill();
    Open();
    Locked([this] { return fList->Populate("/"); });
    Drop(fTree.Path("shown"), "shown/a");
    EXPECT_NE(kits::testing::WaitForWindow("Warning"), nullptr);
    std::string text;
    EXPECT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Sorry can't copy files or folders to the root of the file system!");
}

TEST_F(PaneRefusalsTest, IgnoresEntriesOfItsOwnFolderAndMessagesWithout)
{
    Fill();
    Open();
    Drop(fTree.Path("shown"), "shown/a");
    Drop(fTree.Path("elsewhere"), "");
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Copy"), 0);
    EXPECT_EQ(Names(), ".. folder a b c ");
}

TEST_F(PaneRefusalsTest, StartsAtTheRootWithoutAPath)
{
    DirPane pane(BRect(0, 0, 299, 299), nullptr, "pane1", "1");
    EXPECT_EQ(pane.GetDirView()->Path(), "/");
    EXPECT_STREQ(pane.Header()->Name(), "pane1str");
}

TEST_F(PaneRefusalsTest, APathOfAnyLengthIsGivenWhole)
{
    const std::string path = "/" + std::string(200, 'a') + "/" + std::string(2000, 'b');
    const DirPane pane(BRect(0, 0, 299, 299), path.c_str(), "pane1", "1");
    EXPECT_EQ(pane.GetPath(), path);
    EXPECT_EQ(pane.GetCachedPath(), path);
}

TEST_F(PaneRefusalsTest, TheParentRowIsNeverMeasured)
{
    Fill();
    Open();
    Type(B_HOME);
    Type(B_SPACE);
    EXPECT_EQ(Marked(), "");
    // Answers come in turn: once the folder's is there, the other would have come.
    Type('f');
    Type(B_SPACE);
    EXPECT_TRUE(Becomes([this] { return Text("folder", 2); }, "0 K"));
    EXPECT_EQ(Text("..", 2), "--");
}

TEST_F(PaneRefusalsTest, ASizeForARowOfAnotherNameIsDropped)
{
    Fill();
    Open();
    BMessage answer(kFolderMeasured);
    const node_ref node = Locked([this] { return fList->RowAt(1)->NodeRef(); });
    answer.AddInt64("device", static_cast<int64>(node.device));
    answer.AddInt64("node", static_cast<int64>(node.node));
    answer.AddString("name", "former name");
    answer.AddInt64("bytes", 123456);
    fWindow->PostMessage(&answer, fList);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Text("folder", 2), "[Directory]");
}

TEST_F(PaneRefusalsTest, TheMarkAnchorStaysOnItsRow)
{
    Fill();
    Open();
    Click(4);
    fTree.Write("shown/aa", "");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. folder a aa b c "));
    Click(4, B_SHIFT_KEY);
    EXPECT_EQ(Marked(), "b c ");
}

TEST_F(PaneRefusalsTest, TheMarkAnchorGoesWithItsRow)
{
    Fill();
    Open();
    Click(4);
    fTree.Remove("shown/c");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. folder a b "));
    Click(2, B_SHIFT_KEY);
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneRefusalsTest, WithoutAHeaderTheColumnStripShowsTheFocus)
{
    Fill();
    Open();
    const auto blue = [this] {
        const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);
        return picture.Count(DirPane::kSelection, 0, 0, picture.width, 20);
    };
    Locked([this] {
        fList->SetHeaderFlag(false);
        fPane->ShowStrips();
        return 0;
    });
    EXPECT_GT(blue(), 0);
    Locked([this] {
        fList->MakeFocus(false);
        return 0;
    });
    EXPECT_EQ(blue(), 0);
}

TEST_F(PaneRefusalsTest, KeepsTheFocusThroughAnAlert)
{
    Fill();
    Open();
    fWindow->RunHere([this] { fList->Populate(fTree.Path("shown/a").c_str()); });
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_TRUE(Locked([this] { return fPane->GotFocus(); }));
    Type('b');
    EXPECT_EQ(Selected(), "b");
}

} // namespace
