#include "panes/OpenEntry.h"

#include "DesktopPrograms.h"
#include "MessageCodes.h"
#include "NoThreads.h"
#include "PaneWindowFixture.h"
#include "StoppedWatcher.h"

#include <InterfaceDefs.h>

#include <filesystem>

namespace norvane {

using kits::testing::HoldKey;
using kits::testing::TypeFunctionKey;
using kits::testing::WaitFor;

/// What Enter, a double click and F4 start.
class OpenEntryTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        fPrograms.Clear();
        PaneWindowFixture::SetUp();
    }

    void Select(const std::string& name)
    {
        Locked([&] {
            for (int32 row = 0; row < fList->CountItems(); row++) {
                if (fList->RowAt(row)->GetEntryName() == name) {
                    fList->Select(row);
                    return;
                }
            }
            ADD_FAILURE() << "no row " << name;
        });
    }

    void Enter(const std::string& name)
    {
        Select(name);
        Type(B_ENTER);
    }

    void Edit(const std::string& name)
    {
        Select(name);
        TypeFunctionKey(B_F4_KEY);
        kits::testing::SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    void ShowHits(const std::vector<std::string>& hits)
    {
        BMessage results('quer');
        for (const std::string& hit : hits) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(fTree.Path(hit).c_str(), &ref), B_OK);
            results.AddRef("refs", &ref);
        }
        Locked([&] { return fList->Populate(&results); });
    }

    /// What was given to all programs that were started, by lines.
    std::string Given(size_t count = 1)
    {
        std::string given;
        for (const StartRecord& start : fPrograms.Await(count)) {
            for (size_t word = 1; word < start.arguments.size(); word++) {
                given += start.arguments[word] + "\n";
            }
        }
        return given;
    }

    /// The name and status of each that could not be opened.
    std::string NotOpened()
    {
        std::string told;
        for (const BMessage& message : fWindow->Received()) {
            if (message.what == kNotOpened) {
                told += message.GetString("name", "(no name)") + std::string(":") +
                        std::to_string(message.GetInt32("status", B_OK)) + " ";
            }
        }
        return told;
    }

    static std::string Told(const std::string& name, status_t status)
    {
        return name + ":" + std::to_string(status) + " ";
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
};

TEST_F(OpenEntryTest, EnterOpensAFile)
{
    fTree.Write("shown/a b.txt", "1");
    Open();
    Enter("a b.txt");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/a b.txt") + "\n");
}

TEST_F(OpenEntryTest, ADoubleClickOpensAFile)
{
    fTree.Write("shown/a.txt", "1");
    Open();
    Click(1, 0, 2);
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/a.txt") + "\n");
    EXPECT_EQ(fPrograms.Count(), 1u);
}

TEST_F(OpenEntryTest, AHeldEnterOpensItOnce)
{
    fTree.Write("shown/a.txt", "1");
    Open();
    Select("a.txt");
    {
        const NoThreads none; // so each is told at once
        HoldKey(B_ENTER, 20);
        kits::testing::SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
        ASSERT_TRUE(kits::testing::Sync(fWindow)); // behind what the first one was told
    }
    EXPECT_EQ(NotOpened(), Told("a.txt", B_NO_MORE_THREADS));
}

TEST_F(OpenEntryTest, EnterOpensWhatALinkLeadsTo)
{
    fTree.Write("elsewhere/a.txt", "1");
    fTree.Link("shown/link", "../elsewhere/a.txt");
    Open();
    Enter("link");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("elsewhere/a.txt") + "\n");
}

TEST_F(OpenEntryTest, EnterSaysThatALinkLeadsNowhere)
{
    fTree.Link("shown/broken", "nowhere");
    Open();
    Enter("broken");
    EXPECT_TRUE(
        Becomes([this] { return NotOpened(); }, Told("broken", B_LAUNCH_FAILED_NO_RESOLVE_LINK)));
    EXPECT_EQ(Names(), ".. broken ");
}

TEST_F(OpenEntryTest, EnterOpensAFileToWhichALinkLeadsByNow)
{
    fTree.Link("shown/link", "../elsewhere.txt");
    Open();
    fTree.Write("elsewhere.txt", "1");
    Enter("link");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("elsewhere.txt") + "\n");
}

TEST_F(OpenEntryTest, EnterDoesNothingToOtherNodes)
{
    ASSERT_EQ(mkfifo(fTree.Path("shown/fifo.txt").c_str(), 0600), 0);
    fTree.Link("shown/link", "fifo.txt");
    fTree.Write("shown/last.txt", "1");
    Open();
    Enter("fifo.txt");
    Enter("link");
    Edit("fifo.txt");
    Enter("last.txt");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/last.txt") + "\n");
    EXPECT_EQ(NotOpened(), "");
    EXPECT_EQ(Names(), ".. fifo.txt link last.txt ");
}

