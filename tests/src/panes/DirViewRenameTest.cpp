#include "PaneWindowFixture.h"
#include "ScriptedSource.h"
#include "panes/EditControl.h"

#include <Font.h>
#include <InterfaceDefs.h>

#include <sys/stat.h>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

/// The rename field and new folders.
class DirViewRenameTest : public PaneWindowFixture
{
protected:
    bool HasField()
    {
        return Locked([this] { return fList->FindView("renamecontainer") != nullptr; });
    }

    bool FieldOpens()
    {
        return WaitFor([this] {
            return Locked(
                [this] { return dynamic_cast<EditControl*>(fWindow->CurrentFocus()) != nullptr; });
        });
    }

    bool FieldCloses()
    {
        return WaitFor([this] { return !HasField(); });
    }

    bool ListHasFocus()
    {
        return Locked([this] { return fWindow->CurrentFocus() == fList; });
    }

    void StartRename(int32 row)
    {
        Click(row);
        TypeFunctionKey(B_F6_KEY, B_SHIFT_KEY);
        ASSERT_TRUE(FieldOpens());
    }
};

TEST_F(DirViewRenameTest, EnterRenamesAndGivesTheFocusBack)
{
    fTree.Write("shown/old", "1");
    Open();
    StartRename(1);
    TypeText("new");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "new\n"; }));
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. new "));
    EXPECT_FALSE(HasField());
    EXPECT_TRUE(ListHasFocus());
}

TEST_F(DirViewRenameTest, WhatIsTypedAfterEnterIsForTheList)
{
    fTree.Write("shown/jar", "1");
    fTree.Write("shown/old", "1");
    Open();
    StartRename(2);
    TypeText("new");
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    fWindow->RunHere([] { snooze(100'000); }); // a window that is slow to answer
    TypeKey(B_ENTER);
    TypeText("j");
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "jar\nnew\n"; }));
    EXPECT_TRUE(
        WaitFor([this] { return Locked([this] { return fList->CurrentSelection() == 1; }); }));
}

TEST_F(DirViewRenameTest, EnterWithoutAChangeAsksForNothing)
{
    fTree.Write("shown/old", "1");
    Open();
    StartRename(1);
    TypeKey(B_ENTER);
    EXPECT_TRUE(FieldCloses());
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    const bool isRefused = kits::testing::CountShown("Foo") > 0; // as of a name that exists
    EXPECT_FALSE(isRefused);
    if (isRefused) {
        EXPECT_TRUE(AnswerAlert("OK"));
    }
    EXPECT_TRUE(ListHasFocus());
}

TEST_F(DirViewRenameTest, EscapeLeavesTheName)
{
    fTree.Write("shown/old", "1");
    Open();
    StartRename(1);
    TypeText("new");
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(FieldCloses());
    EXPECT_EQ(fTree.List("shown"), "old\n");
    EXPECT_TRUE(ListHasFocus());
}

TEST_F(DirViewRenameTest, TheFieldLiesOverTheNameCell)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "1");
    Open();
    StartRename(2);
    Locked([this] {
        const BRect row = fList->ItemFrame(2);
        const BRect field = fList->FindView("renamecontainer")->Frame();
        EXPECT_EQ(field.top, row.top);
        EXPECT_EQ(field.bottom, row.bottom);
        EXPECT_EQ(field.Width(), static_cast<float>(fList->ColumnWidth(1)));
        EXPECT_EQ(field.left, fList->ColumnAt(1)->Begin());
    });
}

TEST_F(DirViewRenameTest, TheFieldFollowsItsColumn)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "1");
    Open();
    StartRename(2);
    Locked([this] {
        fList->ColumnAt(1)->SetWidth(150);
        const int32 order[] = {0, 2, 1, 3, 4};
        fList->SetDisplayOrder(order);
        const BView* field = fList->FindView("renamecontainer");
        EXPECT_EQ(field->Frame().LeftTop(), BPoint(92, fList->ItemFrame(2).top));
        EXPECT_EQ(field->Frame().Width(), 150);
        EXPECT_EQ(field->ChildAt(0)->Frame().Width(), 148);
    });
}

