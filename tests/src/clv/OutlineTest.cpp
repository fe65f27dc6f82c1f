#include "TestRow.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace norvane;

class OutlineTest : public ::testing::Test
{
protected:
    OutlineTest() : fList(true)
    {
        fList.AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
        fList.AddColumn(new CLVColumn("name", 100, CLV_SORT_KEYABLE));
        fList.AddColumn(new CLVColumn("size", 100, CLV_SORT_KEYABLE));
    }

    /// a(a1(a11) a2) b, all expanded but for what the arguments say.
    void AddTree(bool isA1Expanded = true)
    {
        fA = fList.Add("a", 0, true);
        fA1 = fList.Add("a1", 1, true, isA1Expanded);
        fA11 = fList.Add("a11", 2);
        fA2 = fList.Add("a2", 1);
        fB = fList.Add("b");
    }

    TestList fList;
    TestRow* fA = nullptr;
    TestRow* fA1 = nullptr;
    TestRow* fA11 = nullptr;
    TestRow* fA2 = nullptr;
    TestRow* fB = nullptr;
};

TEST_F(OutlineTest, ShowsNoRowsBelowACollapsedOne)
{
    AddTree(false);
    EXPECT_EQ(fList.FullNames(), "a a1 a11 a2 b ");
    EXPECT_EQ(fList.Names(), "a a1 a2 b ");
}

TEST_F(OutlineTest, RefusesASecondExpanderColumn)
{
    CLVColumn second(nullptr, 20, CLV_EXPANDER);
    EXPECT_FALSE(fList.AddColumn(&second));
    EXPECT_EQ(fList.ExpanderColumnIndex(), 0);
}

TEST_F(OutlineTest, CollapsesAndExpandsKeepingInnerStates)
{
    AddTree(false);
    fList.Collapse(fA);
    EXPECT_EQ(fList.Names(), "a b ");
    fList.Expand(fA);
    EXPECT_EQ(fList.Names(), "a a1 a2 b ");
    fList.Expand(fA1);
    EXPECT_EQ(fList.Names(), "a a1 a11 a2 b ");
}

TEST_F(OutlineTest, FindsSuperitemsAndSubitems)
{
    AddTree();
    EXPECT_EQ(fList.Superitem(fA11), fA1);
    EXPECT_EQ(fList.Superitem(fA2), fA);
    EXPECT_EQ(fList.Superitem(fB), nullptr);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fA), 3);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fB), 0);
}

TEST_F(OutlineTest, AddsUnderASuperitemBehindItsLastDescendant)
{
    AddTree(false);
    TestRow below("a12");
    TestRow last("a3");
    EXPECT_TRUE(fList.AddUnder(&below, fA1));
    EXPECT_TRUE(fList.AddUnder(&last, fA));
    EXPECT_EQ(fList.FullNames(), "a a1 a11 a12 a2 a3 b ");
    EXPECT_EQ(fList.Names(), "a a1 a2 a3 b ");
    EXPECT_EQ(below.OutlineLevel(), 2u);
    TestRow lost("lost");
    EXPECT_FALSE(fList.AddUnder(&lost, &lost));
    fList.MakeEmpty();
}

TEST_F(OutlineTest, RemovesARowWithAllBelowIt)
{
    AddTree(false);
    EXPECT_TRUE(fList.RemoveItem(fA1));
    EXPECT_EQ(fList.FullNames(), "a a2 b ");
    EXPECT_EQ(fList.Names(), "a a2 b ");
}

TEST_F(OutlineTest, WidensARemovedRange)
{
    AddTree();
    EXPECT_TRUE(fList.RemoveItems(2, 2)); // a11 and a2
    EXPECT_EQ(fList.FullNames(), "a a1 b ");
    EXPECT_TRUE(fList.RemoveItems(0, 1));
    EXPECT_EQ(fList.FullNames(), "b ");
    EXPECT_FALSE(fList.RemoveItems(0, 2));
}

TEST_F(OutlineTest, SortsEachLevelByItself)
{
    AddTree();
    fA->values[1] = 2;
    fB->values[1] = 1;
    fA1->values[1] = 9;
    fA2->values[1] = 3;
    fA11->values[1] = 0;
    fList.SetSortFunction(&CompareValues);
    fList.SetSortKey(1);
    EXPECT_EQ(fList.FullNames(), "b a a2 a1 a11 ");
    EXPECT_EQ(fList.Names(), "b a a2 a1 a11 ");
}

int AnswerTwoForGreater(const CLVListItem* a, const CLVListItem* b, int32 column)
{
    return CompareValues(a, b, column) > 0 ? 2 : CompareValues(a, b, column);
}

