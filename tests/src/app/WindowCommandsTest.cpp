#include "app/MenuTable.h"
#include "app/NorvaneWindow.h"

#include "AlertText.h"
#include "AppFixture.h"
#include "fileops/windows/OverWin.h"
#include "settings/HomeFolder.h"

#include <AppDefs.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <NodeMonitor.h>
#include <StorageDefs.h>
#include <fs_info.h>

namespace norvane {

using kits::testing::WaitFor;

/// What the main window does when it is told to.
class WindowCommandsTest : public AppFixture
{
protected:
    void OpenThree()
    {
        fTree.MakeFolder("one/inside");
        fTree.MakeFolder("three/inside");
        fTree.Write("one/file", "1");
        WritePanes({"one", "two", "three"});
        Open();
    }
};

TEST_F(WindowCommandsTest, AddsAPaneOnTheHomeFolderWithTheFocus)
{
    OpenThree();
    Send(kAddPane);
    ASSERT_EQ(CountPanes(), 4);
    EXPECT_EQ(PanePath(3), HomeFolder());
    EXPECT_EQ(FocusedPane(), 3);
}

TEST_F(WindowCommandsTest, RemovingAPaneTakesTheLastOnesFolderOver)
{
    OpenThree();
    Send(kRemovePane);
    ASSERT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), fTree.Path("three"));
    EXPECT_EQ(PanePath(1), fTree.Path("two"));
    EXPECT_EQ(FocusedPane(), 0);
}

TEST_F(WindowCommandsTest, RemovingTheLastPaneFocusesTheNewLastOne)
{
    OpenThree();
    Focus(2);
    Send(kRemovePane);
    EXPECT_EQ(CountPanes(), 2);
    EXPECT_EQ(FocusedPane(), 1);
}

TEST_F(WindowCommandsTest, AFolderOfALongPathIsTakenOverToo)
{
    std::string folder = "one";
    while (fTree.Path(folder).size() < B_PATH_NAME_LENGTH) {
        folder += "/" + std::string(200, 'b');
    }
    fTree.MakeFolder(folder);
    Open({fTree.Path("two"), fTree.Path(folder)});
    Send(kRemovePane);
    ASSERT_EQ(CountPanes(), 1);
    EXPECT_EQ(PanePath(0), fTree.Path(folder));
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
}

TEST_F(WindowCommandsTest, TheOnlyPaneMayGo)
{
    WritePanes({"one"});
    Open();
    Send(kRemovePane);
    EXPECT_EQ(CountPanes(), 0);
    Send(kRemovePane);
    Send(kOpenInLeftPane);
    Send(kUpALevel);
    EXPECT_EQ(CountPanes(), 0);
}

TEST_F(WindowCommandsTest, RevertsToTwoPanesOnTheHomeFolder)
{
    OpenThree();
    Send(kRevertToDefault);
    ASSERT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), HomeFolder());
    EXPECT_EQ(FocusedPane(), 0);
}

TEST_F(WindowCommandsTest, OpensInTheLeftPaneAroundTheCorner)
{
    OpenThree();
    Select(0, "inside");
    Send(kOpenInLeftPane);
    EXPECT_EQ(PanePath(2), fTree.Path("one/inside"));
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
}

TEST_F(WindowCommandsTest, OpensInTheRightPaneAroundTheCorner)
{
    OpenThree();
    Focus(2);
    Select(2, "inside");
    Send(kOpenInRightPane);
    EXPECT_EQ(PanePath(0), fTree.Path("three/inside"));
}

TEST_F(WindowCommandsTest, AFileOpensNothingToTheLeftAndItsFolderToTheRight)
{
    OpenThree();
    Select(0, "file");
    Send(kOpenInLeftPane);
    EXPECT_EQ(PanePath(2), fTree.Path("three"));
    Send(kOpenInRightPane);
    EXPECT_EQ(PanePath(1), fTree.Path("one"));
}

TEST_F(WindowCommandsTest, WithoutASelectionNothingOpensBeside)
{
    OpenThree();
    Send(kOpenInLeftPane);
    Send(kOpenInRightPane);
    EXPECT_EQ(PanePath(1), fTree.Path("two"));
    EXPECT_EQ(PanePath(2), fTree.Path("three"));
}

