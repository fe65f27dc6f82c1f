#include "ListFixture.h"
#include "fileops/engine/OwnNames.h"
#include "storage/EntryChangeList.h"

#include <cstdio>

namespace {

using namespace norvane;

class DirViewUpdatesTest : public ListFixture
{
protected:
    void SetUp() override
    {
        ListFixture::SetUp();
        for (const char* name : {"shown/b", "shown/d", "shown/f"}) {
            fTree.Write(name, "12");
        }
        fTree.MakeFolder("shown/M");
        Show("shown");
    }

    BMessage Notice(int32 opcode, const std::string& name, ino_t node) const
    {
        struct stat folder = {};
        stat(fTree.Path("shown").c_str(), &folder);
        BMessage notice(B_NODE_MONITOR);
        notice.AddInt32("opcode", opcode);
        notice.AddInt32("device", static_cast<int32>(folder.st_dev));
        notice.AddInt64("node", static_cast<int64>(node));
        notice.AddString("name", name.c_str());
        return notice;
    }

    BMessage InFolder(BMessage notice) const
    {
        notice.AddInt64("directory", static_cast<int64>(NodeOf("shown")));
        return notice;
    }

    void Create(const std::string& name, const std::string& contents = "")
    {
        fTree.Write("shown/" + name, contents);
        fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, name, NodeOf("shown/" + name))));
    }

    void Remove(const std::string& name)
    {
        const ino_t node = NodeOf("shown/" + name);
        fTree.Remove("shown/" + name);
        fList->NodeChanged(InFolder(Notice(B_ENTRY_REMOVED, name, node)));
    }

    /// Renames and tells it as the watch does; `from` and `to` may lie elsewhere.
    void Move(const std::string& from, const std::string& to)
    {
        const std::string toPath = fTree.Path(to);
        const std::string toName = to.substr(to.rfind('/') + 1);
        const bool isFromHere = from.starts_with("shown/");
        const bool isToHere = to.starts_with("shown/");
        const ino_t node = NodeOf(from);
        const ino_t replaced = fTree.Exists(to) ? NodeOf(to) : 0;
        ASSERT_EQ(rename(fTree.Path(from).c_str(), toPath.c_str()), 0);
        if (replaced != 0 && isToHere) {
            BMessage removed = InFolder(Notice(B_ENTRY_REMOVED, toName, replaced));
            removed.AddBool("replaced", true);
            fList->NodeChanged(removed);
        }
        const int64 here = static_cast<int64>(NodeOf("shown"));
        BMessage moved = Notice(B_ENTRY_MOVED, toName, node);
        moved.AddInt64("from directory", isFromHere ? here : 0);
        moved.AddInt64("to directory", isToHere ? here : 0);
        if (isFromHere) {
            moved.AddString("from name", from.substr(from.rfind('/') + 1).c_str());
        }
        fList->NodeChanged(moved);
    }
};

TEST_F(DirViewUpdatesTest, HidesWhatAnOperationOfOursWritesBesideItsTarget)
{
    std::string left;
    {
        const OwnTemporaryName own;
        left = own.Name();
        Create(left, "12");
        EXPECT_EQ(Names(), ".. M b d f ");
        Show("shown");
        EXPECT_EQ(Names(), ".. M b d f ");
    }
    // Left by an operation that was cut off it is a file like any other.
    Show("shown");
    EXPECT_EQ(Names(), ".. M " + left + " b d f ");
}

TEST_F(DirViewUpdatesTest, HidesWhatAnOperationOfOursPutsAside)
{
    const OwnTemporaryName own;
    Move("shown/d", std::string("shown/") + own.Name());
    EXPECT_EQ(Names(), ".. M b f ");
    Move(std::string("shown/") + own.Name(), "shown/d");
    EXPECT_EQ(Names(), ".. M b d f ");
}

