#include "TransferFixture.h"

#include <sys/stat.h>
#include <utime.h>

namespace norvane {

/// A download that meets files which are there: `to/a` and `to/b`, of 2019.
class DownloadClashTest : public TransferFixture
{
protected:
    void SetUp() override
    {
        TransferFixture::SetUp();
        fRemote.AddFile("/pub/a", "new a");
        fRemote.AddFile("/pub/b", "new b");
        for (const char* name : {"to/a", "to/b"}) {
            fTree.Write(name, "old");
            SetTime(name, 1'560'000'000);
        }
    }

    void SetTime(const std::string& name, std::time_t modified)
    {
        const struct utimbuf times = {modified, modified};
        ASSERT_EQ(utime(fTree.Path(name).c_str(), &times), 0);
    }

    /// Downloads both; the server's are of that day.
    void DownloadBoth(const std::string& date)
    {
        BMessage request = DownloadRequest({"a", "b"});
        AddListed(&request, Listed("a", "5", date));
        AddListed(&request, Listed("b", "5", date));
        Run(request);
        EXPECT_EQ(fTree.List("to"), "a\nb\n") << "nothing hidden is left";
    }

    std::string Both() const { return fTree.Read("to/a") + ", " + fTree.Read("to/b"); }
};

TEST_F(DownloadClashTest, TheQuestionShowsBothSides)
{
    fUI.answers = {kAnswerSkip, kAnswerSkip};
    DownloadBoth("Jan  5  2020");
    ASSERT_EQ(fUI.questions.size(), 2u);
    const OverwriteQuestion& question = fUI.questions.front();
    EXPECT_EQ(question.sourcePath, "/pub/a");
    EXPECT_EQ(question.targetPath, fTree.Path("to/a"));
    EXPECT_EQ(question.sourceDetails, "5 Bytes  Jan  5  2020");
    EXPECT_EQ(question.targetDetails.substr(0, 9), "3 Bytes  ");
}

TEST_F(DownloadClashTest, OverwriteReplacesThisOne)
{
    fUI.answers = {kAnswerOverwrite, kAnswerSkip};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "new a, old");
    EXPECT_EQ(fUI.hidden, 1) << "a skip leaves the progress hidden";
}

TEST_F(DownloadClashTest, OverwriteAllReplacesTheRest)
{
    fUI.answers = {kAnswerOverwriteAll};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "new a, new b");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(DownloadClashTest, SkipAllKeepsTheRest)
{
    fUI.answers = {kAnswerSkipAll};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fServer->CommandLog().find("RETR"), std::string::npos);
}

TEST_F(DownloadClashTest, CancelEndsAfterTheItem)
{
    fUI.answers = {kAnswerCancel};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(DownloadClashTest, OverwriteOlderReplacesOlderOnes)
{
    fUI.answers = {kAnswerOverwriteOlder};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "new a, new b");
}

TEST_F(DownloadClashTest, OverwriteOlderKeepsNewerOnes)
{
    fUI.answers = {kAnswerOverwriteOlder};
    DownloadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadClashTest, OverwriteOlderKeepsAndTellsWhatCannotBeTold)
{
    fUI.answers = {kAnswerOverwriteOlder};
    DownloadBoth("Jun  8  2019"); // the same day
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(Problems(), "a: it cannot be told which of the two is older\n"
                          "b: it cannot be told which of the two is older\n");
}

TEST_F(DownloadClashTest, FilesInATreeAreAskedAboutToo)
{
    fRemote.AddFile("/pub/album/x", "new");
    fTree.Write("to/album/x", "old");
    fUI.answers = {kAnswerOverwrite};
    Download({}, {"album"});
    ASSERT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fUI.questions[0].sourcePath, "/pub/album/x");
    EXPECT_EQ(fTree.Read("to/album/x"), "new");
}

