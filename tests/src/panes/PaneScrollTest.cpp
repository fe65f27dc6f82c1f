#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>
#include <ScrollBar.h>

namespace {

using namespace norvane;

/// What is in sight after going elsewhere, and while a name is edited.
class PaneScrollTest : public PaneWindowFixture
{
protected:
    static constexpr int kWideName = 900; // far wider than the list

    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (int i = 100; i < 160; i++) {
            fTree.MakeFolder("shown/folder" + std::to_string(i));
        }
    }

    void OpenScrolled(BPoint to)
    {
        Open();
        Locked([&] {
            fList->SetColumnWidth(1, kWideName);
            fList->ScrollTo(to);
            EXPECT_EQ(fList->Bounds().LeftTop(), to);
        });
    }

    bool IsInSight(int32 index)
    {
        return fList->Bounds().top <= fList->ItemFrame(index).top &&
               fList->ItemFrame(index).bottom <= fList->Bounds().bottom;
    }
};

TEST_F(PaneScrollTest, AnotherFolderStartsAtTheLeftEdgeOfTheColumns)
{
    OpenScrolled(BPoint(300, 0));
    Locked([&] {
        fList->Populate(fTree.Path("shown/folder100").c_str());
        EXPECT_EQ(fList->Bounds().left, 0);
    });
}

TEST_F(PaneScrollTest, CtrlAndThePageKeysScrollSideways)
{
    OpenScrolled(BPoint(0, 0));
    const float width = Locked([this] { return fList->Bounds().Width(); });
    const auto left = [this] {
        return Locked([this] { return fList->Bounds().left; });
    };
    Click(2);
    Type(B_PAGE_DOWN, B_COMMAND_KEY);
    EXPECT_GT(left(), width / 2); // by most of the width
    EXPECT_LT(left(), width);
    Type(B_PAGE_UP, B_COMMAND_KEY);
    EXPECT_EQ(left(), 0);
    Type(B_PAGE_UP, B_COMMAND_KEY); // and no further
    EXPECT_EQ(left(), 0);

    for (int i = 0; i < 9; i++) {
        Type(B_PAGE_DOWN, B_COMMAND_KEY);
    }
    float least = 0;
    float most = 0;
    Locked([&] { fList->ScrollBar(B_HORIZONTAL)->GetRange(&least, &most); });
    EXPECT_GT(most, 0);
    EXPECT_EQ(left(), most);
    EXPECT_EQ(Selected(), "folder101");
    EXPECT_EQ(Locked([this] { return fList->Bounds().top; }), 0);
}

TEST_F(PaneScrollTest, LettersOfAnotherSizeMakeAllRowsHigherAtOnceAndKeepTheTopRow)
{
    Open();
    Preferences preferences;
    Locked([&] {
        const float usual = fList->ItemFrame(1).Height();
        fList->ScrollTo(BPoint(0, fList->ItemFrame(30).top));
        preferences.fontSize = 24;
        fList->Apply(preferences);
        const float large = fList->ItemFrame(1).Height();
        EXPECT_GT(large, usual);
        EXPECT_EQ(fList->ItemFrame(60).top, 60 * (large + 1));
        EXPECT_EQ(fList->Bounds().top, fList->ItemFrame(30).top);
        // The last row can be scrolled to.
        float most = 0;
        float least = 0;
        fList->ScrollBar(B_VERTICAL)->GetRange(&least, &most);
        EXPECT_GE(most + fList->Bounds().Height(), fList->ItemFrame(60).bottom);

        preferences.fontSize = 12;
        fList->Apply(preferences);
        EXPECT_EQ(fList->ItemFrame(1).Height(), usual);
        EXPECT_EQ(fList->Bounds().top, fList->ItemFrame(30).top);
    });
}

TEST_F(PaneScrollTest, DatesAreInTheirNewFormAtOnce)
{
    Open();
    Preferences preferences;
    preferences.dateFormat = "%Y";
    // What is read again comes when the window is free.
    Locked([&] {
        const int32 painted = 1;
        const int32 unseen = 50;
        ASSERT_EQ(std::string(fList->RowAt(painted)->Text(3)).size(), 14u);
        fList->Apply(preferences);
        EXPECT_STREQ(fList->RowAt(0)->Text(3), "--");
        EXPECT_EQ(std::string(fList->RowAt(painted)->Text(3)).size(), 4u);
        EXPECT_EQ(std::string(fList->RowAt(unseen)->Text(3)).size(), 4u);
    });
}

