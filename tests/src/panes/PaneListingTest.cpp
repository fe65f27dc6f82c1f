#include "panes/PaneListing.h"

#include "PaneRowsFixture.h"
#include "ScriptedSource.h"
#include "WatchLooper.h"
#include "panes/FolderSource.h"
#include "panes/LiveUpdates.h"
#include "panes/PaneNotifier.h"
#include "panes/QuerySource.h"
#include "settings/HomeFolder.h"

namespace {

using namespace norvane;

/// A place whose folder is watched from the beginning.
class WatchedSource : public ScriptedSource
{
public:
    WatchedSource(Places& places, std::string place, std::string folder, WatchedFolder watched)
        : ScriptedSource(places, std::move(place), std::move(folder)), fWatched(std::move(watched))
    {
    }
    std::optional<WatchedFolder> Folder() const override { return fWatched; }

private:
    const WatchedFolder fWatched;
};

class PaneListingTest : public PaneRowsFixture, public ListingOwner
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fTree.MakeFolder("home/below");
        fUpdates = std::make_unique<LiveUpdates>(*fRows);
        fListing =
            std::make_unique<PaneListing>(fTree.Path("home"), *fRows, *fUpdates, fNotifier, *this);
        fPlaces["a"].names = {"b", "c"};
        fPlaces["a/b"].names = {"d"};
    }

    bool Show(const std::string& place) { return fListing->Show(MakeSource(place)); }

    std::unique_ptr<ScriptedSource> MakeSource(const std::string& place)
    {
        return std::make_unique<ScriptedSource>(fPlaces, place, fTree.Path("home"));
    }

    /// Begins to show a place that answers later.
    ScriptedSource& BeginToShow(const std::string& place)
    {
        fPlaces[place].isLate = true;
        auto source = MakeSource(place);
        ScriptedSource& lent = *source;
        EXPECT_TRUE(fListing->Show(std::move(source)));
        return lent;
    }

    void Enter(const char* name) { fListing->Enter(*Row(name)); }
    std::string Place() const { return fListing->Source().HeaderText(); }

    // ListingOwner
    OpenOrder OrderForOpening() const override { return {"%D %R", BMessenger()}; }
    RowsView View() const override { return {}; }
    void Arrived(const Arrival& arrival) override { fArrivals.push_back(arrival); }
    void LookedAgain(status_t) override { fLooks++; }
    void NoFolder(const entry_ref& link) override { fNoFolders += link.name + std::string(" "); }

    TempTree fTree;
    PaneNotifier fNotifier{nullptr};
    ScriptedSource::Places fPlaces;
    std::vector<Arrival> fArrivals;
    int fLooks = 0;
    std::string fNoFolders;
    std::unique_ptr<LiveUpdates> fUpdates;
    std::unique_ptr<PaneListing> fListing;
};

TEST_F(PaneListingTest, StartsWithItsFolder)
{
    fListing->Start();
    EXPECT_EQ(Names(), ".. below ");
    EXPECT_EQ(fListing->UnreadableFolder(), "");
    EXPECT_TRUE(fUpdates->IsFollowing());
}

TEST_F(PaneListingTest, StartsAtHomeWhenItsFolderCannotBeRead)
{
    PaneListing listing("/not/there", *fRows, *fUpdates, fNotifier, *this);
    listing.Start();
    EXPECT_EQ(listing.Source().LocalFolder(), HomeFolder());
    EXPECT_EQ(listing.UnreadableFolder(), "/not/there");
    EXPECT_EQ(listing.UnreadableReason(), "The directory, /not/there, cannot be read.");
    EXPECT_GE(fRows->Find(".."), 0);
}

TEST_F(PaneListingTest, TellsOfLinksThatLeadToNoFolder)
{
    fTree.MakeFolder("home/removed");
    fTree.Link("home/broken", "nowhere");
    fListing->Start();
    fTree.Remove("home/removed");
    Enter("removed"); // no link: whoever asked sees that nothing happens
    EXPECT_EQ(fNoFolders, "");
    Enter("broken");
    EXPECT_EQ(fNoFolders, "broken ");
    EXPECT_EQ(Names(), ".. below broken removed ");
    Enter("below");
    EXPECT_EQ(Place(), fTree.Path("home/below"));
    EXPECT_EQ(fNoFolders, "broken ");
}

