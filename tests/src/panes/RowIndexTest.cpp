#include "panes/RowIndex.h"

#include "RowFixture.h"

#include <algorithm>
#include <random>

namespace {

using namespace norvane;

class RowIndexTest : public RowFixture
{
protected:
    RowIndex fIndex;
};

TEST_F(RowIndexTest, FindsByNodeAndName)
{
    DirListItem* first = Add("a", false, 5);
    DirListItem* second = Add("b", false, 5); // a hard link
    fIndex.Add(first);
    fIndex.Add(second);
    EXPECT_EQ(fIndex.Find({7, 5}, "b"), second);
    EXPECT_EQ(fIndex.Find({7, 5}, "c"), nullptr);
    EXPECT_EQ(fIndex.Find({6, 5}, "b"), nullptr);
    EXPECT_EQ(fIndex.FindAll({7, 5}).size(), 2u);
    EXPECT_NE(fIndex.FindAny({7, 5}), nullptr);
}

TEST_F(RowIndexTest, FindsNothingWhenEmpty)
{
    EXPECT_EQ(fIndex.FindAny({7, 5}), nullptr);
    EXPECT_TRUE(fIndex.FindAll({7, 5}).empty());
    fIndex.Remove(Add("a"));
    EXPECT_EQ(fIndex.Count(), 0u);
}

TEST_F(RowIndexTest, HoldsThroughManyChanges)
{
    std::mt19937 random(3);
    std::vector<DirListItem*> present;
    for (int step = 0; step < 5000; step++) {
        if (present.empty() || random() % 3 != 0) {
            DirListItem* row = Add(std::to_string(step), false, random() % 700);
            fIndex.Add(row);
            present.push_back(row);
        } else {
            const size_t at = random() % present.size();
            fIndex.Remove(present[at]);
            present.erase(present.begin() + static_cast<long>(at));
        }
    }
    EXPECT_EQ(fIndex.Count(), present.size());
    for (const auto& row : fRows) {
        const bool isPresent =
            std::find(present.begin(), present.end(), row.get()) != present.end();
        EXPECT_EQ(fIndex.Find(row->NodeRef(), row->GetEntryName()),
                  isPresent ? row.get() : nullptr);
    }
}

class RowNumbersTest : public RowFixture, public ::testing::WithParamInterface<ino_t>
{
};

// File systems give their inodes numbers in steps, as many as they keep in a block or a group.
TEST_P(RowNumbersTest, CostAFewStepsEach)
{
    constexpr int kCount = 3000;
    RowIndex index;
    for (int i = 1; i <= kCount; i++) {
        index.Add(Add(std::to_string(i), false, static_cast<ino_t>(i) * GetParam()));
    }
    EXPECT_LT(index.CountProbes(), static_cast<size_t>(4 * kCount));
}

INSTANTIATE_TEST_SUITE_P(Steps, RowNumbersTest, ::testing::Values(1, 2, 128, 8192, ino_t{1} << 32),
                         [](const auto& step) { return "Step" + std::to_string(step.param); });

} // namespace
