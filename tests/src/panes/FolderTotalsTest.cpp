#include "panes/FolderTotals.h"

#include "RowFixture.h"

namespace {

using namespace norvane;

class FolderTotalsTest : public RowFixture
{
};

TEST_F(FolderTotalsTest, CountsFilesOnly)
{
    FolderTotals totals;
    const auto file = Make("a", false, 1, 1000);
    totals.Add(*file);
    totals.Add(*Make("b", true, 2, 4096));
    EXPECT_EQ(totals.files, 1);
    EXPECT_EQ(totals.bytes, 1000);
    totals.Remove(*file);
    EXPECT_EQ(totals.files, 0);
    EXPECT_EQ(totals.bytes, 0);
}

} // namespace
