#include "ItemFixture.h"

#include <sys/mount.h>
#include <unistd.h>

namespace norvane {

/// Moves that cannot be done whole: their sources go into the Trash, or stay, and are never lost.
class MoveNotWholeTest : public ItemFixture
{
protected:
    /// The next move copies the item's first file, then does `change`.
    void AfterTheFirstFile(const std::function<void()>& change)
    {
        // A small file is told of once it is there.
        fUI.onBytes = [this, change](int64) {
            if (fCopied++ == 0) {
                change();
            }
        };
    }

private:
    int fCopied = 0;
};

// Answers

TEST_F(MoveNotWholeTest, ASkippedItemLeavesForTheTrash)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerSkip};
    Move("from/a");
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(Trashed(), "a\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "new");
    ASSERT_EQ(ProblemNames(), "a ");
    EXPECT_EQ(fUI.problems[0].second, "it is in the Trash");
}

class NoAnswerToMoveTest : public MoveNotWholeTest, public ::testing::WithParamInterface<uint32>
{
};

TEST_P(NoAnswerToMoveTest, OneChildLeftOutSendsTheWholeFolderToTheTrash)
{
    fTree.Write("from/tree/a", "new a");
    fTree.Write("from/tree/b", "new b");
    fTree.Write("to/tree/a", "old");
    SetTime("from/tree/a", 1000);
    fUI.answers = {GetParam()};
    Move("from/tree");
    EXPECT_EQ(fTree.Read("to/tree/a"), "old");
    EXPECT_EQ(fTree.Read("to/tree/b"), "new b");
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_EQ(fTree.Read("data/Trash/files/tree/a"), "new a");
    EXPECT_EQ(fTree.Read("data/Trash/files/tree/b"), "new b");
}

INSTANTIATE_TEST_SUITE_P(Answers, NoAnswerToMoveTest,
                         ::testing::Values(kAnswerSkip, kAnswerSkipAll, kAnswerCancel,
                                           kAnswerOverwriteOlder),
                         [](const auto& tested) { return AnswerName(tested.param); });

TEST_F(MoveNotWholeTest, OlderWithTheSameTimeIsSkipped)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    SetTime("from/a", 1000);
    SetTime("to/a", 1000);
    fUI.answers = {kAnswerOverwriteOlder};
    Move("from/a");
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(Trashed(), "a\n");
}

// Itself

TEST_F(MoveNotWholeTest, IntoItsOwnFolderNothingHappens)
{
    fTree.Write("from/a", "1");
    fTree.Link("same", fTree.Path("from"));
    Move("from/a", "from");
    Move("from/a", "same");
    EXPECT_EQ(fTree.List("from"), "a\n");
    EXPECT_EQ(Trashed(), "");
    EXPECT_TRUE(fUI.questions.empty());
}

TEST_F(MoveNotWholeTest, OntoItsOwnHardLinkNothingIsDeleted)
{
    fTree.Write("from/a", "1");
    ASSERT_EQ(link(fTree.Path("from/a").c_str(), fTree.Path("to/a").c_str()), 0);
    fUI.answers = {kAnswerOverwrite};
    Move("from/a");
    EXPECT_EQ(fTree.Read("from/a"), "1");
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, AHardLinkedChildMakesItsFolderNotWhole)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    fTree.MakeFolder("to/tree");
    ASSERT_EQ(link(fTree.Path("from/tree/a").c_str(), fTree.Path("to/tree/a").c_str()), 0);
    Move("from/tree");
    EXPECT_EQ(fTree.List("to/tree"), "a\nb\n");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "a\nb\n");
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(MoveNotWholeTest, IntoItselfItIsCopiedAndNothingDeleted)
{
    fTree.Write("a/file", "1");
    fTree.Write("a/sub/file", "2");
    Move("a", "a");
    EXPECT_EQ(fTree.Read("a/file"), "1");
    EXPECT_EQ(fTree.Read("a/sub/file"), "2");
    EXPECT_EQ(fTree.Read("a/a/sub/file"), "2");
    EXPECT_FALSE(fTree.Exists("a/a/a"));
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, BelowItselfItIsCopiedAndNothingDeleted)
{
    fTree.Write("a/file", "1");
    fTree.MakeFolder("a/b/c");
    Move("a", "a/b/c");
    EXPECT_EQ(fTree.Read("a/file"), "1");
    EXPECT_EQ(fTree.Read("a/b/c/a/file"), "1");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, BelowItselfByAnotherWayNothingIsDeleted)
{
    fTree.Write("a/file", "1");
    fTree.MakeFolder("a/b");
    fTree.Link("way", fTree.Path("a/b"));
    Move("a", "way");
    EXPECT_EQ(fTree.Read("a/file"), "1");
    EXPECT_EQ(fTree.Read("a/b/a/file"), "1");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, BelowItselfBehindAnUnreadableFolderNothingIsDeleted)
{
    fTree.Write("a/file", "1");
    fTree.MakeFolder("a/b/c");
    SetMode("a/b", 0311); // the walk does not come upon its own target
    {
        const WithoutFileRights rights;
        Move("a", "a/b/c");
    }
    SetMode("a/b", 0755);
    EXPECT_EQ(fTree.Read("a/file"), "1");
    EXPECT_EQ(fTree.Read("a/b/c/a/file"), "1");
    EXPECT_EQ(Trashed(), "");
}