TEST_F(WindowCommandsTest, OpensAFolderAndGoesUpAndDown)
{
    OpenThree();
    Select(0, "inside");
    Send(kOpen);
    EXPECT_EQ(PanePath(0), fTree.Path("one/inside"));
    Send(kUpALevel);
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
    Send(kDownALevel);
    EXPECT_EQ(PanePath(0), fTree.Path("one/inside"));
}

TEST_F(WindowCommandsTest, FocusesPanesByNumber)
{
    OpenThree();
    Send(kFocusPane + 2);
    EXPECT_EQ(FocusedPane(), 2);
    Send(kFocusPane + 9);
    EXPECT_EQ(FocusedPane(), 2);
}

TEST_F(WindowCommandsTest, AColumnsWidthReachesEveryPane)
{
    OpenThree();
    BMessage message(kColumnResized);
    message.AddString("ColumnWidth", "137");
    message.AddString("ColumnIndex", "2");
    Send(message);
    Locked([&] {
        for (int32 pane = 0; pane < 3; pane++) {
            EXPECT_EQ(fWindow->PaneAt(pane)->ColumnWidth(2), 137);
        }
    });
}

TEST_F(WindowCommandsTest, TheNewestOfWaitingWidthsCounts)
{
    OpenThree();
    Locked([&] {
        for (const char* width : {"50", "60", "170"}) {
            BMessage message(kColumnResized);
            message.AddString("ColumnWidth", width);
            message.AddString("ColumnIndex", "3");
            fWindow->PostMessage(&message);
        }
    });
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    Locked([&] { EXPECT_EQ(fWindow->PaneAt(2)->ColumnWidth(3), 170); });
}

TEST_F(WindowCommandsTest, ReadsThePreferencesAgain)
{
    OpenThree();
    const std::string before = fTree.Read("config/Norvane/Norvane.pref");
    WriteSettings(before + "ShowHeader=0\nShowFooter=1\nShowProgressBar=0\n");
    Send(kPreferencesSaved);
    Locked([&] {
        const DirView* list = fWindow->PaneAt(1)->GetDirView();
        EXPECT_FALSE(list->HeaderFlag());
        EXPECT_TRUE(list->FooterFlag());
        EXPECT_FALSE(list->ProgressFlag());
    });
}

TEST_F(WindowCommandsTest, TellsWhatCouldNotBeSavedLate)
{
    OpenThree();
    BMessage notice(kPreferencesSaved);
    notice.AddInt32("status", B_DEVICE_FULL);

    fWindow->PostMessage(&notice);

    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("Oh well", &text));
    EXPECT_EQ(text, "The settings could not be saved.\n\nNorvane.pref: The volume is full");
}

TEST_F(WindowCommandsTest, PreferencesOpenByTheirKeyAsOftenAsAsked)
{
    OpenThree();
    for (const int32 count : {1, 2}) {
        kits::testing::ActivateWindow(fWindow);
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        kits::testing::TypeKey('r', B_COMMAND_KEY);
        EXPECT_TRUE(kits::testing::WaitFor(
            [count] { return kits::testing::CountShown("Norvane Preferences Dialog") == count; }));
    }
    for (const int32 left : {1, 0}) {
        BWindow* options = kits::testing::WaitForWindow("Norvane Preferences Dialog");
        ASSERT_NE(options, nullptr);
        // In the middle of the window's bounds, taken as a place on the screen
        EXPECT_LE(std::abs(options->Frame().left - 180), 1);
        kits::testing::CloseWindow(options);
        EXPECT_TRUE(kits::testing::WaitFor(
            [left] { return kits::testing::CountShown("Norvane Preferences Dialog") == left; }));
    }
}

