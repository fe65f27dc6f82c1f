#include "ListFixture.h"
#include "fileops/engine/OwnNames.h"

namespace {

using namespace norvane;

class DirViewTest : public ListFixture
{
};

TEST_F(DirViewTest, HasItsColumns)
{
    ASSERT_EQ(fList->CountColumns(), 5);
    EXPECT_STREQ(fList->ColumnAt(0)->Label(), "1");
    EXPECT_STREQ(fList->ColumnAt(1)->Label(), "Name");
    EXPECT_EQ(fList->ColumnWidth(0), 20);
    EXPECT_EQ(fList->ColumnWidth(1), 108);
    EXPECT_EQ(fList->ColumnWidth(3), 145);
    EXPECT_EQ(fList->ColumnWidth(5), -1);
    fList->SetColumnWidth(1, 10);
    EXPECT_EQ(fList->ColumnWidth(1), 20);
    fList->SetColumnWidth(9, 50);
}

TEST_F(DirViewTest, ListsFoldersFirstInByteOrder)
{
    for (const char* name : {"shown/b", "shown/A", "shown/a", "shown/.hidden"}) {
        fTree.Write(name, "");
    }
    fTree.MakeFolder("shown/z");
    fTree.MakeFolder("shown/Y");
    fTree.Link("shown/toFolder", "z");
    EXPECT_EQ(Show("shown"), 1);
    EXPECT_EQ(Names(), ".. Y toFolder z .hidden A a b ");
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, StartsAnEmptyFolderWithTheParentRow)
{
    EXPECT_EQ(Show("shown"), 1);
    EXPECT_EQ(Names(), ".. ");
}

TEST_F(DirViewTest, ListsTheRootWithoutAParentRow)
{
    EXPECT_EQ(fList->Populate("/"), 1);
    ASSERT_GT(fList->CountItems(), 0);
    EXPECT_STRNE(fList->RowAt(0)->GetEntryName(), "..");
}

TEST_F(DirViewTest, LeavesOutWhatAnOperationIsWriting)
{
    fTree.Write("shown/a", "");
    const OwnTemporaryName written;
    fTree.Write(std::string("shown/") + written.Name(), "");
    Show("shown");
    EXPECT_EQ(Names(), ".. a ");
}

TEST_F(DirViewTest, ListsWhatAnOperationLeftBehind)
{
    fTree.Write("shown/.norvane-left over", "");
    Show("shown");
    EXPECT_EQ(Names(), ".. .norvane-left over ");
}

TEST_F(DirViewTest, StaysAsItWasWhenAFolderIsMissing)
{
    fTree.Write("shown/a", "");
    Show("shown");
    fList->ToggleMark(1);
    EXPECT_EQ(Show("missing"), -1);
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
    EXPECT_EQ(Names(), ".. a ");
    EXPECT_EQ(MarkedNames(), "a ");
}

TEST_F(DirViewTest, GoesUpAndBackDown)
{
    fTree.MakeFolder("shown/below");
    Show("shown/below");
    fList->NavigateUp();
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
    EXPECT_EQ(fList->CurrentSelection(), -1);
    fList->NavigateDown();
    EXPECT_EQ(fList->Path(), fTree.Path("shown/below"));
}

TEST_F(DirViewTest, ForgetsTheWayDownOnceAFolderIsOpened)
{
    fTree.MakeFolder("shown/below");
    fTree.MakeFolder("shown/other/inner");
    Show("shown/below");
    fList->NavigateUp();
    fList->Select(IndexOf("other"));
    fList->Invoke();
    EXPECT_EQ(fList->Path(), fTree.Path("shown/other"));
    fList->NavigateDown();
    EXPECT_EQ(fList->Path(), fTree.Path("shown/other"));
}

TEST_F(DirViewTest, DoesNotGoAboveTheRoot)
{
    fList->Populate("/");
    fList->NavigateUp();
    EXPECT_EQ(fList->Path(), "/");
    fList->NavigateDown();
    EXPECT_EQ(fList->Path(), "/");
}

TEST_F(DirViewTest, EntersTheSelectedRow)
{
    fTree.MakeFolder("shown/below");
    fTree.Write("shown/file", "");
    Show("shown");
    fList->Select(1);
    fList->Invoke();
    EXPECT_EQ(fList->Path(), fTree.Path("shown/below"));
    fList->Select(0);
    fList->Invoke();
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, EntersNothingThatIsNoFolder)
{
    ASSERT_EQ(mkfifo(fTree.Path("shown/fifo").c_str(), 0600), 0);
    Show("shown");
    fList->Select(IndexOf("fifo"));
    fList->Invoke();
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, GoesToTypedFolders)
{
    fTree.MakeFolder("shown/below/deep");
    Show("shown");
    fList->GoToDir("below//deep/.");
    EXPECT_EQ(fList->Path(), fTree.Path("shown/below/deep"));
    fList->GoToDir("../..");
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
    fList->GoToDir("missing");
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, TellsWhatIsSelected)
{
    fTree.MakeFolder("shown/below");
    fTree.Write("shown/file", "");
    Show("shown");
    std::string path = "untouched";
    EXPECT_EQ(fList->GetSelected(&path), 0);
    EXPECT_EQ(path, "untouched");
    fList->Select(0);
    EXPECT_EQ(fList->GetSelected(&path), 1);
    EXPECT_EQ(path, fTree.Path("shown"));
    fList->Select(1);
    EXPECT_EQ(fList->GetSelected(&path), 1);
    EXPECT_EQ(path, fTree.Path("shown/below"));
    fList->Select(2);
    EXPECT_EQ(fList->GetSelected(&path), 2);
    EXPECT_EQ(path, fTree.Path("shown"));
}

TEST_F(DirViewTest, CarriesMarkedEntriesRatherThanTheSelectedOne)
{
    for (const char* name : {"shown/a", "shown/b", "shown/c", "shown/d"}) {
        fTree.Write(name, "");
    }
    Show("shown");
    EXPECT_EQ(Chosen(), "(none)");
    fList->Select(1);
    EXPECT_EQ(Chosen(), "a ");
    fList->Mark(2, 4);
    EXPECT_EQ(Chosen(), "b c d ");
    EXPECT_EQ(Chosen(1), "b c d a ");
    EXPECT_EQ(Chosen(), "b c d a "); // it stays among them
    EXPECT_FALSE(Row("a")->IsMarked());
}

TEST_F(DirViewTest, CarriesWhereTheEntriesComeFrom)
{
    fTree.Write("shown/a", "");
    Show("shown");
    fList->Select(1);
    const std::unique_ptr<BMessage> message(fList->GetRefMsg(-1));
    const char* from = nullptr;
    ASSERT_EQ(message->FindString("From", &from), B_OK);
    EXPECT_EQ(from, fTree.Path("shown"));
    EXPECT_EQ(message->what, static_cast<uint32>('DATA'));
}

TEST_F(DirViewTest, NeverCarriesTheParentRow)
{
    Show("shown");
    fList->Select(0);
    EXPECT_EQ(Chosen(), "(none)");
    fList->ToggleMark(0);
    EXPECT_EQ(MarkedNames(), "");
}

TEST_F(DirViewTest, SumsUpFilesOnly)
{
    fTree.Write("shown/a", std::string(2000, 'x'));
    fTree.Write("shown/b", std::string(1096, 'x'));
    fTree.MakeFolder("shown/f");
    Show("shown");
    EXPECT_EQ(Summary(), "0 of 3k in 0 of 2 files selected");
    fList->Select(IndexOf("a"));
    EXPECT_EQ(Summary(), "1 of 3k in 1 of 2 files selected");
    fList->Select(IndexOf("f"));
    EXPECT_EQ(Summary(), "0 of 3k in 0 of 2 files selected");
}

TEST_F(DirViewTest, MarksByKeys)
{
    for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
        fTree.Write(name, "");
    }
    Show("shown");
    Key("+");
    EXPECT_EQ(MarkedNames(), "a b c ");
    Key("-");
    EXPECT_EQ(MarkedNames(), "");
    fList->Select(2);
    Key(" ");
    EXPECT_EQ(MarkedNames(), "b ");
    Key("*");
    EXPECT_EQ(MarkedNames(), "a c ");
    Key(" ");
    EXPECT_EQ(MarkedNames(), "a c b ");
    EXPECT_EQ(Selected(), "b");
}

