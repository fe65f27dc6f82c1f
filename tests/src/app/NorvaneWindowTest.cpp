#include "app/NorvaneWindow.h"

#include "AppFixture.h"
#include "MessageCodes.h"
#include "PrivateMounts.h"
#include "clv/CLVColumnLabelView.h"
#include "clv/CLVContainerView.h"
#include "settings/HomeFolder.h"

#include <Autolock.h>
#include <Screen.h>
#include <StorageDefs.h>

namespace norvane {

using kits::testing::WaitFor;

/// How the window comes up, lays its panes out and is saved.
class NorvaneWindowTest : public AppFixture
{
protected:
    /// The screen moves a window that it cannot show where it is, and tells the window then: true
    /// when that has come.
    bool ComesOntoTheScreen()
    {
        return WaitFor([&] {
            const BAutolock lock(fWindow);
            return BScreen(B_MAIN_SCREEN_ID).Frame().Contains(fWindow->Frame().LeftTop());
        });
    }
};

TEST_F(NorvaneWindowTest, StartsWithTwoPanesOnTheHomeFolder)
{
    Open();
    EXPECT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), HomeFolder());
    EXPECT_EQ(PanePath(1), HomeFolder());
    EXPECT_EQ(FocusedPane(), 0);
    Locked([&] { EXPECT_EQ(fWindow->Frame(), BRect(10, 40, 809, 639)); });
}

TEST_F(NorvaneWindowTest, AMissingPaneIsOnTheHomeFolder)
{
    WritePanes({"one", "", "two"});
    Open();
    ASSERT_EQ(CountPanes(), 3);
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
    EXPECT_EQ(PanePath(1), HomeFolder());
    EXPECT_EQ(PanePath(2), fTree.Path("two"));
    EXPECT_EQ(FocusedPane(), 0);
}

TEST_F(NorvaneWindowTest, HasTenPanesAtMost)
{
    WriteSettings("NumPanes=12\n");
    Open();
    EXPECT_EQ(CountPanes(), 10);
    Send(120);
    EXPECT_EQ(CountPanes(), 10);
}

TEST_F(NorvaneWindowTest, RestoresTheFrame)
{
    WriteSettings("Left=33\nTop=44\nWidth=555\nHeight=333\n");
    Open();
    Locked([&] { EXPECT_EQ(fWindow->Frame(), BRect(33, 44, 588, 377)); });
}

TEST_F(NorvaneWindowTest, AMissingTopIsLikeLeftAndAMissingHeightLikeWidth)
{
    WriteSettings("Left=50\nWidth=400\n");
    Open();
    Locked([&] { EXPECT_EQ(fWindow->Frame(), BRect(50, 50, 450, 450)); });
}

TEST_F(NorvaneWindowTest, ANegativeLeftComesBackAsZero)
{
    WriteSettings("Left=-120\nTop=44\nWidth=400\nHeight=300\n");
    // Not shown: a screen moves the window's frame into itself, and the client area with it.
    fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
    Locked([&] { EXPECT_EQ(fWindow->Frame(), BRect(0, 44, 400, 344)); });
}

TEST_F(NorvaneWindowTest, AFrameThatNoScreenShowsIsMovedOntoOne)
{
    WriteSettings("Left=20000\nTop=30000\nWidth=400\nHeight=300\n");
    Open();
    EXPECT_TRUE(ComesOntoTheScreen());
    Locked([&] { EXPECT_EQ(fWindow->Frame().Width(), 400); });
}

TEST_F(NorvaneWindowTest, AFrameThatNoScreenCanShowIsCutToOne)
{
    WriteSettings("Left=9999999999\nTop=9999999999\nWidth=9999999999\nHeight=9999999999\n");
    // Not shown: a screen makes room for its window's borders, and moves it into itself.
    fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
    Locked([&] {
        const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
        EXPECT_EQ(fWindow->Frame().Width(), screen.Width());
        EXPECT_EQ(fWindow->Frame().Height(), screen.Height());
    });
}

TEST_F(NorvaneWindowTest, APlaceThatNoScreenHasLeavesTheSize)
{
    WriteSettings("Left=9999999999\nTop=0\n");
    Open();
    EXPECT_TRUE(ComesOntoTheScreen());
    Locked([&] { EXPECT_EQ(fWindow->Bounds(), BRect(0, 0, 799, 599)); });
}

TEST_F(NorvaneWindowTest, ACountOfPanesThatNoWindowHasIsCut)
{
    WriteSettings("NumPanes=9999999999\n");
    Open();
    EXPECT_EQ(CountPanes(), 10);
}