TEST_F(DirViewRenameTest, TheNameKeepsItsLetters)
{
    fTree.Write("shown/a", "1");
    Open();
    StartRename(1);
    Locked([this] {
        BFont shown;
        BFont edited;
        fList->GetFont(&shown);
        dynamic_cast<EditControl*>(fWindow->CurrentFocus())->GetFontAndColor(&edited, nullptr);
        EXPECT_EQ(edited, shown);
        EXPECT_NE(edited.Size(), be_plain_font->Size()); // the list has a size of its own
    });
}

TEST_F(DirViewRenameTest, ANameThatExistsIsRefused)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "2");
    Open();
    StartRename(1);
    TypeText("b");
    TypeKey(B_ENTER);
    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Could not rename: an entry of that name exists");
    EXPECT_EQ(fTree.Read("shown/a"), "1");
    EXPECT_EQ(fTree.Read("shown/b"), "2");
}

TEST_F(DirViewRenameTest, WhatIsNoNameIsRefused)
{
    fTree.Write("shown/a", "1");
    Open();
    for (const char* name : {"..", ".", "x/y"}) {
        StartRename(1);
        TypeText(name);
        TypeKey(B_ENTER);
        std::string text;
        ASSERT_TRUE(AnswerAlert("OK", &text)) << name;
        EXPECT_EQ(text.rfind("Could not rename: ", 0), 0u);
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(FieldOpens());
        TypeKey(B_ESCAPE);
        ASSERT_TRUE(FieldCloses());
    }
    StartRename(1);
    TypeKey(B_BACKSPACE); // all of it is selected
    TypeKey(B_ENTER);
    ASSERT_TRUE(AnswerAlert("OK"));
    EXPECT_EQ(fTree.List("shown"), "a\n");
    EXPECT_EQ(fTree.List(), "config\nshown\n");
}

TEST_F(DirViewRenameTest, AFieldWhoseRowGoesCloses)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "2");
    Open();
    StartRename(1);
    TypeText("new");
    fTree.Remove("shown/a");
    EXPECT_TRUE(FieldCloses());
    EXPECT_EQ(fTree.List("shown"), "b\n");
    EXPECT_TRUE(ListHasFocus());
    // The next one is not closed by what the first one still had to say.
    StartRename(1);
    TypeText("c");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "c\n"; }));
}

TEST_F(DirViewRenameTest, AnotherRowsFieldTakesTheFirstOnesPlace)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "2");
    Open();
    StartRename(1);
    Locked([this] { fList->Edit(2); });
    // What the first field still has to say is not meant for the second.
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    ASSERT_TRUE(HasField());
    TypeText("c");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "a\nc\n"; }));
}

TEST_F(DirViewRenameTest, AFieldMovesWithItsRow)
{
    fTree.Write("shown/b", "1");
    Open();
    StartRename(1);
    fTree.Write("shown/a", "1");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. a b "));
    Locked([this] {
        EXPECT_EQ(fList->FindView("renamecontainer")->Frame().top, fList->ItemFrame(2).top);
    });
    TypeText("new");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "a\nnew\n"; }));
}

TEST_F(DirViewRenameTest, AFieldThatLosesTheFocusCloses)
{
    fTree.Write("shown/a", "1");
    Open();
    StartRename(1);
    TypeText("new");
    Locked([this] { fList->MakeFocus(true); });
    EXPECT_TRUE(FieldCloses());
    EXPECT_EQ(fTree.List("shown"), "a\n");
}

TEST_F(DirViewRenameTest, AnotherListingClosesTheField)
{
    fTree.Write("shown/a", "1");
    Open();
    StartRename(1);
    Locked([this] { fList->Refresh(); });
    EXPECT_FALSE(HasField());
}

