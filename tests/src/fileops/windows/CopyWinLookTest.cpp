#include "fileops/windows/CopyWin.h"

#include "OperationFixture.h"

#include <Autolock.h>
#include <InterfaceDefs.h>
#include <StatusBar.h>

#include <unistd.h>

namespace norvane {

using kits::testing::FindView;
using kits::testing::WaitFor;
using kits::testing::WaitForWindow;

/// What an operation's window shows, and how it is stopped. A question holds each one in the
/// middle.
class CopyWinLookTest : public OperationFixture
{
protected:
    CopyWin* StartWithClash(const std::vector<std::string>& names)
    {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            paths.push_back("from/" + name);
        }
        fTree.Write("to/" + names.back(), "old");
        CopyWin* window = Start(Request(paths));
        EXPECT_NE(WaitForWindow("Item Exists"), nullptr);
        return window;
    }

    /// The operation holds its window's lock, so the views are looked at without it.
    static BView* ViewOf(CopyWin* window, int32 index)
    {
        return window->ChildAt(0)->ChildAt(index);
    }

    static void ExpectLine(CopyWin* window, int32 index, BRect frame, const std::string& text)
    {
        const auto* line = dynamic_cast<BStringView*>(ViewOf(window, index));
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->Text(), text);
        EXPECT_EQ(line->Frame().left, frame.left);
        EXPECT_EQ(line->Frame().right, frame.right);
        // As high as the font, around the frame's middle.
        EXPECT_NEAR(line->Frame().top + line->Frame().bottom, frame.top + frame.bottom, 1);
    }

    static void Escape(CopyWin* window)
    {
        BMessage key(B_KEY_DOWN);
        const char escape[] = {B_ESCAPE, 0};
        key.AddString("bytes", escape);
        window->PostMessage(&key);
    }

    /// A first file that asks, then one that takes more than a frame to copy, then another.
    CopyWin* StartLongOperation()
    {
        fTree.Write("from/a", "new");
        fTree.Write("from/large", "");
        EXPECT_EQ(truncate(fTree.Path("from/large").c_str(), 200 << 20), 0);
        fTree.Write("from/z", "new");
        fTree.Write("to/a", "old");
        CopyWin* window = Start(Request({"from/a", "from/large", "from/z"}));
        EXPECT_NE(WaitForWindow("Item Exists"), nullptr);
        return window;
    }
};

TEST_F(CopyWinLookTest, ShowsPathsAndBytesUnderItsLabels)
{
    fTree.Write("from/a", std::string(5000, 'x'));
    fTree.Write("from/b", "new");
    CopyWin* window = StartWithClash({"a", "b"});
    ExpectLine(window, 0, BRect(10, 1, 48, 15), "From :");
    ExpectLine(window, 1, BRect(10, 16, 48, 30), "To     :");
    const auto* file = dynamic_cast<BStatusBar*>(ViewOf(window, 4));
    const auto* whole = dynamic_cast<BStatusBar*>(ViewOf(window, 5));
    ASSERT_NE(file, nullptr);
    ASSERT_NE(whole, nullptr);
    EXPECT_STREQ(file->Name(), "fileprogress");
    EXPECT_EQ(file->Frame().LeftTop(), BPoint(10, 31));
    EXPECT_STREQ(file->Label(), "Copying: ");
    EXPECT_STREQ(file->TrailingLabel(), " Bytes");
    EXPECT_STREQ(whole->Name(), "mainprogress");
    EXPECT_EQ(whole->Frame().LeftTop(), BPoint(10, 61));
    EXPECT_STREQ(whole->Text(), "Copying 2 files or directories");
    EXPECT_STREQ(whole->TrailingText(), "4 K");
    EXPECT_EQ(whole->MaxValue(), 5003);
    Answer("Skip");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinLookTest, CannotBeClosedOrResizedAndHasNothingToShowAtFirst)
{
    fTree.Write("from/a", "new");
    CopyWin* window = StartWithClash({"a"});
    ExpectLine(window, 2, BRect(50, 1, 290, 15), "initializing...");
    ExpectLine(window, 3, BRect(50, 16, 290, 30), "initializing...");
    for (int32 index = 0; index < 4; index++) {
        EXPECT_EQ(ViewOf(window, index)->ResizingMode(), B_FOLLOW_LEFT | B_FOLLOW_TOP);
        EXPECT_STREQ(ViewOf(window, index)->Name(), index == 0 ? "label1" : "label2");
    }
    const uint32 flags = B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE | B_NOT_RESIZABLE;
    EXPECT_EQ(window->Flags() & flags, flags);
    EXPECT_EQ(window->Look(), B_TITLED_WINDOW_LOOK);
    EXPECT_EQ(window->Feel(), B_NORMAL_WINDOW_FEEL);
    Answer("Skip");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinLookTest, OneItemsWindowCutsNothing)
{
    fTree.Write("from/a", "new");
    CopyWin* window = StartWithClash({"a"});
    const float bottom = window->Bounds().bottom;
    for (int32 index = 0; BView* view = ViewOf(window, index); index++) {
        EXPECT_TRUE(view->IsHidden(view->Parent()) || view->Frame().bottom <= bottom)
            << view->Name();
    }
    Answer("Skip");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinLookTest, NamesAnEmptyFile)
{
    fTree.Write("from/a", "");
    fTree.Write("from/b", "new");
    CopyWin* window = StartWithClash({"a", "b"});
    const auto* file = dynamic_cast<BStatusBar*>(ViewOf(window, 4));
    ASSERT_NE(file, nullptr);
    EXPECT_STREQ(file->Text(), "a");
    EXPECT_STREQ(file->TrailingText(), "0");
    Answer("Skip");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinLookTest, EscapeStopsAfterOneQuestion)
{
    CopyWin* window = StartLongOperation();
    Escape(window);
    Answer("Overwrite");
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("Stop", &text));
    EXPECT_EQ(text, "Stop this operation?");
    EXPECT_TRUE(HasEnded());
    EXPECT_FALSE(fTree.Exists("to/large")); // nobody asked for half of it
    EXPECT_FALSE(fTree.Exists("to/z"));
    EXPECT_EQ(fTree.Read("from/z"), "new");
}

TEST_F(CopyWinLookTest, ContinueGoesOnAfterEscape)
{
    CopyWin* window = StartLongOperation();
    Escape(window);
    Answer("Overwrite");
    ASSERT_TRUE(kits::testing::AnswerAlert("Continue"));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/z"), "new");
    EXPECT_EQ(fTree.Read("to/large").size(), 200u << 20);
}

} // namespace norvane