TEST_F(OutlineTest, LeavesAPairWhoseComparisonIsTwo)
{
    AddTree();
    fA->values[1] = 2;
    fB->values[1] = 1;
    fList.SetSortFunction(&AnswerTwoForGreater);
    fList.SetSortKey(1);
    EXPECT_EQ(fList.Names(), "a a1 a11 a2 b ");
}

TEST_F(OutlineTest, IndentsTheColumnAfterTheExpander)
{
    AddTree();
    EXPECT_TRUE(fList.ColumnAt(1)->IsShifted());
    EXPECT_FALSE(fList.ColumnAt(2)->IsShifted());
    EXPECT_EQ(fA11->ExpanderShift(1, &fList), 40);
    EXPECT_EQ(fA11->ExpanderShift(2, &fList), 0);
}

TEST_F(OutlineTest, PassesTheIndentationOnWhereAColumnSaysSo)
{
    TestList list(true);
    list.AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
    list.AddColumn(new CLVColumn("a", 50, CLV_PUSH_PASS));
    list.AddColumn(new CLVColumn("b", 50));
    list.AddColumn(new CLVColumn("c", 50));
    EXPECT_TRUE(list.ColumnAt(1)->IsShifted());
    EXPECT_TRUE(list.ColumnAt(2)->IsShifted());
    EXPECT_FALSE(list.ColumnAt(3)->IsShifted());
}

TEST_F(OutlineTest, PlacesTheArrowWhenDrawn)
{
    AddTree();
    EXPECT_EQ(fA->ExpanderButtonRect(), BRect(-1, -1, -1, -1));
    fA->DrawItem(&fList, BRect(0, 0, 299, 20), true);
    EXPECT_EQ(fA->ExpanderButtonRect(), BRect(7, 5, 17, 15));
    fA1->DrawItem(&fList, BRect(0, 21, 299, 41), true);
    EXPECT_EQ(fA1->ExpanderButtonRect(), BRect(27, 26, 37, 36));
    fB->DrawItem(&fList, BRect(0, 42, 299, 62), true);
    EXPECT_EQ(fB->ExpanderButtonRect(), BRect(-1, -1, -1, -1));
}

TEST_F(OutlineTest, CutsShiftedCellsAtTheIndentationLimit)
{
    AddTree();
    fA11->DrawItem(&fList, BRect(0, 42, 299, 62), true);
    ASSERT_EQ(fA11->cells.size(), 4u);
    EXPECT_EQ(fA11->cells[1].frame, BRect(61, 42, 121, 62)); // 21 to 121, moved by 40 and cut
    EXPECT_EQ(fA11->cells[2].frame.left, 122);
}

TEST_F(OutlineTest, AHiddenColumnIsNoLimitForArrows)
{
    TestList list(true);
    list.AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
    list.AddColumn(new CLVColumn("name", 100, CLV_PUSH_PASS));
    list.AddColumn(new CLVColumn("more", 100, CLV_HIDDEN));
    TestRow* row = list.Add("row", 1, true);
    row->DrawItem(&list, BRect(0, 21, 299, 41), true);
    EXPECT_EQ(row->ExpanderButtonRect(), BRect(27, 26, 37, 36));
}

TEST_F(OutlineTest, SortingKeepsRowsWithoutOneAboveThemOnTheFirstLevel)
{
    TestRow* lost = fList.Add("lost", 2);
    TestRow* lost1 = fList.Add("lost1", 3);
    AddTree();
    lost->values[1] = 5;
    lost1->values[1] = 9;
    fA->values[1] = 7;
    fList.SetSortFunction(&CompareValues);
    fList.SetSortKey(1);
    EXPECT_EQ(fList.FullNames(), "b lost lost1 a a1 a11 a2 ");
    EXPECT_EQ(lost->OutlineLevel(), 0u);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fA), 3);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fB), 0);
}

TEST_F(OutlineTest, SortingKeepsRowsThatSkipALevelBelowTheirSuperitem)
{
    TestRow* top = fList.Add("top", 0, true);
    TestRow* deep = fList.Add("deep", 2);
    TestRow* below = fList.Add("below", 1);
    deep->values[1] = 2;
    below->values[1] = 1;
    fList.SetSortFunction(&CompareValues);
    fList.SetSortKey(1);
    EXPECT_EQ(fList.FullNames(), "top below deep ");
    EXPECT_EQ(fList.Names(), "top below deep ");
    EXPECT_EQ(fList.Superitem(deep), top);
}

TEST_F(OutlineTest, SortingKeepsRowsBelowOneWithoutAnArrow)
{
    fList.Add("plain");
    fList.Add("below", 1);
    fList.SetSortFunction(&CompareValues);
    fList.SetSortKey(1);
    EXPECT_EQ(fList.FullNames(), "plain below ");
}

