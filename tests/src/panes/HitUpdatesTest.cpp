#include "PaneWindowFixture.h"

#include <Entry.h>

#include <unistd.h>

namespace {

using kits::testing::WaitFor;

/// A pane that shows hits of a query, which lie in folders that others change.
class HitUpdatesTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        fTree.Write("one/a", "1");
        fTree.Write("one/b", "22");
        fTree.Write("two/c", "333");
        Open();
        ShowHits({"one/a", "one/b", "two/c"});
    }

    void ShowHits(const std::vector<std::string>& hits)
    {
        Locked([&] {
            BMessage results(601);
            for (const std::string& hit : hits) {
                entry_ref ref;
                EXPECT_EQ(get_ref_for_path(fTree.Path(hit).c_str(), &ref), B_OK);
                results.AddRef("ref", &ref);
            }
            fList->Populate(&results);
        });
        ASSERT_TRUE(Shows(hits));
    }

    bool Shows(const std::vector<std::string>& hits)
    {
        std::string names;
        for (const std::string& hit : hits) {
            names += fTree.Path(hit) + " ";
        }
        return WaitFor([&] { return Names() == names; });
    }

    /// Of the row in that place.
    std::string SizeAt(int32 index)
    {
        return Locked([=, this] { return std::string(fList->RowAt(index)->Text(2)); });
    }

    void Rename(const std::string& from, const std::string& to)
    {
        ASSERT_EQ(rename(fTree.Path(from).c_str(), fTree.Path(to).c_str()), 0);
    }
};

} // namespace

TEST_F(HitUpdatesTest, AHitThatGoesLeavesItsRow)
{
    fTree.Remove("one/b");

    EXPECT_TRUE(Shows({"one/a", "two/c"}));
}

TEST_F(HitUpdatesTest, AHitThatIsMovedElsewhereLeavesItsRow)
{
    Rename("one/a", "two/a");

    EXPECT_TRUE(Shows({"one/b", "two/c"}));
}

TEST_F(HitUpdatesTest, AHitThatIsRenamedChangesItsRow)
{
    Rename("one/b", "one/new");

    EXPECT_TRUE(Shows({"one/a", "one/new", "two/c"}));
    EXPECT_STREQ(Locked([this] { return std::string(fList->RowAt(1)->GetRef()->name); }).c_str(),
                 "new");
}

TEST_F(HitUpdatesTest, AHitThatIsRenamedOverAnotherTakesItsPlace)
{
    Rename("one/b", "one/a");

    EXPECT_TRUE(Shows({"one/a", "two/c"}));
    EXPECT_EQ(SizeAt(0), "2 Bytes");
}

TEST_F(HitUpdatesTest, AHitThatIsSavedAnewShowsIt)
{
    fTree.Write("two/temporary", "55555");
    Rename("two/temporary", "two/c");

    EXPECT_TRUE(WaitFor([this] { return SizeAt(2) == "5 Bytes"; }));
    EXPECT_TRUE(Shows({"one/a", "one/b", "two/c"}));
}

TEST_F(HitUpdatesTest, AHitThatGrowsShowsIt)
{
    fTree.Write("one/a", "4444");

    EXPECT_TRUE(WaitFor([this] { return SizeAt(0) == "4 Bytes"; }));
}

TEST_F(HitUpdatesTest, WhatIsNoHitGetsNoRow)
{
    fTree.Write("one/new", "");
    fTree.Write("one/a", "4444"); // told later

    EXPECT_TRUE(WaitFor([this] { return SizeAt(0) == "4 Bytes"; }));
    EXPECT_TRUE(Shows({"one/a", "one/b", "two/c"}));
}

TEST_F(HitUpdatesTest, TheNextHitsAreFollowedInTheSameFolder)
{
    ShowHits({"one/b"});
    fTree.Remove("one/b");

    EXPECT_TRUE(Shows({}));
}

TEST_F(HitUpdatesTest, TheFolderShownNextIsNotTouched)
{
    fTree.Write("shown/file", "");
    Locked([this] { fList->Populate(fTree.Path("shown").c_str()); });
    fTree.Remove("one/a");
    fTree.Write("shown/later", "");

    EXPECT_TRUE(WaitFor([this] { return Names() == ".. file later "; }));
}
