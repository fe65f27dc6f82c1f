#include "PaneWindowFixture.h"
#include "panes/EntryClipboard.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <Entry.h>

namespace {

using namespace norvane;
using namespace kits::testing;

/// Entries that go over the clipboard.
class EntryClipboardTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
            fTree.Write(name, name);
        }
        fTree.MakeFolder("else");
    }

    void TearDown() override
    {
        PutText(); // nothing stays cut for the next test
        PaneWindowFixture::TearDown();
    }

    static void PutText()
    {
        be_clipboard->Lock();
        be_clipboard->Clear();
        be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "text", 4);
        be_clipboard->Commit();
        be_clipboard->Unlock();
    }

    // As the keys do by way of the window.
    void Command(uint32 what)
    {
        fWindow->PostMessage(what, fList);
        ASSERT_TRUE(Sync(fWindow));
    }

    static std::string OnClipboard()
    {
        std::string names;
        be_clipboard->Lock();
        entry_ref ref;
        for (int32 i = 0; be_clipboard->Data()->FindRef("refs", i, &ref) == B_OK; i++) {
            names += std::string(ref.name) + " ";
        }
        be_clipboard->Unlock();
        return names;
    }

    bool IsCut(const char* name)
    {
        entry_ref ref;
        return get_ref_for_path(fTree.Path(name).c_str(), &ref) == B_OK &&
               EntryClipboard::IsCut(ref);
    }

    void ShowElse()
    {
        Locked([this] {
            fList->SetPath(fTree.Path("else").c_str());
            return 0;
        });
        ASSERT_TRUE(Becomes([this] { return Names(); }, ".. "));
    }

    int32 BlackPixels()
    {
        const Picture picture = TakePicture(fWindow);
        return picture.Count(rgb_color{0, 0, 0, 255}, 0, 60, picture.width, picture.height - 60);
    }
};

TEST_F(EntryClipboardTest, CopiesWhatIsMarkedElseSelected)
{
    Open();
    Click(2);
    Command(B_COPY);
    EXPECT_EQ(OnClipboard(), "b ");
    Click(1, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    Command(B_COPY);

    EXPECT_EQ(OnClipboard(), "b a c "); // a click's anchor was marked with the first
    EXPECT_FALSE(IsCut("shown/a"));
}

TEST_F(EntryClipboardTest, TheParentRowIsNotCopied)
{
    Open();
    PutText();
    Click(0);
    Command(B_COPY);
    EXPECT_EQ(OnClipboard(), "");
}

TEST_F(EntryClipboardTest, PastedCopiesAreCopies)
{
    Open();
    Click(2);
    Command(B_COPY);
    ShowElse();
    Command(B_PASTE);

    EXPECT_TRUE(WaitFor([this] { return fTree.Read("else/b") == "shown/b"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
    EXPECT_TRUE(fTree.Exists("shown/b"));
    EXPECT_EQ(OnClipboard(), "b "); // and may be pasted again
}

TEST_F(EntryClipboardTest, PastedCutsAreMovedOnce)
{
    Open();
    Click(2);
    Command(B_CUT);
    EXPECT_TRUE(IsCut("shown/b"));
    EXPECT_FALSE(IsCut("shown/a"));
    ShowElse();
    Command(B_PASTE);

    EXPECT_TRUE(WaitFor([this] { return fTree.Read("else/b") == "shown/b"; }));
    EXPECT_TRUE(WaitFor([this] { return !fTree.Exists("shown/b"); }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
    EXPECT_EQ(OnClipboard(), "");
    EXPECT_FALSE(IsCut("else/b"));
}

TEST_F(EntryClipboardTest, ACutPastedIntoItsOwnFolderStaysCut)
{
    Open();
    Click(2);
    Command(B_CUT);
    Command(B_PASTE);
    ASSERT_TRUE(Sync(fWindow));

    EXPECT_TRUE(IsCut("shown/b"));
    EXPECT_EQ(CountShown("Copy"), 0);
    EXPECT_EQ(fTree.List("shown"), "a\nb\nc\n");
}

TEST_F(EntryClipboardTest, CutRowsAreFadedUntilSomethingElseIsThere)
{
    Open();
    Click(2);
    const int32 before = BlackPixels();

    Command(B_CUT);
    EXPECT_TRUE(WaitFor([&] { return BlackPixels() < before; }));

    PutText();
    EXPECT_TRUE(WaitFor([&] { return BlackPixels() == before; }));
    EXPECT_FALSE(IsCut("shown/b"));
}

TEST_F(EntryClipboardTest, TextIsNotPastedAsEntries)
{
    Open();
    PutText();
    Command(B_PASTE);
    ASSERT_TRUE(Sync(fWindow));

    EXPECT_EQ(CountShown("Copy"), 0);
    EXPECT_EQ(CountShown("Foo"), 0);
}

TEST_F(EntryClipboardTest, QueryResultsRefuseAPasteInWords)
{
    Open();
    Click(2);
    Command(B_COPY);
    BMessage results(601);
    fWindow->RunHere([&] { fList->Populate(&results); });
    ASSERT_TRUE(Sync(fWindow));
    fWindow->PostMessage(B_PASTE, fList);

    std::string text;
    EXPECT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "This view contains Query Results. You cannot copy or move to it.");
}

} // namespace
