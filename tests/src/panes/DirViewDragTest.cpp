#include "PaneWindowFixture.h"

#include <AppDefs.h>
#include <Entry.h>

#include <memory>

namespace {

using namespace norvane;
using namespace kits::testing;

/// Takes what is dropped on it.
class DropView : public BView
{
public:
    explicit DropView(BRect frame) : BView(frame, "drops", B_FOLLOW_NONE, B_WILL_DRAW) {}
    bool TakesDrops() const override { return true; }
    void MessageReceived(BMessage* message) override
    {
        if (message->WasDropped()) {
            dropped = std::make_unique<BMessage>(*message);
        } else {
            BView::MessageReceived(message);
        }
    }
    std::unique_ptr<BMessage> dropped;
};

/// Entries that are dragged from a pane, over it and onto it.
class DirViewDragTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        fTree.MakeFolder("shown/folder");
        for (const char* name : {"shown/a", "shown/b", "shown/c", "else/new"}) {
            fTree.Write(name, name);
        }
    }

    void TearDown() override
    {
        if (fOther != nullptr && fOther->Lock()) {
            fOther->Quit();
        }
        PaneWindowFixture::TearDown();
    }

    void OpenWithOther()
    {
        fOther = new BWindow(BRect(650, 100, 749, 199), "other", B_TITLED_WINDOW, 0);
        fTarget = new DropView(BRect(0, 0, 99, 99));
        fOther->AddChild(fTarget); // adopted
        fOther->Show();
        ASSERT_TRUE(WaitForDropAreas(fOther, 1));
        OpenShown();
    }

    void OpenShown()
    {
        Open();
        ASSERT_TRUE(WaitForDropAreas(fWindow, 1));
    }

    // Presses a row and moves until it is dragged, if it is.
    bool Begin(int32 row, uint32 button = B_PRIMARY_MOUSE_BUTTON, bigtime_t limit = kLimit)
    {
        const BPoint where = NameCell(row);
        PressMouse(fList, where, button);
        MoveMouse(fList, where + BPoint(9, 9));
        Sync(fWindow);
        MoveMouse(fList, where + BPoint(12, 0));
        return WaitForDrag(true, limit);
    }

    void DropThere(BView* view, BPoint where, uint32 modifiers = 0)
    {
        MoveMouse(view, where, modifiers);
        ReleaseMouse(view, where, B_PRIMARY_MOUSE_BUTTON, modifiers);
        ASSERT_TRUE(WaitForDrag(false));
        SyncServer();
        ASSERT_TRUE(Sync(view->Window()));
    }

    // What arrived at the other window: names, and some of the fields.
    std::string Arrived(const char* field)
    {
        const BAutolock lock(fOther);
        return fTarget->dropped == nullptr ? "(nothing)" : fTarget->dropped->GetString(field, "");
    }
    std::string ArrivedNames()
    {
        const BAutolock lock(fOther);
        std::string names;
        entry_ref ref;
        for (int32 i = 0;
             fTarget->dropped != nullptr && fTarget->dropped->FindRef("refs", i, &ref) == B_OK;
             i++) {
            names += std::string(ref.name) + " ";
        }
        return names;
    }

    int32 FramePixels()
    {
        const Picture picture = TakePicture(fWindow);
        return picture.Count(rgb_color{75, 96, 154, 255}, 0, picture.height / 8, picture.width,
                             picture.height);
    }

    std::string AddressOf(const char* name) { return "file://" + fTree.Path(name) + "\r\n"; }

    BWindow* fOther = nullptr; // deletes itself
    DropView* fTarget = nullptr;
};

TEST_F(DirViewDragTest, DragsTheRowAlone)
{
    OpenWithOther();
    Click(4);
    ASSERT_TRUE(Begin(3));
    DropThere(fTarget, BPoint(50, 50));

    EXPECT_EQ(ArrivedNames(), "b ");
    EXPECT_EQ(Arrived("Dragging"), "true");
    EXPECT_EQ(Arrived("TypeOfCopy"), "Copy");
    EXPECT_EQ(Arrived("From"), fTree.Path("shown"));
    EXPECT_EQ(Marked(), "");
}

