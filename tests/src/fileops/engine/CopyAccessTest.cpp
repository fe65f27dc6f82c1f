#include "fileops/engine/CopyAccess.h"

#include "AccessList.h"
#include "TempTree.h"

#include <Directory.h>
#include <File.h>
#include <Node.h>

#include <gtest/gtest.h>
#include <unistd.h>

namespace norvane {

namespace {

constexpr unsigned kOtherGroup = 54321;
constexpr unsigned kNamedUser = 11111;

class CopyAccessTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Make("a", 0600);
        fTree.MakeFolder("to");
    }

    std::string Path(const char* name) const { return fTree.Path(name); }
    BNode Node(const char* name) const { return BNode(Path(name).c_str()); }
    struct stat Record(const char* name) const
    {
        struct stat st = {};
        EXPECT_EQ(lstat(Path(name).c_str(), &st), 0);
        return st;
    }
    mode_t Mode(const char* name) const { return Record(name).st_mode & 07777; }

    void Make(const char* name, mode_t mode)
    {
        fTree.Write(name, "text");
        ASSERT_EQ(chmod(Path(name).c_str(), mode), 0);
    }

    /// Everything made in "to" is of another group.
    void GiveOwnGroup()
    {
        if (chown(Path("to").c_str(), geteuid(), kOtherGroup) != 0) {
            GTEST_SKIP() << "only root may give a folder to any group";
        }
        ASSERT_EQ(chmod(Path("to").c_str(), 02755), 0);
    }

    /// Everything made in "to" names somebody who may read and write it.
    void GiveDefaultList()
    {
        const AccessList list{.users = {{kNamedUser, 6}}, .group = 6, .others = 6};
        if (!list.GiveTo(Path("to"), "default")) {
            GTEST_SKIP() << "the file system of temporary files keeps no access lists";
        }
    }

    bool GiveList(const char* name, const AccessList& list) { return list.GiveTo(Path(name)); }

    void MakeNew(BFile* made)
    {
        BDirectory folder(Path("to").c_str());
        EXPECT_EQ(folder.CreateNewFile("new", 0600, made), B_OK);
    }

    /// The mode of a whole plain copy of "a" in "to".
    mode_t CopiedMode(mode_t umask = 022)
    {
        BFile made;
        MakeNew(&made);
        EXPECT_EQ(CopyAccess(umask).FinishNew(&made, Node("a"), Record("a")), B_OK);
        const mode_t mode = Mode("to/new");
        fTree.Remove("to/new");
        return mode;
    }

    TempTree fTree;
};

} // namespace

TEST_F(CopyAccessTest, KeepsTheBitsForTheSameGroup)
{
    const struct
    {
        mode_t source;
        mode_t umask;
        mode_t copy;
    } rows[] = {
        {0644, 022, 0644},  {0640, 022, 0640}, {0666, 022, 0644}, {0777, 0, 0666},
        {06755, 022, 0644}, {0400, 022, 0400}, {0666, 077, 0600},
    };
    for (const auto& row : rows) {
        Make("a", row.source);
        EXPECT_EQ(CopiedMode(row.umask), row.copy) << row.source;
    }
}

TEST_F(CopyAccessTest, TakesAnotherGroupForOthers)
{
    GiveOwnGroup();
    if (IsSkipped()) {
        return;
    }
    const struct
    {
        mode_t source;
        mode_t copy;
    } rows[] = {{0640, 0600}, {0644, 0644}, {0660, 0600}, {0664, 0644}, {0604, 0600}};
    for (const auto& row : rows) {
        Make("a", row.source);
        EXPECT_EQ(CopiedMode(), row.copy) << row.source;
    }
}

TEST_F(CopyAccessTest, TakesTheGroupsEntryOfAList)
{
    if (!GiveList("a", {.users = {{kNamedUser, 6}}, .group = 0, .mask = 6, .others = 0})) {
        GTEST_SKIP() << "the file system of temporary files keeps no access lists";
    }
    ASSERT_EQ(Mode("a"), 0660u);
    EXPECT_EQ(CopiedMode(), 0600u);

    ASSERT_TRUE(GiveList("a", {.users = {{kNamedUser, 4}}, .group = 6, .mask = 4, .others = 4}));
    EXPECT_EQ(CopiedMode(), 0644u);
}

TEST_F(CopyAccessTest, ForgetsTheListOfTheFolder)
{
    GiveDefaultList();
    if (IsSkipped()) {
        return;
    }
    Make("a", 0660);
    BFile made;
    MakeNew(&made);
    ASSERT_NE(AccessList::Of(Path("to/new")), "");

    EXPECT_EQ(CopyAccess(022).FinishNew(&made, Node("a"), Record("a")), B_OK);

    EXPECT_EQ(AccessList::Of(Path("to/new")), "");
    EXPECT_EQ(Mode("to/new"), 0640u);
}

