#include "PaneWindowFixture.h"
#include "panes/EntryClipboard.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>

namespace {

using namespace norvane;
using namespace kits::testing;

/// The menu of a row: what it is about, and what is done while and after it stands open. Its items
/// are chosen by their first letters: "m" is Mark, then Move to Trash; there is no next pane.
class DirViewMenuTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
            fTree.Write(name, name);
        }
    }
    void OpenMenuAt(BPoint where)
    {
        kits::testing::Click(fList, where, B_SECONDARY_MOUSE_BUTTON);
        SyncServer();
        ASSERT_TRUE(Sync(fWindow));
    }
    void OpenMenuOf(int32 row) { OpenMenuAt(NameCell(row)); }
    /// Letters go from item to item; the last one is chosen. A question may come then.
    static void Pick(const char* letters)
    {
        TypeText(letters);
        TypeKey(B_ENTER);
    }
    void Choose(const char* letters)
    {
        Pick(letters);
        ASSERT_TRUE(Sync(fWindow));
        ASSERT_TRUE(Sync(fWindow)); // what was chosen comes by message
    }
    std::string Asked(const char* button)
    {
        std::string text;
        EXPECT_TRUE(AnswerAlert(button, &text));
        return text;
    }
    static std::string ClipboardText()
    {
        be_clipboard->Lock();
        const void* bytes = nullptr;
        ssize_t size = 0;
        be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &bytes, &size);
        std::string text(static_cast<const char*>(bytes), static_cast<size_t>(size));
        be_clipboard->Unlock();
        return text;
    }
};

TEST_F(DirViewMenuTest, TheSecondaryButtonOpensItForItsRow)
{
    Open();
    OpenMenuOf(2);

    Choose("m");

    EXPECT_EQ(Marked(), "b ");
    EXPECT_EQ(Selected(), "b");
}

