#include "AlertText.h"
#include "PaneWindowFixture.h"

namespace {

using namespace norvane;

/// Going back and forward in a pane.
class PaneHistoryTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (int i = 100; i < 160; i++) {
            fTree.MakeFolder("shown/folder" + std::to_string(i));
        }
        fTree.MakeFolder("other/below");
        Open();
    }

    void Key(char key, uint32 modifiers = B_OPTION_KEY)
    {
        kits::testing::TypeKey(key, modifiers);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    std::string Place()
    {
        std::string path;
        Locked([&] { path = fList->Path(); });
        return path.substr(fTree.Path().size() + 1);
    }
    void Show(const std::string& folder)
    {
        Locked([&] { fList->SetPath(fTree.Path(folder).c_str()); });
        ASSERT_TRUE(Shows(folder));
    }
    bool Shows(const std::string& folder)
    {
        return kits::testing::WaitFor([&] { return Place() == folder; });
    }
};

TEST_F(PaneHistoryTest, AltAndArrowsGoBackAndForward)
{
    Show("other");
    Show("other/below");
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("other"));
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("shown"));
    Key(B_LEFT_ARROW); // no further
    Key(B_RIGHT_ARROW);
    EXPECT_TRUE(Shows("other"));
    Key(B_RIGHT_ARROW, B_OPTION_KEY | B_SHIFT_KEY); // another key
    Key(B_LEFT_ARROW, 0);
    EXPECT_EQ(Place(), "other");
}

TEST_F(PaneHistoryTest, SideButtonsGoBackAndForward)
{
    Show("other");
    kits::testing::Click(fList, BPoint(50, 30), 0x08);
    EXPECT_TRUE(Shows("shown"));
    Locked([&] { EXPECT_EQ(fList->CurrentSelection(), -1); });
    kits::testing::Click(fList, BPoint(50, 30), 0x10);
    EXPECT_TRUE(Shows("other"));
}

TEST_F(PaneHistoryTest, TheRowsAreLookedAtAsBefore)
{
    float top = 0;
    Locked([&] {
        fList->Select(30);
        fList->ScrollTo(BPoint(0, fList->ItemFrame(25).top));
        top = fList->Bounds().top;
    });
    ASSERT_GT(top, 0);
    Show("other");
    Key(B_LEFT_ARROW);
    ASSERT_TRUE(Shows("shown"));
    Locked([&] {
        EXPECT_EQ(fList->CurrentSelection(), 30);
        EXPECT_EQ(fList->Bounds().top, top);
    });
}

TEST_F(PaneHistoryTest, WhatIsNotThereAnyMoreIsNotLookedAt)
{
    Locked([&] {
        fList->Select(30);
        fList->ScrollTo(BPoint(0, fList->ItemFrame(25).top));
    });
    Show("other");
    for (int i = 105; i < 160; i++) {
        fTree.Remove("shown/folder" + std::to_string(i));
    }
    Key(B_LEFT_ARROW);
    ASSERT_TRUE(Shows("shown"));
    Locked([&] {
        EXPECT_EQ(fList->CurrentSelection(), -1);
        EXPECT_EQ(fList->Bounds().top, 0);
        EXPECT_EQ(fList->CountItems(), 6);
    });
}

TEST_F(PaneHistoryTest, FoldersThatAreGoneArePassedOver)
{
    fTree.MakeFolder("gone");
    Show("other");
    Show("gone");
    Show("other/below");
    fTree.Remove("gone");
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("other"));
    Key(B_RIGHT_ARROW);
    EXPECT_TRUE(Shows("other/below"));
    fTree.Remove("other/below"); // the pane shows it still
    fTree.Remove("other");
    fTree.Remove("shown");
    Key(B_LEFT_ARROW);
    EXPECT_EQ(Place(), "other/below");
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
}

TEST_F(PaneHistoryTest, WhatIsNoFolderAnyMoreIsToldAndForgotten)
{
    Show("other");
    Show("other/below");
    fTree.Remove("other");
    fTree.Write("other", "");
    fWindow->RunHere([&] { fList->GoBack(); });
    EXPECT_EQ(AlertText("Err"), "info: The directory, " + fTree.Path("other") +
                                    ", is not valid.\nThe volume may not be mounted. [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_EQ(Place(), "other/below");
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("shown"));
}

TEST_F(PaneHistoryTest, HitsLeadBackToTheFolderBeforeThem)
{
    Show("other");
    entry_ref hit;
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown/folder100").c_str(), &hit), B_OK);
    BMessage results(kQueryResults);
    results.AddRef("ref", &hit);
    results.AddString("QueryString", "a query");
    Locked([&] {
        fList->Populate(&results);
        EXPECT_EQ(fList->Mode(), kQueryMode);
    });
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("other"));
    Locked([&] { EXPECT_EQ(fList->Mode(), kLocalMode); });
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("shown"));
}

TEST_F(PaneHistoryTest, AFolderThatIsRenamedIsComeBackTo)
{
    Show("other");
    ASSERT_EQ(std::rename(fTree.Path("other").c_str(), fTree.Path("moved").c_str()), 0);
    Locked([&] { fList->CheckPlace(); });
    ASSERT_TRUE(Shows("moved"));
    Show("shown");
    Key(B_LEFT_ARROW);
    EXPECT_TRUE(Shows("moved"));
}

TEST_F(PaneHistoryTest, AFolderThatMovesOnWhileItIsLookedForIsNotTakenForRemoved)
{
    Show("other");
    node_ref folder;
    Locked([&] { folder = fList->FolderNode(); });
    ASSERT_EQ(std::rename(fTree.Path("other").c_str(), fTree.Path("third").c_str()), 0);
    // Somebody saw it under a name that it had in between.
    BMessage checked(kFolderChecked);
    checked.AddString("path", fTree.Path("second").c_str());
    checked.AddInt64("device", folder.device);
    checked.AddInt64("node", static_cast<int64>(folder.node));
    Locked([&] { fList->MessageReceived(&checked); });
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_TRUE(Shows("third"));
    fTree.Write("third/new", "");
    EXPECT_TRUE(kits::testing::WaitFor([&] {
        bool isThere = false;
        Locked([&] { isThere = fList->CountItems() == 3; }); // "..", "below" and the new one
        return isThere;
    }));
}

} // namespace
