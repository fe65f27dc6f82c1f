#include "Event.h"
#include "FilePanelFixture.h"

#include <atomic>
#include <filesystem>
#include <fstream>

// When and in which order a panel reads its folders.

namespace {

using namespace kits::testing;

/// Whether a thread of this program has that name.
bool IsThreadRunning(const std::string& name)
{
    std::error_code error;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task", error)) {
        std::string found;
        std::ifstream comm(task.path() / "comm");
        if (std::getline(comm, found) && found == name) {
            return true;
        }
    }
    return false;
}

/// Waits with its answer for one name until it is let go.
class WaitingFilter : public BRefFilter
{
public:
    explicit WaitingFilter(std::string name) : fName(std::move(name)) {}

    bool Filter(const entry_ref* ref, BNode*, struct stat*, const char*) override
    {
        const bool passes = !takesOnlyZebras || ref->name[0] == 'Z';
        if (fName == ref->name) {
            asked.Happen();
            go.Await();
        }
        return passes;
    }

    Event asked;
    Event go; // once for all questions
    std::atomic<bool> takesOnlyZebras{false};

private:
    const std::string fName;
};

class FilePanelReadingTest : public FilePanelFixture
{
protected:
    void TearDown() override
    {
        fPanel.reset(); // before the filters
        FilePanelFixture::TearDown();
    }

    /// Sets a filter, in whose reading of the folder shown it need not wait.
    void OpenWith(const std::string& folder, BRefFilter* filter)
    {
        Open(folder);
        fPanel->SetRefFilter(filter);
        ASSERT_TRUE(Sync(fPanel->Window()));
    }
};

TEST_F(FilePanelReadingTest, AnotherFilterDoesNotUndoGoingToAFolder)
{
    OnlyZebras filter;
    const std::string to = fTree.Path("shown/folder");
    Open("shown");

    Locked([&](BWindow*) {
        fPanel->SetPanelDirectory(to.c_str());
        fPanel->SetRefFilter(&filter);
        return true;
    });

    EXPECT_TRUE(WaitFor([&] { return Shown() == to && Names().empty(); })) << Shown();
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, RefreshRepeatsTheReadingUnderWay)
{
    WaitingFilter filter("inner");
    const std::string to = fTree.Path("shown/folder");
    OpenWith("shown", &filter);
    fPanel->SetPanelDirectory(to.c_str());
    ASSERT_TRUE(filter.asked.Await());

    filter.takesOnlyZebras = true;
    fPanel->Refresh();
    ASSERT_TRUE(Sync(fPanel->Window()));
    filter.go.Happen();

    EXPECT_TRUE(WaitFor([&] { return Shown() == to; })) << Shown();
    EXPECT_EQ(Names(), "");
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, RefreshRepeatsTheFirstReading)
{
    WaitingFilter filter("b9"); // which is asked about last
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown").c_str(), &ref), B_OK);
    fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget, &ref, 0, true, nullptr, &filter);
    ASSERT_TRUE(filter.asked.Await());

    filter.takesOnlyZebras = true;
    fPanel->Refresh();
    ASSERT_TRUE(Sync(fPanel->Window()));
    filter.go.Happen();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    EXPECT_EQ(Names(), "folder Zebra ");
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, RefreshKeepsThatAPathWasTyped)
{
    fTree.Write("elsewhere/typed", "");
    WaitingFilter filter("typed");
    OpenWith("shown", &filter);
    TypeText(fTree.Path("elsewhere/typed").c_str());
    TypeKey(B_ENTER);
    ASSERT_TRUE(filter.asked.Await());

    fPanel->Refresh();
    ASSERT_TRUE(Sync(fPanel->Window()));
    filter.go.Happen();

    EXPECT_EQ(Sent(), "typed");
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, RefreshKeepsTheFolderThatWasLeft)
{
    fTree.MakeFolder("shown/before");
    WaitingFilter filter("Zebra");
    OpenWith("shown/folder", &filter);
    TypeKey(B_BACKSPACE);
    ASSERT_TRUE(filter.asked.Await());

    fPanel->Refresh();
    ASSERT_TRUE(Sync(fPanel->Window()));
    filter.go.Happen();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    EXPECT_EQ(Selected(), "folder");
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, GoingElsewhereForgetsTheFolderThatWasLeft)
{
    fTree.MakeFolder("other/before");
    fTree.MakeFolder("other/folder");
    WaitingFilter filter("Zebra");
    OpenWith("shown/folder", &filter);
    TypeKey(B_BACKSPACE);
    ASSERT_TRUE(filter.asked.Await());

    fPanel->SetPanelDirectory(fTree.Path("other").c_str());
    filter.go.Happen();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("other"); })) << Shown();
    EXPECT_EQ(Selected(), "before");
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, TypedFileIsNotChosenOnceThePanelWasCancelled)
{
    fTree.Write("elsewhere/typed", "");
    WaitingFilter filter("typed");
    OpenWith("shown", &filter);
    TypeText(fTree.Path("elsewhere/typed").c_str());
    TypeKey(B_ENTER);
    ASSERT_TRUE(filter.asked.Await());

    TypeKey(B_ESCAPE);
    TypeKey(B_ESCAPE);
    EXPECT_EQ(Sent(), "(cancelled)");
    ShowPanel();
    filter.go.Happen();
    ASSERT_TRUE(WaitFor([] { return !IsThreadRunning("panel folder"); }));
    ASSERT_TRUE(Sync(fPanel->Window()));

    EXPECT_TRUE(fPanel->IsShowing());
    EXPECT_EQ(fListener->Came().size(), 1u);
    fPanel.reset();
}

TEST_F(FilePanelReadingTest, FolderOfTheNameOfTheHomeFolderIsEntered)
{
    fTree.Write("odd/~/inner", "");
    Open("odd");

    TypeKey(B_ENTER);

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("odd/~"); })) << Shown();
}

// In enough places that a sort which keeps no order would show it.
TEST_F(FilePanelReadingTest, NamesOfOneRankStandInTheOrderOfTheirBytes)
{
    std::string expected;
    for (size_t zeros = 40; zeros > 0; --zeros) {
        const std::string name = "a" + std::string(zeros, '0') + "1";
        fTree.Write("alike/" + name, "");
        expected += name + " ";
    }

    Open("alike");

    EXPECT_EQ(Names(), expected);
}

} // namespace