TEST_F(PaneListingTest, GoesInAndUpAndTellsWhereFrom)
{
    EXPECT_TRUE(Show("a"));
    Enter("b");
    EXPECT_EQ(Place(), "a/b");
    Enter("..");
    EXPECT_EQ(Names(), ".. b c ");
    ASSERT_EQ(fArrivals.size(), 3u);
    EXPECT_TRUE(fArrivals[1].isElsewhere);
    EXPECT_EQ(fArrivals[1].nameLeft, "");
    EXPECT_EQ(fArrivals[2].nameLeft, "b");
    fListing->Up();
    EXPECT_EQ(Place(), "a");
}

TEST_F(PaneListingTest, ReadingAgainStaysInPlace)
{
    EXPECT_TRUE(Show("a"));
    fPlaces["a"].names.push_back("new");
    fListing->ReadAgain();
    EXPECT_EQ(Names(), ".. b c new ");
    EXPECT_FALSE(fArrivals.back().isElsewhere);
}

TEST_F(PaneListingTest, TheRowsStayUntilTheNextOnesAreThere)
{
    EXPECT_TRUE(Show("a"));
    ScriptedSource& late = BeginToShow("a/b");
    EXPECT_EQ(Names(), ".. b c ");
    EXPECT_EQ(Place(), "a");
    EXPECT_EQ(fArrivals.size(), 1u);
    late.Answer();
    EXPECT_EQ(Names(), ".. d ");
    EXPECT_EQ(Place(), "a/b");
    EXPECT_EQ(fPlaces["a"].log, "+-");
}

TEST_F(PaneListingTest, APlaceThatFailsLateLeavesAllAsItWas)
{
    EXPECT_TRUE(Show("a"));
    ScriptedSource& late = BeginToShow("a/b");
    late.Fail(B_TIMED_OUT);
    EXPECT_EQ(Names(), ".. b c ");
    EXPECT_EQ(Place(), "a");
    EXPECT_EQ(fPlaces["a/b"].log, "+-");
}

TEST_F(PaneListingTest, APlaceThatFailsAtOnceLeavesAllAsItWas)
{
    EXPECT_TRUE(Show("a"));
    fPlaces["a/b"].status = B_TIMED_OUT;
    EXPECT_FALSE(Show("a/b"));
    EXPECT_EQ(Names(), ".. b c ");
    EXPECT_EQ(fPlaces["a/b"].log, "+-");
}

TEST_F(PaneListingTest, GoingOnLetsGoOfThePlaceThatDoesNotAnswer)
{
    EXPECT_TRUE(Show("a"));
    BeginToShow("a/b");
    fListing->ReadAgain();
    EXPECT_EQ(fPlaces["a/b"].log, "+-");
    BeginToShow("a/c");
    fListing.reset();
    EXPECT_EQ(fPlaces["a/c"].log, "+-");
}

TEST_F(PaneListingTest, OnlyThePlaceThatIsOpeningHandsRowsOver)
{
    auto source = MakeSource("a");
    ScriptedSource& shown = *source;
    EXPECT_TRUE(fListing->Show(std::move(source)));
    ScriptedSource& late = BeginToShow("a/b");
    shown.Answer();
    late.Change(); // which is not shown yet
    EXPECT_EQ(Place(), "a");
    EXPECT_EQ(fArrivals.size(), 1u);
    late.Answer();
    EXPECT_EQ(Place(), "a/b");
    EXPECT_EQ(Names(), ".. d ");
}

TEST_F(PaneListingTest, TheRowLeftIsKnownWhenTheAnswerComes)
{
    EXPECT_TRUE(Show("a/b"));
    fPlaces["a"].isLate = true;
    fListing->Up();
    EXPECT_EQ(Place(), "a/b");
    // What is opened again takes the place of the way up.
    fPlaces["a"].isLate = false;
    fListing->Up();
    EXPECT_EQ(Place(), "a");
    EXPECT_EQ(fArrivals.back().nameLeft, "b");
}

TEST_F(PaneListingTest, APlaceHasItsRowsReadAgain)
{
    auto source = MakeSource("a");
    ScriptedSource& lent = *source;
    EXPECT_TRUE(fListing->Show(std::move(source)));
    fPlaces["a"].names = {"changed"};
    lent.Change();
    EXPECT_EQ(Names(), ".. changed ");
}

TEST_F(PaneListingTest, ComesBackDownToTheFolderLeft)
{
    EXPECT_TRUE(fListing->Show(fListing->Source().Again()));
    Enter("below");
    fListing->Down(); // a folder that was entered has nothing below
    EXPECT_EQ(Place(), fTree.Path("home/below"));
    fListing->Up();
    fListing->Down();
    EXPECT_EQ(Place(), fTree.Path("home/below"));
}

