#include "panes/RangeMarks.h"

#include "PaneRowsFixture.h"
#include "panes/PaneMarks.h"

namespace {

using namespace norvane;

class RangeMarksTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fMarks = std::make_unique<PaneMarks>(*fRows);
        fRange = std::make_unique<RangeMarks>(*fRows, *fMarks);
        Fill({}, {"a", "b", "c", "d", "e"}); // from index 1 on
    }

    void RowsLeave(const std::vector<DirListItem*>& rows) override
    {
        fMarks->Forget(rows);
        for (const DirListItem* row : rows) {
            fRange->Forget(row);
        }
    }

    void AllRowsLeave() override
    {
        fMarks->ForgetAll();
        fRange->End();
    }

    std::string Marked() const
    {
        std::string names;
        for (int32 i = 0; i < fRows->CountRows(); i++) {
            names += fRows->RowAt(i)->IsMarked() ? fRows->RowAt(i)->GetEntryName() : "";
        }
        return names;
    }

    std::unique_ptr<PaneMarks> fMarks;
    std::unique_ptr<RangeMarks> fRange;
};

TEST_F(RangeMarksTest, HasBothEndsAndGrowsAndShrinks)
{
    fRange->Moved(2, 3);
    EXPECT_EQ(Marked(), "bc");
    fRange->Moved(3, 5);
    EXPECT_EQ(Marked(), "bcde");
    fRange->Moved(5, 3);
    EXPECT_EQ(Marked(), "bc");
    fRange->Moved(3, 1); // over the row where it began
    EXPECT_EQ(Marked(), "ab");
}

TEST_F(RangeMarksTest, LeavesWhatWasMarkedBefore)
{
    fMarks->Mark(3, 3);
    fRange->Moved(2, 4);
    EXPECT_EQ(Marked(), "bcd");
    fRange->Moved(4, 2);
    EXPECT_EQ(Marked(), "bc");
}

TEST_F(RangeMarksTest, BeginsAnewAtAnotherRow)
{
    fRange->Moved(1, 2);
    fRange->Moved(4, 5);
    EXPECT_EQ(Marked(), "abde");
    fRange->End();
    fRange->Moved(5, 4); // from here on, so nothing is taken back
    EXPECT_EQ(Marked(), "abde");
}

TEST_F(RangeMarksTest, MarksTheLastRowThoughTheCursorStays)
{
    fRange->Moved(5, 5);
    EXPECT_EQ(Marked(), "e");
    fRange->Moved(-1, 0); // nothing was selected; ".." is never marked
    EXPECT_EQ(Marked(), "e");
    fRange->Moved(7, 8); // there is none
    EXPECT_EQ(Marked(), "e");
}

TEST_F(RangeMarksTest, BeginsAnewWhenTheCursorWasNowhere)
{
    fRange->Moved(1, 3);
    fRange->Moved(-1, 3); // as after a click below the last row
    fRange->Moved(3, 2);
    EXPECT_EQ(Marked(), "abc");
}

TEST_F(RangeMarksTest, OutlivesItsAnchor)
{
    fRange->Moved(1, 3);
    fRows->Remove(Row("a"));
    EXPECT_EQ(Marked(), "bc");
    fRange->Moved(2, 3);
    EXPECT_EQ(Marked(), "bcd");
    fRange->Moved(3, 1); // the range began at "c" then
    EXPECT_EQ(Marked(), "bc");
}

TEST_F(RangeMarksTest, BeginsAnewWhenAFilterHidItsAnchor)
{
    fRows->Clear();
    Fill({}, {"a", "b1", "c1"});
    fRange->Moved(1, 2);
    fRows->SetFilter("1");
    fRange->Moved(1, 2);
    fRange->Moved(2, 0); // back over the row where it began anew, which was marked before
    EXPECT_EQ(Marked(), "b1");
}

} // namespace