TEST_F(DirViewDragTest, DragsTheMarksAndKeepsThem)
{
    OpenWithOther();
    Click(2, B_COMMAND_KEY);
    Click(4, B_COMMAND_KEY);
    ASSERT_TRUE(Begin(3, B_SECONDARY_MOUSE_BUTTON));
    MoveMouse(fTarget, BPoint(50, 50));
    ReleaseMouse(fTarget, BPoint(50, 50), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(WaitForDrag(false));
    SyncServer();
    ASSERT_TRUE(Sync(fOther));

    EXPECT_EQ(ArrivedNames(), "a c ");
    EXPECT_EQ(Marked(), "a c ");
}

TEST_F(DirViewDragTest, TheParentRowIsNotDragged)
{
    OpenShown();
    EXPECT_FALSE(Begin(0, B_PRIMARY_MOUSE_BUTTON, 50'000));
    ReleaseMouse(fList, NameCell(0));
}

TEST_F(DirViewDragTest, AClickInPlaceOfTheSecondButtonClearsNoMarks)
{
    OpenShown();
    Click(2, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    kits::testing::Click(fList, NameCell(4), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(Sync(fWindow));
    kits::testing::TypeKey(B_ESCAPE); // the menu
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(Marked(), "a b ");

    Click(4);
    EXPECT_EQ(Marked(), "");
}

TEST_F(DirViewDragTest, TheSecondButtonSelectsOnlyWhatIsNeitherMarkedNorSelected)
{
    OpenShown();
    Click(2, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    kits::testing::Click(fList, NameCell(2), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(Sync(fWindow));
    kits::testing::TypeKey(B_ESCAPE); // the menu
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(Selected(), "b");

    kits::testing::Click(fList, NameCell(4), B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(Sync(fWindow));
    kits::testing::TypeKey(B_ESCAPE); // the menu
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(Selected(), "c");
}

TEST_F(DirViewDragTest, AFoldersRowTakesWhatIsDroppedOnIt)
{
    OpenShown();
    ASSERT_TRUE(Begin(3));
    DropThere(fList, NameCell(1));

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("shown/folder/b") == "shown/b"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
    EXPECT_TRUE(fTree.Exists("shown/b"));
}

TEST_F(DirViewDragTest, WithShiftItIsMoved)
{
    OpenShown();
    ASSERT_TRUE(Begin(3));
    DropThere(fList, NameCell(1), B_SHIFT_KEY);

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("shown/folder/b") == "shown/b"; }));
    EXPECT_TRUE(WaitFor([&] { return !fTree.Exists("shown/b"); }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(DirViewDragTest, ARowDroppedOnItselfOrInItsFolderIsLeftAlone)
{
    OpenShown();
    ASSERT_TRUE(Begin(1));
    DropThere(fList, NameCell(1) + BPoint(14, 0));
    ASSERT_TRUE(Begin(2));
    DropThere(fList, NameCell(3));

    EXPECT_EQ(CountShown("Copy"), 0);
    EXPECT_EQ(fTree.List("shown"), "a\nb\nc\nfolder\n");
    EXPECT_EQ(fTree.List("shown/folder"), "");
}

TEST_F(DirViewDragTest, FilesOfOtherProgramsAreCopied)
{
    OpenShown();
    const std::string list = AddressOf("else/new");
    EXPECT_EQ(DropForeign(fList, NameCell(3), list.c_str()), uint32{kMayCopy});

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("shown/new") == "else/new"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
    EXPECT_TRUE(fTree.Exists("else/new"));
}

TEST_F(DirViewDragTest, FilesOfOtherProgramsAreMovedIntoAFoldersRow)
{
    OpenShown();
    const std::string list = AddressOf("else/new");
    DropForeign(fList, NameCell(1), list.c_str(), kMayCopy | kMayMove, B_SHIFT_KEY);

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("shown/folder/new") == "else/new"; }));
    EXPECT_TRUE(WaitFor([&] { return !fTree.Exists("else/new"); }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(DirViewDragTest, TheRowThatWouldTakeThemIsFramed)
{
    OpenShown();
    const std::string list = AddressOf("else/new");
    const int32 before = FramePixels();

    DragForeign(fList, NameCell(1), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return FramePixels() > before; }));
    DragForeign(fList, NameCell(2), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return FramePixels() == before; }));

    DragForeign(fList, NameCell(1), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return FramePixels() > before; }));
    LeaveForeign(fList);
    EXPECT_TRUE(WaitFor([&] { return FramePixels() == before; }));
}

TEST_F(DirViewDragTest, TheFramedRowMayGo)
{
    OpenShown();
    const std::string list = AddressOf("else/new");
    const int32 before = FramePixels();
    DragForeign(fList, NameCell(1), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return FramePixels() > before; }));

    fTree.Remove("shown/folder");

    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. a b c "));
    EXPECT_TRUE(WaitFor([&] { return FramePixels() == before; }));
    LeaveForeign(fList);
}

TEST_F(DirViewDragTest, ScrollsNearItsEdges)
{
    for (int i = 0; i < 100; i++) {
        fTree.Write("shown/x" + std::to_string(i), "");
    }
    OpenShown();
    const std::string list = AddressOf("else/new");
    const auto top = [this] {
        return Locked([this] { return fList->Bounds().top; });
    };
    const BRect seen = Locked([this] { return fList->Bounds(); });

    DragForeign(fList, BPoint(60, seen.bottom - 5), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return top() > 200; }));
    LeaveForeign(fList);
    ASSERT_TRUE(WaitFor([&] {
        const float now = top();
        snooze(120'000);
        return top() == now;
    }));

    const float now = top();
    DragForeign(fList, BPoint(60, now + 5), list.c_str());
    EXPECT_TRUE(WaitFor([&] { return top() == 0; }));
    LeaveForeign(fList);
}

TEST_F(DirViewDragTest, QueryResultsRefuseADropInWords)
{
    OpenShown();
    fWindow->RunHere([this] {
        BMessage results('resu');
        results.AddString("QueryString", "name=*");
        fList->Populate(&results);
    });
    ASSERT_TRUE(Sync(fWindow));
    const std::string list = AddressOf("else/new");
    DropForeign(fList, BPoint(60, 40), list.c_str());

    std::string text;
    EXPECT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "This view contains Query Results. You cannot copy or move to it.");
}

} // namespace
