#include "interface/text/RowHeights.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace {

using kits::RowHeights;

TEST(RowHeightsTest, EqualRowsAreFoundByDivision)
{
    RowHeights heights;
    heights.Insert(0, 1'000'000, 21);

    EXPECT_EQ(heights.Total(), 21'000'000.0);
    EXPECT_EQ(heights.Top(999'999), 20'999'979.0);
    EXPECT_EQ(heights.RowAt(20'999'978.5), 999'998);
    EXPECT_EQ(heights.RowAt(20'999'979), 999'999);
}

TEST(RowHeightsTest, NoRowLiesOutside)
{
    RowHeights heights;
    EXPECT_EQ(heights.RowAt(0), -1);

    heights.Insert(0, 3, 10);

    EXPECT_EQ(heights.RowAt(-0.5), -1);
    EXPECT_EQ(heights.RowAt(30), -1);
    EXPECT_EQ(heights.RowAt(29.9), 2);
    EXPECT_EQ(heights.Extent(3), 0);
    EXPECT_EQ(heights.Top(99), 30);
}

TEST(RowHeightsTest, RowsWithoutHeightCoverNothing)
{
    RowHeights heights;
    heights.Insert(0, 5, 0);

    EXPECT_EQ(heights.RowAt(0), -1);
    EXPECT_EQ(heights.Total(), 0);
}

TEST(RowHeightsTest, OneHigherRowMovesTheRowsBelow)
{
    RowHeights heights;
    heights.Insert(0, 10'000, 20);

    heights.Set(5000, 33);

    EXPECT_EQ(heights.Top(5000), 100'000);
    EXPECT_EQ(heights.Top(5001), 100'033);
    EXPECT_EQ(heights.Total(), 200'013);
    EXPECT_EQ(heights.RowAt(100'032), 5000);
    EXPECT_EQ(heights.RowAt(100'033), 5001);
}

TEST(RowHeightsTest, RowsOfAnotherHeightGoBetweenEqualOnes)
{
    RowHeights heights;
    heights.Insert(0, 3, 10);

    heights.Insert(1, 2, 25);

    EXPECT_EQ(heights.Top(1), 10);
    EXPECT_EQ(heights.Top(3), 60);
    EXPECT_EQ(heights.Total(), 80);
}

TEST(RowHeightsTest, SetOfTheOnlyRowKeepsOneHeight)
{
    RowHeights heights;
    heights.Insert(0, 1, 20);

    heights.Set(0, 7);

    EXPECT_EQ(heights.Total(), 7);
    EXPECT_EQ(heights.Count(), 1);
}

TEST(RowHeightsTest, RemovalIsCutAtTheEnd)
{
    RowHeights heights;
    heights.Insert(0, 4, 5);

    heights.Remove(2, 100);
    EXPECT_EQ(heights.Count(), 2);

    heights.Remove(-1, 100);
    EXPECT_EQ(heights.Count(), 0);
    EXPECT_EQ(heights.Total(), 0);
}

// Any sequence of changes gives what a plain array gives.
TEST(RowHeightsTest, AgreesWithAPlainArray)
{
    std::mt19937 random(4711);
    const auto upTo = [&random](int32 n) {
        return std::uniform_int_distribution<int32>(0, n)(random);
    };
    RowHeights heights;
    std::vector<double> plain;
    for (int32 round = 0; round < 2000; round++) {
        const auto count = static_cast<int32>(plain.size());
        const int32 index = upTo(count);
        const int32 kind = upTo(3);
        if (kind < 2) {
            const int32 added = 1 + upTo(40);
            const double extent = 10 + upTo(kind * 3);
            heights.Insert(index, added, extent);
            plain.insert(plain.begin() + index, static_cast<size_t>(added), extent);
        } else if (kind == 2) {
            const int32 removed = std::min(upTo(60), count - index);
            heights.Remove(index, removed);
            plain.erase(plain.begin() + index, plain.begin() + index + removed);
        } else if (index < count) {
            heights.Set(index, 5 + upTo(9));
            plain[static_cast<size_t>(index)] = heights.Extent(index);
        }
        ASSERT_EQ(heights.Count(), static_cast<int32>(plain.size()));
        const int32 asked = upTo(static_cast<int32>(plain.size()));
        const double top = std::accumulate(plain.begin(), plain.begin() + asked, 0.0);
        ASSERT_EQ(heights.Top(asked), top);
        if (asked < heights.Count()) {
            ASSERT_EQ(heights.Extent(asked), plain[static_cast<size_t>(asked)]);
            ASSERT_EQ(heights.RowAt(top), asked);
            ASSERT_EQ(heights.RowAt(top + heights.Extent(asked) - 0.5), asked);
        }
    }
}

} // namespace
