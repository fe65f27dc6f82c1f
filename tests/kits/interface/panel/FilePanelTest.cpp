#include "FilePanelFixture.h"
#include "PrivateMounts.h"

#include <FindDirectory.h>
#include <Path.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace kits::testing;

class FilePanelTest : public FilePanelFixture
{
};

TEST_F(FilePanelTest, ShowsFoldersFirstInPeoplesOrder)
{
    Open("shown");
    EXPECT_EQ(Names(), "folder b9 b10 Zebra ");
    EXPECT_TRUE(WaitFor([&] { return Selected() == "folder"; }));
    entry_ref folder;
    fPanel->GetPanelDirectory(&folder);
    EXPECT_STREQ(folder.name, "shown");
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, WhatIsTypedLeavesNamesThatContainIt)
{
    Open("shown");
    TypeText("Eb");
    EXPECT_TRUE(WaitFor([&] { return Names() == "Zebra "; })) << Names();
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "Zebra");
    EXPECT_EQ(fListener->Came().back().what, B_REFS_RECEIVED);
    EXPECT_FALSE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, ArrowsMoveInTheListWhileTheFieldHasTheFocus)
{
    Open("shown");
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_UP_ARROW);
    EXPECT_TRUE(WaitFor([&] { return Selected() == "b9"; })) << Selected();
    TypeKey(B_PAGE_DOWN);
    EXPECT_TRUE(WaitFor([&] { return Selected() == "Zebra"; })) << Selected();
    EXPECT_EQ(Typed(), "");
}

TEST_F(FilePanelTest, ReturnEntersAndBackspaceGoesUp)
{
    fTree.MakeFolder("shown/before");
    Open("shown");
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Names() == "inner "; }));
    EXPECT_EQ(Shown(), fTree.Path("shown/folder"));
    TypeText("x");
    EXPECT_TRUE(WaitFor([&] { return Names().empty(); }));
    TypeKey(B_BACKSPACE);
    EXPECT_TRUE(WaitFor([&] { return Names() == "inner "; }));
    EXPECT_EQ(Shown(), fTree.Path("shown/folder"));
    TypeKey(B_BACKSPACE);
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); }));
    EXPECT_EQ(Selected(), "folder");
    TypeKey(B_UP_ARROW, B_OPTION_KEY);
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path(""); })) << Shown();
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelTest, PathsAreGoneTo)
{
    Open("shown");
    TypeText("folder/");
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder b9 b10 Zebra "; })) << Names();
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown/folder"); })) << Shown();
    EXPECT_EQ(Typed(), "");
    TypeText((fTree.Path("shown") + "/b9").c_str());
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "b9");
}

TEST_F(FilePanelTest, PathThatLeadsNowhereIsTold)
{
    Open("shown");
    TypeText("/no/such");
    TypeKey(B_ENTER);
    const char* told = "This cannot be opened: there is nothing of this name.";
    EXPECT_TRUE(WaitFor([&] { return Shown() == told; })) << Shown();
    EXPECT_EQ(Names(), "folder b9 b10 Zebra ");
    TypeText("x");
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); }));
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, EscapeClearsThenCancels)
{
    Open("shown");
    BMessage message('mine');
    fPanel->SetMessage(&message);
    TypeText("zz");
    EXPECT_TRUE(WaitFor([&] { return Names().empty(); }));
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder b9 b10 Zebra "; }));
    EXPECT_EQ(Typed(), "");
    EXPECT_TRUE(fPanel->IsShowing());
    TypeKey(B_ESCAPE);
    EXPECT_EQ(Sent(), "(cancelled)");
    const BMessage sent = fListener->Came().back();
    void* source = nullptr;
    EXPECT_EQ(sent.GetInt32("old_what", 0), 'mine');
    EXPECT_EQ(sent.FindPointer("source", &source), B_OK);
    EXPECT_EQ(source, fPanel.get());
    EXPECT_FALSE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, OwnMessageCarriesAllThatIsSelected)
{
    Open("shown");
    BMessage message('mine');
    message.AddInt32("extra", 7);
    fPanel->SetMessage(&message);
    ASSERT_TRUE(Locked([](BWindow* window) {
        auto* list = dynamic_cast<kits::PanelList*>(window->FindView("PoseView"));
        list->Select(1, 2);
        return true;
    }));
    TypeKey(B_ENTER);
    ASSERT_TRUE(WaitFor([&] { return fListener->Came().size() == 1; }));
    const BMessage sent = fListener->Came().back();
    entry_ref ref;
    EXPECT_EQ(sent.what, uint32('mine'));
    EXPECT_EQ(sent.GetInt32("extra", 0), 7);
    EXPECT_EQ(sent.FindRef("refs", 1, &ref), B_OK);
    EXPECT_STREQ(ref.name, "b10");
}

