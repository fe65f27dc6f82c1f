#include "storage/FolderTable.h"

#include <Directory.h>
#include <Entry.h>
#include <Node.h>
#include <Path.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <unistd.h>

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
