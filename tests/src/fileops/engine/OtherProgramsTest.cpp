#include "ItemFixture.h"
#include "fileops/engine/Delete.h"

#include <sys/stat.h>
#include <unistd.h>

namespace norvane {

/// Other programs that are at work on the same files, at a moment that the script chooses.
class OtherProgramsTest : public ItemFixture
{
protected:
    void SetUp() override
    {
        ItemFixture::SetUp();
        fTree.Write("from/large", fLarge);
    }

    /// While the large file is copied, once.
    void Meanwhile(const std::function<void()>& act)
    {
        fUI.onBytes = [this, act, isDone = false](int64) mutable {
            if (!isDone && fUI.files.back().source.ends_with("/large")) {
                isDone = true;
                act();
            }
        };
    }

    const std::string fLarge = std::string(3 << 20, 'x');
};

// What a move writes

TEST_F(OtherProgramsTest, ATargetRemovedMeanwhileKeepsTheSource)
{
    Meanwhile([this] { fTree.Remove("to/large"); });
    Move("from/large");
    EXPECT_TRUE(fTree.Exists("from/large") || Trashed() == "large\n");
    EXPECT_FALSE(fTree.Exists("to/large"));
    EXPECT_FALSE(fUI.problems.empty());
}

TEST_F(OtherProgramsTest, ATargetReplacedMeanwhileKeepsBoth)
{
    Meanwhile([this] { Replace("to/large", "another's"); });
    Move("from/large");
    EXPECT_EQ(fTree.Read("to/large"), "another's");
    const std::string kept = fTree.Exists("from/large") ? "from/large" : "data/Trash/files/large";
    EXPECT_TRUE(fTree.Read(kept) == fLarge);
    EXPECT_FALSE(fUI.problems.empty());
}

TEST_F(OtherProgramsTest, ATargetThatIsReplacedBeforeItsSourceGoesKeepsTheSource)
{
    fTree.Write("from/a", "mine");
    // The first is whole then, and waits for the second.
    Meanwhile([this] { Replace("to/a", "another's"); });
    MoveAll({"from/a", "from/large"});
    EXPECT_EQ(fTree.Read("to/a"), "another's");
    EXPECT_EQ(fTree.Read("from/a"), "mine");
    EXPECT_FALSE(fTree.Exists("from/large"));
    EXPECT_EQ(ProblemNames(), "a ");
}

TEST_F(OtherProgramsTest, ATargetThatIsWrittenBeforeItsSourceGoesKeepsTheSource)
{
    fTree.Write("from/a", "mine");
    Meanwhile([this] { fTree.Write("to/a", "ours"); });
    MoveAll({"from/a", "from/large"});
    EXPECT_EQ(fTree.Read("to/a"), "ours");
    EXPECT_EQ(fTree.Read("from/a"), "mine");
    EXPECT_EQ(ProblemNames(), "a ");
}

TEST_F(OtherProgramsTest, AFileOfATreeWhoseCopyIsGoneStaysAlone)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    fTree.Write("from/tree/sub/c", "3");
    Meanwhile([this] { fTree.Remove("to/tree/a"); });
    MoveAll({"from/tree", "from/large"});
    EXPECT_EQ(fTree.List("from"), "tree\n");
    EXPECT_EQ(fTree.List("from/tree"), "a\n");
    EXPECT_EQ(ProblemNames(), "a ");
    EXPECT_EQ(fTree.Read("to/tree/b"), "2");
    EXPECT_EQ(fTree.Read("to/tree/sub/c"), "3");
}

// What a stop removes

TEST_F(OtherProgramsTest, AStopRemovesNothingThatOthersPutThere)
{
    Meanwhile([this] {
        Replace("to/large", "another's");
        fUI.isStopped = true;
    });
    CopyAll({"from/large"});
    EXPECT_EQ(fTree.Read("to/large"), "another's");
    EXPECT_EQ(fTree.List("to"), "large\n");
}

TEST_F(OtherProgramsTest, AStopRemovesItsOwnHalfFile)
{
    Meanwhile([this] { fUI.isStopped = true; });
    CopyAll({"from/large"});
    EXPECT_EQ(fTree.List("to"), "");
}

// What the person agreed to

