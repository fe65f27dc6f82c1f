#include "panes/MarkList.h"

#include "RowFixture.h"

namespace {

using namespace norvane;

class MarkListTest : public RowFixture
{
protected:
    MarkList fMarks;
};

TEST_F(MarkListTest, KeepsTheOrderOfMarking)
{
    DirListItem* a = Add("a");
    DirListItem* b = Add("b");
    DirListItem* c = Add("c");
    fMarks.Toggle(c);
    fMarks.Mark({a, b, c});
    EXPECT_EQ(fMarks.Rows(), (std::vector<DirListItem*>{c, a, b}));
    fMarks.Toggle(a);
    EXPECT_FALSE(a->IsMarked());
    EXPECT_EQ(fMarks.Rows(), (std::vector<DirListItem*>{c, b}));
}

TEST_F(MarkListTest, UnmarksARange)
{
    DirListItem* a = Add("a");
    DirListItem* b = Add("b");
    fMarks.Mark({a, b});
    fMarks.Unmark({a});
    EXPECT_FALSE(a->IsMarked());
    EXPECT_TRUE(b->IsMarked());
    EXPECT_EQ(fMarks.Count(), 1);
}

TEST_F(MarkListTest, TakesARowWithoutMarkingItOnce)
{
    DirListItem* a = Add("a");
    fMarks.Append(a);
    fMarks.Append(a);
    EXPECT_EQ(fMarks.Count(), 1);
    EXPECT_FALSE(a->IsMarked());
}

TEST_F(MarkListTest, ForgetsRowsThatGo)
{
    DirListItem* a = Add("a");
    fMarks.Toggle(a);
    fMarks.Forget({a});
    EXPECT_TRUE(fMarks.IsEmpty());
}

} // namespace
