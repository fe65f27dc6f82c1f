#include "PrivateMounts.h"
#include "TransferFixture.h"

#include <cstdio>

namespace norvane {

/// Servers that refuse, lie, break off and fall silent.
class DownloadFaultsTest : public TransferFixture
{
protected:
    void Behave(FtpTree::Habits habits) { fRemote.SetHabits(std::move(habits)); }

    /// Says `reply` to the command, as often as it comes.
    void Answer(const std::string& command, const std::string& reply)
    {
        FtpTree::Habits habits;
        habits.answer = [command, reply](const std::string& said) -> std::optional<std::string> {
            return said == command ? std::optional(reply) : std::nullopt;
        };
        Behave(habits);
    }

    /// Lists these lines in the folder.
    void List(const std::string& folder, const std::string& lines)
    {
        FtpTree::Habits habits;
        habits.listing = [folder, lines](const std::string& listed) -> std::optional<std::string> {
            return listed == folder ? std::optional(lines) : std::nullopt;
        };
        Behave(habits);
    }

    static std::string Line(const std::string& name, const std::string& kind = "-rw-r--r--",
                            int size = 1)
    {
        return kind + " 1 u g " + std::to_string(size) + " Jan  5 12:34 " + name + "\r\n";
    }
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
    Answer("CWD /pub", "250 Sure\r\n");
    Download({"a"});
    EXPECT_EQ(Problems(), "127.0.0.1: it does not lead to the folder /pub\n");
    EXPECT_EQ(fTree.List("to"), "");
}

// Files

TEST_F(DownloadFaultsTest, WhatIsCutOffStaysAndIsTold)
{
    fRemote.AddFile("/pub/a", Bytes(100'000));
    fRemote.AddFile("/pub/b", "2");
    FtpTree::Habits habits;
    habits.breakAfter = 1000;
    Behave(habits);
    BMessage request = DownloadRequest({"a"});
    AddListed(&request, Listed("a", "100000", "Jan  5  2020"));
    Run(request);
    EXPECT_EQ(fTree.List("to"), fTree.Read("to/a").empty() ? "" : "a\n");
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "a");
    EXPECT_EQ(fUI.summaries.size(), 1u);
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
    Answer("RETR b", "421 Going down\r\n");
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
    Answer("RETR b", "421 Going down\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to/album"), "a\n");
    EXPECT_NE(Problems().find("album: not all that is in it arrived"), std::string::npos)
        << Problems();
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
    Answer("RETR a", "");
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

// Folders

TEST_F(DownloadFaultsTest, AFolderThatIsNotEnteredIsLeftAlone)
{
    fRemote.AddFile("/pub/album/a", "1");
    fRemote.AddFile("/pub/a", "of another folder");
    Answer("CWD album", "250 Sure\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to"), "");
    EXPECT_EQ(Problems(), "album: the server does not go there\n");
    EXPECT_FALSE(HasSent("CDUP"));
    EXPECT_FALSE(HasSent("LIST"));
}

TEST_F(DownloadFaultsTest, AFolderThatCannotBeListedIsTold)
{
    fRemote.AddFile("/pub/album/a", "1");
    fRemote.AddFile("/pub/b", "2");
    Answer("LIST", "550 Not for you\r\n");
    Download({}, {"album"});
    EXPECT_EQ(Problems(),
              "album: its folder cannot be listed: the server says \"550 Not for you\"\n");
    EXPECT_TRUE(HasSent("CDUP"));
}

TEST_F(DownloadFaultsTest, ARefusedWayUpIsFoundByItsPath)
{
    fRemote.AddFile("/pub/album/one/a", "1");
    fRemote.AddFile("/pub/album/two/b", "2");
    Answer("CDUP", "500 What\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/one/a"), "1");
    EXPECT_EQ(fTree.Read("to/album/two/b"), "2");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadFaultsTest, AWayUpThatLeadsElsewhereEndsIt)
{
    fRemote.AddFile("/pub/album/one/a", "1");
    fRemote.AddFile("/pub/album/two/b", "2");
    FtpTree::Habits habits;
    habits.answer = [](const std::string& said) -> std::optional<std::string> {
        const bool isBack = said == "CDUP" || said == "CWD /pub/album";
        return isBack ? std::optional<std::string>("250 Sure\r\n") : std::nullopt;
    };
    Behave(habits);
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to/album"), "one\n");
    EXPECT_EQ(Problems(), "album: not all that is in it arrived: "
                          "it does not lead back to the folder /pub/album\n");
}