TEST_F(OtherProgramsTest, WhatCameAfterTheQuestionIsAskedAboutAgain)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite, kAnswerSkip};
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        if (fUI.questions.empty()) {
            Replace("to/a", "came while it was asked");
        }
    };
    CopyAll({"from/a"});
    ASSERT_EQ(fUI.questions.size(), 2u);
    EXPECT_EQ(fUI.questions[1].targetDetails.substr(0, 9), "23 Bytes ");
    EXPECT_EQ(fTree.Read("to/a"), "came while it was asked");
    EXPECT_EQ(fTree.List("to"), "a\n");
}

TEST_F(OtherProgramsTest, WhatIsAgreedToInTheEndIsReplaced)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite, kAnswerOverwrite};
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        if (fUI.questions.empty()) {
            Replace("to/a", "came while it was asked");
        }
    };
    CopyAll({"from/a"});
    EXPECT_EQ(fTree.Read("to/a"), "new");
    EXPECT_EQ(fTree.List("to"), "a\n");
}

TEST_F(OtherProgramsTest, WhatWasRemovedMeanwhileIsMadeAnew)
{
    fTree.Write("to/large", "old");
    fUI.answers = {kAnswerOverwrite};
    Meanwhile([this] { fTree.Remove("to/large"); });
    CopyAll({"from/large"});
    EXPECT_TRUE(fTree.Read("to/large") == fLarge);
    EXPECT_EQ(fTree.List("to"), "large\n");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(OtherProgramsTest, AFolderThatCameInTheWayStays)
{
    fTree.Write("to/large", "old");
    fUI.answers = {kAnswerOverwriteAll};
    Meanwhile([this] {
        fTree.Remove("to/large");
        fTree.Write("to/large/inside", "another's");
    });
    CopyAll({"from/large"});
    EXPECT_EQ(fTree.Read("to/large/inside"), "another's");
    EXPECT_EQ(fTree.List("to"), "large\n");
    EXPECT_EQ(ProblemNames(), "large ");
}

TEST_F(OtherProgramsTest, OlderMeansOlderWhenItIsReplaced)
{
    fTree.Write("to/large", "old");
    SetTime("to/large", 1000);
    fUI.answer = kAnswerOverwriteOlder;
    Meanwhile([this] { fTree.Write("to/large", "newer than both"); });
    SetTime("from/large", 2000);
    CopyAll({"from/large"});
    EXPECT_EQ(fTree.Read("to/large"), "newer than both");
    EXPECT_TRUE(fUI.questions.empty());
}

TEST_F(OtherProgramsTest, WhatNobodyCanBeAskedAboutStaysAndIsTold)
{
    fTree.Write("to/large", "old");
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        fUI.canAsk = false;
    };
    CopyAll({"from/large"});
    EXPECT_EQ(fTree.Read("to/large"), "old");
    ASSERT_EQ(ProblemNames(), "large ");
    EXPECT_EQ(fUI.problems[0].second, "the system has no thread left to ask about it");
}

// What an operation made itself

TEST_F(OtherProgramsTest, ItemsOfOneNameDoNotReplaceEachOther)
{
    fTree.Write("one/a", "first");
    fTree.Write("two/a", "second");
    fUI.answers = {kAnswerOverwriteAll};
    MoveAll({"one/a", "two/a"});
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fTree.Read("to/a"), "first");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "second");
    EXPECT_FALSE(fTree.Exists("one/a"));
    ASSERT_EQ(ProblemNames(), "a a ");
    EXPECT_EQ(fUI.problems[0].second, "another item of this operation has its name");
}

TEST_F(OtherProgramsTest, FoldersOfOneNameAreNotMerged)
{
    fTree.Write("one/tree/a", "first");
    fTree.Write("two/tree/b", "second");
    CopyAll({"one/tree", "two/tree"});
    EXPECT_EQ(fTree.List("to/tree"), "a\n");
    EXPECT_EQ(ProblemNames(), "tree ");
}

TEST_F(OtherProgramsTest, WhatIsMadeOfOneNameInAFolderThatWasThereStaysTheFirsts)
{
    fTree.Write("one/tree/a", "first");
    fTree.Write("two/tree/a", "second");
    fTree.Write("two/tree/b", "b");
    fTree.MakeFolder("to/tree");
    fUI.answers = {kAnswerOverwriteAll};
    CopyAll({"one/tree", "two/tree"});
    EXPECT_EQ(fTree.Read("to/tree/a"), "first");
    EXPECT_EQ(fTree.Read("to/tree/b"), "b");
    EXPECT_TRUE(fUI.questions.empty());
}

