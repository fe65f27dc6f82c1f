#include "panes/QuerySource.h"

#include "SourceFixture.h"

namespace {

using namespace norvane;

class QuerySourceTest : public SourceFixture
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("other/below");
        fTree.Write("other/file", "12");
    }

    BMessage Results(const std::vector<std::string>& hits) const
    {
        BMessage results(601);
        results.AddString("QueryString", "(name==*)");
        for (const std::string& hit : hits) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(fTree.Path(hit).c_str(), &ref), B_OK);
            results.AddRef("hits", &ref);
        }
        return results;
    }
};

TEST_F(QuerySourceTest, ShowsHitsByTheirPaths)
{
    QuerySource source(Results({"other/file", "other/below"}), "/before");
    EXPECT_EQ(Open(source), B_OK);
    EXPECT_EQ(Names(), fTree.Path("other/below") + " " + fTree.Path("other/file") + " ");
    EXPECT_EQ(fCounted, 2);
    EXPECT_EQ(fRead, 2);
    EXPECT_FALSE(source.Folder().has_value());
}

TEST_F(QuerySourceTest, ShowsNothingWithoutHits)
{
    QuerySource source(BMessage(601), "/before");
    EXPECT_EQ(Open(source), B_OK);
    EXPECT_EQ(fOpened, &source);
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(source.HeaderText(), "");
}

TEST_F(QuerySourceTest, LeadsBackToTheFolderShownBefore)
{
    QuerySource source(Results({}), "/before");
    EXPECT_EQ(source.LocalFolder(), "/before");
    EXPECT_EQ(source.Up()->LocalFolder(), "/before");
    EXPECT_EQ(source.NameAbove(), "");
    EXPECT_EQ(source.GoTo("/there"), nullptr);
    EXPECT_EQ(source.Up()->LocalFolder(), "/there");
    EXPECT_EQ(source.Again(), nullptr);
}

TEST_F(QuerySourceTest, EntersAHitByItsOwnPath)
{
    QuerySource source(Results({"other/file", "other/below"}), "/before");
    ASSERT_EQ(Open(source), B_OK);
    const DirListItem& folder = *Row(fTree.Path("other/below"));
    EXPECT_EQ(source.Into(folder)->LocalFolder(), fTree.Path("other/below"));
    EXPECT_EQ(source.PathOf(folder), fTree.Path("other/below"));
    EXPECT_EQ(source.Into(*Row(fTree.Path("other/file"))), nullptr);
}

TEST_F(QuerySourceTest, RenamesWhereTheHitLies)
{
    QuerySource source(Results({"other/file"}), "/before");
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_EQ(source.Renaming(*Row(fTree.Path("other/file")), "renamed")(), B_OK);
    EXPECT_EQ(fTree.List("other"), "below\nrenamed\n");
}

TEST_F(QuerySourceTest, MakesAndDeletesNothing)
{
    QuerySource source(Results({"other/file"}), "/before");
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_FALSE(source.MakingFolder());
    EXPECT_FALSE(source.Delete({Row(fTree.Path("other/file"))}, false).has_value());
    EXPECT_EQ(fTree.List("other"), "below\nfile\n");
}

TEST_F(QuerySourceTest, CarriesItsTextAsWhereEntriesComeFrom)
{
    QuerySource source(Results({"other/file"}), "/before");
    ASSERT_EQ(Open(source), B_OK);
    const std::unique_ptr<BMessage> message = source.MessageFor({Row(fTree.Path("other/file"))});
    entry_ref ref;
    EXPECT_EQ(message->FindRef("refs", &ref), B_OK);
    EXPECT_STREQ(ref.name, "file");
    EXPECT_STREQ(message->GetString("From", ""), "(name==*)");
}

TEST_F(QuerySourceTest, RefusesAllThatIsDroppedOnIt)
{
    const QuerySource source(Results({}), "/a");
    EXPECT_EQ(source.MeaningOf(Drop("", false), nullptr).act, DropMeaning::Act::kRefuse);
    EXPECT_EQ(source.MeaningOf(Drop("/a"), nullptr).act, DropMeaning::Act::kRefuse);
    EXPECT_STREQ(source.MeaningOf(Drop("/a"), nullptr).title, "Foo");
}

} // namespace
