#include "PaneWindowFixture.h"
#include "clv/CLVColumnLabelView.h"
#include "settings/HomeFolder.h"

#include <StatusBar.h>

#include <cstdio>

#include <filesystem>

namespace {

using namespace norvane;
using kits::testing::SyncServer;
using kits::testing::WaitFor;

class PaneWindowTest : public PaneWindowFixture
{
protected:
    void Fill()
    {
        for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
            fTree.Write(name, "12");
        }
        fTree.MakeFolder("shown/folder");
    }

    void ClickStrip(float x, uint32 modifiers = 0)
    {
        kits::testing::Click(fList->HeaderStrip(), BPoint(x, 8), B_PRIMARY_MOUSE_BUTTON, 1,
                             modifiers);
        SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    int Mode(int32 column)
    {
        return Locked([&] { return static_cast<int>(fList->ColumnAt(column)->SortMode()); });
    }
};

TEST_F(PaneWindowTest, ShowsItsFolderInHeaderAndFooter)
{
    Fill();
    Open();
    EXPECT_EQ(Names(), ".. folder a b c ");
    EXPECT_EQ(Locked([this] { return fPane->Header()->Text(); }), fTree.Path("shown"));
    EXPECT_TRUE(Becomes([this] { return Footer(); }, "0 of 0k in 0 of 3 files selected"));
    EXPECT_TRUE(Locked([this] { return fPane->Header()->IsSelected(); }));
    EXPECT_TRUE(Locked([this] { return fPane->GotFocus(); }));
}

TEST_F(PaneWindowTest, ShowsTheHomeFolderWhenItsOwnCannotBeRead)
{
    Open("missing");
    EXPECT_EQ(Locked([this] { return fList->UnreadableFolder(); }), fTree.Path("missing"));
    EXPECT_EQ(Locked([this] { return fList->Path(); }), HomeFolder());
}

TEST_F(PaneWindowTest, TellsWhyAFolderCannotBeListed)
{
    fTree.Write("shown/file", "");
    Open();
    const std::string path = fTree.Path("shown/file");
    fWindow->RunHere([&] { fList->Populate(path.c_str()); });
    std::string text;
    EXPECT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "The directory, " + path + ", is not valid.\nThe volume may not be mounted.");
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Names(), ".. file ");
}

TEST_F(PaneWindowTest, WalksByArrowsAndEntersByEnter)
{
    Fill();
    Open();
    Type(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), "..");
    Type(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), "folder");
    Type(B_ENTER);
    EXPECT_EQ(Locked([this] { return fList->Path(); }), fTree.Path("shown/folder"));
    Type(B_BACKSPACE);
    EXPECT_EQ(Locked([this] { return fList->Path(); }), fTree.Path("shown"));
    Type(B_END);
    EXPECT_EQ(Selected(), "c");
    Type(B_HOME);
    EXPECT_EQ(Selected(), "..");
}

TEST_F(PaneWindowTest, EntersByDoubleClick)
{
    Fill();
    Open();
    Click(1, 0, 2);
    EXPECT_EQ(Locked([this] { return fList->Path(); }), fTree.Path("shown/folder"));
}

TEST_F(PaneWindowTest, SelectsByTypedLettersButNotWithCommand)
{
    Fill();
    Open();
    Type('b');
    EXPECT_EQ(Selected(), "b");
    Type('c', B_COMMAND_KEY);
    EXPECT_EQ(Selected(), "b");
}

