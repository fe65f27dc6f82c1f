#include "SameNumbers.h"
#include "storage/FolderTable.h"

#include <Directory.h>
#include <Entry.h>
#include <Node.h>
#include <Path.h>

#include <PrivateMounts.h>
#include <TempTree.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

std::string PathOf(const entry_ref& ref)
{
    BPath path(&ref);
    return path.InitCheck() == B_OK ? path.Path() : "(no path)";
}

class EntryRefTest : public testing::Test
{
protected:
    entry_ref Ref(const char* name)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ref;
    }

    TempTree fTree;
};

/// Removes a tree that is too deep for paths.
void RemoveDeep(const std::string& path)
{
    EXPECT_EQ(BEntry(path.c_str()).RemoveTree(), B_OK);
}

} // namespace

TEST_F(EntryRefTest, SurvivesTheRenamingOfItsFolder)
{
    fTree.Write("a/b/file", "x");
    const entry_ref ref = Ref("a/b/file");

    ASSERT_EQ(rename(fTree.Path("a").c_str(), fTree.Path("z").c_str()), 0);

    EXPECT_EQ(PathOf(ref), fTree.Path("z/b/file"));
}

TEST_F(EntryRefTest, IsFoundByNumbersAlone)
{
    fTree.Write("a/file", "x");
    const entry_ref ref = Ref("a/file");

    const entry_ref again(ref.device, ref.directory, "other");

    EXPECT_EQ(PathOf(again), fTree.Path("a/other"));
    EXPECT_FALSE(BEntry(&again).Exists());
}

TEST_F(EntryRefTest, FollowsItsNumbersWhenTheyWereChanged)
{
    fTree.Write("a/file", "x");
    fTree.Write("b/file", "x");
    entry_ref ref = Ref("a/file");
    ref.directory = Ref("b/file").directory;

    EXPECT_EQ(PathOf(ref), fTree.Path("b/file"));
}

TEST_F(EntryRefTest, IsReopenedByPathAfterItsDescriptorWasLetGo)
{
    fTree.Write("a/file", "x");
    const entry_ref ref = Ref("a/file");

    kits::FolderTable::Get().CloseIdle(0, kits::FolderTable::Volumes::kAll);

    EXPECT_EQ(kits::FolderTable::Get().CountOpen(), 0u);
    EXPECT_TRUE(BEntry(&ref).Exists());
}

TEST_F(EntryRefTest, IsNotFoundWhenAnotherFolderTookThePlace)
{
    fTree.Write("a/file", "x");
    const entry_ref ref = Ref("a/file");
    kits::FolderTable::Get().CloseIdle(0, kits::FolderTable::Volumes::kAll);

    ASSERT_EQ(rename(fTree.Path("a").c_str(), fTree.Path("z").c_str()), 0);
    fTree.Write("a/file", "another");

    EXPECT_FALSE(BEntry(&ref).Exists());
}

TEST_F(EntryRefTest, IsNotFoundWhenAnotherFolderGotItsNumbers)
{
    entry_ref ref;
    if (!MakeWithNumbersOfRemoved(fTree, [&ref](const entry_ref& before) { ref = before; })) {
        GTEST_SKIP() << "the file system of temporary files gives no number twice";
    }

    EXPECT_FALSE(BEntry(&ref).Exists());
    BPath path;
    EXPECT_EQ(BEntry(&ref).GetPath(&path), B_ENTRY_NOT_FOUND);
}

TEST_F(EntryRefTest, StaysUnfoundWhenTheOtherFolderIsKnown)
{
    entry_ref ref;
    if (!MakeWithNumbersOfRemoved(fTree, [&ref](const entry_ref& before) { ref = before; })) {
        GTEST_SKIP() << "the file system of temporary files gives no number twice";
    }

    const entry_ref other = Ref("a/file");
    const entry_ref copy(ref);

    EXPECT_TRUE(BEntry(&other).Exists());
    EXPECT_FALSE(BEntry(&ref).Exists());
    EXPECT_FALSE(BEntry(&copy).Exists());
    const entry_ref numbers(ref.device, ref.directory, "file");
    EXPECT_TRUE(BEntry(&numbers).Exists());
}