TEST_F(PaneScrollTest, RowsThatComeLaterHaveTheLettersToo)
{
    Open();
    Preferences preferences;
    preferences.fontSize = 24;
    Locked([&] {
        fList->Apply(preferences);
        const float large = fList->ItemFrame(1).Height();
        fList->Populate(fTree.Path().c_str());
        EXPECT_GT(fList->CountItems(), 1);
        EXPECT_EQ(fList->ItemFrame(1).Height(), large);
    });
}

TEST_F(PaneScrollTest, TheSameFolderReadAgainStaysWhereItIsSeen)
{
    OpenScrolled(BPoint(300, 0));
    Locked([&] {
        fList->Refresh();
        EXPECT_EQ(fList->Bounds().left, 300);
    });
}

TEST_F(PaneScrollTest, ATypedLetterBringsItsRowIntoSight)
{
    fTree.MakeFolder("shown/z");
    Open();
    kits::testing::TypeKey('z');
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Selected(), "z");
    Locked([&] { EXPECT_TRUE(IsInSight(fList->CurrentSelection())); });
}

TEST_F(PaneScrollTest, GoingUpBringsTheFolderLeftIntoSight)
{
    Open("shown/folder155");
    Locked([&] {
        fList->NavigateUp();
        EXPECT_EQ(fList->Path(), fTree.Path("shown"));
        EXPECT_TRUE(IsInSight(56));
        EXPECT_STREQ(fList->RowAt(56)->GetEntryName(), "folder155");
        EXPECT_EQ(fList->CurrentSelection(), -1);
        EXPECT_EQ(fList->Bounds().left, 0);
    });
}

TEST_F(PaneScrollTest, GoingUpStaysAtTheTopWhereTheFolderLeftIsSeen)
{
    Open("shown/folder101");
    Locked([&] {
        fList->NavigateUp();
        EXPECT_EQ(fList->Bounds().top, 0);
    });
}

TEST_F(PaneScrollTest, ARenameFieldIsScrolledIntoSight)
{
    OpenScrolled(BPoint(500, 400));
    Locked([&] {
        fList->Select(2);
        fList->DoRename();
        const BView* field = fList->FindView("renamecontainer");
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(fList->Bounds().left, fList->ColumnAt(1)->Begin());
        EXPECT_TRUE(IsInSight(2));
        EXPECT_EQ(field->Frame().top, fList->ItemFrame(2).top);
    });
}

TEST_F(PaneScrollTest, ARenameFieldThatIsSeenMovesNothing)
{
    Open();
    Locked([&] {
        fList->ScrollTo(BPoint(0, 100));
        fList->Select(7);
        fList->DoRename();
        EXPECT_EQ(fList->Bounds().LeftTop(), BPoint(0, 100));
    });
}

TEST_F(PaneScrollTest, LettersOfAnotherSizeKeepTheSelectedRowInSight)
{
    Open();
    Preferences preferences;
    Locked([&] {
        const float step = fList->ItemFrame(1).Height() + 1;
        fList->ScrollTo(BPoint(0, fList->ItemFrame(10).top));
        const int32 seen = static_cast<int32>((fList->Bounds().Height() + 1) / step);
        const int32 chosen = 10 + seen - 1; // the lowest that is seen whole
        fList->Select(chosen);
        EXPECT_LE(fList->ItemFrame(chosen).bottom, fList->Bounds().bottom);
        preferences.fontSize = 24;
        fList->Apply(preferences);
        EXPECT_EQ(fList->CurrentSelection(), chosen);
        EXPECT_GE(fList->ItemFrame(chosen).top, fList->Bounds().top);
        EXPECT_LE(fList->ItemFrame(chosen).bottom, fList->Bounds().bottom);
    });
}

TEST_F(PaneScrollTest, SmallerLettersLeaveNoRoomBelowTheLastRow)
{
    Open();
    Preferences preferences;
    preferences.fontSize = 24;
    Locked([&] {
        fList->Apply(preferences);
        const int32 last = fList->CountItems() - 1;
        fList->Select(last);
        fList->ScrollToSelection();
        EXPECT_LE(fList->ItemFrame(last).bottom, fList->Bounds().bottom);
        preferences.fontSize = 9;
        fList->Apply(preferences);
        EXPECT_LE(fList->ItemFrame(last).bottom, fList->Bounds().bottom);
        EXPECT_GE(fList->ItemFrame(last).top, fList->Bounds().top);
        float least = 0;
        float most = 0;
        fList->ScrollBar(B_VERTICAL)->GetRange(&least, &most);
        EXPECT_LE(fList->Bounds().top, most);
    });
}

} // namespace
