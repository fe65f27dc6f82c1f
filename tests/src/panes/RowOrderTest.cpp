#include "panes/RowOrder.h"

#include "RowFixture.h"

#include <cstring>
#include <random>

namespace {

using namespace norvane;

class RowOrderTest : public RowFixture
{
protected:
    /// The place as it is described: the first row behind ".." that must stand behind the new one.
    int32 PlaceByWalking(const std::string& name, bool isFolder) const
    {
        int32 index = CountRows() > 0 && RowAt(0)->IsParent() ? 1 : 0;
        for (; index < CountRows(); index++) {
            const DirListItem* row = RowAt(index);
            if (row->IsDir() == isFolder && std::strcmp(row->GetEntryName(), name.c_str()) > 0) {
                return index;
            }
            if (isFolder && !row->IsDir()) {
                return index;
            }
        }
        return index;
    }

    RowOrder fOrder{*this};
};

TEST_F(RowOrderTest, PutsFilesInByteOrderBelowFolders)
{
    AddParent();
    for (const char* name : {"Zoo", "bin"}) {
        Add(name, true);
    }
    for (const char* name : {"A", "b"}) {
        Add(name);
    }
    EXPECT_EQ(fOrder.PlaceFor(*Make("a", false)).index, 4);
    EXPECT_EQ(fOrder.PlaceFor(*Make("0", false)).index, 3);
    EXPECT_EQ(fOrder.PlaceFor(*Make("c", false)).index, 5);
    EXPECT_EQ(fOrder.PlaceFor(*Make("z", true)).index, 3);
    EXPECT_EQ(fOrder.PlaceFor(*Make("A", true)).index, 1);
}

TEST_F(RowOrderTest, FindsPlacesInEmptyLists)
{
    EXPECT_EQ(fOrder.PlaceFor(*Make("a", false)).index, 0);
    AddParent();
    EXPECT_EQ(fOrder.PlaceFor(*Make("a", true)).index, 1);
}

TEST_F(RowOrderTest, PutsAnEntryFirstWhereThereIsNoParentRow)
{
    Add("bin", true);
    EXPECT_EQ(fOrder.PlaceFor(*Make("a", true)).index, 0);
}

TEST_F(RowOrderTest, StopsAtARenamedRowThatIsGreater)
{
    AddParent();
    DirListItem* renamed = Add("a");
    Add("b");
    Add("d");
    fRows[1] = Make("z", false);
    renamed = fRows[1].get();
    fOrder.Displaced(renamed);
    EXPECT_EQ(fOrder.PlaceFor(*Make("c", false)).index, 1);
    EXPECT_EQ(fOrder.IndexOf(renamed), 1);
}

TEST_F(RowOrderTest, AgreesWithWalkingWhateverWasRenamed)
{
    std::mt19937 random(11);
    const auto name = [&random] {
        return std::to_string(random() % 10000);
    };
    AddParent();
    for (int step = 0; step < 3000; step++) {
        const std::string fresh = name();
        const bool isFolder = random() % 3 == 0;
        const RowOrder::Place place = fOrder.PlaceFor(*Make(fresh, isFolder));
        ASSERT_EQ(place.index, PlaceByWalking(fresh, isFolder)) << "step " << step;
        fRows.insert(fRows.begin() + place.index, Make(fresh, isFolder));
        if (!place.isInOrder) {
            fOrder.Displaced(fRows[static_cast<size_t>(place.index)].get());
        }
        if (random() % 20 == 0) {
            const size_t index = 1 + random() % (fRows.size() - 1);
            fOrder.Forget(fRows[index].get());
            fRows[index] = Make(name(), fRows[index]->IsDir());
            fOrder.Displaced(fRows[index].get());
        }
        if (random() % 4 == 0) {
            const size_t index = 1 + random() % (fRows.size() - 1);
            ASSERT_EQ(fOrder.IndexOf(fRows[index].get()), static_cast<int32>(index));
            fOrder.Forget(fRows[index].get());
            fRows.erase(fRows.begin() + static_cast<long>(index));
        }
    }
}

} // namespace