TEST_F(NorvaneWindowTest, ColumnsThatNoWindowCanUseAreCutAndSeen)
{
    fTree.Write("one/file", "");
    WritePanes({"one"}, "Column1=9999999999\nColumn2=9999999999\nColumn3=99999999\n");
    Open();
    Locked([&] {
        for (int32 column = 1; column <= 3; column++) {
            EXPECT_EQ(fWindow->PaneAt(0)->ColumnWidth(column), CLVColumn::kLargestWidth);
        }
        fWindow->SaveSettings();
    });
    EXPECT_EQ(Setting("Column1"), "10000");
    EXPECT_EQ(Setting("Column3"), "10000");
    const auto countDark = [&](const BRect& area) {
        const kits::testing::Picture picture = kits::testing::TakePicture(fWindow);
        return picture.Count({0, 0, 0, 255}, static_cast<int32>(area.left),
                             static_cast<int32>(area.top), static_cast<int32>(area.right),
                             static_cast<int32>(area.bottom));
    };
    const auto onWindow = [&](BView* view) {
        BRect area;
        Locked([&] { area = fWindow->ConvertFromScreen(view->ConvertToScreen(view->Bounds())); });
        return area;
    };
    DirView* list = fWindow->PaneAt(0)->GetDirView();
    EXPECT_GT(countDark(onWindow(list->HeaderStrip()) & fWindow->Bounds()), 10);
    EXPECT_GT(countDark(onWindow(list) & fWindow->Bounds()), 0);
}

TEST_F(NorvaneWindowTest, PanesShareTheWidth)
{
    WriteSettings("NumPanes=3\nWidth=500\nHeight=300\n");
    Open();
    Locked([&] {
        float left = 0;
        for (int32 pane = 0; pane < 3; pane++) {
            const BRect frame = fWindow->PaneAt(pane)->Frame();
            EXPECT_EQ(frame.left, left);
            EXPECT_EQ(frame.top, 20);
            // Of 166.67, as views lie on whole units; the last ends with the window.
            EXPECT_EQ(frame.right, pane < 2 ? left + 167 : 500);
            EXPECT_EQ(frame.Height(), 280);
            left = frame.right + 1;
        }
    });
}

TEST_F(NorvaneWindowTest, TheLastPaneEndsAtTheWindowsEdge)
{
    WriteSettings("NumPanes=1\nWidth=600\nHeight=300\n");
    Open();
    for (int32 count = 1; count <= 10; count++) {
        for (const float width : {600.0f, 599.0f, 511.0f, 300.0f}) {
            Locked([&] { fWindow->ResizeTo(width, 300); });
            float right = 0;
            float listRight = 0;
            EXPECT_TRUE(WaitFor([&] {
                Locked([&] {
                    DirPane* last = fWindow->PaneAt(count - 1);
                    right = last->Frame().right;
                    listRight = last->Frame().left + last->GetDirView()->Container()->Frame().right;
                });
                return right == width;
            })) << count
                << " panes end at " << right << " of " << width;
            EXPECT_EQ(listRight, width);
        }
        Send(120);
    }
}

TEST_F(NorvaneWindowTest, IsNeverTooSmallToBeUsed)
{
    WriteSettings("Width=60\nHeight=60\n");
    Open();
    const auto size = [&] {
        BPoint found;
        Locked([&] { found = fWindow->Bounds().RightBottom(); });
        return found;
    };
    EXPECT_EQ(size(), BPoint(300, 150));
    Locked([&] {
        fWindow->ResizeTo(500, 400);
        fWindow->ResizeTo(60, 60);
    });
    EXPECT_EQ(size(), BPoint(300, 150));
}

TEST_F(NorvaneWindowTest, TenPanesInATinyWindowDoNoHarm)
{
    WriteSettings("NumPanes=10\n");
    Open();
    for (const float size : {5.0f, 0.0f, 300.0f}) {
        // As when a window manager does not hold to the least size.
        Locked([&] { fWindow->FrameResized(size, size); });
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }
    Locked([&] {
        for (int32 pane = 0; pane < 10; pane++) {
            EXPECT_GE(fWindow->PaneAt(pane)->Frame().top, 20);
        }
    });
}