TEST_F(DownloadClashTest, AReplacedFileKeepsItsMode)
{
    ASSERT_EQ(chmod(fTree.Path("to/a").c_str(), 0604), 0);
    fUI.answers = {kAnswerOverwriteAll};
    DownloadBoth("Jan  5  2020");
    struct stat record = {};
    ASSERT_EQ(lstat(fTree.Path("to/a").c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 07777, 0604u);
}

TEST_F(DownloadClashTest, WithNobodyToAskWhatIsThereStays)
{
    fUI.canAsk = false;
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.problems.size(), 2u);
}

TEST_F(DownloadClashTest, ALinkIsReplacedAndNeverWrittenThrough)
{
    fTree.Write("elsewhere", "mine");
    fTree.Remove("to/a");
    fTree.Link("to/a", "../elsewhere");
    fUI.answers = {kAnswerOverwriteAll};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(fTree.Read("elsewhere"), "mine");
    EXPECT_EQ(fTree.ReadLink("to/a"), "(no link)");
    EXPECT_EQ(fTree.Read("to/a"), "new a");
}

TEST_F(DownloadClashTest, AFolderInTheWayStays)
{
    fTree.Remove("to/a");
    fTree.Write("to/a/inside", "mine");
    fUI.answers = {kAnswerOverwriteAll};
    DownloadBoth("Jan  5  2020");
    EXPECT_EQ(fTree.Read("to/a/inside"), "mine");
    EXPECT_EQ(Problems(), "a: a folder of that name is in the way\n");
}

TEST_F(DownloadClashTest, AFileInTheWayOfAFolderStays)
{
    fRemote.AddFile("/pub/album/x", "new");
    fTree.Write("to/album", "mine");
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album"), "mine");
    EXPECT_EQ(Problems(), "album: something that is no folder is in the way\n");
}

TEST_F(DownloadClashTest, ALinkInTheWayOfAFolderIsNotFollowed)
{
    fRemote.AddFile("/pub/album/x", "new");
    fTree.MakeFolder("elsewhere");
    fTree.Link("to/album", "../elsewhere");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("elsewhere"), "");
    EXPECT_EQ(Problems(), "album: something that is no folder is in the way\n");
}

TEST_F(DownloadClashTest, WhatAppearsMeanwhileIsAskedAbout)
{
    fRemote.AddFile("/pub/late", "new");
    fUI.onTransfer = [this](const TransferStep& step) {
        if (step.isNew) {
            fTree.Write("to/late", "mine");
        }
    };
    fUI.answers = {kAnswerSkip};
    Download({"late"});
    EXPECT_EQ(fUI.questions.size(), 1u);
    EXPECT_EQ(fTree.Read("to/late"), "mine");
    EXPECT_EQ(fTree.List("to"), "a\nb\nlate\n");
}

TEST_F(DownloadClashTest, WhatAppearsMeanwhileIsReplacedWhenAgreed)
{
    fRemote.AddFile("/pub/late", "new");
    fUI.onTransfer = [this](const TransferStep& step) {
        if (step.isNew) {
            fTree.Write("to/late", "mine");
        }
    };
    fUI.answers = {kAnswerOverwrite};
    Download({"late"});
    EXPECT_EQ(fTree.Read("to/late"), "new");
    EXPECT_EQ(fTree.List("to"), "a\nb\nlate\n");
}

TEST_F(DownloadClashTest, TheSameNameTwiceIsTakenOnce)
{
    fRemote.AddFile("/pub/twice", "1");
    fUI.answers = {kAnswerOverwriteAll};
    Download({"twice", "twice"});
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(Problems(), "twice: another item of this operation has its name\n");
}

TEST_F(DownloadClashTest, TheSameFolderTwiceIsTakenOnce)
{
    fRemote.AddFile("/pub/album/x", "1");
    Download({}, {"album", "album"});
    EXPECT_EQ(Problems(), "album: another item of this operation has its name\n");
}

} // namespace norvane