TEST_F(EntryRefTest, IsReopenedThoughItsFolderIsDeeperThanPathsReach)
{
    fTree.Write("top/file", "x");
    BDirectory folder(fTree.Path("top").c_str());
    const std::string name(200, 'd');
    std::vector<entry_ref> refs;
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(folder.CreateDirectory(name.c_str(), nullptr), B_OK);
        BDirectory child;
        ASSERT_EQ(child.SetToChild(folder, name.c_str()), B_OK);
        ASSERT_EQ(child.CreateFile("file", nullptr), B_OK);
        const BEntry entry(&child, "file");
        refs.emplace_back();
        ASSERT_EQ(entry.GetRef(&refs.back()), B_OK);
        folder = child;
    }
    BEntry self;
    EXPECT_EQ(folder.GetEntry(&self), B_OK);
    EXPECT_STREQ(self.Name(), name.c_str());

    kits::FolderTable::Get().CloseIdle(0, kits::FolderTable::Volumes::kAll);

    EXPECT_EQ(kits::FolderTable::Get().CountOpen(), 0u);
    for (const entry_ref& ref : refs) {
        EXPECT_TRUE(BEntry(&ref).Exists());
    }
    RemoveDeep(fTree.Path("top"));
}

TEST_F(EntryRefTest, StaysOpenWhereItCouldNotBeFoundAgain)
{
    fTree.Write("top/file", "x");
    BDirectory folder(fTree.Path("top").c_str());
    const std::string name(200, 'd');
    for (int i = 0; i < 30; ++i) {
        ASSERT_EQ(folder.CreateDirectory(name.c_str(), nullptr), B_OK);
        BDirectory child;
        ASSERT_EQ(child.SetToChild(folder, name.c_str()), B_OK);
        if (i == 29) {
            folder.SetPermissions(0300); // names in it cannot be looked for
        }
        folder = child;
    }
    const BEntry entry(&folder, "file");
    {
        const WithoutFileRights rights;
        kits::FolderTable::Get().CloseIdle(0, kits::FolderTable::Volumes::kAll);
        EXPECT_EQ(folder.CreateFile("file", nullptr), B_OK);
        EXPECT_TRUE(entry.Exists());
    }
    RemoveDeep(fTree.Path("top"));
}

TEST_F(EntryRefTest, IsNotFoundAfterItsFolderWasRemoved)
{
    fTree.Write("a/file", "x");
    const entry_ref ref = Ref("a/file");

    fTree.Remove("a");

    EXPECT_FALSE(BEntry(&ref).Exists());
    BPath path;
    EXPECT_EQ(BEntry(&ref).GetPath(&path), B_ENTRY_NOT_FOUND);
}

TEST_F(EntryRefTest, TellsAFolderCalledLikeARemovedOne)
{
    fTree.Write("a (deleted)/file", "x");

    EXPECT_EQ(PathOf(Ref("a (deleted)/file")), fTree.Path("a (deleted)/file"));
}

TEST_F(EntryRefTest, RefusesNamesThatLeadElsewhere)
{
    fTree.Write("a/file", "x");
    entry_ref ref = Ref("a/file");

    for (const char* name : {"../x", "a/b", "..", ""}) {
        ref.set_name(name);
        EXPECT_EQ(BEntry(&ref).InitCheck(), B_BAD_VALUE) << name;
    }
    ref.set_name(nullptr);
    EXPECT_EQ(BEntry(&ref).InitCheck(), B_BAD_VALUE);
}

TEST_F(EntryRefTest, KeepsDescriptorsWithinTheLimit)
{
    std::vector<entry_ref> refs;
    BDirectory root(fTree.Path().c_str());
    for (int i = 0; i < 1500; ++i) {
        const std::string name = std::to_string(i);
        ASSERT_EQ(root.CreateDirectory(name.c_str(), nullptr), B_OK);
        refs.push_back(Ref((name + "/x").c_str()));
    }

    EXPECT_LE(kits::FolderTable::Get().CountOpen(), 1024u);
    EXPECT_EQ(PathOf(refs.front()), fTree.Path("0/x"));
    EXPECT_EQ(PathOf(refs.back()), fTree.Path("1499/x"));
}

TEST_F(EntryRefTest, HasValueSemantics)
{
    const entry_ref ref = Ref("x");
    entry_ref copy(ref);
    entry_ref moved(std::move(copy));
    entry_ref assigned;
    assigned = moved;

    EXPECT_EQ(assigned, ref);
    EXPECT_STREQ(assigned.name, "x");
    EXPECT_NE(assigned.name, ref.name);
    EXPECT_LE(sizeof(entry_ref), 4 * sizeof(void*));
    EXPECT_NE(entry_ref(ref.device, ref.directory, "y"), ref);
}
