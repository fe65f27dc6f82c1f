#include "TransferFixture.h"

#include <utime.h>

namespace norvane {

/// An upload of `from/a` and `from/b`, of June 2019, that meets files which the pane has listed.
class UploadClashTest : public TransferFixture
{
protected:
    void SetUp() override
    {
        TransferFixture::SetUp();
        for (const char* name : {"a", "b"}) {
            fTree.Write(std::string("from/") + name, std::string("new ") + name);
            const struct utimbuf times = {1'560'000'000, 1'560'000'000};
            ASSERT_EQ(utime(fTree.Path(std::string("from/") + name).c_str(), &times), 0);
            fRemote.AddFile(std::string("/pub/") + name, "old");
        }
    }

    /// Uploads both; the server's are of that day.
    void UploadBoth(const std::string& date)
    {
        BMessage request = UploadRequest({"from/a", "from/b"});
        AddListed(&request, Listed("a", "3000", date));
        AddListed(&request, Listed("b", "3", date));
        Run(request);
    }

    std::string Both() const { return fRemote.Read("/pub/a") + ", " + fRemote.Read("/pub/b"); }
};

TEST_F(UploadClashTest, TheQuestionShowsBothSides)
{
    fUI.answers = {kAnswerSkip, kAnswerSkip};
    UploadBoth("Jan  5  2018");
    ASSERT_EQ(fUI.questions.size(), 2u);
    const OverwriteQuestion& question = fUI.questions.front();
    EXPECT_EQ(question.sourcePath, fTree.Path("from/a"));
    EXPECT_EQ(question.targetPath, "/pub/a");
    EXPECT_EQ(question.targetDetails, "2 K  Jan  5  2018");
    EXPECT_EQ(question.sourceDetails.substr(0, 9), "5 Bytes  ");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fServer->CommandLog().find("STOR"), std::string::npos);
}

TEST_F(UploadClashTest, OverwriteStoresThisOne)
{
    fUI.answers = {kAnswerOverwrite, kAnswerSkip};
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "new a, old");
}

TEST_F(UploadClashTest, OverwriteAllStoresTheRest)
{
    fUI.answers = {kAnswerOverwriteAll};
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "new a, new b");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(UploadClashTest, SkipAllKeepsTheRest)
{
    fUI.answers = {kAnswerSkipAll};
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(UploadClashTest, CancelEndsAfterTheItem)
{
    fUI.answers = {kAnswerCancel};
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.questions.size(), 1u);
}

TEST_F(UploadClashTest, OverwriteOlderStoresOverOlderOnes)
{
    fUI.answers = {kAnswerOverwriteOlder};
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "new a, new b");
}

TEST_F(UploadClashTest, OverwriteOlderKeepsNewerOnes)
{
    fUI.answers = {kAnswerOverwriteOlder};
    UploadBoth("Jan  5  2020");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(Problems(), "");
}

TEST_F(UploadClashTest, OverwriteOlderKeepsAndTellsWhatCannotBeTold)
{
    fUI.answers = {kAnswerOverwriteOlder};
    UploadBoth("Jun  8  2019");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.problems.size(), 2u);
}

TEST_F(UploadClashTest, WhatWasNotListedIsStored)
{
    Upload({"from/a"});
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fRemote.Read("/pub/a"), "new a");
}

TEST_F(UploadClashTest, WithNobodyToAskWhatIsThereStays)
{
    fUI.canAsk = false;
    UploadBoth("Jan  5  2018");
    EXPECT_EQ(Both(), "old, old");
    EXPECT_EQ(fUI.problems.size(), 2u);
}

TEST_F(UploadClashTest, AFolderInTheWayStays)
{
    fRemote.Remove("/pub/a");
    fRemote.AddFolder("/pub/a");
    BMessage request = UploadRequest({"from/a"});
    AddListed(&request, Listed("a", "4096", "Jan  5  2018", "drwxr-xr-x"));
    fUI.answers = {kAnswerOverwriteAll};
    Run(request);
    EXPECT_TRUE(fRemote.IsFolder("/pub/a"));
    EXPECT_EQ(Problems(), "a: a folder of that name is in the way\n");
}

TEST_F(UploadClashTest, AFolderThatIsThereIsListedAndItsFilesAskedAbout)
{
    fTree.Write("from/album/x", "new");
    fTree.Write("from/album/y", "new");
    fTree.Write("from/album/sub/z", "new");
    fRemote.AddFile("/pub/album/x", "old");
    fRemote.AddFile("/pub/album/sub/z", "old");
    fUI.answers = {kAnswerSkip, kAnswerOverwrite};
    Upload({"from/album"});
    ASSERT_EQ(fUI.questions.size(), 2u);
    EXPECT_EQ(fUI.questions[0].targetPath, "/pub/album/x");
    EXPECT_EQ(fUI.questions[0].targetDetails, "3 Bytes  Jan  5 12:34");
    EXPECT_EQ(fRemote.Read("/pub/album/x"), "old");
    EXPECT_EQ(fRemote.Read("/pub/album/y"), "new");
    EXPECT_EQ(fRemote.Read("/pub/album/sub/z"), "new");
}

TEST_F(UploadClashTest, AFolderThatIsThereAndCannotBeListedIsLeftAlone)
{
    fTree.Write("from/album/x", "new");
    fRemote.AddFile("/pub/album/x", "old");
    FtpTree::Habits habits;
    habits.answer = [](const std::string& said) -> std::optional<std::string> {
        return said == "LIST" ? std::optional<std::string>("550 Not for you\r\n") : std::nullopt;
    };
    fRemote.SetHabits(habits);
    Upload({"from/album", "from/b"});
    EXPECT_EQ(fRemote.Read("/pub/album/x"), "old");
    EXPECT_EQ(fRemote.Read("/pub/b"), "new b") << "and the next item goes where it should";
    EXPECT_EQ(fUI.problems.size(), 1u) << Problems();
}

TEST_F(UploadClashTest, TwoItemsOfOneNameAreStoredOnce)
{
    fTree.Write("other/c", "second");
    fTree.Write("from/c", "first");
    fTree.Write("from/album/x", "first");
    fTree.Write("other/album/x", "second");
    Upload({"from/c", "other/c", "from/album", "other/album"});
    EXPECT_EQ(fRemote.Read("/pub/c"), "first");
    EXPECT_EQ(fRemote.Read("/pub/album/x"), "first");
    EXPECT_EQ(Problems(), "c: another item of this operation has its name\n"
                          "album: another item of this operation has its name\n");
}

} // namespace norvane
