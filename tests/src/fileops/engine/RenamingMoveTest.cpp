#include "ItemFixture.h"
#include "fileops/engine/EntryMover.h"
#include "fileops/engine/LinkKeeper.h"
#include "fileops/engine/OperationContext.h"

#include <Directory.h>

#include <unistd.h>

#include <atomic>
#include <thread>

namespace norvane {

/// Moves that rename within a volume.
class RenamingMoveTest : public ItemFixture
{
protected:
    std::unique_ptr<norvane::Move> Rename(const std::vector<std::string>& names,
                                          const std::string& toFolder = "to")
    {
        auto move =
            std::make_unique<norvane::Move>(Refs(names), fTree.Path(toFolder).c_str(), fUI, true);
        move->Run();
        return move;
    }

    ino_t Node(const std::string& name) { return Record(name).st_ino; }
};

TEST_F(RenamingMoveTest, ItemsKeepTheirNodesAndAllThatTheyAre)
{
    fTree.Write("from/file", "1");
    fTree.Write("from/tree/deep/deeper/b", "2");
    fTree.Link("from/link", fTree.Path("from/file"));
    SetMode("from/file", 0604);
    SetTimes("from/tree", 1'000'000'000, 5);
    const ino_t file = Node("from/file");
    const ino_t tree = Node("from/tree");
    const ino_t link = Node("from/link");

    const auto move = Rename({"from/file", "from/tree", "from/link"});

    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(Node("to/file"), file);
    EXPECT_EQ(Node("to/tree"), tree);
    EXPECT_EQ(Node("to/link"), link);
    EXPECT_EQ(Mode("to/file"), 0604u);
    EXPECT_EQ(Record("to/tree").st_mtim.tv_nsec, 5);
    EXPECT_EQ(fTree.Read("to/tree/deep/deeper/b"), "2");
    EXPECT_TRUE(fUI.problems.empty());
    EXPECT_TRUE(fUI.files.empty());
    EXPECT_EQ(fUI.size.items, 3u);
    EXPECT_EQ(fUI.size.bytes, 0);
    for (const ItemResult& result : move->Results().Items()) {
        EXPECT_EQ(result.ending, ItemResult::Ending::kWhole);
        ASSERT_EQ(result.changes.size(), 1u);
        EXPECT_EQ(result.changes[0].kind, Change::Kind::kMoved);
        EXPECT_EQ(result.changes[0].name, result.source.name);
        EXPECT_EQ(result.changes[0].node.node, Node(std::string("to/") + result.source.name));
    }
}

TEST_F(RenamingMoveTest, WithoutItTheyAreCopied)
{
    fTree.Write("from/file", "1");
    const ino_t file = Node("from/file");
    fTree.Link("keep", "from/file");
    const int held = open(fTree.Path("from/file").c_str(), O_RDONLY); // keeps the number taken
    Move("from/file");
    EXPECT_NE(Node("to/file"), file);
    close(held);
}

TEST_F(RenamingMoveTest, OtherKindsOfNodesMoveToo)
{
    fTree.MakeFolder("from");
    ASSERT_EQ(mkfifo(fTree.Path("from/pipe").c_str(), 0600), 0);
    const ino_t node = Node("from/pipe");
    Rename({"from/pipe"});
    EXPECT_EQ(Node("to/pipe"), node);
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(RenamingMoveTest, LinksOutOfTheItemLeadWhereTheyLed)
{
    fTree.Write("x", "outside");
    fTree.Write("from/tree/sub/a", "inside");
    fTree.Link("from/tree/in", "sub/../sub/a");
    fTree.Link("from/tree/sub/whole", "..");
    fTree.Link("from/tree/sub/out", "../../../x");
    fTree.Link("from/tree/absolute", fTree.Path("x"));
    fTree.Link("from/tree/broken", "../nothing");
    SetTimes("from/tree/sub/out", 1'000'000'000, 7);
    SetTimes("from/tree/sub", 1'000'000'001, 8);
    const ino_t tree = Node("from/tree");
    const ino_t broken = Node("from/tree/broken");

    Rename({"from/tree"}, "");

    EXPECT_EQ(Node("tree"), tree);
    EXPECT_EQ(fTree.ReadLink("tree/in"), "sub/../sub/a");
    EXPECT_EQ(fTree.ReadLink("tree/sub/whole"), "..");
    EXPECT_EQ(fTree.ReadLink("tree/sub/out"), fTree.Path("x"));
    EXPECT_EQ(Record("tree/sub/out").st_mtim.tv_sec, 1'000'000'000);
    EXPECT_EQ(Record("tree/sub").st_mtim.tv_nsec, 8);
    EXPECT_EQ(fTree.ReadLink("tree/absolute"), fTree.Path("x"));
    EXPECT_EQ(fTree.ReadLink("tree/broken"), "../nothing");
    EXPECT_EQ(Node("tree/broken"), broken);
    EXPECT_EQ(fTree.List("tree/sub"), "a\nout\nwhole\n");
    EXPECT_TRUE(fUI.notices.empty());
}

TEST_F(RenamingMoveTest, ALinkThatIsTheItemLeadsWhereItLed)
{
    fTree.Write("x", "1");
    fTree.Link("from/link", "../x");
    fTree.Link("from/broken", "nothing");
    Rename({"from/link", "from/broken"}, "to");
    EXPECT_EQ(fTree.Read("to/link"), "1");
    EXPECT_EQ(fTree.ReadLink("to/link"), fTree.Path("x"));
    EXPECT_EQ(fTree.ReadLink("to/broken"), "nothing");
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_TRUE(fUI.notices.empty());
}

TEST_F(RenamingMoveTest, LinksFromItemToItemKeepTheirTexts)
{
    fTree.Write("from/lib.so.1", "1");
    fTree.Link("from/lib.so", "lib.so.1");
    fTree.Link("from/tree/link", "../lib.so.1");
    Rename({"from/lib.so", "from/tree", "from/lib.so.1"});
    EXPECT_EQ(fTree.ReadLink("to/lib.so"), "lib.so.1");
    EXPECT_EQ(fTree.ReadLink("to/tree/link"), "../lib.so.1");
}

TEST_F(RenamingMoveTest, WhatIsNotMovedKeepsItsLinks)
{
    fTree.Write("x", "1");
    fTree.Link("from/tree/out", "../../x");
    fTree.Write("to/tree/old", "2");
    fUI.mayDelete = false;
    Rename({"from/tree"});
    EXPECT_EQ(fTree.ReadLink("from/tree/out"), "../../x");
}

TEST_F(RenamingMoveTest, AFileThatIsThereIsAskedAbout)
{
    fTree.Write("from/a", "new a");
    fTree.Write("from/b", "new b");
    fTree.Write("to/a", "old a");
    fTree.Write("to/b", "old b");
    fUI.answers = {kAnswerOverwrite, kAnswerSkip};
    Rename({"from/a", "from/b"});
    EXPECT_EQ(fUI.questions.size(), 2u);
    EXPECT_EQ(fTree.Read("to/a"), "new a");
    EXPECT_EQ(fTree.Read("to/b"), "old b");
    EXPECT_FALSE(fTree.Exists("from/a"));
}

TEST_F(RenamingMoveTest, WhereFoldersMergeEachEntryIsRenamed)
{
    fTree.Write("x", "outside");
    fTree.Write("from/tree/file", "1");
    fTree.Write("from/tree/folder/deep/b", "2");
    fTree.Write("from/tree/both/c", "3");
    fTree.Link("from/tree/both/link", "../file");
    fTree.Link("from/tree/both/out", "../../../x");
    fTree.Write("to/tree/both/d", "4");
    const ino_t file = Node("from/tree/file");
    const ino_t folder = Node("from/tree/folder");
    const ino_t c = Node("from/tree/both/c");
    const ino_t both = Node("to/tree/both");

    Rename({"from/tree"});

    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(Node("to/tree/file"), file);
    EXPECT_EQ(Node("to/tree/folder"), folder);
    EXPECT_EQ(Node("to/tree/both/c"), c);
    EXPECT_EQ(Node("to/tree/both"), both);
    EXPECT_EQ(fTree.List("to/tree/both"), "c\nd\nlink\nout\n");
    EXPECT_EQ(fTree.ReadLink("to/tree/both/link"), "../file");
    EXPECT_EQ(fTree.ReadLink("to/tree/both/out"), fTree.Path("x"));
    EXPECT_EQ(fTree.Read("to/tree/both/d"), "4");
    EXPECT_TRUE(fUI.problems.empty());
    EXPECT_TRUE(fUI.files.empty());
}

TEST_F(RenamingMoveTest, WhatIsLeftInAMergedFolderGoesTheOldWay)
{
    fTree.Write("from/tree/a", "new");
    fTree.Write("from/tree/b", "new");
    fTree.Write("from/tree/c", "new");
    fTree.Write("to/tree/a", "old");
    fTree.Write("to/tree/b", "old");
    fUI.answers = {kAnswerSkipAll};
    Rename({"from/tree"});
    EXPECT_EQ(fTree.Read("to/tree/a"), "old");
    EXPECT_EQ(fTree.Read("to/tree/b"), "old");
    EXPECT_EQ(fTree.Read("to/tree/c"), "new");
    EXPECT_FALSE(fTree.Exists("from/tree"));
    // What was skipped is not lost.
    EXPECT_EQ(Trashed(), "tree\n");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "a\nb\n");
}

TEST_F(RenamingMoveTest, WhereSomethingIsNothingIsTouched)
{
    fTree.Write("x", "1");
    fTree.Link("from/tree/out", "../../x");
    fTree.MakeFolder("to/tree");
    BDirectory from(fTree.Path("from").c_str());
    BDirectory to(fTree.Path("to").c_str());
    OperationContext context(fUI);
    context.journal.AddItem(entry_ref());
    const CopyPlace source{from, ""};
    const CopyPlace target{to, "", NodeOf(Record("to"))};
    EXPECT_EQ(EntryMover(context, 0).Move({source, "tree", target, "tree"}), B_FILE_EXISTS);
    EXPECT_EQ(fTree.ReadLink("from/tree/out"), "../../x");
    EXPECT_EQ(EntryMover(context, 0).Move({source, "none", target, "none"}), B_ENTRY_NOT_FOUND);
    EXPECT_TRUE(context.journal.Items()[0].changes.empty());
}

TEST_F(RenamingMoveTest, OnceNothingMayGoNothingMoreIsRenamed)
{
    fTree.Write("from/tree/clash", "new");
    fTree.Write("from/tree/sub/x", "1");
    fTree.Write("to/tree/clash", "old");
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        fUI.mayDelete = false;
    };
    Rename({"from/tree"});
    EXPECT_EQ(fTree.Read("from/tree/sub/x"), "1");
    EXPECT_EQ(fTree.Read("from/tree/clash"), "new");
    EXPECT_EQ(fTree.Read("to/tree/clash"), "old");
}

TEST_F(RenamingMoveTest, IntoItselfItIsCopiedAndStays)
{
    fTree.Write("from/tree/a", "1");
    fTree.MakeFolder("from/tree/sub/tree");
    Rename({"from/tree"}, "from/tree/sub");
    EXPECT_EQ(fTree.Read("from/tree/a"), "1");
    EXPECT_EQ(fTree.Read("from/tree/sub/tree/a"), "1");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(RenamingMoveTest, OntoItselfNothingHappens)
{
    fTree.Write("from/a", "1");
    const ino_t node = Node("from/a");
    Rename({"from/a"}, "from");
    EXPECT_EQ(Node("from/a"), node);
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(RenamingMoveTest, ASecondItemOfTheNameIsRefused)
{
    fTree.Write("one/a", "1");
    fTree.Write("two/a", "2");
    fUI.answers = {kAnswerOverwriteAll};
    Rename({"one/a", "two/a"});
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_TRUE(fUI.questions.empty());
    ASSERT_FALSE(fUI.problems.empty());
    EXPECT_EQ(fUI.problems[0].second, "another item of this operation has its name");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "2");
}

TEST_F(RenamingMoveTest, ToAnotherVolumeItIsCopied)
{
    fTree.Write("from/tree/a", "1");
    fTree.Link("from/tree/out", "../../to");
    Privately([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        Rename({"from/tree"});
        return Check(fTree.Read("to/tree/a") == "1", "it is there") &&
               Check(fTree.List("from") == "", "and nowhere else") &&
               Check(fUI.size.bytes == 1, "it was measured");
    });
}

TEST_F(RenamingMoveTest, WithAVolumeInItItIsCopied)
{
    fTree.Write("from/tree/a", "1");
    fTree.MakeFolder("from/tree/volume");
    Privately([this] {
        if (!MountMemory(fTree.Path("from/tree/volume"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/volume/b", "2");
        Rename({"from/tree"});
        return Check(fTree.Read("to/tree/volume/b") == "2", "what is mounted comes along") &&
               Check(fTree.IsFolder("from/tree/volume"), "the volume stays where it is mounted");
    });
}

TEST_F(RenamingMoveTest, InAFolderThatIsCopiedAllIsCopied)
{
    fTree.Write("from/tree/child/a", "1");
    fTree.MakeFolder("from/tree/child/volume");
    fTree.MakeFolder("to/tree");
    Privately([this] {
        if (!MountMemory(fTree.Path("from/tree/child/volume"), 1 << 20)) {
            return false;
        }
        const auto move = Rename({"from/tree"});
        const auto& changes = move->Results().Items()[0].changes;
        return Check(fTree.Read("to/tree/child/a") == "1", "it is there") &&
               Check(changes.size() == 1 && changes[0].kind == Change::Kind::kMade,
                     "as a part of a new folder");
    });
}

TEST_F(RenamingMoveTest, StoppedNothingMoreIsMoved)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    fUI.onVisit = [this](int64) {
        fUI.isStopped = true;
    };
    Rename({"from/a", "from/b"});
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fTree.List("from"), "b\n");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(RenamingMoveTest, OutOfTheTrashItLosesItsRecord)
{
    fTree.Write("from/a", "1");
    Trash("from/a");
    ASSERT_EQ(Trashed(), "a\n");
    const ino_t node = Node("data/Trash/files/a");
    Rename({"data/Trash/files/a"});
    EXPECT_EQ(Node("to/a"), node);
    EXPECT_EQ(Trashed(), "");
}

TEST_F(RenamingMoveTest, IntoTheTrashItGetsARecord)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    Trash("from/b");
    fTree.Write("from/b", "3");
    Rename({"from/a", "from/b"}, "data/Trash/files");
    EXPECT_EQ(Trashed(), "a\nb\nb copy\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/b"), "2");
    EXPECT_TRUE(fUI.questions.empty());
}

TEST_F(RenamingMoveTest, WithoutAFolderToMoveToItGoesAsOtherMovesGo)
{
    fTree.Write("from/a", "1");
    Rename({"from/a"}, "nowhere");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "1");
    EXPECT_EQ(ProblemNames(), "a a ");
}

// Another program puts a link of its own in the place of ours, at some moment: it stays there.
TEST_F(RenamingMoveTest, LinksOfOthersAreNotReplaced)
{
    fTree.Write("x", "1");
    fTree.MakeFolder("from");
    const std::string link = fTree.Path("from/link");
    const std::string other = fTree.Path("other");
    BDirectory folder(fTree.Path("from").c_str());
    OperationContext context(fUI);
    for (int round = 0; round < 1500; round++) {
        unlink(link.c_str());
        ASSERT_EQ(symlink("../x", link.c_str()), 0);
        ASSERT_EQ(symlink("the other's", other.c_str()), 0);
        std::atomic<bool> mayBegin = false;
        std::thread adversary([&] {
            while (!mayBegin) {
            }
            std::atomic<int> waited = 0;
            while (waited++ < round * 7 % 20'000) {
            }
            rename(other.c_str(), link.c_str());
        });
        mayBegin = true;
        const status_t status = LinkKeeper(context).Keep(folder, "link");
        adversary.join();
        ASSERT_EQ(fTree.ReadLink("from/link"), "the other's") << round << ", " << status;
        ASSERT_EQ(fTree.List("from"), "link\n");
    }
}

} // namespace norvane