TEST_F(DirViewUpdatesTest, RemovesWhatWasRenamedAndRemovedBeforeItHeardOfIt)
{
    const ino_t node = NodeOf("shown/d");
    fTree.Remove("shown/d");
    BMessage moved = Notice(B_ENTRY_MOVED, "renamed", node);
    moved.AddInt64("from directory", static_cast<int64>(NodeOf("shown")));
    moved.AddInt64("to directory", static_cast<int64>(NodeOf("shown")));
    moved.AddString("from name", "d");
    fList->NodeChanged(moved);
    fList->NodeChanged(InFolder(Notice(B_ENTRY_REMOVED, "renamed", node)));
    EXPECT_EQ(Names(), ".. M b f ");
}

TEST_F(DirViewUpdatesTest, AddsAFileInItsPlace)
{
    Create("e");
    EXPECT_EQ(Names(), ".. M b d e f ");
    EXPECT_EQ(Summary(), "0 of 0k in 0 of 4 files selected");
}

TEST_F(DirViewUpdatesTest, AddsAFolderBeforeTheFirstFile)
{
    fTree.MakeFolder("shown/z");
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "z", NodeOf("shown/z"))));
    EXPECT_EQ(Names(), ".. M z b d f ");
}

TEST_F(DirViewUpdatesTest, TellsWhatItAdded)
{
    fTree.Write("shown/c", "");
    fTree.MakeFolder("shown/N");
    entry_ref file;
    entry_ref folder;
    get_ref_for_path(fTree.Path("shown/c").c_str(), &file);
    get_ref_for_path(fTree.Path("shown/N").c_str(), &folder);
    EXPECT_EQ(fList->AddEntry(&file), 2);
    EXPECT_EQ(fList->AddEntry(&folder), 1);
}

TEST_F(DirViewUpdatesTest, AddsAnEntryOnce)
{
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "d", NodeOf("shown/d"))));
    EXPECT_EQ(Names(), ".. M b d f ");
}

TEST_F(DirViewUpdatesTest, AddsNothingThatIsGoneAgain)
{
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "gone", 1234)));
    EXPECT_EQ(Names(), ".. M b d f ");
}

TEST_F(DirViewUpdatesTest, DropsNoticesOfAnotherFolder)
{
    fTree.Write("shown/e", "");
    BMessage notice = Notice(B_ENTRY_CREATED, "e", NodeOf("shown/e"));
    notice.AddInt64("directory", static_cast<int64>(NodeOf("config")));
    fList->NodeChanged(notice);
    EXPECT_EQ(Names(), ".. M b d f ");
}

TEST_F(DirViewUpdatesTest, IgnoresOtherOpcodesAndBrokenNotices)
{
    fList->NodeChanged(InFolder(Notice(5, "d", NodeOf("shown/d"))));
    fList->NodeChanged(InFolder(Notice(B_DEVICE_UNMOUNTED, "d", NodeOf("shown/d"))));
    for (const int32 opcode : {B_ENTRY_CREATED, B_ENTRY_REMOVED, B_ENTRY_MOVED, B_STAT_CHANGED}) {
        BMessage empty(B_NODE_MONITOR);
        empty.AddInt32("opcode", opcode);
        fList->NodeChanged(empty);
    }
    fList->NodeChanged(BMessage(B_NODE_MONITOR));
    EXPECT_EQ(Names(), ".. M b d f ");
}

TEST_F(DirViewUpdatesTest, MovesTheSelectionToTheRowThatTakesTheIndex)
{
    fList->Select(IndexOf("d"));
    Remove("d");
    EXPECT_EQ(Names(), ".. M b f ");
    EXPECT_EQ(Selected(), "f");
    Remove("f");
    EXPECT_EQ(Selected(), "b");
}

TEST_F(DirViewUpdatesTest, KeepsTheSelectionOnItsRow)
{
    fList->Select(IndexOf("d"));
    Create("a");
    EXPECT_EQ(Selected(), "d");
    Remove("b");
    EXPECT_EQ(Selected(), "d");
}

TEST_F(DirViewUpdatesTest, ForgetsTheMarkOfARemovedRow)
{
    fList->Mark(1, 4);
    Remove("d");
    EXPECT_EQ(MarkedNames(), "M b f ");
}

