#include "panes/RowSorting.h"

#include "PaneRowsFixture.h"

#include <algorithm>
#include <random>

namespace {

using namespace norvane;

constexpr RowSorting::Key kName = {1, false};
constexpr RowSorting::Key kNameDown = {1, true};
constexpr RowSorting::Key kSize = {2, false};
constexpr RowSorting::Key kSizeDown = {2, true};
constexpr RowSorting::Key kDate = {3, false};
constexpr RowSorting::Key kPermissions = {4, false};

class RowSortingTest : public PaneRowsFixture
{
protected:
    static BEntryRecord Record(ino_t node, off_t size, time_t modified = 0, mode_t mode = 0644)
    {
        BEntryRecord record;
        record.mode = S_IFREG | mode;
        record.node = node;
        record.size = size;
        record.modified = modified;
        return record;
    }

    void AddFile(const char* name, off_t size, time_t modified = 0, mode_t mode = 0644)
    {
        fRows->Insert(std::make_unique<DirListItem>(entry_ref(7, 8, name),
                                                    Record(++fLastNode, size, modified, mode),
                                                    DatePattern::For("%D %R")));
    }

    void Sort(std::vector<RowSorting::Key> keys) { fRows->SetSorting(RowSorting(keys)); }

    /// What a fresh sort of the same rows gives.
    std::string NamesSorted() const
    {
        std::vector<DirListItem*> rows;
        for (int32 i = 0; i < fRows->CountRows(); i++) {
            rows.push_back(fRows->RowAt(i));
        }
        std::shuffle(rows.begin(), rows.end(), std::mt19937(1));
        fRows->Sorting().Sort(rows);
        std::string names;
        for (const DirListItem* row : rows) {
            names += row->GetEntryName() + std::string(" ");
        }
        return names;
    }
};

TEST_F(RowSortingTest, NamesCountAsPeopleCount)
{
    Sort({kName});
    Fill({"Zoo", "bin"}, {"a10", "b", "A9", "a9", "_", "C"});
    EXPECT_EQ(Names(), ".. bin Zoo _ A9 a9 a10 b C ");
    Sort({kNameDown});
    EXPECT_EQ(Names(), ".. Zoo bin C b a10 A9 a9 _ ");
}

TEST_F(RowSortingTest, MeasuredFolderThatMovesIsTold)
{
    Sort({kSize});
    Fill({"a", "b", "c"}, {});
    fTold.clear();

    fRows->SetDirSize(Row("a"), 1000);

    EXPECT_EQ(Names(), ".. b c a ");
    EXPECT_EQ(fTold, "changed ");
}

TEST_F(RowSortingTest, SizesDatesAndModesGoByTheirValues)
{
    Fill({"m"}, {});
    AddFile("big", 10'000, 5, 0600);
    AddFile("old", 999, 1, 0755);
    AddFile("small", 2, 9, 0644);
    Sort({kSize});
    EXPECT_EQ(Names(), ".. m small old big ");
    Sort({kSizeDown});
    EXPECT_EQ(Names(), ".. m big old small ");
    Sort({kDate});
    EXPECT_EQ(Names(), ".. m old big small ");
    Sort({kPermissions});
    EXPECT_EQ(Names(), ".. m big small old ");
}

TEST_F(RowSortingTest, WhatIsEqualGoesByTheNextColumnThenByName)
{
    AddFile("c", 1, 3);
    AddFile("b", 1, 3);
    AddFile("a", 1, 4);
    AddFile("d", 0, 9);
    Sort({kSizeDown, kDate});
    EXPECT_EQ(Names(), "b c a d ");
    Sort({kSize});
    EXPECT_EQ(Names(), "d a b c ");
}

TEST_F(RowSortingTest, RowsOfAServerGoByWhatTheyShow)
{
    ListedRows rows;
    rows.files.push_back(std::make_unique<DirListItem>("n", "20", "Mar 1", "-rw-------"));
    rows.files.push_back(std::make_unique<DirListItem>("m", "3", "Apr 1", "-r--------"));
    Sort({kSize});
    fRows->Fill(std::move(rows));
    EXPECT_EQ(Names(), "m n ");
    Sort({kDate});
    EXPECT_EQ(Names(), "m n ");
    Sort({{4, true}});
    EXPECT_EQ(Names(), "n m ");
}

TEST_F(RowSortingTest, EntriesThatCouldNotBeReadComeFirst)
{
    AddFile("old", 1, 1);
    AddFile("new", 1, 1'900'000'000);
    fRows->Insert(Make("unread2", false, 0));
    fRows->Insert(Make("unread1", false, 0));
    Sort({kDate});
    EXPECT_EQ(Names(), "unread1 unread2 old new ");
    Sort({kPermissions});
    EXPECT_EQ(Names(), "unread1 unread2 new old ");
}

TEST_F(RowSortingTest, RowsThatComeSortedStayAsTheyCome)
{
    ListedRows rows;
    for (const char* name : {"b", "a"}) { // no order at all, to tell
        rows.files.push_back(Make(name, false));
    }
    rows.sorting = RowSorting({kName});
    Sort({kName});
    fRows->Fill(std::move(rows));
    EXPECT_EQ(Names(), "b a ");
    fRows->Clear();
    ListedRows others;
    others.files.push_back(Make("b", false));
    others.files.push_back(Make("a", false));
    others.sorting = RowSorting({kSize});
    fRows->Fill(std::move(others));
    EXPECT_EQ(Names(), "a b ");
}

TEST_F(RowSortingTest, TheListingsOrderComesBack)
{
    Fill({"a2", "a10"}, {"b", "B", "a"});
    Sort({kName});
    fRows->Rebuild(Row("b"), "A", Record(5, 1));
    EXPECT_EQ(Names(), ".. a2 a10 A a B ");
    Sort({});
    EXPECT_EQ(Names(), ".. a10 a2 A B a ");
    fRows->Insert(Make("C", false, 90));
    EXPECT_EQ(Names(), ".. a10 a2 A B C a ");
}

TEST_F(RowSortingTest, RowThatChangesGoesToItsPlaceAndStaysSelected)
{
    AddFile("a", 1);
    AddFile("b", 2);
    AddFile("c", 3);
    Sort({kSize});
    fList->Select(0);
    DirListItem* row = Row("a");
    fTold.clear();
    fRows->Rebuild(row, "a", Record(1, 9));
    EXPECT_EQ(Names(), "b c a ");
    EXPECT_EQ(fTold, "changed ");
    EXPECT_EQ(fList->CurrentSelection(), 2);
    EXPECT_EQ(fList->CurrentSelection(1), -1);
    fRows->Rebuild(row, "a", Record(1, 10));
    EXPECT_EQ(Names(), "b c a ");
    fRows->Rebuild(Row("b"), "d", Record(2, 20));
    EXPECT_EQ(Names(), "c a d ");
    EXPECT_EQ(fList->CurrentSelection(), 1);
}

TEST_F(RowSortingTest, SelectedRowThatIsSeenStaysInSight)
{
    std::vector<std::string> names;
    for (int i = 0; i < 100; i++) {
        names.push_back("b" + std::to_string(i));
    }
    Fill({}, names);
    Sort({kName});
    fList->Select(1);
    const auto isSeen = [this] {
        const BRect frame = fList->ItemFrame(fList->CurrentSelection());
        return fList->Bounds().Contains(frame);
    };
    ASSERT_TRUE(isSeen());
    fRows->Rebuild(Row("b0"), "z", Record(1, 1));
    EXPECT_STREQ(fRows->RowAt(100)->GetEntryName(), "z");
    EXPECT_TRUE(isSeen());
    fList->ScrollTo(BPoint(0, 0));
    fRows->Rebuild(Row("z"), "a", Record(1, 1)); // nobody saw it
    EXPECT_EQ(fList->Bounds().top, 0);
    fList->Select(50);
    fList->ScrollTo(BPoint(0, 0));
    fRows->Rebuild(Row("b49"), "zz", Record(50, 1));
    EXPECT_EQ(fList->Bounds().top, 0);
}

TEST_F(RowSortingTest, FolderThatWasMeasuredGoesToItsPlace)
{
    Fill({"a", "b", "c"}, {});
    Sort({kSize});
    fRows->SetDirSize(Row("a"), 50);
    EXPECT_EQ(Names(), ".. b c a ");
    fRows->SetDirSize(Row("b"), 20);
    EXPECT_EQ(Names(), ".. c b a ");
}

TEST_F(RowSortingTest, SelectionGoesToTheRowThatTakesThePlace)
{
    AddFile("a", 3);
    AddFile("b", 2);
    AddFile("c", 1);
    Sort({kSize});
    fList->Select(1);
    fRows->BeginChanges();
    fRows->Remove(Row("b"));
    AddFile("d", 0);
    fRows->EndChanges();
    EXPECT_EQ(Names(), "d c a ");
    EXPECT_EQ(fList->CurrentSelection(), 2);
}

/// Whatever happens, the rows are as a fresh sort would have them.
class SortedModelTest : public RowSortingTest, public ::testing::WithParamInterface<int>
{
protected:
    std::string AnyName()
    {
        static const char* const kParts[] = {"a", "A", "b", "9", "10", "é", "_", ".", " ", "\xff"};
        std::string name = kParts[fRandom() % 10];
        for (auto more = fRandom() % 3; more > 0; more--) {
            name += kParts[fRandom() % 10];
        }
        return name == "." || name == ".." ? "x" : name;
    }

    void RowsLeave(const std::vector<DirListItem*>& rows) override
    {
        if (std::find(rows.begin(), rows.end(), fSelected) != rows.end()) {
            fSelected = nullptr;
        }
    }

    void ChangeSomething()
    {
        DirListItem* row =
            fAny.empty() ? nullptr : fRows->FindRow(fAny[fRandom() % fAny.size()].c_str());
        const std::string name = AnyName();
        switch (fRandom() % 4) {
        case 0:
            fRows->Insert(Make(name, fRandom() % 3 == 0, ++fLastNode, fRandom() % 5));
            fAny.push_back(name);
            break;
        case 1:
            if (row != nullptr) {
                fRows->Remove(row);
            }
            break;
        case 2:
            if (row != nullptr && fRows->FindRow(name.c_str()) == nullptr) {
                fRows->Rebuild(row, name.c_str(), Record(++fLastNode, fRandom() % 5));
                fAny.push_back(name);
            }
            break;
        default:
            if (row != nullptr) {
                BEntryRecord record = Record(++fLastNode, fRandom() % 5, fRandom() % 3);
                record.mode = fRandom() % 4 == 0 ? (S_IFDIR | 0755) : record.mode;
                fRows->Rebuild(row, row->GetEntryName(), record);
            }
        }
    }

    std::mt19937 fRandom{static_cast<unsigned>(GetParam())};
    std::vector<std::string> fAny;          // names that rows have or had
    const DirListItem* fSelected = nullptr; // null once it has left
};

TEST_P(SortedModelTest, RowsStaySorted)
{
    Fill({"m"}, {"a", "b10", "b9"});
    fAny = {"m", "a", "b10", "b9"};
    fList->Select(fRows->Find("b9"));
    fSelected = Row("b9");
    for (int step = 0; step < 400; step++) {
        if (step % 40 == 0) {
            std::vector<RowSorting::Key> keys;
            for (auto count = 1 + fRandom() % 2; count > 0; count--) {
                keys.push_back({static_cast<int32>(1 + fRandom() % 4), fRandom() % 2 == 0});
            }
            Sort(keys);
        }
        const bool isTogether = fRandom() % 2 == 0;
        if (isTogether) {
            fRows->BeginChanges();
        }
        for (auto changes = fRandom() % 6; changes > 0; changes--) {
            ChangeSomething();
        }
        if (isTogether) {
            fRows->EndChanges();
        }
        ASSERT_EQ(Names(), NamesSorted()) << "step " << step;
        const DirListItem* selected = fRows->RowAt(fList->CurrentSelection());
        ASSERT_NE(selected, nullptr);
        ASSERT_TRUE(fSelected == nullptr || selected == fSelected) << "step " << step;
        ASSERT_EQ(fList->CurrentSelection(1), -1);
        fSelected = selected;
        for (int32 i = 0; i < fRows->CountRows(); i++) {
            ASSERT_EQ(fRows->IndexOf(fRows->RowAt(i)), i);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SortedModelTest, ::testing::Range(1, 6), [](const auto& test) {
    return std::string("Seed").append(std::to_string(test.param));
});

} // namespace