// Faults

TEST_F(MoveNotWholeTest, WhatCannotBeReadSendsTheFolderToTheTrash)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    SetMode("from/tree/a", 0000);
    {
        const WithoutFileRights rights;
        Move("from/tree");
    }
    EXPECT_EQ(fTree.List("to/tree"), "b\n");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "a\nb\n");
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(MoveNotWholeTest, AnotherKindOfNodeSendsTheFolderToTheTrash)
{
    fTree.Write("from/tree/a", "1");
    ASSERT_EQ(mkfifo(fTree.Path("from/tree/fifo").c_str(), 0600), 0);
    Move("from/tree");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "a\nfifo\n");
    EXPECT_EQ(ProblemNames(), "fifo tree ");
}

TEST_F(MoveNotWholeTest, ABrokenLinkIsToldAndGoesToTheTrash)
{
    fTree.Link("from/link", "gone");
    Move("from/link");
    EXPECT_EQ(fUI.notices.size(), 1u);
    EXPECT_FALSE(fTree.Exists("to/link"));
    EXPECT_EQ(fTree.ReadLink("data/Trash/files/link"), "gone");
}

TEST_F(MoveNotWholeTest, AMissingTargetFolderSendsTheItemToTheTrash)
{
    fTree.Write("from/a", "1");
    Move("from/a", "gone");
    EXPECT_EQ(Trashed(), "a\n");
    ASSERT_EQ(ProblemNames(), "a a ");
    EXPECT_EQ(fUI.problems[1].second, "it is in the Trash");
}

TEST_F(MoveNotWholeTest, WithoutATrashOnItsVolumeItStaysAndIsTold)
{
    fTree.MakeFolder("from");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerSkip};
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/a", "new");
        fTree.Write("from/.Trash-" + std::to_string(getuid()), "in the way");
        Move("from/a");
        return Check(fTree.Read("from/a") == "new", "stays") &&
               Check(fTree.Read("to/a") == "old", "the target too") &&
               Check(ProblemNames() == "a ", "told") &&
               Check(fUI.problems[0].second == "it stays where it is", "so");
    });
}

TEST_F(MoveNotWholeTest, AFullVolumeKeepsTheSourceInTheTrash)
{
    const std::string contents(3 << 20, 'x');
    fTree.Write("from/a", contents);
    Privately([&] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        Move("from/a");
        return Check(fUI.notices == std::vector<std::string>{"Out of space on the target volume."},
                     "told") &&
               Check(fTree.Exists("to/a"), "the part stays") &&
               Check(fTree.Read("data/Trash/files/a") == contents, "in the Trash") &&
               Check(fTree.List("from") == "", "not in its place");
    });
}

TEST_F(MoveNotWholeTest, FromAnotherVolumeItGoesIntoThatOnesTrash)
{
    fTree.MakeFolder("from");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerSkip};
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/sub/a", "new");
        Move("from/sub/a");
        const std::string own = "from/.Trash-" + std::to_string(getuid());
        return Check(fTree.List("from/sub") == "", "left its place") &&
               Check(fTree.Read(own + "/files/a") == "new", "in its own volume's Trash") &&
               Check(fTree.Exists(own + "/info/a.trashinfo"), "with a record") &&
               Check(Trashed() == "", "not in the home Trash");
    });
}

