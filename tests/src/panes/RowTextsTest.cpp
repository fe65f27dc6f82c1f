#include "panes/RowTexts.h"

#include "panes/DatePattern.h"
#include "panes/FolderTotals.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <utility>

namespace {

using namespace norvane;

TEST(RowTextsTest, ShowsBytesUpToAKilobyte)
{
    EXPECT_EQ(SizeText(0), "0 Bytes");
    EXPECT_EQ(SizeText(1024), "1024 Bytes");
    EXPECT_EQ(SizeText(1025), "1 K");
    EXPECT_EQ(SizeText(2047), "1 K");
    EXPECT_EQ(SizeText(int64{5} << 40), "5368709120 K");
}

TEST(RowTextsTest, ShowsOccupiedSpaceInKilobytes)
{
    EXPECT_EQ(OccupiedText(1023), "0 K");
    EXPECT_EQ(OccupiedText(2048), "2 K");
}

TEST(RowTextsTest, SpellsPermissions)
{
    EXPECT_EQ(PermissionText(0644), "rw-r--r--");
    EXPECT_EQ(PermissionText(0755), "rwxr-xr-x");
    EXPECT_EQ(PermissionText(07000), "---------");
    EXPECT_EQ(PermissionText(0124), "--x-w-r--");
}

TEST(RowTextsTest, SumsUpInTheFooter)
{
    EXPECT_EQ(FooterText(1023, 4096, 1, 3), "0 of 4k in 1 of 3 files selected");
    EXPECT_EQ(FooterText(0, int64{3} << 40, 0, 1), "0 of 3221225472k in 0 of 1 files selected");
}

TEST(RowTextsTest, ReadableSizesTakeFewDigits)
{
    constexpr int64 kKiB = 1024;
    const std::pair<int64, const char*> kTexts[] = {
        {0, "0 Bytes"},
        {1, "1 Byte"},
        {1023, "1023 Bytes"},
        {kKiB, "1.0 KiB"},
        {1433 * kKiB, "1.4 MiB"},
        {102'348, "99.9 KiB"},
        {102'349, "100 KiB"}, // never "100.0"
        {1023 * kKiB, "1023 KiB"},
        {kKiB * kKiB - 1, "1.0 MiB"}, // never "1024 KiB"
        {152 * kKiB * kKiB * kKiB, "152 GiB"},
        {int64{5} << 40, "5.0 TiB"},
        {INT64_MAX, "8.0 EiB"},
    };
    for (const auto& [bytes, text] : kTexts) {
        EXPECT_EQ(ReadableSize(bytes), text) << bytes;
    }
}

TEST(RowTextsTest, UnitsHoldForRowsFoldersAndTheFooter)
{
    SetSizeUnits(SizeUnits::kReadable);
    EXPECT_EQ(SizeText(1433 << 10), "1.4 MiB");
    EXPECT_EQ(OccupiedText(1433 << 10), "1.4 MiB");
    EXPECT_EQ(FooterText(1 << 20, int64{3} << 40, 1, 2),
              "1.0 MiB of 3.0 TiB in 1 of 2 files selected");

    SetSizeUnits(SizeUnits::kKilobytes);
    EXPECT_EQ(SizeText(1433 << 10), "1433 K");
    EXPECT_EQ(OccupiedText(1433 << 10), "1433 K");
    EXPECT_EQ(FooterText(1 << 20, 1 << 20, 1, 2), "1024 of 1024k in 1 of 2 files selected");
}

std::string ByTheLibrary(const char* pattern, time_t seconds)
{
    char text[256];
    std::tm local = {};
    localtime_r(&seconds, &local);
    return std::string(text, std::strftime(text, sizeof(text), pattern, &local));
}

TEST(DatePatternTest, FormatsLikeTheLibrary)
{
    for (const char* pattern : {"%D %R", "%d.%m.%Y %H:%M:%S", "", "plain"}) {
        const DatePattern& dates = DatePattern::For(pattern);
        for (int64 seconds = -7000000000; seconds < 7000000000; seconds += 987654321) {
            EXPECT_EQ(dates.Format(seconds), ByTheLibrary(pattern, seconds)) << pattern;
        }
    }
}

TEST(DatePatternTest, GivesNothingForWhatIsTooLong)
{
    EXPECT_EQ(DatePattern::For(std::string(300, 'x')).Format(0), "");
}

TEST(DatePatternTest, SharesEqualPatterns)
{
    EXPECT_EQ(&DatePattern::For("%D"), &DatePattern::For("%D"));
    EXPECT_NE(&DatePattern::For("%D"), &DatePattern::For("%R"));
}

} // namespace
