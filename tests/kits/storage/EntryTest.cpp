#include <Directory.h>
#include <Entry.h>
#include <Node.h>
#include <Path.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

std::string PathOf(const BEntry& entry)
{
    BPath path;
    return entry.GetPath(&path) == B_OK ? path.Path() : "(no path)";
}

class EntryTest : public testing::Test
{
protected:
    BEntry Entry(const char* name, bool traverse = false)
    {
        return BEntry(fTree.Path(name).c_str(), traverse);
    }

    TempTree fTree;
};

} // namespace

TEST_F(EntryTest, MayNameWhatDoesNotExist)
{
    const BEntry entry = Entry("none");

    EXPECT_EQ(entry.InitCheck(), B_OK);
    EXPECT_FALSE(entry.Exists());
    struct stat st;
    EXPECT_EQ(entry.GetStat(&st), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(Entry("none/below").InitCheck(), B_ENTRY_NOT_FOUND);
}

TEST_F(EntryTest, RefusesAFileAsFolder)
{
    fTree.Write("file", "x");

    EXPECT_EQ(Entry("file/below").InitCheck(), B_NOT_A_DIRECTORY);
}

TEST_F(EntryTest, IsTheLinkItselfUnlessTraversed)
{
    fTree.Write("target", "12345");
    fTree.Link("link", "target");
    fTree.Link("chain", "link");

    off_t size = 0;
    EXPECT_TRUE(Entry("link").IsSymLink());
    EXPECT_EQ(Entry("chain", true).GetSize(&size), B_OK);
    EXPECT_EQ(size, 5);
    EXPECT_EQ(PathOf(Entry("chain", true)), fTree.Path("target"));
}

TEST_F(EntryTest, TraversesABrokenLinkToItsMissingTarget)
{
    fTree.Link("broken", "nowhere");
    fTree.Link("worse", "no/where");

    EXPECT_EQ(PathOf(Entry("broken", true)), fTree.Path("nowhere"));
    EXPECT_FALSE(Entry("broken", true).Exists());
    EXPECT_EQ(Entry("worse", true).InitCheck(), B_ENTRY_NOT_FOUND);
}

TEST_F(EntryTest, GivesUpOnLinksInACircle)
{
    fTree.Link("a", "b");
    fTree.Link("b", "a");

    EXPECT_EQ(Entry("a", true).InitCheck(), B_LINK_LIMIT);
    EXPECT_EQ(Entry("a").InitCheck(), B_OK);
}

TEST_F(EntryTest, HasNoParentAtTheRoot)
{
    BEntry root("/");
    BEntry parent;

    EXPECT_EQ(root.InitCheck(), B_OK);
    EXPECT_EQ(PathOf(root), "/");
    EXPECT_TRUE(root.IsDirectory());
    EXPECT_EQ(root.GetParent(&parent), B_ENTRY_NOT_FOUND);
}

TEST_F(EntryTest, WalksUpToItsParents)
{
    fTree.Write("a/b/c", "");
    BEntry entry = Entry("a/b/c");

    EXPECT_EQ(entry.GetParent(&entry), B_OK);
    EXPECT_EQ(PathOf(entry), fTree.Path("a/b"));
    BDirectory folder;
    EXPECT_EQ(entry.GetParent(&folder), B_OK);
    EXPECT_TRUE(folder.Contains("b", B_DIRECTORY_NODE));
}

TEST_F(EntryTest, RenamesWithoutReplacing)
{
    fTree.Write("a", "new");
    fTree.Write("b", "old");
    BEntry entry = Entry("a");

    EXPECT_EQ(entry.Rename("b"), B_FILE_EXISTS);
    EXPECT_STREQ(entry.Name(), "a");
    EXPECT_EQ(fTree.Read("b"), "old");
    EXPECT_EQ(entry.Rename("b", true), B_OK);
    EXPECT_EQ(PathOf(entry), fTree.Path("b"));
    EXPECT_EQ(fTree.Read("b"), "new");
    EXPECT_FALSE(fTree.Exists("a"));
}

TEST_F(EntryTest, RenamesOverItsOwnHardLink)
{
    fTree.Write("a", "x");
    ASSERT_EQ(link(fTree.Path("a").c_str(), fTree.Path("b").c_str()), 0);

    EXPECT_EQ(Entry("a").Rename("b", true), B_OK);
    EXPECT_EQ(fTree.List(), "b\n");
}

TEST_F(EntryTest, RenamesToItselfWithoutHarm)
{
    fTree.Write("a", "x");
    BEntry entry = Entry("a");

    EXPECT_EQ(entry.Rename("a"), B_FILE_EXISTS);
    EXPECT_EQ(entry.Rename("a", true), B_OK);
    EXPECT_EQ(fTree.Read("a"), "x");
}

TEST_F(EntryTest, MovesIntoAnotherFolder)
{
    fTree.Write("a", "x");
    fTree.MakeFolder("d");
    fTree.Write("d/taken", "y");
    BDirectory folder(fTree.Path("d").c_str());
    BEntry entry = Entry("a");

    EXPECT_EQ(entry.MoveTo(&folder, "taken"), B_FILE_EXISTS);
    EXPECT_EQ(entry.MoveTo(&folder), B_OK);
    EXPECT_EQ(PathOf(entry), fTree.Path("d/a"));
    EXPECT_EQ(fTree.Read("d/taken"), "y");
}

TEST_F(EntryTest, RefusesToMoveAFolderIntoItself)
{
    fTree.MakeFolder("d/e");
    BDirectory below(fTree.Path("d/e").c_str());

    EXPECT_EQ(Entry("d").MoveTo(&below), B_BAD_VALUE);
    EXPECT_TRUE(fTree.IsFolder("d/e"));
}

TEST_F(EntryTest, RemovesFilesLinksAndEmptyFolders)
{
    fTree.Write("file", "");
    fTree.Write("full/x", "kept");
    fTree.MakeFolder("empty");
    fTree.Link("link", "full");

    EXPECT_EQ(Entry("file").Remove(), B_OK);
    EXPECT_EQ(Entry("empty").Remove(), B_OK);
    EXPECT_EQ(Entry("link").Remove(), B_OK);
    EXPECT_EQ(Entry("full").Remove(), B_DIRECTORY_NOT_EMPTY);
    EXPECT_EQ(Entry("none").Remove(), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(fTree.Read("full/x"), "kept");
}

TEST_F(EntryTest, TakesNamesOfAnyBytes)
{
    const std::string longest(255, '\xe4');
    for (const std::string& name : {std::string(" "), std::string("-rf"), std::string("a\nb"),
                                    std::string("\xff\xfe"), std::string("..."), longest}) {
        fTree.Write(name, name);
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        EXPECT_EQ(name, ref.name);
        char buffer[B_FILE_NAME_LENGTH];
        EXPECT_EQ(BEntry(&ref).GetName(buffer), B_OK);
        EXPECT_EQ(name, buffer);
        EXPECT_TRUE(BEntry(&ref).Exists());
    }
    EXPECT_EQ(Entry(std::string(256, 'x').c_str()).InitCheck(), B_NAME_TOO_LONG);
}

TEST_F(EntryTest, FindsEntriesDeeperThanOnePathReaches)
{
    std::string name = fTree.Path();
    BDirectory folder(name.c_str());
    for (int i = 0; i < 25; ++i) {
        const std::string step(250, 'd');
        BDirectory below;
        ASSERT_EQ(folder.CreateDirectory(step.c_str(), &below), B_OK);
        folder = below;
        name += "/" + step;
    }
    ASSERT_EQ(folder.CreateFile("deep", nullptr, true), B_OK);

    EXPECT_TRUE(BEntry((name + "/deep").c_str()).Exists());
}

TEST_F(EntryTest, SetsModeAndTimes)
{
    fTree.Write("a", "x");
    BEntry entry = Entry("a");
    struct stat like = {};
    like.st_mtim = {1000, 123456789};
    like.st_atim = {2000, 5};

    EXPECT_EQ(entry.SetPermissions(0640), B_OK);
    EXPECT_EQ(entry.SetTimesLike(like), B_OK);

    struct stat st;
    ASSERT_EQ(entry.GetStat(&st), B_OK);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_EQ(st.st_mtim.tv_nsec, 123456789);
    EXPECT_EQ(st.st_atim.tv_sec, 2000);
    EXPECT_EQ(entry.SetModificationTime(7), B_OK);
    time_t modified = 0;
    EXPECT_EQ(entry.GetModificationTime(&modified), B_OK);
    EXPECT_EQ(modified, 7);
}

TEST_F(EntryTest, SetsNothingThroughALink)
{
    fTree.Write("target", "x");
    ASSERT_EQ(chmod(fTree.Path("target").c_str(), 0600), 0);
    fTree.Link("link", "target");

    EXPECT_EQ(Entry("link").SetPermissions(0777), B_UNSUPPORTED);
    mode_t mode = 0;
    EXPECT_EQ(Entry("target").GetPermissions(&mode), B_OK);
    EXPECT_EQ(mode, 0600u);
}

TEST_F(EntryTest, IsEqualWhereFolderAndNameAre)
{
    fTree.Write("a", "");
    fTree.MakeFolder("folder");
    const BEntry entry(fTree.Path("a").c_str());
    const BEntry same(fTree.Path("folder/../a").c_str());
    const BEntry other(fTree.Path("folder/a").c_str());

    EXPECT_TRUE(entry == same);
    EXPECT_TRUE(entry != other);
    EXPECT_TRUE(BEntry() == BEntry());
    EXPECT_TRUE(entry != BEntry());
}

TEST_F(EntryTest, RefsHaveAnOrder)
{
    entry_ref a;
    entry_ref b;
    ASSERT_EQ(get_ref_for_path(fTree.Path("a").c_str(), &a), B_OK);
    ASSERT_EQ(get_ref_for_path(fTree.Path("b").c_str(), &b), B_OK);
    const entry_ref unset;

    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < a);
    EXPECT_TRUE(unset < a);
    EXPECT_FALSE(a < unset);
}