TEST_F(DirViewMenuTest, APressThatMovesAwayOpensNone)
{
    Open();
    const BPoint from = NameCell(2);
    Drag(fList, from, from + BPoint(0, 40), 5, B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(Sync(fWindow));

    Choose("c"); // goes to the row of that name

    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(Selected(), "c");
}

TEST_F(DirViewMenuTest, OnAMarkedRowItIsAboutAllMarks)
{
    Open();
    Click(1, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    OpenMenuOf(1);

    Pick("m"); // the mark is taken away by Unmark

    EXPECT_EQ(Asked("Cancel"),
              "Do you really want to delete the following files/folders:\n\ta\n\tc");
    EXPECT_EQ(Marked(), "a c ");
}

TEST_F(DirViewMenuTest, OnAnotherRowItIsAboutThatRowAlone)
{
    Open();
    Click(1, B_COMMAND_KEY);
    Click(3, B_COMMAND_KEY);
    OpenMenuOf(2);

    Pick("mm");

    EXPECT_EQ(Asked("Delete"), "Do you really want to delete the following files/folders:\n\tb");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. a c "));
    EXPECT_EQ(Marked(), "a c ");
    EXPECT_TRUE(WaitForNoWindow("Delete"));
}

TEST_F(DirViewMenuTest, ByKeyItIsAboutTheMarks)
{
    Open();
    Click(1, B_COMMAND_KEY);
    Locked([this] { fList->Select(2); });
    TypeFunctionKey(B_F10_KEY, B_SHIFT_KEY);
    ASSERT_TRUE(Sync(fWindow));

    Pick("mm");

    EXPECT_EQ(Asked("Cancel"), "Do you really want to delete the following files/folders:\n\ta");
}

TEST_F(DirViewMenuTest, ByKeyWithoutASelectionItIsAboutTheMarks)
{
    Open();
    TypeText("+");
    Locked([this] { fList->DeselectAll(); });
    TypeFunctionKey(B_F10_KEY, B_SHIFT_KEY);
    ASSERT_TRUE(Sync(fWindow));

    Pick("m");

    EXPECT_EQ(Asked("Cancel"),
              "Do you really want to delete the following files/folders:\n\ta\n\tb\n\tc");
}

TEST_F(DirViewMenuTest, TheMenuKeyOpensIt)
{
    Open();
    Click(1);
    BMessage key(B_UNMAPPED_KEY_DOWN);
    key.AddInt32("key", 0x68);
    fWindow->PostMessage(&key, fList);
    ASSERT_TRUE(Sync(fWindow));

    Choose("m");

    EXPECT_EQ(Marked(), "a ");
}

TEST_F(DirViewMenuTest, KeysTypedAheadReachTheMenu)
{
    Open();
    Locked([this] { fList->Select(3); });
    TypeFunctionKey(B_F10_KEY, B_SHIFT_KEY);
    Choose("m");

    EXPECT_EQ(Marked(), "c ");
}

TEST_F(DirViewMenuTest, ARowThatWentIsTold)
{
    Open();
    OpenMenuOf(2);
    fTree.Remove("shown/b");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. a c "));

    Pick("mm");

    EXPECT_EQ(Asked("OK"), "What the menu was opened for is not here any more.");
    EXPECT_EQ(fTree.List("shown"), "a\nc\n");
}

TEST_F(DirViewMenuTest, AnotherEntryOfThatNameIsLeftAlone)
{
    Open();
    OpenMenuOf(2);
    ASSERT_EQ(BEntry(fTree.Path("shown/b").c_str()).Rename("kept"), B_OK);
    fTree.Write("shown/b", "another");
    ASSERT_TRUE(Becomes([this] { return std::to_string(Names().size()); }, "14")); // .. a c kept b

    Pick("mm");

    EXPECT_EQ(Asked("OK"), "What the menu was opened for is not here any more.");
    EXPECT_EQ(fTree.Read("shown/b"), "another");
}

TEST_F(DirViewMenuTest, OfMarksThoseThatAreLeftAreMeant)
{
    Open();
    Click(1, B_COMMAND_KEY);
    Click(2, B_COMMAND_KEY);
    OpenMenuOf(1);
    fTree.Remove("shown/a");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. b c "));

    Pick("m");

    EXPECT_EQ(Asked("Cancel"), "Do you really want to delete the following files/folders:\n\tb");
}

TEST_F(DirViewMenuTest, AnotherPlaceIsLeftAlone)
{
    fTree.Write("else/b", "other");
    Open();
    OpenMenuOf(2);
    Locked([this] { fList->SetPath(fTree.Path("else").c_str()); });
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. b "));

    Pick("mm");

    EXPECT_EQ(Asked("OK"), "What the menu was opened for is not here any more.");
    EXPECT_EQ(fTree.Read("else/b"), "other");
}

TEST_F(DirViewMenuTest, InAnotherPlaceNoFolderIsMade)
{
    fTree.MakeFolder("else");
    Open();
    OpenMenuAt(BPoint(60, 250));
    Locked([this] { fList->SetPath(fTree.Path("else").c_str()); });
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. "));

    Pick("n");

    EXPECT_EQ(Asked("OK"), "What the menu was opened for is not here any more.");
    EXPECT_EQ(fTree.List("else"), "");
    EXPECT_EQ(fTree.List("shown"), "a\nb\nc\n");
}

TEST_F(DirViewMenuTest, CopiesPathsByteForByte)
{
    fTree.Write("shown/new\nline", "1");
    Open();
    TypeText("+");
    ASSERT_TRUE(Sync(fWindow));
    OpenMenuOf(1);

    Choose("ccc"); // Cut, Copy, Copy Path

    const std::string folder = fTree.Path("shown");
    EXPECT_TRUE(Becomes([] { return ClipboardText(); }, folder + "/a\n" + folder + "/b\n" + folder +
                                                            "/c\nfile://" + folder +
                                                            "/new%0Aline"));
}

TEST_F(DirViewMenuTest, CopiesEntriesForPasting)
{
    Open();
    OpenMenuOf(1);
    Choose("cc");
    EXPECT_TRUE(WaitFor([] { return EntryClipboard::MayHoldEntries(); }));

    OpenMenuOf(1);
    Choose("ccc"); // a path: a text
    EXPECT_TRUE(WaitFor([] { return !EntryClipboard::MayHoldEntries(); }));
}

TEST_F(DirViewMenuTest, RenamesItsRowWhateverIsMarked)
{
    Open();
    Click(1, B_COMMAND_KEY);
    OpenMenuOf(2);

    Choose("r");
    TypeText("new");
    TypeKey(B_ENTER);

    EXPECT_TRUE(Becomes([this] { return fTree.List("shown"); }, "a\nc\nnew\n"));
}

TEST_F(DirViewMenuTest, BesideTheRowsItIsThePlaces)
{
    Open();
    OpenMenuAt(BPoint(60, 250));

    Choose("n");

    EXPECT_TRUE(WaitFor([this] { return fTree.IsFolder("shown/New Folder"); }));
}

TEST_F(DirViewMenuTest, RestoresFromTheTrash)
{
    Open();
    OpenMenuOf(2);
    Pick("mm");
    Asked("Delete");
    ASSERT_TRUE(WaitFor([this] { return fTree.Exists("data/Trash/files/b"); }));
    ASSERT_TRUE(WaitForNoWindow("Delete"));
    Locked([this] { fList->SetPath(fTree.Path("data/Trash/files").c_str()); });
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. b "));
    OpenMenuOf(1);

    Choose("rr"); // Rename, Restore

    EXPECT_TRUE(WaitFor([this] { return fTree.Exists("shown/b"); }));
    EXPECT_EQ(fTree.Read("shown/b"), "shown/b");
    EXPECT_TRUE(WaitFor([this] { return !fTree.Exists("data/Trash/info/b.trashinfo"); }));
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. "));
}

} // namespace
