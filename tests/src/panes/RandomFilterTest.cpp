#include "PaneRowsFixture.h"

#include <algorithm>
#include <random>

namespace {

using namespace norvane;

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
            fExpected.empty() ? ""
                              : fExpected[static_cast<size_t>(Dice(1000)) % fExpected.size()].name;
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

INSTANTIATE_TEST_SUITE_P(Seeds, RandomFilterTest, ::testing::Range(1, 41), [](const auto& test) {
    return std::string("Seed").append(std::to_string(test.param));
});

} // namespace