TEST_F(DirViewTest, MarksAndGoesOnWithInsert)
{
    fTree.Write("shown/a", "");
    fTree.Write("shown/b", "");
    Show("shown");
    fList->Select(0);
    Key("\x05");
    EXPECT_EQ(Selected(), "..");
    fList->Select(1);
    Key("\x05");
    EXPECT_EQ(Selected(), "b");
    Key("\x05");
    EXPECT_EQ(Selected(), "b");
    EXPECT_EQ(MarkedNames(), "a b ");
}

TEST_F(DirViewTest, NeverMarksTheParentRowByKeys)
{
    fTree.Write("shown/a", "");
    Show("shown");
    fList->Select(0);
    Key(" ");
    Key("*");
    EXPECT_EQ(MarkedNames(), "a ");
    EXPECT_FALSE(fList->RowAt(0)->IsMarked());
}

TEST_F(DirViewTest, GoesUpWithBackspace)
{
    fTree.MakeFolder("shown/below");
    Show("shown/below");
    Key("\x08");
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, SelectsByTypedCharacters)
{
    for (const char* name : {"shown/bean", "shown/Berry", "shown/cherry"}) {
        fTree.Write(name, "");
    }
    Show("shown");
    Key("b");
    EXPECT_EQ(Selected(), "Berry");
    Key("b");
    EXPECT_EQ(Selected(), "bean");
    Key("b");
    EXPECT_EQ(Selected(), "Berry");
    Key("x");
    EXPECT_EQ(Selected(), "Berry");
}