TEST_F(DirViewUpdatesTest, KeepsTheRowOfARenamedEntryInPlace)
{
    fList->Select(IndexOf("b"));
    fList->ToggleMark(IndexOf("b"));
    Move("shown/b", "shown/x");
    EXPECT_EQ(Names(), ".. M x d f ");
    EXPECT_EQ(Selected(), "x");
    EXPECT_EQ(MarkedNames(), "x ");
    Create("c");
    EXPECT_EQ(Names(), ".. M c x d f "); // before the first greater name
}

TEST_F(DirViewUpdatesTest, KeepsTheRowOfWhatWasRenamedBeforeTheWatchHeardOfIt)
{
    fTree.Write("shown/c", "1");
    const entry_ref* listed = Row("b")->GetRef();
    entry_ref made = *listed;
    made.set_name("c");
    fList->AddEntry(&made);
    fList->Select(IndexOf("c"));
    ASSERT_EQ(rename(fTree.Path("shown/c").c_str(), fTree.Path("shown/x").c_str()), 0);
    kits::EntryChangeList changes;
    BEntryRecord gone;
    gone.status = B_ENTRY_NOT_FOUND;
    changes.Add(BEntryChange::Kind::kCreated, "c", "", gone);
    changes.Add(BEntryChange::Kind::kRenamed, "x", "c", {});
    fList->NodeChanged(changes.Notice(fList->FolderNode()));
    EXPECT_EQ(Names(), ".. M b x d f ");
    EXPECT_EQ(Selected(), "x");
}

TEST_F(DirViewUpdatesTest, AnotherNameOfAListedEntryIsAnotherRow)
{
    ASSERT_EQ(link(fTree.Path("shown/b").c_str(), fTree.Path("shown/c").c_str()), 0);
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "c", NodeOf("shown/c"))));
    EXPECT_EQ(Names(), ".. M b c d f ");
}

TEST_F(DirViewUpdatesTest, KeepsTheRowThatIsRenamedOver)
{
    fTree.Write("shown/.d.tmp", "new contents");
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, ".d.tmp", NodeOf("shown/.d.tmp"))));
    EXPECT_EQ(Names(), ".. M .d.tmp b d f ");
    fList->Select(IndexOf("d"));
    fList->ToggleMark(IndexOf("d"));
    Move("shown/.d.tmp", "shown/d");
    EXPECT_EQ(Names(), ".. M b d f ");
    EXPECT_EQ(Selected(), "d");
    EXPECT_EQ(MarkedNames(), "d ");
    EXPECT_EQ(Row("d")->GetSize(), 12);
    EXPECT_EQ(Row("d")->NodeRef().node, NodeOf("shown/d"));
    Remove("d");
    EXPECT_EQ(Names(), ".. M b f ");
}

TEST_F(DirViewUpdatesTest, ARowThatIsToBeReplacedWaitsForItsOwnName)
{
    BMessage replaced = InFolder(Notice(B_ENTRY_REMOVED, "d", NodeOf("shown/d")));
    replaced.AddBool("replaced", true);
    fList->NodeChanged(replaced);
    Move("shown/b", "shown/x");
    EXPECT_EQ(Names(), ".. M x d f ");
}

TEST_F(DirViewUpdatesTest, AnotherEntryOfAListedNameTakesItsRow)
{
    fTree.Write("new", "12345");
    ASSERT_EQ(rename(fTree.Path("new").c_str(), fTree.Path("shown/d").c_str()), 0);
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "d", NodeOf("shown/d"))));
    EXPECT_EQ(Names(), ".. M b d f ");
    EXPECT_EQ(Row("d")->GetSize(), 5);
    EXPECT_EQ(Row("d")->NodeRef().node, NodeOf("shown/d"));
}

TEST_F(DirViewUpdatesTest, AddsARenamedEntryOnce)
{
    Move("shown/b", "shown/x");
    fList->NodeChanged(InFolder(Notice(B_ENTRY_CREATED, "x", NodeOf("shown/x"))));
    EXPECT_EQ(Names(), ".. M x d f ");
}