TEST_F(DirViewRenameTest, TheParentRowHasNoField)
{
    Open();
    Locked([this] {
        fList->Select(0);
        fList->DoRename();
    });
    EXPECT_FALSE(HasField());
}

TEST_F(DirViewRenameTest, BytesThatAreNoTextSurvive)
{
    fTree.Write("shown/bad-\xff.txt", "1");
    Open();
    StartRename(1);
    TypeKey(B_END);
    TypeText("2");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "bad-\xff.txt2\n"; }));
}

TEST_F(DirViewRenameTest, InAQueryItActsOnTheRowsOwnEntry)
{
    fTree.Write("shown/b", "in the pane's folder");
    fTree.Write("other/b", "found");
    Open();
    Locked([this] {
        BMessage results('quer');
        entry_ref ref;
        get_ref_for_path(fTree.Path("other/b").c_str(), &ref);
        results.AddRef("refs", &ref);
        fList->Populate(&results);
        fList->Rename("new", 0);
    });
    EXPECT_EQ(fTree.Read("other/new"), "found");
    EXPECT_EQ(fTree.List("shown"), "b\n");
    EXPECT_EQ(Names(), fTree.Path("other/new") + " ");
}

// New folders

TEST_F(DirViewRenameTest, ANewFolderIsSelectedAndItsNameEdited)
{
    fTree.Write("shown/z", "1");
    Open();
    fWindow->RunHere([this] { fList->DoNewFolder(); });
    ASSERT_TRUE(FieldOpens());
    EXPECT_TRUE(fTree.IsFolder("shown/New Folder"));
    EXPECT_EQ(Selected(), "New Folder");
    EXPECT_EQ(Names(), ".. New Folder z ");
    TypeText("mine");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.IsFolder("shown/mine"); }));
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. mine z "));
}

TEST_F(DirViewRenameTest, ANewFolderThatIsListedLaterIsEditedThen)
{
    Open();
    ScriptedSource::Places places;
    ScriptedSource* lent = nullptr;
    Locked([&] {
        auto source = std::make_unique<ScriptedSource>(places, "server", fTree.Path("shown"));
        lent = source.get();
        EXPECT_TRUE(fList->Populate(std::move(source)));
        fList->DoNewFolder();
    });
    EXPECT_FALSE(HasField());
    Locked([&] { lent->Change(); });
    EXPECT_TRUE(HasField());
    EXPECT_EQ(Selected(), "New Folder");
    Locked([&] { fList->Populate(fTree.Path("shown").c_str()); });
    EXPECT_FALSE(HasField());
}

TEST_F(DirViewRenameTest, NewFoldersAreNumbered)
{
    fTree.MakeFolder("shown/New Folder");
    fTree.MakeFolder("shown/New Folder 2");
    Open();
    fWindow->RunHere([this] { fList->DoNewFolder(); });
    EXPECT_TRUE(WaitFor([this] { return fTree.IsFolder("shown/New Folder 3"); }));
}

TEST_F(DirViewRenameTest, AFileOfTheNameIsInTheWayToo)
{
    fTree.Write("shown/New Folder", "a file");
    Open();
    fWindow->RunHere([this] { fList->DoNewFolder(); });
    EXPECT_TRUE(WaitFor([this] { return fTree.IsFolder("shown/New Folder 2"); }));
    EXPECT_EQ(fTree.Read("shown/New Folder"), "a file");
}

TEST_F(DirViewRenameTest, AFolderThatCannotBeMadeIsTold)
{
    Open();
    fWindow->RunHere([this] { fList->MkDir("a/b"); });
    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text.rfind("Some items could not be handled whole:\n\ta/b: ", 0), 0u);
    Locked([this] { fList->MkDir("fine"); });
    EXPECT_TRUE(fTree.IsFolder("shown/fine"));
}

} // namespace norvane