TEST_F(DirViewTest, ShowsQueryResultsByTheirPaths)
{
    fTree.Write("shown/a", "12");
    fTree.MakeFolder("shown/f");
    Show("shown");
    BMessage results(601);
    results.AddString("QueryString", "(name==*)");
    for (const char* name : {"shown/a", "shown/f"}) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        results.AddRef("refs", &ref);
    }
    EXPECT_EQ(fList->Populate(&results), 1);
    EXPECT_EQ(fList->Mode(), kQueryMode);
    EXPECT_EQ(Names(), fTree.Path("shown/f") + " " + fTree.Path("shown/a") + " ");
    EXPECT_EQ(fList->HeaderText(), "(name==*)");
    fList->Select(1);
    EXPECT_EQ(Chosen(), "a ");
    fList->Select(0);
    fList->Invoke();
    EXPECT_EQ(fList->Mode(), kLocalMode);
    EXPECT_EQ(fList->Path(), fTree.Path("shown/f"));
}

TEST_F(DirViewTest, LeavesQueryResultsForTheFolderShownBefore)
{
    Show("shown");
    BMessage results(601);
    fList->Populate(&results);
    fList->Refresh();
    EXPECT_EQ(fList->Mode(), kQueryMode);
    EXPECT_EQ(Names(), "");
    fList->NavigateUp();
    EXPECT_EQ(fList->Mode(), kLocalMode);
    EXPECT_EQ(fList->Path(), fTree.Path("shown"));
}

TEST_F(DirViewTest, ReadsItsPreferences)
{
    fTree.Write("config/Norvane/Norvane.pref", "DateFormat=%Y\nShowHeader=0\nShowFooter=x\n");
    Build("shown");
    EXPECT_TRUE(fList->ProgressFlag());
    EXPECT_FALSE(fList->HeaderFlag());
    EXPECT_FALSE(fList->FooterFlag());
    fTree.Write("shown/a", "");
    Show("shown");
    EXPECT_EQ(std::string(Row("a")->Text(3)).size(), 4u);
}

// Nobody tells this list of changes, so that a new file is seen only when it is read again.
TEST_F(DirViewTest, ReadsAgainForPreferencesUnlessOnlyExtrasChanged)
{
    fTree.Write("shown/a", std::string(1433, 'x'));
    Show("shown");
    fTree.Write("shown/b", "");
    Preferences preferences;

    preferences.showsReadableSizes = true;
    fList->Apply(preferences);
    EXPECT_STREQ(Row("a")->Text(2), "1.4 KiB");
    EXPECT_EQ(IndexOf("b"), -1);

    preferences.showsReadableSizes = false;
    preferences.showsFooter = false;
    fList->Apply(preferences);
    EXPECT_STREQ(Row("a")->Text(2), "1 K");
    EXPECT_TRUE(kits::testing::WaitFor([this] { return IndexOf("b") >= 0; }));

    fTree.Write("shown/c", "");
    fList->Apply(preferences); // also without any change
    EXPECT_TRUE(kits::testing::WaitFor([this] { return IndexOf("c") >= 0; }));
}

TEST_F(DirViewTest, HidesDotNamesAtOnceAndReadsThemAgain)
{
    fTree.Write("shown/.hidden", "1");
    fTree.Write("shown/a", "");
    fTree.MakeFolder("shown/.folder");
    Show("shown");
    fList->Mark(0, fList->CountItems() - 1);
    Preferences preferences;

    preferences.hidesDotNames = true;
    fList->Apply(preferences);
    EXPECT_EQ(Names(), ".. a ");
    EXPECT_EQ(MarkedNames(), "a ");
    EXPECT_EQ(fList->GetFiles(), "0 of 0k in 0 of 1 files selected");
    Show("shown/.folder");
    EXPECT_EQ(fList->Path(), fTree.Path("shown/.folder")); // it can be shown itself
    fList->NavigateUp();
    EXPECT_TRUE(kits::testing::WaitFor([this] { return Names() == ".. a "; }));

    preferences.hidesDotNames = false;
    fList->Apply(preferences);
    EXPECT_TRUE(kits::testing::WaitFor([this] { return Names() == ".. .folder .hidden a "; }));
}

