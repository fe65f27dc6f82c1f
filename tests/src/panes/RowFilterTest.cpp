#include "PaneRowsFixture.h"
#include "panes/PaneMarks.h"

#include <algorithm>
#include <random>

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

/// Rows under random changes, beside a plain list of what they ought to be.
class RandomFilterTest : public PaneRowsFixture, public ::testing::WithParamInterface<int>
{
protected:
    struct Expected
    {
        std::string name;
        bool isFolder;
    };

    std::string RandomName()
    {
        std::string name;
        for (int i = Dice(3) + 1; i > 0; i--) {
            name += "abAB1"[Dice(5)];
        }
        return name;
    }

    int Dice(int sides) { return static_cast<int>(fRandom() % static_cast<unsigned>(sides)); }

    /// Where a listing's order has a row that comes: before the first that is greater.
    void Insert(const std::string& name, bool isFolder)
    {
        std::erase_if(fExpected, [&](const Expected& row) { return row.name == name; });
        const auto place = std::find_if(fExpected.begin(), fExpected.end(), [&](const Expected& o) {
            return o.isFolder == isFolder ? o.name > name : isFolder;
        });
        fExpected.insert(place, {name, isFolder});
        fRows->Insert(Make(name, isFolder, ++fLastNode, Dice(100)));
    }

    void Rename(const std::string& from, const std::string& to)
    {
        if (fRows->FindRow(to.c_str()) != nullptr) {
            return;
        }
        for (Expected& row : fExpected) {
            row.name = row.name == from ? to : row.name;
        }
        BEntryRecord nothingNew;
        nothingNew.status = B_ENTRY_NOT_FOUND;
        fRows->Rebuild(fRows->FindRow(from.c_str()), to.c_str(), nothingNew);
    }

    /// One change; 0 and 1 insert, 2 removes, 3 renames.
    void Change(int what)
    {
        const std::string some =
            fExpected.empty() ? "" : fExpected[static_cast<size_t>(Dice(1000)) % fExpected.size()].name;
        switch (some.empty() ? 0 : what) {
        case 0:
        case 1:
            Insert(RandomName(), Dice(4) == 0);
            break;
        case 2:
            std::erase_if(fExpected, [&](const Expected& row) { return row.name == some; });
            fRows->Remove(fRows->FindRow(some.c_str()));
            break;
        default:
            Rename(some, RandomName());
        }
    }

    /// A place is found at the end, for what is there by then: so what goes goes first, and what
    /// comes is renamed by nobody.
    void ChangeMany()
    {
        const bool renames = !fExpected.empty() && Dice(2) == 0;
        fRows->BeginChanges();
        for (int i = Dice(4); i > 0; i--) {
            if (!fExpected.empty()) {
                Change(renames ? 3 : 2);
            }
        }
        for (int i = renames ? 0 : Dice(4); i > 0; i--) {
            const std::string name = RandomName();
            if (fRows->FindRow(name.c_str()) == nullptr) {
                Insert(name, Dice(4) == 0);
            }
        }
        fRows->EndChanges();
    }

    void Type()
    {
        switch (Dice(6)) {
        case 0:
            fRows->EndFilter();
            fText.clear();
            return;
        case 1:
            fText = RandomName();
            break;
        case 2:
        case 3:
            fText = fText.substr(0, fText.size() - (fText.empty() ? 0 : 1));
            break;
        default:
            fText += "abB1"[Dice(4)];
        }
        fRows->SetFilter(fText);
    }

    /// In one line; where rows are sorted, in an order that CheckRows() looks at, by name.
    std::string Line(std::vector<std::string> names) const
    {
        if (!fRows->Sorting().IsListings()) {
            std::sort(names.begin(), names.end());
        }
        std::string line;
        for (const std::string& name : names) {
            line += name + " ";
        }
        return line;
    }

    std::string ExpectedNames() const
    {
        std::vector<std::string> shown;
        for (const Expected& row : fExpected) {
            if (NamePart(fText).IsIn(row.name.c_str())) {
                shown.push_back(row.name);
            }
        }
        return Line(shown);
    }

    std::string ShownNames() const
    {
        std::vector<std::string> shown;
        for (int32 i = 1; i < fRows->CountRows(); i++) {
            shown.emplace_back(fRows->RowAt(i)->GetEntryName());
        }
        return Line(shown);
    }

    /// Whether all that is shown is in its order, found where it is, and counted.
    void CheckRows()
    {
        FolderTotals totals;
        for (int32 i = 0; i < fRows->CountRows(); i++) {
            const DirListItem* row = fRows->RowAt(i);
            EXPECT_FALSE(row->IsFilteredAway());
            EXPECT_EQ(fRows->IndexOf(row), i);
            totals.Add(*row);
            if (i > 0 && !fRows->Sorting().IsListings()) {
                EXPECT_LT(fRows->Sorting().Compare(*fRows->RowAt(i - 1), *row), 0);
            }
        }
        EXPECT_EQ(fRows->Totals().files, totals.files);
        EXPECT_EQ(fRows->Totals().bytes, totals.bytes);
        int32 selected = 0;
        for (const Expected& row : fExpected) {
            const DirListItem* listed = fRows->FindRow(row.name.c_str());
            ASSERT_NE(listed, nullptr);
            selected += listed->IsSelected() ? 1 : 0;
            EXPECT_FALSE(listed->IsFilteredAway() && listed->IsSelected());
        }
        EXPECT_LE(selected, 1);
    }

    void Step()
    {
        const int dice = Dice(12);
        if (dice < 4) {
            Type();
        } else if (dice == 4) {
            fList->Select(Dice(std::max(1, static_cast<int>(fRows->CountRows()))));
        } else if (dice == 5 && fIsSorted) {
            fRows->SetSorting(Dice(2) == 0 ? RowSorting({{2, false}}) : RowSorting({{1, true}}));
        } else if (dice == 6) {
            ChangeMany();
        } else {
            Change(Dice(4));
        }
    }

    std::mt19937 fRandom{static_cast<unsigned>(GetParam())};
    bool fIsSorted = GetParam() % 2 == 1;
    std::vector<Expected> fExpected;
    std::string fText;
};

TEST_P(RandomFilterTest, ShowsWhatAFreshListingWould)
{
    Fill({}, {});
    if (fIsSorted) {
        fRows->SetSorting(RowSorting({{2, false}}));
    }
    for (int step = 0; step < 400 && !HasFailure(); step++) {
        Step();
        EXPECT_EQ(ShownNames(), ExpectedNames()) << "step " << step << ", filter " << fText;
        CheckRows();
    }
    fRows->EndFilter();
    fText.clear();
    EXPECT_EQ(ShownNames(), ExpectedNames());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomFilterTest, ::testing::Range(1, 41));

} // namespace