TEST_F(PaneWindowTest, SendsTheSelectedEntryToBeCopied)
{
    Fill();
    Open();
    Type('b');
    kits::testing::TypeFunctionKey(B_F5_KEY);
    ASSERT_TRUE(WaitFor([this] { return !fWindow->Received().empty(); }));
    BMessage message = fWindow->Received().front();
    entry_ref ref;
    ASSERT_EQ(message.FindRef("refs", &ref), B_OK);
    EXPECT_STREQ(ref.name, "b");
    const char* value = nullptr;
    EXPECT_EQ(message.FindString("Dragging", &value), B_OK);
    EXPECT_STREQ(value, "false");
    EXPECT_EQ(message.FindString("Direction", &value), B_OK);
    EXPECT_STREQ(value, "Right");
    EXPECT_EQ(message.FindString("TypeOfCopy", &value), B_OK);
    EXPECT_STREQ(value, "Copy");
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneWindowTest, CopiesNothingFromTheParentRow)
{
    Fill();
    Open();
    Type(B_HOME);
    kits::testing::TypeFunctionKey(B_F5_KEY);
    kits::testing::TypeFunctionKey(B_F1_KEY);
    ASSERT_TRUE(WaitFor([this] { return !fWindow->Received().empty(); }));
    EXPECT_EQ(fWindow->Received().front().what, 140u); // help came, and nothing before it
}

TEST_F(PaneWindowTest, StartsOneCopyWhileTheKeyIsHeld)
{
    Fill();
    Open();
    Type('b');
    kits::testing::PressFunctionKey(B_F5_KEY);
    kits::testing::PressFunctionKey(B_F5_KEY);
    kits::testing::PressFunctionKey(B_F5_KEY);
    kits::testing::ReleaseFunctionKey(B_F5_KEY);
    kits::testing::TypeFunctionKey(B_F1_KEY);
    ASSERT_TRUE(WaitFor([this] {
        const std::vector<BMessage> received = fWindow->Received();
        return !received.empty() && received.back().what == 140;
    }));
    EXPECT_EQ(fWindow->Received().size(), 2u);
}

TEST_F(PaneWindowTest, MarksByClicks)
{
    Fill();
    Open();
    Click(2);
    EXPECT_EQ(Selected(), "a");
    Click(4, B_COMMAND_KEY);
    EXPECT_EQ(Marked(), "a c ");
    Click(4, B_COMMAND_KEY);
    EXPECT_EQ(Marked(), "a ");
    Click(1);
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneWindowTest, MarksARangeByShift)
{
    Fill();
    Open();
    Click(4);
    Click(2, B_SHIFT_KEY);
    EXPECT_EQ(Marked(), "a b c ");
}

TEST_F(PaneWindowTest, KeepsMarksWhenAPressIsDraggedAway)
{
    Fill();
    Open();
    Click(2);
    Click(3, B_COMMAND_KEY);
    const BPoint from = NameCell(2);
    kits::testing::Drag(fList, from, from + BPoint(40, 0));
    SyncServer();
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Marked(), "a b ");
}

