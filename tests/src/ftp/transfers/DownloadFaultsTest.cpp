#include "DownloadFaultsFixture.h"
#include "PrivateMounts.h"

namespace norvane {

/// What goes wrong with single files.
class DownloadFaultsTest : public DownloadFaultsFixture
{
};

// The connection

TEST_F(DownloadFaultsTest, AWrongPasswordIsToldOnce)
{
    BMessage request = DownloadRequest({"a", "b"});
    request.ReplaceString("Password", "wrong");
    Run(request);
    EXPECT_EQ(Problems(), "127.0.0.1: the username or password supplied is incorrect\n");
    EXPECT_EQ(fUI.summaries.size(), 1u);
}

TEST_F(DownloadFaultsTest, AMissingPasswordIsTold)
{
    BMessage request = DownloadRequest({"a"});
    request.RemoveName("Password");
    Run(request);
    EXPECT_EQ(Problems(), "127.0.0.1: it wants a password\n");
    EXPECT_EQ(fServer->CommandLog().find("PASS"), std::string::npos);
}

TEST_F(DownloadFaultsTest, ARefusedConnectionIsTold)
{
    const BMessage request = DownloadRequest({"a"});
    fServer.reset();
    Run(request);
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "127.0.0.1");
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(DownloadFaultsTest, AFolderThatIsGoneEndsIt)
{
    fRemote.AddFile("/a", "of another folder");
    fRemote.Remove("/pub");
    Download({"a"});
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fTree.List("to"), "") << "not from where the login leads";
}

TEST_F(DownloadFaultsTest, AServerThatOnlySaysItWentThereIsNotBelieved)
{
    fRemote.AddFile("/a", "of another folder");
    AnswerTo("CWD /pub", "250 Sure\r\n");
    Download({"a"});
    EXPECT_EQ(Problems(), "127.0.0.1: it does not lead to the folder /pub\n");
    EXPECT_EQ(fTree.List("to"), "");
}

// Files

TEST_F(DownloadFaultsTest, WhatIsCutOffStaysAndIsTold)
{
    using namespace ftp_script;
    fServer = std::make_unique<FtpServer>(FtpScript{
        LogIn(), Answer("CWD /pub", "250 In"), Answer("PWD", "257 \"/pub\""),
        Answer("TYPE I", "200 Fine"), Passive(), Answer("RETR a", "150 Coming"), OpenData(),
        SendData(Bytes(1000)), CloseData(), Say("426 Broken off"), Answer("QUIT", "221 Bye")});
    BMessage request = DownloadRequest({"a"});
    AddListed(&request, Listed("a", "100000", "Jan  5  2020"));
    Run(request);
    EXPECT_EQ(fServer->Surprise(), "");
    EXPECT_EQ(fTree.Read("to/a"), Bytes(1000));
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(Problems(), "a: the server says \"426 Broken off\": 1000 of 100000 bytes arrived\n");
    EXPECT_EQ(fUI.summaries.size(), 1u);
}

TEST_F(DownloadFaultsTest, AServerThatDiesInTheMiddleIsTold)
{
    using namespace ftp_script;
    fServer = std::make_unique<FtpServer>(
        FtpScript{LogIn(), Answer("CWD /pub", "250 In"), Answer("PWD", "257 \"/pub\""),
                  Answer("TYPE I", "200 Fine"), Passive(), Answer("RETR a", "150 Coming"),
                  OpenData(), SendData(Bytes(1000)), Reset(), CloseData()});
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite};
    Download({"a", "b"});
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("to"), "a\n");
    ASSERT_EQ(fUI.problems.size(), 2u) << Problems();
    EXPECT_EQ(fUI.problems[1].first, "b");
}