TEST_F(CopyAccessTest, OpensNothingThatWasClosedMeanwhile)
{
    Make("a", 0664);
    const struct stat before = Record("a");
    Make("a", 0600);
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(0).FinishNew(&made, Node("a"), before), B_OK);
    EXPECT_EQ(Mode("to/new"), 0600u);

    // And none that is opened meanwhile, whose list may have been removed with it.
    Make("a", 0666);
    struct stat closed = before;
    closed.st_mode = S_IFREG | 0600;
    EXPECT_EQ(CopyAccess(0).FinishNew(&made, Node("a"), closed), B_OK);
    EXPECT_EQ(Mode("to/new"), 0600u);
}

TEST_F(CopyAccessTest, FinishesAFolder)
{
    fTree.MakeFolder("folder");
    ASSERT_EQ(chmod(Path("folder").c_str(), 03775), 0);
    BDirectory to(Path("to").c_str());
    BDirectory made;
    ASSERT_EQ(to.CreateNewDirectory("new", 0700, &made), B_OK);

    EXPECT_EQ(CopyAccess(022).FinishNew(&made, Node("folder"), Record("folder")), B_OK);

    EXPECT_EQ(Mode("to/new"), 0755u);
}

TEST_F(CopyAccessTest, MovesModeListAndTimes)
{
    const AccessList list{.users = {{kNamedUser, 6}}, .group = 4, .mask = 6, .others = 4};
    if (!GiveList("a", list)) {
        GTEST_SKIP() << "the file system of temporary files keeps no access lists";
    }
    ASSERT_EQ(chmod(Path("a").c_str(), 04764), 0);
    struct stat record = Record("a");
    record.st_mtim = {1234, 5678};
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(077).FinishMoved(&made, Node("a"), record), B_OK);

    EXPECT_EQ(Mode("to/new"), 04764u);
    EXPECT_EQ(AccessList::Of(Path("to/new")), AccessList::Of(Path("a")));
    EXPECT_EQ(Record("to/new").st_mtim.tv_sec, 1234);
    EXPECT_EQ(Record("to/new").st_mtim.tv_nsec, 5678);
}

TEST_F(CopyAccessTest, MovesWithoutTheListOfTheFolder)
{
    GiveDefaultList();
    if (IsSkipped()) {
        return;
    }
    Make("a", 0660);
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(022).FinishMoved(&made, Node("a"), Record("a")), B_OK);

    EXPECT_EQ(AccessList::Of(Path("to/new")), "");
    EXPECT_EQ(Mode("to/new"), 0660u);
}

TEST_F(CopyAccessTest, MovesTheOwnerAlong)
{
    if (geteuid() != 0 || chown(Path("a").c_str(), 12345, kOtherGroup) != 0) {
        GTEST_SKIP() << "only root may give files away";
    }
    ASSERT_EQ(chmod(Path("a").c_str(), 06750), 0);
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(022).FinishMoved(&made, Node("a"), Record("a")), B_OK);

    EXPECT_EQ(Record("to/new").st_uid, 12345u);
    EXPECT_EQ(Record("to/new").st_gid, kOtherGroup);
    EXPECT_EQ(Mode("to/new"), 06750u);
}

TEST_F(CopyAccessTest, ReplacesWithModeGroupAndListOfWhatWasThere)
{
    Make("old", 0646);
    const AccessList list{.users = {{kNamedUser, 6}}, .group = 0, .mask = 6, .others = 4};
    const bool hasLists = GiveList("old", list);
    const bool isGiven = chown(Path("old").c_str(), geteuid(), kOtherGroup) == 0;
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(077).FinishReplacement(&made, BNodeAccess(Node("old"))), B_OK);

    EXPECT_EQ(Mode("to/new"), hasLists ? 0664u : 0646u);
    EXPECT_EQ(AccessList::Of(Path("to/new")), hasLists ? list.Bytes() : std::string());
    EXPECT_EQ(Record("to/new").st_gid, isGiven ? kOtherGroup : Record("a").st_gid);
}

TEST_F(CopyAccessTest, ReplacesOpenToNobodyWhenNothingIsKnown)
{
    BFile made;
    MakeNew(&made);

    EXPECT_EQ(CopyAccess(0).FinishReplacement(&made, BNodeAccess()), B_NO_INIT);

    EXPECT_EQ(Mode("to/new"), 0600u);
}

} // namespace norvane
