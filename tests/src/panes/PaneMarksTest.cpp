#include "panes/PaneMarks.h"

#include "PaneRowsFixture.h"

namespace {

using namespace norvane;

class PaneMarksTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fMarks = std::make_unique<PaneMarks>(*fRows);
        Fill({"m"}, {"a", "b", "c"});
    }

    std::string Marked() const
    {
        std::string names;
        for (const DirListItem* row : fMarks->List().Rows()) {
            EXPECT_TRUE(row->IsMarked());
            names += row->GetEntryName() + std::string(" ");
        }
        return names;
    }

    std::unique_ptr<PaneMarks> fMarks;
};

TEST_F(PaneMarksTest, TogglesOneRow)
{
    fMarks->Toggle(2);
    EXPECT_EQ(Marked(), "a ");
    fMarks->Toggle(2);
    EXPECT_TRUE(fMarks->IsEmpty());
    EXPECT_FALSE(Row("a")->IsMarked());
}

TEST_F(PaneMarksTest, NeverMarksTheParentRow)
{
    fMarks->Toggle(0);
    fMarks->Mark(0, 1);
    EXPECT_EQ(Marked(), "m ");
}

TEST_F(PaneMarksTest, RangesReachBeyondTheList)
{
    fMarks->Toggle(9);
    fMarks->Toggle(-1);
    fMarks->Mark(-5, 99);
    EXPECT_EQ(Marked(), "m a b c ");
    fMarks->Unmark(2, 3);
    EXPECT_EQ(Marked(), "m c ");
    fMarks->Unmark(-5, 99);
    EXPECT_TRUE(fMarks->IsEmpty());
}

TEST_F(PaneMarksTest, TogglesARangeRowByRow)
{
    fMarks->Mark(1, 2);
    fMarks->ToggleAll(1, 4);
    EXPECT_EQ(Marked(), "b c ");
}

TEST_F(PaneMarksTest, EmptiesAll)
{
    fMarks->Mark(1, 4);
    fMarks->Empty();
    EXPECT_TRUE(fMarks->IsEmpty());
    EXPECT_FALSE(Row("b")->IsMarked());
}

} // namespace