TEST_F(WindowCommandsTest, SavedPreferencesAreSeenInAllPanes)
{
    OpenThree();
    kits::testing::TypeKey('r', B_COMMAND_KEY);
    BWindow* options = kits::testing::WaitForWindow("Norvane Preferences Dialog");
    ASSERT_NE(options, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(options));

    for (const char key : {B_TAB, B_TAB, B_SPACE, B_ENTER}) {
        kits::testing::TypeKey(key);
    }

    for (int32 pane = 0; pane < 3; pane++) {
        EXPECT_TRUE(kits::testing::WaitFor([&] {
            const BAutolock lock(fWindow);
            const DirPane* shown = fWindow->PaneAt(pane);
            return shown->ChildAt(0)->IsHidden() && !shown->ChildAt(2)->IsHidden();
        }));
    }
    EXPECT_EQ(Setting("ShowHeader"), "0");
    const BAutolock lock(options);
    options->PostMessage(B_QUIT_REQUESTED);
}

TEST_F(WindowCommandsTest, AnUnmountedVolumeSendsItsPanesHome)
{
    OpenThree();
    BMessage notice(B_NODE_MONITOR);
    notice.AddInt32("opcode", B_DEVICE_UNMOUNTED);
    notice.AddInt32("device", dev_for_path(fTree.Path("one").c_str()));
    Send(notice);
    for (int32 pane = 0; pane < 3; pane++) {
        EXPECT_EQ(PanePath(pane), HomeFolder());
    }
}

TEST_F(WindowCommandsTest, OtherNoticesChangeNothing)
{
    OpenThree();
    for (const int32 opcode : {B_ENTRY_CREATED, B_DEVICE_MOUNTED}) {
        BMessage notice(B_NODE_MONITOR);
        notice.AddInt32("opcode", opcode);
        notice.AddInt32("device", dev_for_path(fTree.Path("one").c_str()));
        Send(notice);
    }
    BMessage elsewhere(B_NODE_MONITOR);
    elsewhere.AddInt32("opcode", B_DEVICE_UNMOUNTED);
    elsewhere.AddInt32("device", -2);
    Send(elsewhere);
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
    EXPECT_EQ(PanePath(2), fTree.Path("three"));
}

TEST_F(WindowCommandsTest, TellsWhatItIs)
{
    OpenThree();
    fWindow->PostMessage(kAbout);
    const std::string alert = AlertText("About Norvane");
    EXPECT_EQ(alert.rfind("info: Norvane AlphaII v0.6.2\n\n", 0), 0u) << alert;
    EXPECT_EQ(alert.substr(alert.find(" [")), " [Big Deal]*");
    ASSERT_TRUE(kits::testing::AnswerAlert("Big Deal"));
}

TEST_F(WindowCommandsTest, ShowsTheOverwriteQuestionUntilItIsAnswered)
{
    OpenThree();
    fWindow->PostMessage(kTestOverwrite);
    ASSERT_NE(kits::testing::WaitForWindow("Overwrite"), nullptr);
    ASSERT_TRUE(kits::testing::AnswerAlert("Skip"));
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Overwrite"));
}

// The road of a copy

TEST_F(WindowCommandsTest, ACopyByKeyGoesToTheNextPane)
{
    OpenThree();
    Select(0, "file");
    kits::testing::TypeFunctionKey(B_F5_KEY);
    EXPECT_TRUE(WaitFor([&] { return fTree.Read("two/file") == "1"; }));
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Copy"));
    EXPECT_FALSE(fTree.Exists("three/file"));
}

TEST_F(WindowCommandsTest, ACopyFromTheLastPaneGoesToTheFirst)
{
    OpenThree();
    fTree.Write("three/inside/deep", "2");
    Focus(2);
    Select(2, "inside");
    kits::testing::TypeFunctionKey(B_F5_KEY);
    EXPECT_TRUE(WaitFor([&] { return fTree.Read("one/inside/deep") == "2"; }));
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Copy"));
}

TEST_F(WindowCommandsTest, ADropOnTheWindowItselfIsIgnored)
{
    OpenThree();
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("one/file").c_str(), &ref), B_OK);
    for (const char* dragging : {"true", ""}) {
        BMessage message(B_SIMPLE_DATA);
        message.AddRef("refs", &ref);
        if (dragging[0] != '\0') {
            message.AddString("Dragging", dragging);
        }
        Send(message);
    }
    // A copy that is wanted arrives, those before it would have, too.
    fTree.Write("one/wanted", "2");
    ASSERT_TRUE(WaitFor([&] { return HasRow(0, "wanted"); }));
    Select(0, "wanted");
    kits::testing::TypeFunctionKey(B_F5_KEY);
    EXPECT_TRUE(WaitFor([&] { return fTree.Read("two/wanted") == "2"; }));
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Copy"));
    EXPECT_EQ(fTree.List("two"), "wanted\n");
}

