#include "AlertText.h"
#include "ViewerFixture.h"

#include <Entry.h>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace norvane;
using kits::testing::AnswerAlert;
using kits::testing::WaitFor;

class ViewerAlertsTest : public ViewerFixture
{
protected:
    /// Answers the alert that comes next; gives its title and text.
    std::string Next()
    {
        std::string text;
        EXPECT_TRUE(AnswerAlert("Ok", &text));
        return text;
    }

    void AddRef(BMessage& message, const char* name)
    {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        message.AddRef("refs", &ref);
    }

    static void Close(const char* title)
    {
        if (BWindow* window = kits::testing::WaitForWindow(title); window->Lock()) {
            window->Quit();
        }
    }
};

TEST_F(ViewerAlertsTest, FolderIsOfNoKnownType)
{
    fTree.MakeFolder("folder");
    Begin("folder");

    EXPECT_EQ(AlertText("Error!"), "info: Unknown file type! [Ok]*");
    Next();

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Error!"), 0);
    EXPECT_EQ(Text(), nullptr);
    EXPECT_STREQ(fWindow->Title(), "folder");
}

TEST_F(ViewerAlertsTest, OpensNoPipe)
{
    const std::string pipe = fTree.Path("pipe.txt");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(::inotify_add_watch(watch, pipe.c_str(), IN_OPEN), 0);
    Begin("pipe.txt");

    EXPECT_EQ(Next(), "Unknown file type!");

    char event[4096];
    EXPECT_LT(::read(watch, event, sizeof(event)), 0) << "the pipe was opened";
    ::close(watch);
}

TEST_F(ViewerAlertsTest, FileThatIsGoneIsToldOfStepByStep)
{
    Begin("gone.txt");

    EXPECT_EQ(Next(), "Error opening node!");
    EXPECT_EQ(Next(), "Error opening node info!");
    EXPECT_EQ(Next(), "An error occured, don't be surprised nothing happened.");

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Error!"), 0);
}

TEST_F(ViewerAlertsTest, WithoutAFileThereIsNothingToDo)
{
    fWindow = new ViewerWindow(BRect(50, 50, 300, 500), nullptr);
    fWindow->Show();

    EXPECT_EQ(Next(), "No file type, nothing to do.");
    EXPECT_STREQ(fWindow->Title(), "Viewer");
}

TEST_F(ViewerAlertsTest, DroppedFilesGetViewersTheLastOneFirst)
{
    fTree.Write("a.txt", "1");
    fTree.Write("b.txt", "2");
    fTree.MakeFolder("folder");
    fTree.Link("c.txt", "b.txt");
    fTree.Link("broken", "nowhere");
    fTree.Write("shown.txt", "3");
    OpenText("shown.txt");
    BMessage dropped(kLocalEntries);
    for (const char* name : {"a.txt", "folder", "broken", "b.txt", "c.txt"}) {
        AddRef(dropped, name);
    }
    fWindow->PostMessage(&dropped, Text());

    EXPECT_EQ(AlertText("Hrere"), "info: Here [Ok]*");
    Next();

    // The link is shown as what it leads to.
    ASSERT_NE(kits::testing::WaitForWindow("a.txt"), nullptr);
    EXPECT_TRUE(WaitFor([] { return kits::testing::CountShown("b.txt") == 2; }));
    EXPECT_EQ(kits::testing::CountShown("folder"), 0);
    EXPECT_EQ(kits::testing::CountShown("broken"), 0);
    BWindow* first = kits::testing::WaitForWindow("a.txt");
    EXPECT_EQ(BAutolock(first).IsLocked() ? first->Frame() : BRect(), BRect(50, 50, 250, 250));
    Close("a.txt");
    Close("b.txt");
    EXPECT_TRUE(WaitFor([] { return kits::testing::CountShown("b.txt") == 1; }));
    Close("b.txt");
    EXPECT_TRUE(kits::testing::WaitForNoWindow("b.txt"));
}

TEST_F(ViewerAlertsTest, DropWithoutEntriesDoesNothing)
{
    fTree.Write("shown.txt", "3");
    OpenText("shown.txt");

    fWindow->PostMessage(kLocalEntries);

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    ASSERT_TRUE(BAutolock(be_app).IsLocked());
    EXPECT_EQ(kits::testing::CountShown("Hrere"), 0);
}

} // namespace