TEST_F(OpenEntryTest, EnterSaysThatNoProgramIsSet)
{
    fTree.Write("shown/a.mp4", "1");
    Open();
    Enter("a.mp4");
    EXPECT_TRUE(
        Becomes([this] { return NotOpened(); }, Told("a.mp4", B_LAUNCH_FAILED_NO_PREFERRED_APP)));
}

TEST_F(OpenEntryTest, EnterSaysThatAFileIsGone)
{
    fTree.Write("shown/a.txt", "1");
    Open();
    ShowHits({"shown/a.txt"});
    const StoppedWatcher late; // the row is still there
    ASSERT_TRUE(late.IsStopped());
    fTree.Remove("shown/a.txt");
    Enter(fTree.Path("shown/a.txt"));
    EXPECT_TRUE(Becomes([this] { return NotOpened(); }, Told("a.txt", B_ENTRY_NOT_FOUND)));
}

TEST_F(OpenEntryTest, EnterSaysThatThereIsNoThread)
{
    fTree.Write("shown/a.txt", "1");
    Open();
    Select("a.txt");
    {
        const NoThreads none;
        Type(B_ENTER);
    }
    EXPECT_TRUE(Becomes([this] { return NotOpened(); }, Told("a.txt", B_NO_MORE_THREADS)));
    Type(B_ENTER);
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/a.txt") + "\n");
}

TEST_F(OpenEntryTest, EnterOpensAQuerysHitByItsOwnEntry)
{
    fTree.Write("before/a.txt", "1");
    Open();
    ShowHits({"before/a.txt"});
    std::filesystem::rename(fTree.Path("before"), fTree.Path("after"));
    Enter(fTree.Path("before/a.txt"));
    EXPECT_EQ(Given(), "text\n" + fTree.Path("after/a.txt") + "\n");
}

TEST_F(OpenEntryTest, F3ShowsTheSelectedFileInAViewer)
{
    fTree.Write("shown/a.txt", "1");
    Open();
    Select("a.txt");

    TypeFunctionKey(B_F3_KEY);

    BWindow* viewer = kits::testing::WaitForWindow("a.txt");
    ASSERT_NE(viewer, nullptr);
    ASSERT_TRUE(viewer->Lock());
    EXPECT_EQ(viewer->Frame(), BRect(50, 50, 300, 500));
    viewer->Quit();
    EXPECT_TRUE(kits::testing::WaitForNoWindow("a.txt"));
}

TEST_F(OpenEntryTest, F3DoesNothingInAQuerysPane)
{
    fTree.Write("before/a.txt", "1");
    Open();
    ShowHits({"before/a.txt"});
    Select(fTree.Path("before/a.txt"));

    TypeFunctionKey(B_F3_KEY);

    kits::testing::SyncServer();
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("a.txt"), 0);
}

TEST_F(OpenEntryTest, F4OpensTheEditor)
{
    fTree.Write("shown/a.mp4", "1");
    Open();
    Edit("a.mp4");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/a.mp4") + "\n");
}

TEST_F(OpenEntryTest, F4OpensTheEditorForAQuerysHitByItsOwnEntry)
{
    fTree.Write("before/a.txt", "1");
    Open();
    ShowHits({"before/a.txt"});
    std::filesystem::rename(fTree.Path("before"), fTree.Path("after"));
    Edit(fTree.Path("before/a.txt"));
    EXPECT_EQ(Given(), "text\n" + fTree.Path("after/a.txt") + "\n");
}

TEST_F(OpenEntryTest, F4LeavesFoldersAlone)
{
    fTree.MakeFolder("shown/folder");
    fTree.Write("shown/last", "1");
    Open();
    Edit("..");
    Edit("folder");
    Edit("last");
    EXPECT_EQ(Given(), "text\n" + fTree.Path("shown/last") + "\n");
    EXPECT_EQ(Names(), ".. folder last ");
}

TEST_F(OpenEntryTest, OpensEachOfSeveralInTheEditor)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "1");
    Open();
    std::vector<entry_ref> entries(2);
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown/a").c_str(), &entries[0]), B_OK);
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown/b").c_str(), &entries[1]), B_OK);
    OpenInEditor(entries, BMessenger(fWindow));
    const std::string given = Given(2);
    EXPECT_NE(given.find("text\n" + fTree.Path("shown/a") + "\n"), std::string::npos);
    EXPECT_NE(given.find("text\n" + fTree.Path("shown/b") + "\n"), std::string::npos);
}

} // namespace norvane