TEST_F(NorvaneWindowTest, RestoresColumnWidthsInEveryPane)
{
    WriteSettings("NumPanes=2\nColumn1=131\nColumn4=77\n");
    Open();
    Locked([&] {
        for (int32 pane = 0; pane < 2; pane++) {
            EXPECT_EQ(fWindow->PaneAt(pane)->ColumnWidth(1), 131);
            EXPECT_EQ(fWindow->PaneAt(pane)->ColumnWidth(2), 70);
            EXPECT_EQ(fWindow->PaneAt(pane)->ColumnWidth(4), 77);
        }
    });
}

TEST_F(NorvaneWindowTest, FoldersGivenTakeThePlaceOfSavedOnes)
{
    WritePanes({"one", "two"});
    Open({fTree.Path("three")});
    ASSERT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), fTree.Path("three"));
    EXPECT_EQ(PanePath(1), fTree.Path("two"));
}

TEST_F(NorvaneWindowTest, ThereAreAsManyPanesAsFoldersGiven)
{
    WritePanes({"one"});
    Open({fTree.Path("three"), fTree.Path("two"), fTree.Path("one")});
    ASSERT_EQ(CountPanes(), 3);
    EXPECT_EQ(PanePath(2), fTree.Path("one"));
}

TEST_F(NorvaneWindowTest, FoldersThatCannotBeShownAreToldOnce)
{
    WritePanes({"gone", "one", "alsogone"});
    Show();
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_NE(text.find(fTree.Path("gone")), std::string::npos);
    EXPECT_NE(text.find(fTree.Path("alsogone")), std::string::npos);
    EXPECT_EQ(text.find(fTree.Path("one")), std::string::npos);
    EXPECT_EQ(PanePath(0), HomeFolder());
}

TEST_F(NorvaneWindowTest, AFolderAskedForThatCannotBeShownIsToldAtOnceAndWhy)
{
    fTree.Write("file", "");
    const std::string file = fTree.Path("file");
    Open();
    Locked([&] {
        fWindow->AddFilePane(file.c_str());
        fWindow->AddFilePane(file.c_str());
    });
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "The directory, " + file + ", is not valid.\nThe volume may not be mounted.");
    // Told once, however many panes it concerns.
    EXPECT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
    EXPECT_EQ(CountPanes(), 4);
    EXPECT_EQ(PanePath(3), HomeFolder());
}

TEST_F(NorvaneWindowTest, AnUnreadableHomeIsToldOfWhenAPaneIsAdded)
{
    ExpectPassed(RunWithPrivateMounts([this] {
        setenv("HOME", fTree.Path("two").c_str(), 1);
        if (!Check(HomeFolder() == fTree.Path("two"), "the home folder is the test's own")) {
            return false;
        }
        Open();
        fTree.Remove("two");
        fTree.Write("two", "");
        fWindow->PostMessage(uint32(kAddPane));
        std::string text;
        return Check(kits::testing::AnswerAlert("OK", &text), "an alert comes up") &&
               Check(text == "The directory, " + fTree.Path("two") +
                                 ", is not valid.\nThe volume may not be mounted.",
                     "it says why");
    }));
}

TEST_F(NorvaneWindowTest, SavesWhatItRestores)
{
    WritePanes({"one", "two"},
               "Left=33\nTop=44\nWidth=555\nHeight=333\nColumn1=131\nDateFormat=%H\n");
    Open();
    Locked([&] {
        fWindow->AddFilePane(fTree.Path("three").c_str());
        fWindow->PaneAt(0)->SetColumnWidth(1, 99);
        fWindow->SaveSettings();
    });
    EXPECT_EQ(Setting("Left"), "33");
    EXPECT_EQ(Setting("Top"), "44");
    EXPECT_EQ(Setting("Width"), "555");
    EXPECT_EQ(Setting("Height"), "333");
    EXPECT_EQ(Setting("NumPanes"), "3");
    EXPECT_EQ(Setting("Pane0"), fTree.Path("one"));
    EXPECT_EQ(Setting("Pane2"), fTree.Path("three"));
    EXPECT_EQ(Setting("Column1"), "99");
    EXPECT_EQ(Setting("Column3"), "145");
    EXPECT_EQ(Setting("DateFormat"), "%H");
}