TEST_F(PaneWindowTest, FollowsItsFolder)
{
    Fill();
    Open();
    fTree.Write("shown/aa", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. folder a aa b c "));
    fTree.Write("shown/b", std::string(5000, 'x'));
    EXPECT_TRUE(Becomes([this] { return Text("b", 2); }, "4 K"));
    fTree.Remove("shown/a");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. folder aa b c "));
    EXPECT_TRUE(Becomes([this] { return Footer(); }, "0 of 4k in 0 of 3 files selected"));
}

TEST_F(PaneWindowTest, FollowsARenamedEntryInPlace)
{
    Fill();
    Open();
    ASSERT_EQ(rename(fTree.Path("shown/a").c_str(), fTree.Path("shown/z").c_str()), 0);
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. folder z b c "));
}

TEST_F(PaneWindowTest, FollowsTheFolderItWentTo)
{
    Fill();
    Open();
    Locked([this] { return fList->Populate(fTree.Path("shown/folder").c_str()); });
    fTree.Write("shown/late", "");
    fTree.Write("shown/folder/new", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. new "));
}

TEST_F(PaneWindowTest, FollowsABurst)
{
    Open();
    std::string expected = ".. ";
    for (int i = 1000; i < 3000; i++) {
        fTree.Write("shown/" + std::to_string(i), "");
        expected += std::to_string(i) + " ";
    }
    EXPECT_TRUE(Becomes([this] { return Names(); }, expected));
}

TEST_F(PaneWindowTest, AFolderThatIsMadeAgainIsShownAgain)
{
    fTree.Write("shown/old", "");
    Open();
    fTree.Remove("shown");
    EXPECT_TRUE(Becomes([this] { return Locked([this] { return fList->GetFiles(); }); },
                        "This folder was removed"));
    EXPECT_EQ(Names(), ".. ");
    fTree.Write("shown/new", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. new "));
    fTree.Write("shown/newer", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. new newer "));
    EXPECT_NE(Locked([this] { return fList->GetFiles(); }), "This folder was removed");
}

TEST_F(PaneWindowTest, FollowsItsFolderToAnotherPlace)
{
    for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
        fTree.Write(name, "");
    }
    Open();
    Click(1, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    const auto header = [this] {
        return Locked([this] { return fList->HeaderText(); });
    };
    fTree.MakeFolder("deep");
    std::filesystem::rename(fTree.Path("shown"), fTree.Path("deep/elsewhere"));

    EXPECT_TRUE(Becomes(header, fTree.Path("deep/elsewhere")));
    EXPECT_EQ(Names(), ".. a b c ");
    EXPECT_EQ(Marked(), "a c ");
    EXPECT_EQ(Selected(), "c");
    fTree.Write("deep/elsewhere/d", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. a b c d "));
}

// Nobody tells of a folder above the one shown, so it is looked for when the window is activated.
TEST_F(PaneWindowTest, AFolderAboveThatWasRenamedShowsAtTheNextActivation)
{
    fTree.Write("above/shown/a", "");
    Open();
    Locked([this] { fList->SetPath(fTree.Path("above/shown").c_str()); });
    const auto header = [this] {
        return Locked([this] { return fList->HeaderText(); });
    };
    ASSERT_TRUE(Becomes(header, fTree.Path("above/shown")));
    std::filesystem::rename(fTree.Path("above"), fTree.Path("higher"));
    Locked([this] { fList->WindowActivated(true); });

    EXPECT_TRUE(Becomes(header, fTree.Path("higher/shown")));
    fTree.Write("higher/shown/b", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. a b "));
}

TEST_F(PaneWindowTest, APathThroughALinkStaysWhileItLeadsThere)
{
    fTree.Write("above/shown/a", "");
    fTree.Write("other/shown/x", "");
    fTree.Link("link", fTree.Path("above"));
    Open();
    Locked([this] { fList->SetPath(fTree.Path("link/shown").c_str()); });
    const auto header = [this] {
        return Locked([this] { return fList->HeaderText(); });
    };
    ASSERT_TRUE(Becomes(header, fTree.Path("link/shown")));
    Locked([this] { fList->WindowActivated(true); });
    Locked([this] { fList->WindowActivated(true); }); // asks once more when the first was answered
    EXPECT_FALSE(
        kits::testing::WaitFor([&] { return header() != fTree.Path("link/shown"); }, 200000));
    std::filesystem::remove(fTree.Path("link"));
    fTree.Link("link", fTree.Path("other"));
    Locked([this] { fList->WindowActivated(true); });

    EXPECT_TRUE(Becomes(header, fTree.Path("above/shown")));
    EXPECT_EQ(Names(), ".. a ");
}

TEST_F(PaneWindowTest, ALinkInItsFoldersPlaceIsAnotherFolder)
{
    fTree.Write("shown/a", "");
    fTree.Write("other/x", "");
    Open();
    std::filesystem::rename(fTree.Path("shown"), fTree.Path("moved"));
    fTree.Link("shown", "other");

    EXPECT_TRUE(Becomes([this] { return Locked([this] { return fList->HeaderText(); }); },
                        fTree.Path("moved")));
    EXPECT_EQ(Names(), ".. a ");
}

TEST_F(PaneWindowTest, AFolderThatIsMeasuredHasASignUntilThen)
{
    fTree.MakeFolder("shown/a");
    fTree.Write("shown/b/inside", std::string(3000, 'x'));
    Open();
    Locked([this] {
        fList->Select(1);
        fList->GetSize();
        EXPECT_STREQ(fList->RowAt(1)->Text(2), "..."); // the answer waits for the window
        fList->Select(2);
        fList->GetSize(); // one at a time
        EXPECT_STREQ(fList->RowAt(1)->Text(2), "[Directory]");
        EXPECT_STREQ(fList->RowAt(2)->Text(2), "...");
        return 0;
    });
    EXPECT_TRUE(Becomes([this] { return Text("b", 2); }, "2 K"));
}

TEST_F(PaneWindowTest, ARenamedFolderLosesTheSignToo)
{
    fTree.MakeFolder("shown/a");
    Open();
    Locked([this] {
        fList->Select(1);
        fList->GetSize();
        EXPECT_STREQ(fList->RowAt(1)->Text(2), "...");
        // Its row has the new name when the answer comes.
        std::rename(fTree.Path("shown/a").c_str(), fTree.Path("shown/c").c_str());
        const entry_ref before = *fList->RowAt(1)->GetRef();
        entry_ref after(before.device, before.directory, "c");
        fList->UpdateEntry(&after, &before);
        return 0;
    });
    EXPECT_TRUE(Becomes([this] { return Text("c", 2); }, "[Directory]"));
}

TEST_F(PaneWindowTest, MeasuresAFolder)
{
    fTree.Write("shown/folder/a", std::string(3000, 'x'));
    fTree.Write("shown/folder/deep/b", std::string(3000, 'x'));
    Open();
    Type('f');
    Type(B_SPACE);
    EXPECT_TRUE(Becomes([this] { return Text("folder", 2); }, "5 K"));
    EXPECT_EQ(Marked(), "folder ");
}

TEST_F(PaneWindowTest, TellsColumnWidthsButNotThoseItIsGiven)
{
    Open();
    Locked([this] {
        fList->SetColumnWidth(2, 90);
        fList->ColumnAt(1)->SetWidth(150.4f);
        return 0;
    });
    ASSERT_TRUE(WaitFor([this] { return !fWindow->Received().empty(); }));
    const std::vector<BMessage> received = fWindow->Received();
    ASSERT_EQ(received.size(), 1u);
    const char* value = nullptr;
    EXPECT_EQ(received[0].FindString("ColumnIndex", &value), B_OK);
    EXPECT_STREQ(value, "1");
    EXPECT_EQ(received[0].FindString("ColumnWidth", &value), B_OK);
    EXPECT_STREQ(value, "150");
}

TEST_F(PaneWindowTest, ResizesAColumnByItsEdge)
{
    Open();
    CLVColumnLabelView* strip = fList->HeaderStrip();
    kits::testing::Drag(strip, BPoint(129, 8), BPoint(169, 8));
    EXPECT_TRUE(
        WaitFor([this] { return Locked([this] { return fList->ColumnWidth(1); }) == 148; }));
    kits::testing::Drag(strip, BPoint(169, 8), BPoint(5, 8));
    EXPECT_TRUE(WaitFor([this] { return Locked([this] { return fList->ColumnWidth(1); }) == 20; }));
}

TEST_F(PaneWindowTest, CyclesASortKeyByClicks)
{
    Fill();
    Open();
    ClickStrip(60);
    EXPECT_EQ(Mode(1), Ascending);
    ClickStrip(60);
    EXPECT_EQ(Mode(1), Descending);
    ClickStrip(60);
    EXPECT_EQ(Mode(1), NoSort);
    ClickStrip(60);
    EXPECT_EQ(Mode(1), Ascending);
    EXPECT_EQ(Names(), ".. folder a b c "); // the order stays the listing's
}

TEST_F(PaneWindowTest, ShiftCyclesAFurtherSortKey)
{
    Fill();
    Open();
    ClickStrip(60);
    ClickStrip(160, B_SHIFT_KEY);
    EXPECT_EQ(Mode(1), Ascending);
    EXPECT_EQ(Mode(2), Ascending);
    ClickStrip(60, B_SHIFT_KEY);
    EXPECT_EQ(Mode(1), Descending);
    ClickStrip(60, B_SHIFT_KEY);
    EXPECT_EQ(Mode(1), NoSort);
    EXPECT_EQ(Mode(2), Ascending);
}

TEST_F(PaneWindowTest, TakesTheFocusByHeaderAndFooter)
{
    Fill();
    Open();
    for (BView* strip :
         {static_cast<BView*>(fPane->Header()), static_cast<BView*>(fPane->Footer())}) {
        Locked([this] {
            fList->MakeFocus(false);
            return 0;
        });
        EXPECT_FALSE(Locked([this] { return fPane->Header()->IsSelected(); }));
        kits::testing::Click(strip);
        SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
        EXPECT_TRUE(Locked([this] { return fPane->GotFocus(); }));
        EXPECT_TRUE(Locked([this] { return fPane->Header()->IsSelected(); }));
    }
}

TEST_F(PaneWindowTest, AttachesTheBarWhileProgressRuns)
{
    Open();
    NorvFtr* footer = fPane->Footer();
    BMessenger pane(fPane);
    pane.SendMessage(MSG_PROGRESS_START);
    BMessage max(MSG_PROGRESS_MAX);
    max.AddInt32("maxvalue", 40);
    pane.SendMessage(&max);
    pane.SendMessage(MSG_PROGRESS_STEP);
    BMessage steps(MSG_PROGRESS_STEP);
    steps.AddInt32("steps", 9);
    pane.SendMessage(&steps);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Locked([&] { return footer->Bar()->Parent(); }), footer);
    EXPECT_EQ(Locked([&] { return footer->Bar()->CurrentValue(); }), 10);
    EXPECT_EQ(Locked([&] { return footer->Bar()->MaxValue(); }), 40);
    pane.SendMessage(MSG_PROGRESS_STOP);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Locked([&] { return footer->Bar()->Parent(); }), nullptr);
}

TEST_F(PaneWindowTest, GivesHiddenStripsRoomToTheList)
{
    Fill();
    Open();
    const float before = Locked([this] { return fList->Frame().Height(); });
    Locked([this] {
        fList->SetHeaderFlag(false);
        fList->SetFooterFlag(false);
        fPane->ShowStrips();
        return 0;
    });
    EXPECT_EQ(Locked([this] { return fList->Frame().Height(); }), before + 49);
    EXPECT_TRUE(Locked([this] { return fPane->Header()->IsHidden(); }));
    Locked([this] {
        fList->SetHeaderFlag(true);
        fList->SetFooterFlag(true);
        fPane->ShowStrips();
        return 0;
    });
    EXPECT_EQ(Locked([this] { return fList->Frame().Height(); }), before);
    EXPECT_FALSE(Locked([this] { return fPane->Header()->IsHidden(); }));
}

TEST_F(PaneWindowTest, RefusesEntriesDroppedOnQueryResults)
{
    Open();
    BMessage results(601);
    Locked([&] { return fList->Populate(&results); });
    BMessage dropped(kLocalEntries);
    fWindow->PostMessage(&dropped, fList);
    std::string text;
    EXPECT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "This view contains Query Results. You cannot copy or move to it.");
}

TEST_F(PaneWindowTest, CopiesDroppedEntries)
{
    fTree.Write("other/file", "contents");
    Open();
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("other/file").c_str(), &ref), B_OK);
    BMessage dropped(kLocalEntries);
    dropped.AddRef("refs", &ref);
    dropped.AddString("From", fTree.Path("other").c_str());
    fWindow->PostMessage(&dropped, fList);
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. file "));
    EXPECT_TRUE(WaitFor([this] { return fTree.Read("shown/file") == "contents"; }));
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Copy"));
}

} // namespace
