#include "AlertText.h"
#include "AppFixture.h"
#include "MessageCodes.h"
#include "outside/AddOnRun.h"

#include <Application.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>

#include <filesystem>

namespace norvane {

using kits::testing::WaitFor;

/// The menu of add-ons, and what they do to the window.
class AddOnsTest : public AppFixture
{
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        WritePanes({"one", "two"});
    }

    void TearDown() override
    {
        Go(); // none may outlive its test
        EXPECT_TRUE(WaitFor([] { return AddOnRun::AtWork().empty(); }));
        AppFixture::TearDown();
    }

    void Install(const std::string& name, const std::string& library = ADD_ON_SAMPLE)
    {
        const std::string path = fTree.Path("data/norvane/add-ons/Tracker/" + name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::filesystem::copy_file(library, path);
    }

    /// Lets one go on that waits.
    void Go()
    {
        fTree.Write("one/go", "");
        fTree.Write("two/go", "");
    }

    BMenu* Menu()
    {
        auto* bar = dynamic_cast<BMenuBar*>(fWindow->FindView("MenuBar"));
        return bar->SubmenuAt(bar->CountItems() - 1);
    }

    std::string Items()
    {
        std::string items;
        Locked([&] {
            for (int32 index = 0; index < Menu()->CountItems(); index++) {
                const BMenuItem* item = Menu()->ItemAt(index);
                items += std::string(item->Label()) + (item->IsMarked() ? "*" : "");
                items += item->Shortcut() != 0 ? std::string("[") + item->Shortcut() + "]" : "";
                items += "\n";
            }
        });
        return items;
    }

    void Run(const std::string& name)
    {
        BMenuItem* item = nullptr;
        Locked([&] { item = Menu()->FindItem(name.c_str()); });
        ASSERT_NE(item, nullptr);
        BMessage command(kRunAddOn);
        command.AddPointer("source", item);
        fWindow->PostMessage(&command);
    }

    /// Runs one that comes to its end by itself, and waits for what the window makes of that.
    void RunToItsEnd(const std::string& name)
    {
        Run(name);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
        EXPECT_TRUE(WaitFor([&] { return !IsAtWork(); }));
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    void Await(const std::string& name)
    {
        EXPECT_TRUE(WaitFor([&] { return fTree.Exists(name); })) << name;
    }

    bool IsAtWork() const { return !AddOnRun::AtWork().empty(); }
};

TEST_F(AddOnsTest, TheMenuHasOneItemForEach)
{
    Install("b");
    Install("MakeArchive");
    Install("a");
    fTree.Write("data/norvane/add-ons/Tracker/no library", "text");
    fTree.Write("data/norvane/add-ons/elsewhere", "");
    Open();
    const std::string items = Items();
    const std::string own = "MakeArchive[K]\na\nb\nno library\n";
    ASSERT_GE(items.size(), own.size());
    EXPECT_EQ(items.substr(items.size() - own.size()), own);
}

TEST_F(AddOnsTest, WorksOnWhatIsSelectedInTheFocusedPane)
{
    fTree.Write("two/a", "1");
    fTree.Write("two/b", "1");
    Install("sample");
    Open();
    Focus(1);
    Select(1, "b");
    Run("sample");
    Await("record");
    EXPECT_EQ(fTree.Read("record"), fTree.Path("two") + "\n" + fTree.Path("two/b") + "\n");
    EXPECT_TRUE(WaitFor([&] { return Items().ends_with("sample\n"); }));
}

TEST_F(AddOnsTest, AsksForASelection)
{
    Install("sample");
    Open();
    Run("sample");
    EXPECT_EQ(AlertText("foo"), "warning: Please select an item first [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_FALSE(fTree.Exists("record"));
}

TEST_F(AddOnsTest, WhatIsNoAddOnDoesNothing)
{
    fTree.Write("one/a", "1");
    fTree.Write("data/norvane/add-ons/Tracker/text", "text");
    Install("others", ADD_ON_OTHER_SYMBOLS);
    Install("gone");
    Open();
    Select(0, "a");
    fTree.Remove("data/norvane/add-ons/Tracker/gone");
    for (const char* name : {"text", "others", "gone"}) {
        RunToItsEnd(name);
    }
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
    EXPECT_EQ(kits::testing::CountShown("foo"), 0);
}

TEST_F(AddOnsTest, WhatItThrowsIsTold)
{
    fTree.Write("one/throw", "1");
    fTree.Write("two/throw a number", "1");
    Install("sample");
    Open();
    Select(0, "throw");
    Run("sample");
    EXPECT_EQ(AlertText("Err"), "warning: sample failed: thrown on purpose [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    Focus(1);
    Select(1, "throw a number");
    Run("sample");
    EXPECT_EQ(AlertText("Err"), "warning: sample failed: it does not say why [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
}

TEST_F(AddOnsTest, WhileOneIsAtWorkTheWindowGoesOnAndNoOtherBegins)
{
    fTree.Write("one/wait", "1");
    Install("sample");
    Open();
    Select(0, "wait");
    Run("sample");
    EXPECT_TRUE(WaitFor([&] { return Items().ends_with("sample*\n"); }));
    Send(kAddPane); // is answered
    EXPECT_EQ(CountPanes(), 3);
    Focus(0);
    Run("sample");
    EXPECT_EQ(AlertText("Hey"), "info: sample is still at work. [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    Go();
    Await("record");
    EXPECT_TRUE(WaitFor([&] { return Items().ends_with("sample\n"); }));
}

TEST_F(AddOnsTest, OneThatOutlivesItsWindowComesToItsEnd)
{
    fTree.Write("one/wait", "1");
    Install("sample");
    Open();
    Select(0, "wait");
    Run("sample");
    EXPECT_TRUE(WaitFor([&] { return IsAtWork(); }));
    if (fWindow->Lock()) {
        fWindow->Quit();
        fWindow = nullptr;
    }
    Go();
    Await("record");
}

TEST_F(AddOnsTest, RunsAgainAndAgain)
{
    fTree.Write("one/a", "1");
    Install("sample");
    Open();
    Select(0, "a");
    for (int round = 0; round < 20; round++) {
        Run("sample");
        Await("record");
        EXPECT_TRUE(WaitFor([&] { return Items().ends_with("sample\n"); }));
        fTree.Remove("record");
    }
}

} // namespace norvane
