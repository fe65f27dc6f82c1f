#include "panes/MarkTotals.h"

#include "PaneRowsFixture.h"
#include "panes/PaneMarks.h"

namespace {

using namespace norvane;

class MarkTotalsTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fMarks = std::make_unique<PaneMarks>(*fRows, [this] { fChanges++; });
        Fill({"m", "n"}, {"a", "b", "c"});
    }

    void RowsLeave(const std::vector<DirListItem*>& rows) override { fMarks->Forget(rows); }

    std::string Text() const { return fMarks->Totals().Text(); }

    int fChanges = 0;
    std::unique_ptr<PaneMarks> fMarks;
};

TEST_F(MarkTotalsTest, TellCountAndSize)
{
    EXPECT_EQ(Text(), "");
    fMarks->Toggle(3);
    EXPECT_EQ(Text(), "1 marked, 100 Bytes");
    fMarks->Mark(3, 5);
    EXPECT_EQ(Text(), "3 marked, 300 Bytes");
    fMarks->Toggle(4);
    EXPECT_EQ(Text(), "2 marked, 200 Bytes");
    fMarks->ToggleAll(3, 5);
    EXPECT_EQ(Text(), "1 marked, 100 Bytes");
    fMarks->Unmark(0, 99);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(fChanges, 5);
}

TEST_F(MarkTotalsTest, TellOfFoldersThatAreNotMeasured)
{
    fMarks->Mark(1, 2);
    EXPECT_EQ(Text(), "2 marked (2 folders)");
    fMarks->Mark(3, 3);
    EXPECT_EQ(Text(), "3 marked (2 folders), 100 Bytes");
    fRows->SetDirSize(Row("m"), 1000);
    EXPECT_EQ(Text(), "3 marked (1 folder), 1.1 KiB");
    fMarks->Toggle(1);
    EXPECT_EQ(Text(), "2 marked (1 folder), 100 Bytes");
}

TEST_F(MarkTotalsTest, FollowMarkedRows)
{
    fMarks->Mark(3, 5);
    BEntryRecord grown;
    grown.mode = S_IFREG | 0644;
    grown.node = 3;
    grown.size = 150;
    fRows->Rebuild(Row("a"), "a", grown);
    EXPECT_EQ(Text(), "3 marked, 350 Bytes");
    fRows->Remove(Row("a"));
    EXPECT_EQ(Text(), "2 marked, 200 Bytes");
    fRows->BeginChanges();
    fRows->Rebuild(fRows->FindRow("b"), "b", grown);
    fRows->Remove(fRows->FindRow("b"));
    fRows->Remove(fRows->FindRow("c"));
    fRows->EndChanges();
    EXPECT_EQ(Text(), "");
}

} // namespace