TEST_F(MoveNotWholeTest, AMountedVolumeInItStays)
{
    fTree.Write("from/tree/a", "1");
    fTree.MakeFolder("from/tree/mounted");
    Privately([this] {
        if (!MountMemory(fTree.Path("from/tree/mounted"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/mounted/b", "2");
        Move("from/tree");
        return Check(fTree.Read("to/tree/mounted/b") == "2", "copied") &&
               Check(fTree.Read("from/tree/mounted/b") == "2", "and there") &&
               Check(fTree.List("from/tree") == "mounted\n", "the rest is gone") &&
               Check(ProblemNames() == "mounted ", "told");
    });
}

// Changes while the move runs

TEST_F(MoveNotWholeTest, WhatWasAddedMeanwhileStays)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    AfterTheFirstFile([this] { fTree.Write("from/tree/late", "3"); });
    Move("from/tree");
    EXPECT_EQ(fTree.List("to/tree"), "a\nb\n");
    EXPECT_EQ(fTree.List("from/tree"), "late\n");
    EXPECT_EQ(ProblemNames(), "late ");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, WhatWasChangedAfterItWasReadStays)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    AfterTheFirstFile([this] { fTree.Write("from/tree/a", "changed"); });
    Move("from/tree");
    EXPECT_EQ(fTree.Read("to/tree/a"), "1");
    EXPECT_EQ(fTree.Read("from/tree/a"), "changed");
    EXPECT_EQ(fTree.List("from/tree"), "a\n");
    EXPECT_EQ(ProblemNames(), "a ");
}

TEST_F(MoveNotWholeTest, WhatTookAFilesPlaceStays)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    AfterTheFirstFile([this] {
        fTree.Write("from/new", "1");
        SetTime("from/new", 1000);
        ASSERT_EQ(rename(fTree.Path("from/new").c_str(), fTree.Path("from/tree/a").c_str()), 0);
    });
    SetTime("from/tree/a", 1000);
    Move("from/tree");
    EXPECT_EQ(fTree.List("from/tree"), "a\n");
}

TEST_F(MoveNotWholeTest, AFileReadUnderAnotherNameStaysUnderItsNewOne)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    AfterTheFirstFile([this] {
        ASSERT_EQ(rename(fTree.Path("from/tree/a").c_str(), fTree.Path("from/tree/z").c_str()), 0);
    });
    Move("from/tree");
    EXPECT_EQ(fTree.List("from/tree"), "z\n");
}

TEST_F(MoveNotWholeTest, AFolderSwappedForALinkLeadsNowhereElse)
{
    fTree.Write("precious/a", "1");
    fTree.Write("from/tree/sub/a", "1");
    fTree.Write("from/tree/z", "2");
    // Folders come last, so the swap falls between the copy and the deletion.
    fUI.onBytes = [this](int64) {
        if (fTree.Exists("to/tree/sub/a") && !fTree.Exists("swapped")) {
            ASSERT_EQ(rename(fTree.Path("from/tree/sub").c_str(), fTree.Path("swapped").c_str()),
                      0);
            fTree.Link("from/tree/sub", fTree.Path("precious"));
        }
    };
    Move("from/tree");
    EXPECT_EQ(fTree.Read("precious/a"), "1");
    EXPECT_EQ(fTree.ReadLink("from/tree/sub"), fTree.Path("precious"));
}

// Stopping and quitting

TEST_F(MoveNotWholeTest, StoppedItDeletesNothing)
{
    fTree.Write("from/tree/a", std::string(100'000, 'x'));
    fTree.Write("from/tree/b", "2");
    fUI.onBytes = [this](int64) {
        fUI.isStopped = true;
    };
    Move("from/tree");
    EXPECT_EQ(fTree.List("from/tree"), "a\nb\n");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(MoveNotWholeTest, StoppedAfterTheCopyItDeletesNothing)
{
    fTree.Write("from/a", "1");
    fUI.onBytes = [this](int64) {
        fUI.mayDelete = false;
    };
    Move("from/a");
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(fTree.Read("from/a"), "1");
}

TEST_F(MoveNotWholeTest, AQuestionThatQuittingAnsweredDeletesNothing)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerCancel};
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        fUI.mayDelete = false;
    };
    Move("from/a");
    EXPECT_EQ(fTree.Read("from/a"), "new");
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(Trashed(), "");
}

} // namespace norvane