TEST_F(DownloadFaultsTest, AnEndlessTreeEnds)
{
    auto path = std::make_shared<std::string>("/pub");
    FtpTree::Habits habits;
    habits.answer = [path](const std::string& said) -> std::optional<std::string> {
        if (said == "CWD d") {
            *path += "/d";
        } else if (said == "CDUP") {
            path->resize(path->rfind('/'));
        } else if (said != "PWD") {
            return std::nullopt;
        }
        return said == "PWD" ? "257 \"" + *path + "\"\r\n" : "250 Sure\r\n";
    };
    habits.listing = [](const std::string&) {
        return Line("d", "drwxr-xr-x");
    };
    Behave(habits);
    Download({}, {"d"});
    ASSERT_EQ(fUI.problems.size(), 1u) << Problems();
    EXPECT_EQ(fUI.problems[0].second, "folders lie in each other deeper than they can be followed");
}

TEST_F(DownloadFaultsTest, HostileNamesAreToldAndNeverUsed)
{
    fTree.MakeFolder("to/sub");
    List("/pub/album", Line("../evil") + Line("/etc/evil") + Line("sub/evil") + Line("..") +
                           Line(".") + Line("sub/../evil", "drwxr-xr-x") +
                           Line(std::string("nul\0evil", 8)) + Line("good"));
    fRemote.AddFile("/pub/album/good", "1");
    fRemote.AddFile("/pub/evil", "evil");
    fRemote.AddFile("/etc/evil", "evil");
    fRemote.AddFile("/pub/album/sub/evil", "evil");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to/album"), "good\n");
    EXPECT_EQ(fTree.List("to"), "album\nsub\n");
    EXPECT_EQ(fServer->CommandLog().find("evil"), std::string::npos) << fServer->CommandLog();
    EXPECT_EQ(fUI.problems.size(), 5u) << Problems();
}

TEST_F(DownloadFaultsTest, HostileRequestsAreToldAndNeverUsed)
{
    Download({"../evil", "/etc/evil", "a/b", "..", "."}, {"..", "../.."});
    EXPECT_EQ(fTree.List("to"), "");
    EXPECT_EQ(fUI.problems.size(), 7u) << Problems();
    EXPECT_EQ(fServer->CommandLog().find("RETR"), std::string::npos);
    EXPECT_EQ(fServer->CommandLog().find("CWD .."), std::string::npos);
}

TEST_F(DownloadFaultsTest, TheSameNameListedTwiceReplacesNothing)
{
    fRemote.AddFile("/pub/album/a", "1");
    List("/pub/album", Line("a") + Line("a") + Line("a", "drwxr-xr-x"));
    fUI.answers = {kAnswerOverwriteAll};
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/a"), "1");
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fUI.problems.size(), 2u) << Problems();
}

// This side

TEST_F(DownloadFaultsTest, AFolderSwappedForALinkLeadsNowhereElse)
{
    fRemote.AddFile("/pub/album/a", "1");
    fRemote.AddFile("/pub/album/sub/b", "2");
    fTree.MakeFolder("elsewhere");
    fUI.onTransfer = [this](const TransferStep& step) {
        if (step.isNew && step.name == "a") {
            ASSERT_EQ(std::rename(fTree.Path("to/album").c_str(), fTree.Path("moved").c_str()), 0);
            fTree.Link("to/album", "../elsewhere");
        }
    };
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("elsewhere"), "");
    EXPECT_EQ(fTree.Read("moved/a"), "1");
    EXPECT_EQ(fTree.Read("moved/sub/b"), "2");
}

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
