#include "fileops/engine/NorvaneEntry.h"

#include "CopyFixture.h"
#include "fileops/engine/OwnNames.h"

namespace norvane {

/// A copy whose targets exist.
class CopyClashTest : public CopyFixture
{
protected:
    /// Two files in a folder, both there already.
    void PrepareTwo()
    {
        for (const char* name : {"a", "b"}) {
            fTree.Write(std::string("from/tree/") + name, "new");
            fTree.Write(std::string("to/tree/") + name, "old");
        }
    }
};

TEST_F(CopyClashTest, ReplacesWhenToldTo)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old, and longer");
    fUI.answers = {kAnswerOverwrite};
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "new");
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fUI.hidden, 0);
}

class LeavingAnswerTest : public CopyFixture, public ::testing::WithParamInterface<uint32>
{
};

TEST_P(LeavingAnswerTest, KeepsTheTargetAndStaysHidden)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {GetParam()};
    EXPECT_FALSE(Copy("from/a", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fUI.hidden, 1);
}

INSTANTIATE_TEST_SUITE_P(Answers, LeavingAnswerTest,
                         ::testing::Values(kAnswerSkip, kAnswerSkipAll, kAnswerCancel),
                         [](const auto& tested) { return AnswerName(tested.param); });

TEST_F(CopyClashTest, AnswersOfOneFileCoverOneFile)
{
    PrepareTwo();
    fUI.answers = {kAnswerSkip, kAnswerOverwrite};
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.questions.size(), 2u);
    EXPECT_EQ(fTree.Read("to/tree/a"), "old");
    EXPECT_EQ(fTree.Read("to/tree/b"), "new");
    // The skip left it hidden, and the question after it hid it once more.
    EXPECT_EQ(fUI.hidden, 1);
}

TEST_F(CopyClashTest, OverwriteAllAsksOnce)
{
    PrepareTwo();
    fUI.answers = {kAnswerOverwriteAll};
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fTree.Read("to/tree/b"), "new");
    EXPECT_EQ(fUI.hidden, 0);
}

TEST_F(CopyClashTest, SkipAllAsksOnce)
{
    PrepareTwo();
    fUI.answers = {kAnswerSkipAll};
    Copy("from/tree", "to");
    EXPECT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fTree.Read("to/tree/a"), "old");
    EXPECT_EQ(fTree.Read("to/tree/b"), "old");
    EXPECT_EQ(fUI.hidden, 1);
}

TEST_F(CopyClashTest, CancelInAFolderDoesNotStopItsOtherFiles)
{
    PrepareTwo();
    fTree.Write("from/tree/c", "no clash");
    fUI.answers = {kAnswerCancel, kAnswerOverwrite};
    Copy("from/tree", "to");
    EXPECT_EQ(fUI.questions.size(), 2u);
    EXPECT_EQ(fTree.Read("to/tree/a"), "old");
    EXPECT_EQ(fTree.Read("to/tree/b"), "new");
    EXPECT_EQ(fTree.Read("to/tree/c"), "no clash");
}

TEST_F(CopyClashTest, OlderReplacesOnlyOlderTargets)
{
    for (const char* name : {"a", "b", "c"}) {
        fTree.Write(std::string("from/tree/") + name, "new");
        fTree.Write(std::string("to/tree/") + name, "old");
        SetTime(std::string("from/tree/") + name, 1'000'000);
    }
    SetTime("to/tree/a", 999'999);
    SetTime("to/tree/b", 1'000'000);
    SetTime("to/tree/c", 1'000'001);
    fUI.answer = kAnswerOverwriteOlder;
    Copy("from/tree", "to");
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fTree.Read("to/tree/a"), "new");
    EXPECT_EQ(fTree.Read("to/tree/b"), "old");
    EXPECT_EQ(fTree.Read("to/tree/c"), "old");
    EXPECT_EQ(fUI.hidden, 2);
}

TEST_F(CopyClashTest, OlderDoesNotReplaceANewerTargetThatWasAskedAbout)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    SetTime("from/a", 1'000'000);
    SetTime("to/a", 2'000'000);
    fUI.answers = {kAnswerOverwriteOlder};
    EXPECT_FALSE(Copy("from/a", "to"));
    EXPECT_EQ(fTree.Read("to/a"), "old");
}

TEST_F(CopyClashTest, AsksWithPathsCrossedWithDetails)
{
    fTree.Write("from/a", std::string(2048, 'x'));
    fTree.Write("to/a", "12345");
    Copy("from/a", "to");
    ASSERT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fUI.questions[0].sourcePath, fTree.Path("from/a"));
    EXPECT_EQ(fUI.questions[0].targetPath, fTree.Path("to/a"));
    EXPECT_EQ(fUI.questions[0].targetDetails.rfind("5 Bytes  ", 0), 0u);
    EXPECT_EQ(fUI.questions[0].sourceDetails.rfind("2 K  ", 0), 0u);
}

TEST_F(CopyClashTest, WithoutADialogTheTargetStaysAndIsReported)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.canAsk = false;
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "old");
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "a");
}

TEST_F(CopyClashTest, TheOldContentsStayUntilTheNewOnesAreWhole)
{
    fTree.Write("from/a", std::string(20'000, 'n'));
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite};
    fUI.onBytes = [this](int64) {
        EXPECT_EQ(fTree.Read("to/a"), "old");
        const std::string names = fTree.List("to");
        EXPECT_TRUE(IsOwnTemporaryName(names.substr(0, names.find('\n')).c_str()));
    };
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_EQ(fTree.Read("to/a"), std::string(20'000, 'n'));
}

TEST_F(CopyClashTest, ALinkIsReplacedNeverWrittenThrough)
{
    fTree.Write("from/a", "new");
    fTree.Write("precious", "old");
    fTree.MakeFolder("to");
    fTree.Link("to/a", fTree.Path("precious"));
    fUI.answers = {kAnswerOverwrite};
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_EQ(fTree.Read("precious"), "old");
    EXPECT_EQ(fTree.ReadLink("to/a"), "(no link)");
    EXPECT_EQ(fTree.Read("to/a"), "new");
}

TEST_F(CopyClashTest, AFileNeverReplacesAFolder)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a/inside", "kept");
    fUI.answers = {kAnswerOverwrite};
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.files.empty());
    EXPECT_EQ(fTree.Read("to/a/inside"), "kept");
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fUI.problems.size(), 1u);
}

TEST_F(CopyClashTest, AFolderNeverReplacesAFile)
{
    fTree.Write("from/a/inside", "new");
    fTree.Write("to/a", "old");
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fUI.problems.size(), 1u);
}

TEST_F(CopyClashTest, AFolderIsNotMergedThroughALink)
{
    fTree.Write("from/a/inside", "new");
    fTree.MakeFolder("elsewhere");
    fTree.MakeFolder("to");
    fTree.Link("to/a", fTree.Path("elsewhere"));
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("elsewhere"), "");
}

} // namespace norvane
