#include "app/MenuTable.h"
#include "app/NorvaneWindow.h"

#include "AppFixture.h"
#include "PrivateMounts.h"
#include "settings/HomeFolder.h"

#include <AppDefs.h>
#include <Button.h>
#include <NodeMonitor.h>
#include <StringView.h>
#include <TextControl.h>
#include <fs_info.h>

#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

/// Commands of the main window that change the disk, and its prompts.
class WindowOperationsTest : public AppFixture
{
protected:
    void TearDown() override
    {
        for (const char* title : {"Copy", "Delete", "Empty Trash"}) {
            EXPECT_TRUE(WaitForNoWindow(title));
        }
        AppFixture::TearDown();
    }

    void OpenTwo()
    {
        WritePanes({"one", "two"});
        Open();
    }

    void SendText(uint32 what, const char* text)
    {
        BMessage message(what);
        message.AddString("text", text);
        Send(message);
    }

    /// Types the path into the prompt.
    void GoTo(const std::string& path)
    {
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        TypeKey('g', B_COMMAND_KEY);
        BWindow* prompt = WaitForWindow("GoTo");
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(kits::testing::WaitForFocus(prompt));
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(prompt));
        TypeText(path.c_str());
        TypeKey(B_ENTER);
        EXPECT_TRUE(WaitForNoWindow("GoTo")); // what is told may have the focus now
    }
};

// Renaming

TEST_F(WindowOperationsTest, AFolderRenamedInOnePaneIsRenamedInThePathOfAnother)
{
    fTree.Write("one/above/below/a", "");
    WritePanes({"one", "one/above/below"});
    Open();
    ASSERT_EQ(PanePath(1), fTree.Path("one/above/below"));
    std::filesystem::rename(fTree.Path("one/above"), fTree.Path("one/other"));

    EXPECT_TRUE(WaitFor([this] { return PanePath(1) == fTree.Path("one/other/below"); }));
    EXPECT_TRUE(HasRow(1, "a"));
    std::filesystem::rename(fTree.Path("one/other"), fTree.Path("two/out"));

    EXPECT_TRUE(WaitFor([this] { return PanePath(1) == fTree.Path("two/out/below"); }));
}

// Moves

TEST_F(WindowOperationsTest, F6MovesToTheNextPane)
{
    fTree.Write("one/tree/a", "1");
    OpenTwo();
    Select(0, "tree");
    TypeFunctionKey(B_F6_KEY);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("one").empty(); }));
    EXPECT_EQ(fTree.Read("two/tree/a"), "1");
}

TEST_F(WindowOperationsTest, ASkippedMoveLeavesTheTargetAndTakesTheSource)
{
    fTree.Write("one/a", "new");
    fTree.Write("two/a", "old");
    OpenTwo();
    Select(0, "a");
    TypeFunctionKey(B_F6_KEY);
    ASSERT_TRUE(AnswerAlert("Skip"));
    std::string told;
    ASSERT_TRUE(AnswerAlert("OK", &told));
    EXPECT_EQ(told, "Some items could not be handled whole:\n\ta: it is in the Trash");
    EXPECT_TRUE(WaitFor([this] { return fTree.List("one").empty(); }));
    EXPECT_EQ(fTree.Read("two/a"), "old");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "new");
}

// Prompts

TEST_F(WindowOperationsTest, GoToShowsTheFolderThatIsTyped)
{
    OpenTwo();
    GoTo(fTree.Path("three"));
    EXPECT_TRUE(WaitFor([this] { return PanePath(0) == fTree.Path("three"); }));
    EXPECT_EQ(PanePath(1), fTree.Path("two"));
}