TEST_F(PaneListingTest, UpOutOfAQueryKeepsTheWayDown)
{
    EXPECT_TRUE(fListing->Show(fListing->Source().Again()));
    Enter("below");
    fListing->Up();
    EXPECT_TRUE(fListing->Show(std::make_unique<QuerySource>(BMessage(), fTree.Path("home"))));
    fListing->Up();
    EXPECT_EQ(Place(), fTree.Path("home"));
    fListing->Down();
    EXPECT_EQ(Place(), fTree.Path("home/below"));
}

TEST_F(PaneListingTest, AFolderNamedInAQueryIsTheNextBelow)
{
    fTree.MakeFolder("home/other");
    EXPECT_TRUE(fListing->Show(fListing->Source().Again()));
    Enter("below");
    fListing->Up();
    EXPECT_TRUE(fListing->Show(std::make_unique<QuerySource>(BMessage(), fTree.Path("home"))));
    fListing->GoTo("other");
    fListing->Down();
    EXPECT_EQ(Place(), fTree.Path("home/other"));
}

TEST_F(PaneListingTest, APlaceMayAskBeforeItIsLeft)
{
    EXPECT_TRUE(Show("a"));
    fPlaces["a"].mayLeave = false;
    fListing->Leave(fTree.Path("home"));
    EXPECT_EQ(Place(), "a");
    fPlaces["a"].mayLeave = true;
    fListing->Leave(fTree.Path("home"));
    EXPECT_EQ(Names(), ".. below ");
}

TEST_F(PaneListingTest, GoesToNamedFoldersFromLocalPlacesOnly)
{
    fListing->Start();
    fListing->GoTo("below");
    EXPECT_EQ(Place(), fTree.Path("home/below"));
    EXPECT_TRUE(Show("a"));
    fListing->GoTo("/");
    EXPECT_EQ(Place(), "a");
}

class PaneListingWatchTest : public PaneListingTest
{
protected:
    void SetUp() override
    {
        PaneListingTest::SetUp();
        fTree.MakeFolder("one");
        fTree.MakeFolder("two");
        fLooper->Run();
        Watch("two"); // to the end
    }
    void TearDown() override
    {
        fListing.reset();
        fUpdates.reset();
        BMessenger(nullptr, fLooper).SendMessage(B_QUIT_REQUESTED);
        PaneListingTest::TearDown();
    }

    WatchedFolder Watch(const char* name)
    {
        FolderSource source(fTree.Path(name));
        NoTaker nobody;
        EXPECT_EQ(source.Open({"%D %R", BMessenger(nullptr, fLooper)}, nobody), B_OK);
        return *source.Folder();
    }
    // Begins to show a place whose folder is "one".
    ScriptedSource& BeginWatched()
    {
        fPlaces["w"].isLate = true;
        auto source =
            std::make_unique<WatchedSource>(fPlaces, "w", fTree.Path("one"), Watch("one"));
        ScriptedSource& lent = *source;
        EXPECT_TRUE(fListing->Show(std::move(source)));
        return lent;
    }
    // Notices come in turn: that of "one" would be there before that of "two".
    bool IsOneWatched(const std::string& name)
    {
        fTree.Write("one/" + name, "");
        fTree.Write("two/" + name + "-fence", "");
        EXPECT_TRUE(kits::testing::WaitFor([&] { return fLooper->Heard(name + "-fence"); }));
        return fLooper->Heard(name);
    }

    WatchLooper* fLooper = new WatchLooper; // deletes itself
};

TEST_F(PaneListingWatchTest, EndsWithAPlaceThatIsLetGo)
{
    BeginWatched();
    EXPECT_TRUE(IsOneWatched("a"));
    EXPECT_TRUE(Show("a"));
    EXPECT_FALSE(IsOneWatched("b"));
}

TEST_F(PaneListingWatchTest, EndsWithAPlaceThatFails)
{
    ScriptedSource& late = BeginWatched();
    late.Fail(B_TIMED_OUT);
    EXPECT_FALSE(IsOneWatched("a"));
}

TEST_F(PaneListingTest, FollowsNoFolderInOtherPlaces)
{
    fListing->Start();
    EXPECT_TRUE(Show("a"));
    EXPECT_FALSE(fUpdates->IsFollowing());
}

} // namespace