TEST_F(DirViewUpdatesTest, RemovesWhatMovesOut)
{
    Move("shown/d", "d");
    EXPECT_EQ(Names(), ".. M b f ");
}

TEST_F(DirViewUpdatesTest, ListsWhatMovedInAtTheNextActivation)
{
    fTree.Write("c", "123");
    Move("c", "shown/c");
    EXPECT_EQ(Names(), ".. M b d f ");
    fList->ToggleMark(IndexOf("d"));
    fList->Select(IndexOf("f"));
    fList->WindowActivated(true);
    EXPECT_EQ(Names(), ".. M b c d f ");
    EXPECT_EQ(MarkedNames(), "d ");
    EXPECT_EQ(Selected(), "f");
}

TEST_F(DirViewUpdatesTest, FollowsAnEntryThatMovedInAndOn)
{
    fTree.Write("c", "");
    fTree.Write("e", "");
    Move("c", "shown/c");
    Move("e", "shown/e");
    Move("shown/c", "shown/g");
    Remove("e");
    fList->AddMissing();
    EXPECT_EQ(Names(), ".. M b d f g ");
}

TEST_F(DirViewUpdatesTest, RebuildsTheRowThatIsMovedOver)
{
    fTree.Write("d", "longer contents");
    Move("d", "shown/d");
    EXPECT_EQ(Names(), ".. M b d f ");
    EXPECT_EQ(Row("d")->GetSize(), 15);
}

TEST_F(DirViewUpdatesTest, UpdatesSizeAndDateInPlace)
{
    fTree.Write("shown/d", std::string(5000, 'x'));
    fList->NodeChanged(InFolder(Notice(B_STAT_CHANGED, "d", NodeOf("shown/d"))));
    EXPECT_STREQ(Row("d")->Text(2), "4 K");
    EXPECT_EQ(Summary(), "0 of 4k in 0 of 3 files selected");
}

TEST_F(DirViewUpdatesTest, UpdatesAllLinksToANode)
{
    ASSERT_EQ(link(fTree.Path("shown/d").c_str(), fTree.Path("shown/e").c_str()), 0);
    Show("shown");
    fTree.Write("shown/d", "1234");
    fList->NodeChanged(InFolder(Notice(B_STAT_CHANGED, "d", NodeOf("shown/d"))));
    EXPECT_EQ(Row("d")->GetSize(), 4);
    EXPECT_EQ(Row("e")->GetSize(), 4);
}

TEST_F(DirViewUpdatesTest, RemovesTheNamedOneOfTwoLinks)
{
    ASSERT_EQ(link(fTree.Path("shown/d").c_str(), fTree.Path("shown/e").c_str()), 0);
    Show("shown");
    Remove("d");
    EXPECT_EQ(Names(), ".. M b e f ");
}

TEST_F(DirViewUpdatesTest, RemovesByRef)
{
    entry_ref ref;
    get_ref_for_path(fTree.Path("shown/d").c_str(), &ref);
    fList->RemoveEntry(&ref);
    EXPECT_EQ(Names(), ".. M b f ");
    ref.set_name("..");
    fList->RemoveEntry(&ref);
    EXPECT_EQ(Names(), ".. M b f ");
}

TEST_F(DirViewUpdatesTest, IgnoresNoticesInQueryResults)
{
    BMessage results(601);
    fList->Populate(&results);
    Create("e");
    EXPECT_EQ(Names(), "");
}

std::string Numbered(int number)
{
    std::string name = "n";
    return name.append(std::to_string(number));
}

TEST_F(DirViewUpdatesTest, AgreesWithAFreshListingAfterManyChanges)
{
    for (int i = 0; i < 300; i++) {
        Create(Numbered(i * 7919 % 300), std::to_string(i));
    }
    for (int i = 0; i < 300; i += 3) {
        Remove(Numbered(i));
    }
    const std::string followed = Names();
    const std::string summary = Summary();
    Show("shown");
    EXPECT_EQ(followed, Names());
    EXPECT_EQ(summary, Summary());
}

} // namespace
