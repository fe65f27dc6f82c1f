#include "TransferFixture.h"

#include <OS.h>

#include <cstdio>

namespace norvane {

/// Servers that refuse, lie, break off and fall silent.
class UploadFaultsTest : public TransferFixture
{
protected:
    /// Says `reply` to the command, as often as it comes.
    void Answer(const std::string& command, const std::string& reply)
    {
        FtpTree::Habits habits;
        habits.answer = [command, reply](const std::string& said) -> std::optional<std::string> {
            return said == command ? std::optional(reply) : std::nullopt;
        };
        fRemote.SetHabits(habits);
    }
};

TEST_F(UploadFaultsTest, AWrongPasswordIsToldOnce)
{
    fTree.Write("from/a", "1");
    BMessage request = UploadRequest({"from/a"});
    request.ReplaceString("Password", "wrong");
    Run(request);
    EXPECT_EQ(Problems(), "127.0.0.1: the username or password supplied is incorrect\n");
    EXPECT_EQ(fUI.summaries.size(), 1u);
}

TEST_F(UploadFaultsTest, ARefusedConnectionIsTold)
{
    fTree.Write("from/a", "1");
    const BMessage request = UploadRequest({"from/a"});
    fServer.reset();
    Run(request);
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "127.0.0.1");
}

TEST_F(UploadFaultsTest, AServerThatOnlySaysItWentThereIsNotBelieved)
{
    fTree.Write("from/a", "1");
    Answer("CWD /pub", "250 Sure\r\n");
    Upload({"from/a"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n");
}

TEST_F(UploadFaultsTest, ARefusedFileIsToldAndTheOthersAreSent)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    Answer("STOR a", "553 Quota\x1b[31m exceeded\r\n");
    Upload({"from/a", "from/b"});
    EXPECT_EQ(Problems(), "a: the server says \"553 Quota [31m exceeded\"\n");
    EXPECT_EQ(fRemote.Read("/pub/b"), "2");
}

TEST_F(UploadFaultsTest, WhatIsCutOffIsTold)
{
    fTree.Write("from/a", Bytes(3'000'000));
    FtpTree::Habits habits;
    habits.breakAfter = 1000;
    fRemote.SetHabits(habits);
    Upload({"from/a"});
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "a");
    EXPECT_NE(fUI.problems[0].second.find(" of 3000000 bytes were sent"), std::string::npos)
        << Problems();
    EXPECT_EQ(fUI.summaries.size(), 1u);
}

TEST_F(UploadFaultsTest, AServerThatGoesIsToldForWhatIsLeft)
{
    for (const char* name : {"from/a", "from/album/b", "from/album/c", "from/d"}) {
        fTree.Write(name, "1");
    }
    Answer("STOR b", "421 Going down\r\n");
    Upload({"from/a", "from/album", "from/d"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n/pub/a\n/pub/album/\n");
    ASSERT_EQ(fUI.problems.size(), 3u) << Problems();
    EXPECT_EQ(fUI.problems[1].first, "album");
    EXPECT_EQ(fUI.problems[2].first, "d");
}

TEST_F(UploadFaultsTest, AStopInTheMiddleEnds)
{
    fTree.Write("from/a", Bytes(30'000'000));
    fTree.Write("from/b", "2");
    FtpTree::Habits habits;
    habits.pause = std::chrono::milliseconds(10'000); // nothing is read for so long
    fRemote.SetHabits(habits);
    fUI.onTransfer = [this](const TransferStep& step) {
        fUI.isStopped = step.bytes > 0;
    };
    bigtime_t stopped = 0;
    fUI.onVisit = [this, &stopped](int64) {
        if (fUI.isStopped && stopped == 0) {
            stopped = system_time();
        }
    };
    Upload({"from/a", "from/b"});
    EXPECT_LT(system_time() - stopped, 5'000'000) << "the server was waited for";
    EXPECT_FALSE(fRemote.Exists("/pub/b"));
    ASSERT_EQ(fUI.problems.size(), 1u) << "a part of it is there: " << Problems();
    EXPECT_EQ(fUI.problems[0].second.substr(0, 16), "it was stopped: ");
}

TEST_F(UploadFaultsTest, AStopEndsTheWaitForASilentServer)
{
    fTree.Write("from/a", "1");
    Answer("STOR a", "");
    fUI.onVisit = [this](int64) {
        fUI.isStopped = HasSent("STOR a");
    };
    const bigtime_t begin = system_time();
    Upload({"from/a"});
    EXPECT_LT(system_time() - begin, 30'000'000) << "the time-out was waited for";
}

TEST_F(UploadFaultsTest, AFolderThatIsNotEnteredIsLeftAlone)
{
    fTree.Write("from/album/a", "1");
    fTree.Write("from/b", "2");
    Answer("CWD album", "250 Sure\r\n");
    Upload({"from/album", "from/b"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n/pub/album/\n/pub/b\n");
    EXPECT_EQ(Problems(), "album: the server does not go there\n");
    EXPECT_FALSE(HasSent("CDUP"));
}

TEST_F(UploadFaultsTest, AFolderThatIsRefusedIsLeftAlone)
{
    fTree.Write("from/album/a", "1");
    Answer("MKD album", "550 No\r\n");
    Upload({"from/album"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n");
    EXPECT_EQ(Problems(), "album: the server says \"550 No such folder\"\n");
}

TEST_F(UploadFaultsTest, AWayUpThatLeadsNowhereIsFoundByItsPath)
{
    fTree.Write("from/album/a", "1");
    fTree.Write("from/b", "2");
    FtpTree::Habits habits;
    habits.answer = [](const std::string& said) -> std::optional<std::string> {
        return said == "CDUP" ? std::optional<std::string>("250 Sure\r\n") : std::nullopt;
    };
    fRemote.SetHabits(habits);
    Upload({"from/album", "from/b"});
    EXPECT_EQ(fRemote.Read("/pub/b"), "2") << "found by its path";
    EXPECT_FALSE(fRemote.Exists("/pub/album/b"));
}

TEST_F(UploadFaultsTest, AFolderSwappedForALinkIsNotFollowed)
{
    fTree.Write("from/album/a", "1");
    fTree.Write("from/album/sub/b", "2");
    fTree.Write("secret/b", "mine");
    fUI.onTransfer = [this](const TransferStep& step) {
        if (step.isNew && step.name == "a") {
            const std::string sub = fTree.Path("from/album/sub");
            ASSERT_EQ(std::rename(sub.c_str(), fTree.Path("moved").c_str()), 0);
            fTree.Link("from/album/sub", "../../secret");
        }
    };
    Upload({"from/album"});
    EXPECT_FALSE(fRemote.Exists("/pub/album/sub/b"));
    EXPECT_FALSE(fUI.problems.empty() && fUI.notices.empty());
}

} // namespace norvane