TEST_F(OtherProgramsTest, LinksOfOneNameDoNot)
{
    fTree.Write("x", "");
    fTree.Link("one/link", fTree.Path("x"));
    fTree.Link("two/link", fTree.Path("x"));
    CopyAll({"one/link", "two/link"});
    EXPECT_TRUE(fUI.notices.empty()) << "it is not broken";
    ASSERT_EQ(ProblemNames(), "link ");
    EXPECT_EQ(fUI.problems[0].second, "another item of this operation has its name");
}

TEST_F(OtherProgramsTest, ALinkThatIsItsOwnTargetIsNotBroken)
{
    fTree.Write("x", "");
    fTree.Link("from/link", fTree.Path("x"));
    ASSERT_EQ(link(fTree.Path("from/link").c_str(), fTree.Path("to/link").c_str()), 0);
    MoveAll({"from/link"});
    EXPECT_TRUE(fUI.notices.empty());
    EXPECT_EQ(fTree.ReadLink("from/link"), fTree.Path("x"));
    EXPECT_EQ(fTree.ReadLink("to/link"), fTree.Path("x"));
}

// Who may read

TEST_F(OtherProgramsTest, AFileIsOpenToNobodyUntilItIsWhole)
{
    SetMode("from/large", 0644);
    mode_t meanwhile = 0;
    Meanwhile([&] { meanwhile = Mode("to/large"); });
    CopyAll({"from/large"});
    EXPECT_EQ(meanwhile, 0600u);
    EXPECT_EQ(Mode("to/large"), 0644u);
}

TEST_F(OtherProgramsTest, AFolderIsOpenToNobodyUntilItIsWhole)
{
    fTree.Write("from/tree/large", fLarge);
    SetMode("from/tree", 0755);
    mode_t meanwhile = 0;
    Meanwhile([&] { meanwhile = Mode("to/tree"); });
    CopyAll({"from/tree"});
    EXPECT_EQ(meanwhile, 0700u);
    EXPECT_EQ(Mode("to/tree"), 0755u);
}

TEST_F(OtherProgramsTest, AnotherGroupGetsWhatOthersHave)
{
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can give a file another group";
    }
    SetMode("from/large", 0640);
    ASSERT_EQ(chown(fTree.Path("from/large").c_str(), uid_t(-1), 1), 0);
    ASSERT_EQ(chown(fTree.Path("to").c_str(), uid_t(-1), 2), 0);
    SetMode("to", 02755);
    CopyAll({"from/large"});
    EXPECT_EQ(Mode("to/large"), 0600u);
}

// What is deleted

TEST_F(OtherProgramsTest, WhatTookAnItemsPlaceIsNotDeleted)
{
    fTree.Write("from/a", "agreed to");
    fTree.Write("from/tree/b", "agreed to, too");
    norvane::Delete operation(Refs({"from/a", "from/tree"}), fUI);
    operation.Measure();
    Replace("from/a", "another's");
    std::rename(fTree.Path("from/tree").c_str(), fTree.Path("from/moved").c_str());
    fTree.Write("from/tree/c", "another's");
    operation.RunItem(0);
    operation.RunItem(1);
    operation.Finish();
    EXPECT_EQ(fTree.Read("from/a"), "another's");
    EXPECT_EQ(fTree.Read("from/tree/c"), "another's");
    EXPECT_EQ(fTree.List("from"), "a\nlarge\nmoved\ntree\n");
    EXPECT_EQ(ProblemNames(), "a tree ");
}

TEST_F(OtherProgramsTest, WhatCameWhereNothingWasIsNotDeleted)
{
    fTree.Write("from/a", "agreed to");
    norvane::Delete operation(Refs({"from/a"}), fUI);
    fTree.Remove("from/a");
    operation.Measure();
    fTree.Write("from/a", "another's");
    operation.RunItem(0);
    EXPECT_EQ(fTree.Read("from/a"), "another's");
    EXPECT_EQ(ProblemNames(), "a ");
}

TEST_F(OtherProgramsTest, WhatStaysOfADeletionHasItsName)
{
    fTree.Write("from/tree/closed/a", "1");
    fTree.Write("from/tree/b", "2");
    SetMode("from/tree/closed", 0555);
    {
        const WithoutFileRights rights;
        norvane::Delete(Refs({"from/tree"}), fUI).Run();
    }
    SetMode("from/tree/closed", 0755);
    EXPECT_EQ(fTree.List("from"), "large\ntree\n");
    EXPECT_EQ(fTree.List("from/tree"), "closed\n");
    EXPECT_EQ(ProblemNames(), "a ");
}

} // namespace norvane