TEST_F(OutlineTest, AFlatListHasNothingToExpand)
{
    TestList flat(false);
    TestRow* first = flat.Add("first", 0, true, false);
    flat.Add("second", 1);
    flat.Expand(first);
    EXPECT_EQ(flat.Names(), "first second ");
    EXPECT_FALSE(first->IsExpanded());
    first->SetExpanded(true);
    flat.Collapse(first);
    EXPECT_EQ(flat.Names(), "first second ");
    EXPECT_TRUE(first->IsExpanded());
}

TEST_F(OutlineTest, KnowsTheLevelsThatRowsAreGivenLater)
{
    AddTree();
    fA2->SetOutlineLevel(0);
    EXPECT_EQ(fList.Superitem(fA2), nullptr);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fA), 2);
    fA2->SetOutlineLevel(2);
    EXPECT_EQ(fList.Superitem(fA2), fA1);
}

TEST_F(OutlineTest, ARowInBetweenTakesOverThoseBehindIt)
{
    AddTree();
    TestRow between("between");
    EXPECT_TRUE(fList.AddItem(&between, 1));
    EXPECT_EQ(fList.FullNames(), "a between a1 a11 a2 b ");
    EXPECT_EQ(fList.Superitem(fA1), &between);
    EXPECT_EQ(fList.FullListNumberOfSubitems(fA), 0);
    fList.MakeEmpty();
}

TEST_F(OutlineTest, ARowIsShownBehindASiblingAlsoWhereOthersAreHidden)
{
    fList.Add("a", 0, true, false);
    fList.Add("hidden", 1);
    fList.Add("hidden too", 1);
    TestRow between("between", 0, true, true);
    TestRow sibling("sibling", 1);
    EXPECT_TRUE(fList.AddItem(&between, 1));
    EXPECT_TRUE(fList.AddItem(&sibling, 3));
    fList.Add("last", 1);
    EXPECT_EQ(fList.Names(), "a between sibling last ");
    fList.MakeEmpty();
}

/// An outline beside a plain reckoning of it.
class OutlineAtRandom : public ::testing::TestWithParam<unsigned>
{
protected:
    /// The rows that are seen, by what their levels and states say.
    std::string ExpectedNames()
    {
        std::string names;
        std::vector<std::pair<TestRow*, bool>> above; // with whether what is below is seen
        for (int32 i = 0; i < fList.FullListCountItems(); i++) {
            auto* row = static_cast<TestRow*>(fList.FullListItemAt(i));
            while (!above.empty() && above.back().first->OutlineLevel() >= row->OutlineLevel()) {
                above.pop_back();
            }
            EXPECT_EQ(fList.Superitem(row), above.empty() ? nullptr : above.back().first);
            EXPECT_EQ(fList.FullListNumberOfSubitems(row), CountDeeperBehind(i));
            const bool isSeen = above.empty() || above.back().second;
            names += isSeen ? row->Name() + " " : "";
            above.emplace_back(row, isSeen && row->IsExpanded());
        }
        return names;
    }

    int32 CountDeeperBehind(int32 index)
    {
        int32 behind = index + 1;
        while (behind < fList.FullListCountItems() &&
               fList.FullListItemAt(behind)->OutlineLevel() >
                   fList.FullListItemAt(index)->OutlineLevel()) {
            behind++;
        }
        return behind - index - 1;
    }

    /// Adds a row below a random one, or on the first level; removes, expands or collapses one.
    void ChangeSomething()
    {
        const auto count = static_cast<unsigned>(fList.FullListCountItems());
        const auto step = fRandom() % 8;
        if (count == 0 || step < 2) {
            fList.Add(std::to_string(fSerial++), 0, true, fRandom() % 2 == 0);
            return;
        }
        CLVListItem* row = fList.FullListItemAt(static_cast<int32>(fRandom() % count));
        if (step < 5) {
            fList.rows.push_back(
                std::make_unique<TestRow>(std::to_string(fSerial++), 0, true, fRandom() % 2 == 0));
            EXPECT_TRUE(fList.AddUnder(fList.rows.back().get(), row));
        } else if (step == 5) {
            EXPECT_TRUE(fList.RemoveItem(row));
        } else if (row->IsExpanded()) {
            fList.Collapse(row);
        } else {
            fList.Expand(row);
        }
    }

    TestList fList{true};
    std::mt19937 fRandom{GetParam()};
    int fSerial = 0;
};

TEST_P(OutlineAtRandom, ShowsWhatIsNotBelowACollapsedRow)
{
    for (int step = 0; step < 400; step++) {
        ChangeSomething();
        ASSERT_EQ(fList.Names(), ExpectedNames()) << step;
    }
    for (int32 i = 0; i < fList.FullListCountItems(); i++) {
        EXPECT_EQ(fList.FullListIndexOf(fList.FullListItemAt(i)), i);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, OutlineAtRandom, ::testing::Range(1u, 9u),
                         [](const auto& seed) { return "seed" + std::to_string(seed.param); });

} // namespace