TEST_F(NorvaneWindowTest, AResizedColumnReachesEveryPaneAndTheSettings)
{
    WriteSettings("NumPanes=3\n");
    Open();
    BView* strip = nullptr;
    Locked([&] { strip = fWindow->PaneAt(1)->FindView("ColumnLabels"); });
    kits::testing::Drag(strip, BPoint(129, 8), BPoint(166, 8));
    const auto hasAll = [&] {
        bool isEqual = true;
        Locked([&] {
            for (int32 pane = 0; pane < 3; pane++) {
                isEqual = isEqual && fWindow->PaneAt(pane)->ColumnWidth(1) == 145;
            }
        });
        return isEqual;
    };
    EXPECT_TRUE(kits::testing::WaitFor(hasAll));
    Locked([&] { fWindow->SaveSettings(); });
    EXPECT_EQ(Setting("Column1"), "145");
}

TEST_F(NorvaneWindowTest, FirstSavesInTheOrderOfTheFormat)
{
    Open({fTree.Path("one"), fTree.Path("two")});
    Locked([&] { fWindow->SaveSettings(); });
    EXPECT_EQ(fTree.Read("config/Norvane/Norvane.pref"),
              "Left=10\nTop=40\nWidth=799\nHeight=599\nNumPanes=2\nPane0=" + fTree.Path("one") +
                  "\nPane1=" + fTree.Path("two") +
                  "\nColumn1=108\nColumn2=70\nColumn3=145\nColumn4=100\n");
}

TEST_F(NorvaneWindowTest, SavesTheLongestParentOfAPathThatDoesNotFit)
{
    const std::string fitting = "one/" + std::string(100, 'a');
    std::string folder = fitting;
    while (fTree.Path(folder).size() < B_PATH_NAME_LENGTH) {
        folder += "/" + std::string(200, 'b');
    }
    fTree.MakeFolder(folder);
    fTree.MakeFolder("two/with\nline feed/below");
    Open({fTree.Path(folder), fTree.Path("two/with\nline feed/below")});
    ASSERT_EQ(PanePath(0), fTree.Path(folder));
    Locked([&] { fWindow->SaveSettings(); });
    EXPECT_EQ(Setting("Pane0"), fTree.Path(fitting));
    EXPECT_EQ(Setting("Pane1"), fTree.Path("two"));
}

TEST_F(NorvaneWindowTest, SavesWithoutAnyPane)
{
    Open();
    Locked([&] {
        fWindow->Clear();
        fWindow->SaveSettings();
    });
    EXPECT_EQ(Setting("NumPanes"), "0");
}

TEST_F(NorvaneWindowTest, SortsLongAndShortPanesWherePreferencesSayIt)
{
    constexpr int kLong = 5200;
    for (int file = 0; file < kLong; file++) {
        fTree.Write("one/f" + std::to_string(file), "");
    }
    for (const char* name : {"f10", "f9"}) {
        fTree.Write(std::string("two/") + name, "");
    }
    Open({fTree.Path("one"), fTree.Path("two"), fTree.Path("one"), fTree.Path("three")});
    ASSERT_TRUE(kits::testing::WaitFor([&] {
        bool areListed = false;
        Locked([&] {
            areListed = fWindow->PaneAt(0)->GetDirView()->CountItems() == kLong + 1 &&
                        fWindow->PaneAt(2)->GetDirView()->CountItems() == kLong + 1;
        });
        return areListed;
    }));
    const auto namesOf = [&](int32 pane) {
        std::vector<std::string> names;
        Locked([&] {
            const DirView* list = fWindow->PaneAt(pane)->GetDirView();
            for (int32 row = 1; row < list->CountItems(); row++) {
                names.emplace_back(list->RowAt(row)->GetEntryName());
            }
        });
        return names;
    };
    Preferences preferences;
    preferences.sortsByColumns = true;
    BMessage read(kPreferencesRead);
    preferences.AddTo(&read);
    Locked([&] {
        for (int32 pane = 0; pane < 4; pane++) {
            fWindow->PaneAt(pane)->GetDirView()->SetSortKey(1);
        }
        fWindow->PaneAt(0)->GetDirView()->Select(100);
        std::string chosen;
        fWindow->PaneAt(0)->GetDirView()->GetSelected(&chosen);
        fWindow->MessageReceived(&read);
        std::string selected;
        fWindow->PaneAt(0)->GetDirView()->GetSelected(&selected);
        EXPECT_EQ(selected, chosen);
    });
    std::vector<std::string> counted;
    for (int file = 0; file < kLong; file++) {
        counted.push_back("f" + std::to_string(file));
    }
    EXPECT_EQ(namesOf(0), counted);
    EXPECT_EQ(namesOf(2), counted);
    EXPECT_EQ(namesOf(1), (std::vector<std::string>{"f9", "f10"}));
    EXPECT_TRUE(namesOf(3).empty());
}

} // namespace norvane
