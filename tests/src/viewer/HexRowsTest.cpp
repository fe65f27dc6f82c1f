#include "viewer/HexRows.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using norvane::HexRows;
using norvane::OffsetIn;

TEST(HexRowsTest, LaysOutBytesInGroups)
{
    const HexRows rows = HexRows::Fitting(20, 200);

    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Offset(1), "00000010");
    EXPECT_EQ(rows.Digits(std::string_view("A\0\xff~ b", 6)), "41 00 ff 7e  20 62");
    EXPECT_EQ(HexRows::Characters(std::string_view("A\0\xff~ b\x7f", 7)), "A..~ b.");
}

TEST(HexRowsTest, DigitsStandWhereTheyAreSaidToStand)
{
    const HexRows rows = HexRows::Fitting(1000, 200);
    const std::string bytes = "0123456789abcdef";

    const std::string digits = rows.Digits(bytes);

    for (int32 i = 0; i < 16; i++) {
        const auto at = static_cast<size_t>(rows.DigitsAt(i) - rows.DigitsAt(0));
        EXPECT_EQ(digits.substr(at, 2),
                  i < 10 ? "3" + std::to_string(i) : "6" + std::to_string(i - 9));
    }
}

TEST(HexRowsTest, GreatestFileThereCanBeHasAllItsRows)
{
    const int64 most = std::numeric_limits<int64>::max();
    const HexRows rows = HexRows::Fitting(most, 200);

    EXPECT_EQ(rows.Count(), most / 16 + 1);
    EXPECT_EQ(rows.OffsetOf(rows.Count() - 1), most - 15);
    EXPECT_EQ(rows.OffsetOf(rows.Count() + 40), most);
    EXPECT_EQ(rows.Offset(rows.Count() - 1), "7ffffffffffffff0");
}

TEST(HexRowsTest, TakesFewerBytesWhereThereIsLittleRoom)
{
    const HexRows whole = HexRows::Fitting(1000, 1000);

    EXPECT_EQ(whole.bytesInRow, 16);
    EXPECT_EQ(HexRows::Fitting(1000, whole.Columns()).bytesInRow, 16);
    EXPECT_EQ(HexRows::Fitting(1000, whole.Columns() - 1).bytesInRow, 8);
    EXPECT_EQ(HexRows::Fitting(1000, 1).bytesInRow, 4);
}

TEST(HexRowsTest, OffsetsOfLargeFilesAreLonger)
{
    EXPECT_EQ(HexRows::Fitting(0xffffffff, 200).Offset(0), "00000000");
    EXPECT_EQ(HexRows::Fitting(int64{10} << 30, 200).Offset(int64{10} << 26), "280000000");
}

TEST(HexRowsTest, ReadsOffsets)
{
    EXPECT_EQ(OffsetIn("4096"), 4096);
    EXPECT_EQ(OffsetIn("0x1F"), 31);
    EXPECT_EQ(OffsetIn("10737418239"), 10737418239);
    for (const char* wrong : {"", "0x", "-1", "12 ", "1f", "99999999999999999999", "0x-1"}) {
        EXPECT_LT(OffsetIn(wrong), 0) << wrong;
    }
}

} // namespace
