#include "PaneRowsFixture.h"
#include "panes/PaneGestures.h"
#include "panes/PaneMarks.h"

#include <InterfaceDefs.h>

namespace {

using namespace norvane;

/// Rows of which a filter shows some.
class RowFilterTest : public PaneRowsFixture
{
protected:
    std::string Selected() const
    {
        const DirListItem* row = fRows->RowAt(fList->CurrentSelection());
        return row != nullptr ? row->GetEntryName() : "(none)";
    }

    void Select(const char* name) { fList->Select(fRows->Find(name)); }
};

TEST_F(RowFilterTest, ShowsWhatHoldsTheText)
{
    Fill({"Banks"}, {"anchor", "bank", "note"});
    fRows->SetFilter("an");
    EXPECT_EQ(Names(), ".. Banks anchor bank ");
    fRows->SetFilter("ank");
    EXPECT_EQ(Names(), ".. Banks bank ");
    fRows->SetFilter("Bank");
    EXPECT_EQ(Names(), ".. Banks ");
    fRows->SetFilter("ank");
    EXPECT_EQ(Names(), ".. Banks bank ");
    fRows->SetFilter("o");
    EXPECT_EQ(Names(), ".. anchor note ");
    fRows->EndFilter();
    EXPECT_EQ(Names(), ".. Banks anchor bank note ");
    EXPECT_FALSE(fRows->IsFiltered());
}

TEST_F(RowFilterTest, CountsWhatIsShown)
{
    Fill({}, {"a", "b", "ab"});
    fRows->SetFilter("a");
    EXPECT_EQ(fRows->Totals().files, 2);
    EXPECT_EQ(fRows->Totals().bytes, 200);
    fRows->Remove(fRows->FindRow("b"));
    EXPECT_EQ(fRows->Totals().files, 2);
    fRows->EndFilter();
    EXPECT_EQ(fRows->Totals().files, 2);
}

TEST_F(RowFilterTest, FindsAllRowsAndGivesPlacesOfShownOnes)
{
    Fill({}, {"a", "b", "c"});
    fRows->SetFilter("c");
    ASSERT_NE(fRows->FindRow("b"), nullptr);
    EXPECT_EQ(fRows->Find("b"), -1);
    EXPECT_EQ(fRows->Find("c"), 1);
    EXPECT_EQ(fRows->FindAny(node_ref(7, 2)), fRows->FindRow("b"));
}

TEST_F(RowFilterTest, GoesOnFromTheRowThatWasSelected)
{
    Fill({}, {"a1", "b2", "c1", "d2"});
    Select("b2");
    fRows->SetFilter("1");
    EXPECT_EQ(Selected(), "c1");
    fRows->SetFilter("");
    EXPECT_EQ(Selected(), "c1");
    fRows->SetFilter("2");
    EXPECT_EQ(Selected(), "d2");
    fRows->SetFilter("2x");
    EXPECT_EQ(Selected(), "(none)"); // not "..": Delete and the like act on what is selected
    fRows->SetFilter("2");
    EXPECT_EQ(Selected(), "b2");
    fRows->EndFilter();
    EXPECT_EQ(Selected(), "b2");
}

TEST_F(RowFilterTest, SelectsTheLastWhenNothingFollows)
{
    Fill({}, {"a1", "b1", "c2"});
    Select("c2");
    fRows->SetFilter("1");
    EXPECT_EQ(Selected(), "b1");
}

TEST_F(RowFilterTest, SelectsTheFirstFoundWhenNothingWasSelected)
{
    Fill({}, {"a", "b"});
    fList->Select(0);
    fRows->SetFilter("b");
    EXPECT_EQ(Selected(), "b");
}

TEST_F(RowFilterTest, TakesInWhatComes)
{
    Fill({}, {"a1", "c2", "e1"});
    fRows->SetFilter("1");
    fRows->Insert(Make("b1", false, 20));
    fRows->Insert(Make("d2", false, 21));
    EXPECT_EQ(Names(), ".. a1 b1 e1 ");
    fRows->EndFilter();
    EXPECT_EQ(Names(), ".. a1 b1 c2 d2 e1 ");
}

TEST_F(RowFilterTest, RenamedRowsComeAndGoInTheirPlace)
{
    Fill({}, {"a1", "b2", "c1"});
    BEntryRecord nothingNew;
    nothingNew.status = B_ENTRY_NOT_FOUND;
    fRows->SetFilter("1");
    Select("a1");
    fRows->Rebuild(fRows->FindRow("b2"), "z1", nothingNew);
    EXPECT_EQ(Names(), ".. a1 z1 c1 ");
    fRows->Rebuild(fRows->FindRow("a1"), "a2", nothingNew);
    EXPECT_EQ(Names(), ".. z1 c1 ");
    EXPECT_EQ(Selected(), "z1");
    fRows->EndFilter();
    EXPECT_EQ(Names(), ".. a2 z1 c1 ");
}

TEST_F(RowFilterTest, RenamedRowsGoToTheirPlaceWhereSorted)
{
    Fill({}, {"a1", "b2", "c1"});
    fRows->SetSorting(RowSorting({{1, true}}));
    BEntryRecord nothingNew;
    nothingNew.status = B_ENTRY_NOT_FOUND;
    fRows->SetFilter("1");
    EXPECT_EQ(Names(), ".. c1 a1 ");
    fRows->Rebuild(fRows->FindRow("b2"), "z1", nothingNew);
    EXPECT_EQ(Names(), ".. z1 c1 a1 ");
    fRows->Rebuild(fRows->FindRow("c1"), "Z1", nothingNew);
    fRows->SetSorting(RowSorting());
    EXPECT_EQ(Names(), ".. Z1 a1 z1 ");
    fRows->EndFilter();
    EXPECT_EQ(Names(), ".. Z1 a1 z1 ");
}

TEST_F(RowFilterTest, StaysWhenThePlaceIsReadAgain)
{
    Fill({}, {"a1", "b2"});
    fRows->SetFilter("1");
    fRows->Clear();
    Fill({}, {"a1", "b2", "c1"});
    EXPECT_EQ(Names(), ".. a1 c1 ");
    EXPECT_EQ(fRows->Totals().files, 2);
}

TEST_F(RowFilterTest, LooksAtTheNameAloneWhereAPathIsShown)
{
    Fill({}, {"apple", "cherry"});
    BEntryRecord record;
    record.mode = S_IFREG | 0644;
    fRows->RebuildHit(Row("apple"), "apple", "/folder/banana/apple", record);
    fRows->SetFilter("nan");
    EXPECT_EQ(fRows->CountRows(), 1);
    fRows->SetFilter("app");
    EXPECT_EQ(Names(), ".. /folder/banana/apple ");
}

TEST_F(RowFilterTest, LooksAtTheNameOfAServersLink)
{
    ListedRows rows;
    rows.files.push_back(std::make_unique<DirListItem>("link -> target", "1", "", "rwxrwxrwx"));
    rows.files.back()->SetCommandName("link");
    rows.files.push_back(std::make_unique<DirListItem>("unreadable line", "1", "", ""));
    fRows->Fill(std::move(rows));
    fRows->SetFilter("target");
    EXPECT_EQ(fRows->CountRows(), 0);
    fRows->SetFilter("lin");
    EXPECT_EQ(fRows->CountRows(), 2);
}

TEST_F(RowFilterTest, OddNames)
{
    const std::string longName(255, 'l');
    Fill({}, {"a\nb", "\xff\xfe", longName, "x\xe2\x80\xaey"});
    fRows->SetFilter("l");
    EXPECT_EQ(Names(), ".. " + longName + " ");
    fRows->SetFilter("\xfe");
    EXPECT_EQ(Names(), ".. \xff\xfe ");
    fRows->SetFilter("\n");
    EXPECT_EQ(Names(), ".. a\nb ");
    fRows->SetFilter("\xe2\x80\xae");
    EXPECT_EQ(Names(), ".. x\xe2\x80\xaey ");
}

TEST_F(RowFilterTest, KnowsMoreTextsThanItCanTellApart)
{
    Fill({}, {std::string(255, 'a'), "b"});
    std::string text;
    for (int i = 0; i < 255; i++) {
        text += "a";
        fRows->SetFilter(text);
        ASSERT_EQ(fRows->CountRows(), 2) << i;
    }
    fRows->SetFilter(text + "a");
    EXPECT_EQ(fRows->CountRows(), 1);
    fRows->SetFilter("");
    EXPECT_EQ(fRows->CountRows(), 3);
}

TEST_F(RowFilterTest, StaysWhenRowsAreLeftOutAndLookedAtAgain)
{
    Fill({}, {".a1", ".b2", "c1", "d2", "e1"});
    fRows->SetFilter("1");
    Select(".a1");
    fRows->SetLeavesOutDotNames(true);
    EXPECT_EQ(Names(), ".. c1 e1 ");
    EXPECT_EQ(Selected(), "c1");
    ListedRows fresh;
    for (const char* name : {"b1", "d2", "e1", "f2"}) {
        fresh.files.push_back(Make(name, false, 50));
    }
    fRows->Become(std::move(fresh));
    EXPECT_EQ(Names(), ".. b1 e1 ");
    fRows->EndFilter();
    EXPECT_EQ(Names(), ".. b1 d2 e1 f2 ");
}

TEST_F(RowFilterTest, AnAnchorOutOfSightMarksNothing)
{
    Fill({}, {"a1", "b2", "c1", "d1"});
    PaneMarks marks(*fRows);
    PaneGestures gestures(*fRows, marks);
    gestures.Pressed(BPoint(0, 0), 2, B_COMMAND_KEY, B_PRIMARY_MOUSE_BUTTON);
    fRows->SetFilter("1");
    gestures.Pressed(BPoint(0, 0), 3, B_SHIFT_KEY, B_PRIMARY_MOUSE_BUTTON);
    EXPECT_TRUE(marks.IsEmpty());
    marks.ForgetAll();
}

TEST_F(RowFilterTest, MarksOutOfSightTakeNoPart)
{
    Fill({}, {"a1", "b2", "c1"});
    PaneMarks marks(*fRows);
    marks.Mark(1, 3);
    fRows->SetFilter("2");
    EXPECT_EQ(marks.Rows(), std::vector<DirListItem*>{Row("b2")});
    EXPECT_EQ(marks.Totals().Text(), "1 marked, 100 Bytes; 2 marked out of sight");
    marks.Unmark(0, 99);
    EXPECT_TRUE(marks.IsEmpty());
    EXPECT_EQ(marks.Totals().Text(), "2 marked out of sight");
    marks.ToggleAll(1, 99);
    EXPECT_EQ(marks.Totals().rows, 1);
    marks.Empty();
    EXPECT_EQ(marks.Totals().unseen, 2);
    fRows->EndFilter();
    EXPECT_EQ(marks.Totals().Text(), "2 marked, 200 Bytes");
    marks.ForgetAll();
}

} // namespace