TEST_F(DirViewTest, SortsByTheColumnsChosenWhereThatIsWanted)
{
    fTree.Write("shown/a10", "1");
    fTree.Write("shown/a9", "123");
    fTree.Write("other/b2", "");
    fTree.Write("other/b10", "");
    Show("shown");
    fList->SetSortKey(1);
    EXPECT_EQ(Names(), ".. a10 a9 ");
    fList->SetSortKey(2);
    fList->SetSortKey(1);
    fList->Mark(1, 1);
    Preferences preferences;
    preferences.sortsByColumns = true;

    fList->Apply(preferences);
    EXPECT_EQ(Names(), ".. a9 a10 ");
    EXPECT_EQ(MarkedNames(), "a10 ");
    fList->ReverseSortMode(1);
    EXPECT_EQ(Names(), ".. a10 a9 ");
    fList->SetSortKey(2);
    EXPECT_EQ(Names(), ".. a10 a9 ");
    fList->SetSortMode(2, Descending);
    EXPECT_EQ(Names(), ".. a9 a10 ");
    fList->SetSortKey(1);
    fList->SetSortMode(1, Ascending);
    Show("other");
    EXPECT_EQ(Names(), ".. b2 b10 ");
    fList->AddSortKey(2);
    fList->ReverseSortMode(1); // to Descending
    EXPECT_EQ(Names(), ".. b10 b2 ");
    fList->ReverseSortMode(1); // to none; the size is left, which is the same
    EXPECT_EQ(Names(), ".. b2 b10 ");

    preferences.sortsByColumns = false;
    fList->Apply(preferences);
    EXPECT_EQ(Names(), ".. b10 b2 ");
}

TEST_F(DirViewTest, SortsResultsOfQueries)
{
    BMessage results(601);
    for (const char* name : {"shown/b10", "shown/a", "shown/b9"}) {
        fTree.Write(name, "1");
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        results.AddRef("refs", &ref);
    }
    results.AddString("QueryString", "x");
    fList->Populate(&results);
    const std::string shown = fTree.Path("shown/");
    EXPECT_EQ(Names(), shown + "b10 " + shown + "a " + shown + "b9 ");
    Preferences preferences;
    preferences.sortsByColumns = true;
    fList->Apply(preferences);
    fList->SetSortKey(1);
    EXPECT_EQ(Names(), shown + "a " + shown + "b9 " + shown + "b10 ");

    fList->SetSortMode(1, NoSort);
    EXPECT_EQ(Names(), shown + "a " + shown + "b10 " + shown + "b9 ");
}

TEST_F(DirViewTest, ResultsOfQueriesStayHoweverTheyAreNamed)
{
    fTree.Write("shown/.hidden", "1");
    BMessage results(601);
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("shown/.hidden").c_str(), &ref), B_OK);
    results.AddRef("refs", &ref);
    results.AddString("QueryString", "x");
    fList->Populate(&results);
    Preferences preferences;
    preferences.hidesDotNames = true;

    fList->Apply(preferences);
    EXPECT_EQ(Names(), fTree.Path("shown/.hidden") + " ");

    preferences.hidesDotNames = false;
    fList->Apply(preferences);
    EXPECT_EQ(Names(), fTree.Path("shown/.hidden") + " ");
}

TEST_F(DirViewTest, KeepsTheDateFormatOfRowsThatAreThere)
{
    fTree.Write("shown/a", "");
    Show("shown");
    fList->SetDateFormat("%Y");
    EXPECT_GT(std::string(Row("a")->Text(3)).size(), 4u);
    Show("shown");
    EXPECT_EQ(std::string(Row("a")->Text(3)).size(), 4u);
    fList->SetDateFormat(std::string(64, 'x').c_str());
    Show("shown");
    EXPECT_EQ(std::string(Row("a")->Text(3)).size(), 4u);
}

TEST_F(DirViewTest, ForgetsMarksWithTheListing)
{
    fTree.Write("shown/a", "");
    Show("shown");
    Key("+");
    fList->Refresh();
    EXPECT_EQ(MarkedNames(), "");
    fList->Clear();
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(Summary(), "0 of 0k in 0 of 0 files selected");
}

} // namespace
