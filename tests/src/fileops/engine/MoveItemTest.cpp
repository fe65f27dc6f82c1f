#include "fileops/engine/Copy.h"

#include "ItemFixture.h"

#include <unistd.h>

namespace norvane {

/// Moves that succeed, and what they take along.
class MoveItemTest : public ItemFixture
{
};

TEST_F(MoveItemTest, MovesAFileALinkAndATree)
{
    fTree.Write("x", "1");
    fTree.Write("from/file", "file");
    fTree.Link("from/link", fTree.Path("x"));
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/deep/deeper/b", "2");
    fTree.MakeFolder("from/tree/empty");
    Move("from/file");
    Move("from/link");
    Move("from/tree");
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(fTree.Read("to/file"), "file");
    EXPECT_EQ(fTree.ReadLink("to/link"), fTree.Path("x"));
    EXPECT_EQ(fTree.Read("to/tree/a"), "1");
    EXPECT_EQ(fTree.Read("to/tree/deep/deeper/b"), "2");
    EXPECT_TRUE(fTree.IsFolder("to/tree/empty"));
    EXPECT_EQ(Trashed(), "");
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(MoveItemTest, TakesModesAndTimesAlong)
{
    fTree.Write("from/tree/sub/a", "1");
    SetMode("from/tree/sub/a", 0604);
    SetMode("from/tree/sub", 0555);
    SetMode("from/tree", 0701);
    SetTimes("from/tree/sub/a", 1'000'000'000, 123);
    SetTimes("from/tree/sub", 1'000'000'001, 456);
    SetTimes("from/tree", 1'000'000'002, 789);
    Move("from/tree");
    EXPECT_EQ(Mode("to/tree/sub/a"), 0604u);
    EXPECT_EQ(Mode("to/tree/sub"), 0555u);
    EXPECT_EQ(Mode("to/tree"), 0701u);
    EXPECT_EQ(Record("to/tree/sub/a").st_mtim.tv_nsec, 123);
    EXPECT_EQ(Record("to/tree/sub").st_mtim.tv_sec, 1'000'000'001);
    EXPECT_EQ(Record("to/tree/sub").st_mtim.tv_nsec, 456);
    EXPECT_EQ(Record("to/tree").st_mtim.tv_sec, 1'000'000'002);
}

TEST_F(MoveItemTest, TakesALinksTimesAlong)
{
    fTree.Write("x", "1");
    fTree.Link("from/link", fTree.Path("x"));
    SetTimes("from/link", 1'000'000'000, 5);
    Move("from/link");
    EXPECT_EQ(Record("to/link").st_mtim.tv_sec, 1'000'000'000);
    EXPECT_NE(Record("x").st_mtim.tv_sec, 1'000'000'000);
}

TEST_F(MoveItemTest, TakesEveryAttributeAlong)
{
    fTree.Write("from/tree/a", "1");
    if (!SetAttribute("from/tree/a", "of the file")) {
        GTEST_SKIP() << "this file system has no attributes";
    }
    SetAttribute("from/tree", "of the folder");
    Move("from/tree");
    EXPECT_EQ(Attribute("to/tree/a"), "of the file");
    EXPECT_EQ(Attribute("to/tree"), "of the folder");
}

TEST_F(MoveItemTest, TakesOwnersAlongWhereThatIsAllowed)
{
    fTree.Write("from/tree/a", "1");
    SetMode("from/tree/a", 0644);
    if (chown(fTree.Path("from/tree/a").c_str(), 4711, 4712) != 0) {
        GTEST_SKIP() << "only root may give files away";
    }
    SetMode("from/tree/a", 04755);
    Move("from/tree");
    EXPECT_EQ(Record("to/tree/a").st_uid, 4711u);
    EXPECT_EQ(Record("to/tree/a").st_gid, 4712u);
    EXPECT_EQ(Mode("to/tree/a"), 04755u);
}

TEST_F(MoveItemTest, AReplacedFileGetsTheSourcesMode)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    SetMode("from/a", 0600);
    SetMode("to/a", 0666);
    fUI.answers = {kAnswerOverwrite};
    Move("from/a");
    EXPECT_EQ(fTree.Read("to/a"), "new");
    EXPECT_EQ(Mode("to/a"), 0600u);
    EXPECT_FALSE(fTree.Exists("from/a"));
}

TEST_F(MoveItemTest, AFolderThatIsMergedIntoKeepsItsMode)
{
    fTree.Write("from/tree/new", "1");
    fTree.Write("to/tree/old", "2");
    SetMode("from/tree", 0700);
    SetMode("to/tree", 0755);
    Move("from/tree");
    EXPECT_EQ(fTree.List("to/tree"), "new\nold\n");
    EXPECT_EQ(Mode("to/tree"), 0755u);
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(MoveItemTest, ALinkWithinTheItemKeepsItsText)
{
    fTree.Write("x", "outside");
    fTree.Write("from/tree/sub/a", "inside");
    fTree.Link("from/tree/up", "sub/../sub/a");
    fTree.Link("from/tree/sub/whole", "..");
    fTree.Link("from/tree/out", "../../x");
    Move("from/tree");
    EXPECT_EQ(fTree.ReadLink("to/tree/up"), "sub/../sub/a");
    EXPECT_EQ(fTree.Read("to/tree/up"), "inside");
    EXPECT_EQ(fTree.ReadLink("to/tree/sub/whole"), "..");
    EXPECT_EQ(fTree.ReadLink("to/tree/out"), fTree.Path("x"));
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(MoveItemTest, ACopyMakesLinksWithinTheItemAbsolute)
{
    fTree.Write("from/tree/a", "inside");
    fTree.Link("from/tree/link", "a");
    Copy("from/tree", "to");
    EXPECT_EQ(fTree.ReadLink("to/tree/link"), fTree.Path("from/tree/a"));
}

TEST_F(MoveItemTest, AnExistingLinkIsReplacedAndNeverWrittenThrough)
{
    fTree.Write("from/a", "new");
    fTree.Write("precious", "old");
    fTree.Link("to/a", fTree.Path("precious"));
    fUI.answers = {kAnswerOverwrite};
    Move("from/a");
    EXPECT_EQ(fTree.Read("precious"), "old");
    EXPECT_EQ(fTree.ReadLink("to/a"), "(no link)");
    EXPECT_EQ(fTree.Read("to/a"), "new");
}

TEST_F(MoveItemTest, HardLinkedFilesAllGo)
{
    fTree.Write("from/tree/a", "1");
    ASSERT_EQ(link(fTree.Path("from/tree/a").c_str(), fTree.Path("from/tree/b").c_str()), 0);
    Move("from/tree");
    EXPECT_EQ(fTree.List("to/tree"), "a\nb\n");
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(MoveItemTest, MovesToAnotherVolumeAndBack)
{
    fTree.Write("from/tree/sub/a", "1");
    SetTimes("from/tree/sub", 1'000'000'001, 456);
    Privately([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        Move("from/tree");
        const bool isThere = fTree.Read("to/tree/sub/a") == "1" && fTree.List("from") == "" &&
                             Record("to/tree/sub").st_mtim.tv_sec == 1'000'000'001;
        Move("to/tree", "from");
        return Check(isThere, "it went") &&
               Check(fTree.Read("from/tree/sub/a") == "1", "and back") &&
               Check(fTree.List("to") == "", "all of it");
    });
}

TEST_F(MoveItemTest, OutOfTheTrashItLosesItsRecord)
{
    fTree.Write("from/a", "1");
    Trash("from/a");
    ASSERT_EQ(Trashed(), "a\n");
    Move("data/Trash/files/a");
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveItemTest, IntoTheTrashItIsNeverAskedAboutAndGetsARecord)
{
    fTree.Write("from/a", "second");
    fTree.Write("other/a", "first");
    Trash("other/a");
    Move("from/a", "data/Trash/files");
    EXPECT_EQ(Trashed(), "a\na copy\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/a copy"), "second");
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_FALSE(fTree.Exists("from/a"));
}

TEST_F(MoveItemTest, WhatWasReadOfASourceThatChangedStaysInTheTrash)
{
    const std::string whole(200'000, 'x');
    fTree.Write("from/a", whole);
    fTree.Write("other/b", "1");
    Trash("other/b"); // so that there is a Trash
    fUI.onBytes = [this](int64) {
        ASSERT_EQ(truncate(fTree.Path("from/a").c_str(), 10), 0);
    };
    Move("from/a", "data/Trash/files");
    EXPECT_EQ(Trashed(), "a\na copy\nb\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), whole);
    EXPECT_EQ(fTree.Read("data/Trash/files/a copy"), whole.substr(0, 10));
    EXPECT_EQ(ProblemNames(), "a a a ");
}

TEST_F(MoveItemTest, ACopyIntoTheTrashGetsARecordToo)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("data/Trash/files/tree/old", "2");
    fTree.Write("data/Trash/info/tree.trashinfo", "");
    norvane::Copy(Refs({"from/tree"}), fTree.Path("data/Trash/files").c_str(), fUI).Run();
    EXPECT_EQ(Trashed(), "tree\ntree copy\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/tree copy/a"), "1");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "old\n");
    EXPECT_TRUE(fTree.Exists("from/tree/a"));
}

} // namespace norvane