TEST_F(WindowOperationsTest, GoToAPathThatDoesNotExistChangesNothingAndSaysNothing)
{
    fTree.Write("one/file", "");
    OpenTwo();
    GoTo(fTree.Path("one/missing"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    // What is told is told in order: the first alert is that of the second path.
    GoTo(fTree.Path("one/file"));
    std::string told;
    EXPECT_TRUE(AnswerAlert("OK", &told));
    EXPECT_EQ(told.substr(0, told.find(',', 15)), "The directory, " + fTree.Path("one/file"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Err"), 0);
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
    EXPECT_TRUE(HasRow(0, "file"));
}

TEST_F(WindowOperationsTest, GoToAsksInItsOwnWords)
{
    OpenTwo();
    Send(kGoTo);
    BWindow* prompt = WaitForWindow("GoTo");
    ASSERT_NE(prompt, nullptr);
    ASSERT_TRUE(prompt->Lock());
    const auto* label = dynamic_cast<BStringView*>(prompt->FindView("Label1"));
    const auto* field = dynamic_cast<BTextControl*>(prompt->FindView("Text1"));
    const auto* first = dynamic_cast<BButton*>(prompt->FindView("Button1"));
    const auto* second = dynamic_cast<BButton*>(prompt->FindView("Button2"));
    ASSERT_TRUE(label != nullptr && field != nullptr && first != nullptr && second != nullptr);
    EXPECT_STREQ(label->Text(), "What Directory do you want to go to?");
    EXPECT_STREQ(field->Text(), "");
    EXPECT_STREQ(first->Label(), "OK");
    EXPECT_TRUE(first->IsDefault());
    EXPECT_STREQ(second->Label(), "Cancel");
    EXPECT_LT(first->Frame().right, second->Frame().left);
    EXPECT_EQ(prompt->FindView("Button3"), nullptr);
    prompt->Unlock();
    prompt->PostMessage(B_QUIT_REQUESTED);
    EXPECT_TRUE(WaitForNoWindow("GoTo"));
}

TEST_F(WindowOperationsTest, GoToThatIsCancelledChangesNothing)
{
    OpenTwo();
    Send(kGoTo);
    BWindow* prompt = WaitForWindow("GoTo");
    ASSERT_NE(prompt, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(prompt));
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(prompt));
    TypeText(fTree.Path("three").c_str());
    kits::testing::Click(kits::testing::FindView(prompt, "Cancel"));
    EXPECT_TRUE(WaitForNoWindow("GoTo"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
}

TEST_F(WindowOperationsTest, TypedTextsReachTheFocusedPane)
{
    fTree.Write("one/a", "1");
    OpenTwo();
    SendText(514, "../three");
    EXPECT_EQ(PanePath(0), fTree.Path("three"));
    SendText(512, "made");
    EXPECT_TRUE(fTree.IsFolder("three/made"));
    SendText(514, fTree.Path("one").c_str());
    Select(0, "a");
    SendText(513, "renamed");
    EXPECT_EQ(fTree.List("one"), "renamed\n");
}

TEST_F(WindowOperationsTest, EmptyTextsDoNothing)
{
    fTree.Write("one/a", "1");
    OpenTwo();
    Select(0, "a");
    for (const uint32 what : {512u, 513u, 514u}) {
        SendText(what, "");
        Send(what);
    }
    EXPECT_EQ(PanePath(0), fTree.Path("one"));
    EXPECT_EQ(fTree.List("one"), "a\n");
}

// Commands

TEST_F(WindowOperationsTest, NewFolderAndRenameReachTheFocusedPane)
{
    OpenTwo();
    Focus(1);
    TypeKey('n', B_COMMAND_KEY);
    ASSERT_TRUE(WaitFor([this] { return fTree.IsFolder("two/New Folder"); }));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(FocusedPane(), 1);
    TypeKey(B_ESCAPE);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    Send(kRename);
    TypeText("mine");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.IsFolder("two/mine"); }));
}

TEST_F(WindowOperationsTest, WithoutAPaneTheyDoNothing)
{
    OpenTwo();
    Send(kRemovePane);
    Send(kRemovePane);
    ASSERT_EQ(CountPanes(), 0);
    Send(kNewFolder);
    Send(kRename);
    SendText(512, "x");
    SendText(514, "/");
    EXPECT_EQ(CountPanes(), 0);
}

TEST_F(WindowOperationsTest, EmptiesTheTrashUnseen)
{
    fTree.Write("data/Trash/files/tree/a", "1");
    fTree.Write("data/Trash/files/b", "2");
    fTree.Write("data/Trash/info/tree.trashinfo", "[Trash Info]\n");
    fTree.Write("data/Trash/info/b.trashinfo", "[Trash Info]\n");
    OpenTwo();
    fWindow->PostMessage(kEmptyTrash);
    bool isSeen = false;
    EXPECT_TRUE(WaitFor([&] {
        isSeen = isSeen || kits::testing::CountShown("Empty Trash") > 0;
        return fTree.List("data/Trash/files").empty() && fTree.List("data/Trash/info").empty();
    }));
    EXPECT_FALSE(isSeen);
    EXPECT_TRUE(fTree.IsFolder("data/Trash/files"));
}

TEST_F(WindowOperationsTest, AnEmptyTrashIsEmptiedTwice)
{
    OpenTwo();
    Send(kEmptyTrash);
    Send(kEmptyTrash);
    EXPECT_EQ(fTree.List("data/Trash/files"), "");
}

// Volumes

/// Shows a volume at its top and in a folder inside, unmounts it and says what became of the panes.
class UnmountTest : public WindowOperationsTest, public ::testing::WithParamInterface<int>
{
protected:
    bool ShowAndUnmount()
    {
        fTree.MakeFolder("volume");
        const std::string volume = fTree.Path("volume");
        if (!MountMemory(volume, 1 << 20)) {
            return false;
        }
        fTree.Write("volume/deep/inside/a", "1");
        WritePanes({"volume", "volume/deep/inside", "two"});
        Open();
        EXPECT_EQ(PanePath(0), volume);
        EXPECT_EQ(PanePath(1), fTree.Path("volume/deep/inside"));
        // Folders that are open for some idle seconds more keep it busy, the panes as such do not.
        EXPECT_TRUE(WaitFor([&] { return umount2(volume.c_str(), GetParam()) == 0; }))
            << strerror(errno);
        EXPECT_TRUE(WaitFor([this] { return PanePath(0) == HomeFolder(); }));
        EXPECT_TRUE(WaitFor([this] { return PanePath(1) == HomeFolder(); }));
        EXPECT_EQ(PanePath(2), fTree.Path("two"));
        return !HasFailure();
    }
};

TEST_P(UnmountTest, PanesAtTheTopAndInsideGoHome)
{
    const PrivateResult result = RunWithPrivateMounts([this] { return ShowAndUnmount(); });
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }
    EXPECT_EQ(result, PrivateResult::kPassed);
}

INSTANTIATE_TEST_SUITE_P(Ways, UnmountTest, ::testing::Values(0, MNT_DETACH),
                         [](const auto& tested) {
                             return std::string(tested.param == 0 ? "AtOnce" : "Detached");
                         });

TEST_F(WindowOperationsTest, APaneThatWentElsewhereStaysThere)
{
    const PrivateResult result = RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("one"), 1 << 20)) {
            return false;
        }
        OpenTwo();
        const int32 device = dev_for_path(fTree.Path("one").c_str());
        SendText(514, "../three");
        BMessage notice(B_NODE_MONITOR);
        notice.AddInt32("opcode", B_DEVICE_UNMOUNTED);
        notice.AddInt32("device", device);
        Send(notice);
        return PanePath(0) == fTree.Path("three") && PanePath(1) == fTree.Path("two");
    });
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }
    EXPECT_EQ(result, PrivateResult::kPassed);
}

} // namespace norvane
