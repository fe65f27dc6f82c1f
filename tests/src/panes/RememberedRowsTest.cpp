#include "panes/RememberedRows.h"

#include "PaneRowsFixture.h"

namespace {

using namespace norvane;

class RememberedRowsTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        Fill({"folder"}, {"a", "b", "c"});
    }

    std::string Found(const RememberedRows& remembered) const
    {
        std::string names;
        for (const DirListItem* row : remembered.FindIn(*fRows)) {
            names += row->GetEntryName() + std::string(" ");
        }
        return names;
    }

    /// The same folder's rows as they are after others were at work.
    void Relist(const std::vector<std::pair<std::string, ino_t>>& files, ino_t directory = 8)
    {
        fRows->Clear();
        ListedRows rows;
        rows.folders.push_back(std::make_unique<DirListItem>());
        for (const auto& [name, node] : files) {
            BEntryRecord item;
            item.mode = S_IFREG | 0644;
            item.node = node;
            rows.files.push_back(std::make_unique<DirListItem>(
                entry_ref(7, directory, name.c_str()), item, DatePattern::For("%D %R")));
        }
        fRows->Fill(std::move(rows));
    }
};

TEST_F(RememberedRowsTest, FindsThemInTheirOrder)
{
    const RememberedRows remembered({Row("c"), Row("folder"), Row("a")});

    EXPECT_EQ(Found(remembered), "c folder a ");
}

TEST_F(RememberedRowsTest, FindsThemInAnotherListing)
{
    const RememberedRows remembered({Row("a"), Row("c")}); // nodes 2 and 4

    Relist({{"new", 9}, {"c", 4}, {"a", 2}});

    EXPECT_EQ(Found(remembered), "a c ");
}

TEST_F(RememberedRowsTest, ThoseThatWentAreNotFound)
{
    const RememberedRows remembered({Row("a"), Row("b")});

    fRows->Remove(Row("a"));

    EXPECT_EQ(Found(remembered), "b ");
}

TEST_F(RememberedRowsTest, ANameThatAnotherEntryHasIsNotFound)
{
    const RememberedRows remembered({Row("a"), Row("b")});

    Relist({{"a", 3}, {"b", 2}}); // exchanged

    EXPECT_EQ(Found(remembered), "");
}

TEST_F(RememberedRowsTest, TheSameNodeElsewhereIsNotFound)
{
    const RememberedRows remembered({Row("a")});

    Relist({{"a", 2}}, 99);

    EXPECT_EQ(Found(remembered), "");
}

TEST_F(RememberedRowsTest, TheParentRowIsKnownAsSuch)
{
    const RememberedRows remembered({fRows->RowAt(0)});
    EXPECT_EQ(Found(remembered), ".. ");

    fRows->Clear();

    EXPECT_EQ(Found(remembered), "");
}

} // namespace