// Menus

TEST_F(WindowCommandsTest, EverythingCanBeChosen)
{
    OpenThree();
    Locked([&] {
        const BMenuBar* bar = dynamic_cast<BMenuBar*>(fWindow->FindView("MenuBar"));
        ASSERT_NE(bar, nullptr);
        ASSERT_EQ(bar->CountItems(), 7);
        for (const MenuColumn& column : MainMenus()) {
            for (const MenuLine& line : column.lines) {
                if (line.label != nullptr) {
                    ASSERT_NE(bar->FindItem(line.label), nullptr) << line.label;
                    EXPECT_TRUE(bar->FindItem(line.label)->IsEnabled()) << line.label;
                }
            }
        }
    });
}

TEST_F(WindowCommandsTest, AnItemThatIsAddedLaterCanBeChosen)
{
    OpenThree();
    Locked([&] {
        auto* bar = dynamic_cast<BMenuBar*>(fWindow->FindView("MenuBar"));
        ASSERT_NE(bar, nullptr);
        BMenuItem* addOns = bar->FindItem("Add-Ons");
        ASSERT_NE(addOns, nullptr);
        addOns->Submenu()->AddItem(new BMenuItem("Zoom", new BMessage(kAddPane))); // adopted
    });
    kits::testing::TypeFunctionKey(B_F10_KEY);
    kits::testing::TypeKey(B_LEFT_ARROW);
    kits::testing::TypeKey('z');
    kits::testing::TypeKey(B_RETURN);
    EXPECT_TRUE(WaitFor([&] { return CountPanes() == 4; }));
}

TEST_F(WindowCommandsTest, DotNamesAreHiddenAndShownByAKey)
{
    fTree.Write("one/.dot", "");
    fTree.Write("two/.dot", "");
    OpenThree();
    const auto shows = [&](int32 pane, int32 rows) {
        return WaitFor([&, pane, rows] {
            int32 count = 0;
            Locked([&] { count = fWindow->PaneAt(pane)->GetDirView()->CountItems(); });
            return count == rows;
        });
    };
    ASSERT_TRUE(shows(0, 4)); // "..", a folder, a file and the hidden one
    kits::testing::TypeKey('h', B_COMMAND_KEY);
    EXPECT_TRUE(shows(0, 3));
    EXPECT_TRUE(shows(1, 1));
    EXPECT_TRUE(WaitFor([&] { return Setting("HideDotNames") == "1"; }));
    kits::testing::TypeKey('h', B_COMMAND_KEY);
    EXPECT_TRUE(shows(0, 4));
    EXPECT_TRUE(shows(1, 2));
    EXPECT_TRUE(WaitFor([&] { return Setting("HideDotNames") == "0"; }));
}

TEST_F(WindowCommandsTest, DotNamesAreHiddenEvenWhereThatCannotBeKept)
{
    fTree.Write("one/.dot", "");
    OpenThree();
    fTree.Remove("config");
    fTree.Write("config", "no folder");
    kits::testing::TypeKey('h', B_COMMAND_KEY);
    EXPECT_NE(AlertText("Hey"), "(none)");
    EXPECT_TRUE(kits::testing::AnswerAlert("Oh well"));
    int32 count = 0;
    Locked([&] { count = fWindow->PaneAt(0)->GetDirView()->CountItems(); });
    EXPECT_EQ(count, 3);
}

TEST_F(WindowCommandsTest, ShortcutsReachTheWindow)
{
    OpenThree();
    kits::testing::TypeKey('p', B_COMMAND_KEY);
    EXPECT_TRUE(WaitFor([&] { return CountPanes() == 4; }));
    kits::testing::TypeKey('2', B_COMMAND_KEY);
    EXPECT_TRUE(WaitFor([&] { return FocusedPane() == 1; }));
    kits::testing::TypeKey('p', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_TRUE(WaitFor([&] { return CountPanes() == 3; }));
}

} // namespace norvane