TEST_F(DownloadFaultsTest, WhatIsCutOffReplacesNothing)
{
    fRemote.AddFile("/pub/a", Bytes(100'000));
    fTree.Write("to/a", "old");
    FtpTree::Habits habits;
    habits.breakAfter = 70'000;
    Behave(habits);
    fUI.answers = {kAnswerOverwrite};
    Download({"a"});
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fUI.problems.size(), 1u);
}

TEST_F(DownloadFaultsTest, LessThanListedReplacesNothing)
{
    fRemote.AddFile("/pub/album/a", "short");
    List("/pub/album", Line("a", "-rw-r--r--", 6));
    fTree.Write("to/album/a", "old");
    fUI.answers = {kAnswerOverwrite};
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/a"), "old");
    EXPECT_EQ(Problems(), "a: only 5 of 6 bytes arrived\n");
}

TEST_F(DownloadFaultsTest, LessThanListedStaysWhereNothingWas)
{
    fRemote.AddFile("/pub/album/a", "short");
    List("/pub/album", Line("a", "-rw-r--r--", 6));
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/a"), "short");
    EXPECT_EQ(Problems(), "a: only 5 of 6 bytes arrived\n");
}

TEST_F(DownloadFaultsTest, AServerThatGoesIsToldForWhatIsLeft)
{
    fRemote.AddFile("/pub/a", "1");
    fRemote.AddFile("/pub/b", "2");
    fRemote.AddFile("/pub/album/c", "3");
    AnswerTo("RETR b", "421 Going down\r\n");
    Download({"a", "b", "c"}, {"album"});
    EXPECT_EQ(fTree.List("to"), "a\n");
    ASSERT_EQ(fUI.problems.size(), 3u) << Problems();
    EXPECT_EQ(fUI.problems[2].first, "album");
}

TEST_F(DownloadFaultsTest, AServerThatGoesInATreeIsTold)
{
    for (const char* name : {"a", "b", "c", "sub/d"}) {
        fRemote.AddFile("/pub/album/" + std::string(name), "1");
    }
    AnswerTo("RETR b", "421 Going down\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to/album"), "a\n");
    EXPECT_NE(Problems().find("album: not all that is in it arrived"), std::string::npos)
        << Problems();
}

TEST_F(DownloadFaultsTest, AServerThatDoesNotSayGoodbyeIsNotWaitedFor)
{
    fRemote.AddFile("/pub/a", "1");
    AnswerTo("QUIT", "");
    const bigtime_t begin = system_time();
    Download({"a"});
    EXPECT_LT(system_time() - begin, 15'000'000) << "the time-out was waited for";
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(Problems(), "");
}

// Stopping

TEST_F(DownloadFaultsTest, AStopInTheMiddleLeavesNothing)
{
    fRemote.AddFile("/pub/a", Bytes(2'000'000));
    fTree.Write("to/b", "old");
    fRemote.AddFile("/pub/b", "new");
    FtpTree::Habits habits;
    habits.pause = std::chrono::milliseconds(20);
    Behave(habits);
    fUI.onTransfer = [this](const TransferStep& step) {
        fUI.isStopped = step.bytes > 0;
    };
    Download({"a", "b"});
    EXPECT_EQ(fTree.List("to"), "b\n");
    EXPECT_EQ(fTree.Read("to/b"), "old");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadFaultsTest, AStopEndsTheWaitForASilentServer)
{
    fRemote.AddFile("/pub/a", "1");
    AnswerTo("RETR a", "");
    fUI.onVisit = [this](int64) {
        fUI.isStopped = HasSent("RETR a");
    };
    const bigtime_t begin = system_time();
    Download({"a"});
    EXPECT_LT(system_time() - begin, 30'000'000) << "the time-out was waited for";
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(DownloadFaultsTest, TheProgramsEndLetsTheItemEnd)
{
    fRemote.AddFile("/pub/a", "new");
    fRemote.AddFile("/pub/b", "new");
    fTree.Write("to/a", "old");
    fUI.onQuestion = [this](const OverwriteQuestion&) {
        fUI.mayDelete = false;
    };
    fUI.answers = {kAnswerCancel};
    Download({"a", "b"});
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("to"), "a\n");
}

// This side

TEST_F(DownloadFaultsTest, ATargetFolderThatIsGoneIsTold)
{
    fRemote.AddFile("/pub/a", "1");
    fTree.Remove("to");
    Download({"a"});
    EXPECT_EQ(Problems(), "a: it is not there any more\n");
}

TEST_F(DownloadFaultsTest, AFullVolumeIsToldAndTheOldFileStays)
{
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("to"), 256 * 1024)) {
            return false;
        }
        fTree.Write("to/a", "old");
        fRemote.AddFile("/pub/a", Bytes(1'000'000));
        fRemote.AddFile("/pub/b", "2");
        fUI.answers = {kAnswerOverwrite};
        Download({"a", "b"});
        return Check(fTree.Read("to/a") == "old", "the old file stays") &&
               Check(fTree.Read("to/b") == "2", "the next one arrives") &&
               Check(fTree.List("to") == "a\nb\n", "nothing hidden is left") &&
               Check(fUI.notices == std::vector<std::string>{"Out of space on the target volume."},
                     "it is told");
    }));
}

} // namespace norvane
