#include "PaneWindowFixture.h"

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

} // namespace
