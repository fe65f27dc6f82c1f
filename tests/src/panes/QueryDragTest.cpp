#include "PaneWindowFixture.h"

#include <Entry.h>

#include <string>
#include <vector>

namespace {

using namespace norvane;
using namespace kits::testing;

/// A pane with the hits of a query, and one with a folder in a window beside it.
class QueryDragTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"found/one", "found/three", "found/two", "beside/own"}) {
            fTree.Write(name, name);
        }
        fTree.MakeFolder("found/zfolder");
        OpenBeside();
        Open();
        ASSERT_TRUE(WaitForDropAreas(fWindow, 1));
    }

    void TearDown() override
    {
        if (fBeside != nullptr && fBeside->Lock()) {
            fBeside->Quit();
        }
        PaneWindowFixture::TearDown();
    }

    void OpenBeside()
    {
        const BRect frame(610, 100, 789, 499);
        fBeside = new PaneWindow(frame);
        auto* pane = new DirPane(frame.OffsetToCopy(0, 0), fTree.Path("beside").c_str(), "pane2",
                                 "2"); // adopted
        fBeside->AddChild(pane);
        fBesideList = pane->GetDirView();
        pane->ResizeTo(frame.Width(), frame.Height());
        fBeside->Show();
        ASSERT_TRUE(WaitForDropAreas(fBeside, 1));
    }

    void ShowHits(const std::vector<std::string>& hits)
    {
        BMessage results('resu');
        results.AddString("QueryString", "(name==*)");
        std::string expected;
        for (const std::string& hit : hits) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(hit).c_str(), &ref), B_OK);
            results.AddRef("hits", &ref);
            expected += fTree.Path(hit) + " ";
        }
        fWindow->RunHere([this, &results] { fList->Populate(&results); });
        ASSERT_TRUE(Becomes([this] { return Names(); }, expected));
    }

    // Presses a row and moves until it is dragged, if it is.
    bool Begin(DirView* list, int32 row, bigtime_t limit = kLimit)
    {
        const BPoint where = NameCell(row); // rows are as high in both
        PressMouse(list, where);
        MoveMouse(list, where + BPoint(9, 9));
        Sync(list->Window());
        MoveMouse(list, where + BPoint(12, 0));
        return WaitForDrag(true, limit);
    }

    void Drop(DirView* list, BPoint where, uint32 modifiers = 0)
    {
        MoveMouse(list, where, modifiers);
        ReleaseMouse(list, where, B_PRIMARY_MOUSE_BUTTON, modifiers);
        ASSERT_TRUE(WaitForDrag(false));
    }

    void ExpectRefusal()
    {
        std::string text;
        EXPECT_TRUE(AnswerAlert("OK", &text));
        EXPECT_EQ(text, "This view contains Query Results. You cannot copy or move to it.");
        EXPECT_EQ(CountShown("Copy"), 0);
        EXPECT_EQ(fTree.List("found"), "one\nthree\ntwo\nzfolder\n");
        EXPECT_EQ(fTree.List("found/zfolder"), "");
        EXPECT_EQ(fTree.List("shown"), "");
    }

    PaneWindow* fBeside = nullptr;  // deletes itself
    DirView* fBesideList = nullptr; // the window's
};

TEST_F(QueryDragTest, AHitIsCopiedIntoTheFolderThatItIsDroppedOn)
{
    ShowHits({"found/one", "found/three", "found/two"});
    ASSERT_TRUE(Begin(fList, 1));
    Drop(fBesideList, NameCell(1));

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("beside/three") == "found/three"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
    EXPECT_EQ(fTree.List("beside"), "own\nthree\n");
    EXPECT_EQ(fTree.List("found"), "one\nthree\ntwo\nzfolder\n");
}

TEST_F(QueryDragTest, WithShiftAHitIsMoved)
{
    ShowHits({"found/one", "found/three", "found/two"});
    ASSERT_TRUE(Begin(fList, 2));
    Drop(fBesideList, NameCell(1), B_SHIFT_KEY);

    EXPECT_TRUE(WaitFor([&] { return fTree.Read("beside/two") == "found/two"; }));
    EXPECT_TRUE(WaitFor([&] { return !fTree.Exists("found/two"); }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

// Where a folder's list has "..", and no drag begins.
TEST_F(QueryDragTest, TheFirstHitStays)
{
    ShowHits({"found/one", "found/three"});
    EXPECT_FALSE(Begin(fList, 0, 50'000));
    ReleaseMouse(fList, NameCell(0));
}

TEST_F(QueryDragTest, MarkedHitsAreDraggedTogether)
{
    ShowHits({"found/one", "found/three", "found/two"});
    Click(1, B_COMMAND_KEY);
    Click(2, B_COMMAND_KEY);
    ASSERT_TRUE(Begin(fList, 2));
    Drop(fBesideList, NameCell(1));

    EXPECT_TRUE(WaitFor([&] { return fTree.List("beside") == "own\nthree\ntwo\n"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(QueryDragTest, AFilesHitRefusesRowsOfAnotherPane)
{
    ShowHits({"found/one", "found/three"});
    ASSERT_TRUE(Begin(fBesideList, 1));
    Drop(fList, NameCell(1));
    ExpectRefusal();
}

TEST_F(QueryDragTest, AFoldersHitRefusesRowsOfAnotherPane)
{
    ShowHits({"found/zfolder", "found/one"});
    ASSERT_TRUE(Begin(fBesideList, 1));
    Drop(fList, NameCell(0));
    ExpectRefusal();
}

TEST_F(QueryDragTest, TheRoomBelowTheHitsRefusesRowsOfAnotherPane)
{
    ShowHits({"found/one", "found/three"});
    ASSERT_TRUE(Begin(fBesideList, 1));
    Drop(fList, NameCell(1) + BPoint(0, 200));
    ExpectRefusal();
}

} // namespace