TEST_F(FilePanelTest, StaysWhenToldTo)
{
    Open("shown");
    fPanel->SetHideWhenDone(false);
    TypeText("b9");
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "b9");
    EXPECT_TRUE(fPanel->IsShowing());
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(2), "b9");
}

TEST_F(FilePanelTest, ButtonChoosesFoldersWhereTheyAreWanted)
{
    Open("shown", B_DIRECTORY_NODE);
    Click(Locked([](BWindow* window) { return window->FindView("default button"); }));
    EXPECT_EQ(Sent(), "folder");
}

TEST_F(FilePanelTest, FilesAreNotChosenWhereFoldersAreWanted)
{
    Open("shown", B_DIRECTORY_NODE);
    TypeText("b9");
    EXPECT_TRUE(WaitFor([&] { return Names() == "b9 "; }));
    TypeKey(B_ENTER);
    ASSERT_TRUE(Sync(fPanel->Window()));
    EXPECT_TRUE(fListener->Came().empty());
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, FilterSaysWhichFilesAreShown)
{
    OnlyZebras filter;
    Open("shown");
    fPanel->SetRefFilter(&filter);
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder Zebra "; })) << Names();
    EXPECT_TRUE(filter.isAsked);
    fPanel->SetRefFilter(nullptr);
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder b9 b10 Zebra "; })) << Names();
    fPanel.reset();
}

TEST_F(FilePanelTest, FolderThatNobodyMayReadIsTold)
{
    fTree.Write("shown/closed/inner", "");
    ASSERT_EQ(chmod(fTree.Path("shown/closed").c_str(), 0), 0);
    {
        const WithoutFileRights none; // which the panel's threads do not have either
        Open("shown");
    }
    TypeText("closed");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown/closed"); })) << Shown();
    EXPECT_EQ(Names(), "");
    const std::string remark = Locked([](BWindow* window) {
        return dynamic_cast<kits::PanelList*>(window->FindView("PoseView"))->Remark();
    });
    EXPECT_EQ(remark, "This folder cannot be read: you may not read it.");
    TypeKey(B_BACKSPACE);
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    ASSERT_EQ(chmod(fTree.Path("shown/closed").c_str(), 0700), 0);
}

TEST_F(FilePanelTest, TypedFilesAreChosenAsListedOnesAre)
{
    fTree.Write("elsewhere/b9", "");
    OnlyZebras filter;
    Open("shown");
    fPanel->SetRefFilter(&filter);
    TypeText((fTree.Path("elsewhere") + "/b9").c_str());
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Shown().starts_with("This is no folder"); })) << Shown();
    fPanel->SetRefFilter(nullptr);
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "b9");
    const auto kept = [&] {
        return fTree.Read("settings/file_panel_folder");
    };
    EXPECT_TRUE(WaitFor([&] { return kept() == fTree.Path("elsewhere"); })) << kept();
    fPanel.reset();
}

TEST_F(FilePanelTest, TypedFilesAreNotChosenWhereFoldersAreWanted)
{
    Open("shown", B_DIRECTORY_NODE);
    TypeText("./b9");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Shown().starts_with("This is no folder"); })) << Shown();
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelTest, NamedFileShowsItsFolder)
{
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown/b9").c_str(), &ref), B_OK);
    fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget, &ref);
    ShowPanel();
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelTest, BeginsAtHomeWhereItsFolderIsGone)
{
    BPath home;
    ASSERT_EQ(find_directory(B_USER_DIRECTORY, &home), B_OK);
    fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget);
    fPanel->SetPanelDirectory("/no/such");
    ShowPanel();
    EXPECT_TRUE(WaitFor([&] { return Shown() == home.Path(); })) << Shown();
}

TEST_F(FilePanelTest, WhatIsTypedStaysWhileTheFolderIsReadAgain)
{
    Open("shown");
    TypeText("folder/");
    fTree.Write("shown/another", "");
    fPanel->Refresh();
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder another b9 b10 Zebra "; })) << Names();
    EXPECT_EQ(Typed(), "folder/");
}

TEST_F(FilePanelTest, HomeAndEndMoveInTheListWhileNothingIsTyped)
{
    Open("shown");
    TypeKey(B_END);
    EXPECT_TRUE(WaitFor([&] { return Selected() == "Zebra"; }));
    TypeKey(B_HOME);
    EXPECT_TRUE(WaitFor([&] { return Selected() == "folder"; }));
    TypeText("b");
    TypeKey(B_HOME);
    TypeText("e");
    EXPECT_TRUE(WaitFor([&] { return Typed() == "eb"; })) << Typed();
}

TEST_F(FilePanelTest, FolderThatIsGoneIsTold)
{
    Open("shown");
    ASSERT_EQ(std::filesystem::remove_all(fTree.Path("shown/folder")), 2u);
    TypeText("fold");
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder "; }));
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([&] { return Shown().starts_with("This cannot be opened: "); })) << Shown();
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelTest, ShowsNamesOfAnyBytesAndLinksAsWhatTheyLeadTo)
{
    fTree.Write("odd/\xff\xfe", "");
    fTree.MakeFolder("target");
    ASSERT_EQ(symlink(fTree.Path("target").c_str(), fTree.Path("odd/link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", fTree.Path("odd/broken").c_str()), 0);
    Open("odd");
    EXPECT_EQ(Names(), "link broken \xff\xfe ");
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    EXPECT_TRUE(WaitFor([&] { return Selected() == "\xff\xfe"; }));
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "\xff\xfe");
}

TEST_F(FilePanelTest, FolderOfTheLastChoiceIsWhereTheNextPanelBegins)
{
    Open("shown/folder");
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "inner");
    const std::string memory = fTree.Path("settings/file_panel_folder");
    EXPECT_TRUE(WaitFor([&] { return access(memory.c_str(), F_OK) == 0; }));
    struct stat st = {};
    ASSERT_EQ(stat(memory.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 077, 0u);
    fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget);
    ShowPanel();
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown/folder"); })) << Shown();

    // What is damaged, or leads nowhere, counts as none.
    BPath home;
    ASSERT_EQ(find_directory(B_USER_DIRECTORY, &home), B_OK);
    for (const std::string& broken : {std::string("/no/such"), std::string("relative"),
                                      std::string("/\0x", 3), std::string(10'000, '/')}) {
        std::ofstream(memory, std::ios::binary) << broken;
        fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget);
        ShowPanel();
        EXPECT_TRUE(WaitFor([&] { return Shown() == home.Path(); })) << Shown();
    }
}

TEST_F(FilePanelTest, MayGoWhileItReads)
{
    for (int i = 0; i < 2000; ++i) {
        fTree.Write("many/" + std::to_string(i), "");
    }
    for (int round = 0; round < 20; ++round) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path("many").c_str(), &ref), B_OK);
        OnlyZebras filter;
        BFilePanel panel(B_OPEN_PANEL, &fTarget, &ref, 0, true, nullptr, &filter);
        if (round % 2 == 0) {
            panel.Show();
        }
        panel.Refresh();
    }
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelTest, SavePanelsAreNotOffered)
{
    BFilePanel panel(B_SAVE_PANEL, &fTarget);
    panel.Show();
    EXPECT_FALSE(panel.IsShowing());
    EXPECT_EQ(panel.PanelMode(), B_SAVE_PANEL);
}

} // namespace
