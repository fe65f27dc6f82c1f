#include "DownloadFaultsFixture.h"

#include <cstdio>

namespace norvane {

/// What goes wrong with folders.
class DownloadTreeFaultsTest : public DownloadFaultsFixture
{
};

TEST_F(DownloadTreeFaultsTest, AFolderThatIsNotEnteredIsLeftAlone)
{
    fRemote.AddFile("/pub/album/a", "1");
    fRemote.AddFile("/pub/a", "of another folder");
    AnswerTo("CWD album", "250 Sure\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to"), "");
    EXPECT_EQ(Problems(), "album: the server does not go there\n");
    EXPECT_FALSE(HasSent("CDUP"));
    EXPECT_FALSE(HasSent("LIST"));
}

TEST_F(DownloadTreeFaultsTest, AFolderThatCannotBeListedIsTold)
{
    fRemote.AddFile("/pub/album/a", "1");
    fRemote.AddFile("/pub/b", "2");
    AnswerTo("LIST", "550 Not for you\r\n");
    Download({}, {"album"});
    EXPECT_EQ(Problems(),
              "album: its folder cannot be listed: the server says \"550 Not for you\"\n");
    EXPECT_TRUE(HasSent("CDUP"));
}

TEST_F(DownloadTreeFaultsTest, ARefusedWayUpIsFoundByItsPath)
{
    fRemote.AddFile("/pub/album/one/a", "1");
    fRemote.AddFile("/pub/album/two/b", "2");
    AnswerTo("CDUP", "500 What\r\n");
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/one/a"), "1");
    EXPECT_EQ(fTree.Read("to/album/two/b"), "2");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadTreeFaultsTest, AWayUpThatLeadsElsewhereEndsIt)
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

TEST_F(DownloadTreeFaultsTest, AnEndlessTreeEnds)
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

TEST_F(DownloadTreeFaultsTest, AServerThatAgreesInOtherNumbersIsUnderstood)
{
    auto path = std::make_shared<std::string>("/");
    FtpTree::Habits habits;
    habits.answer = [path](const std::string& said) -> std::optional<std::string> {
        if (said == "PWD") {
            return "257 \"" + *path + "\"\r\n";
        }
        if (said == "CWD /pub" || said == "CWD album" || said == "CDUP") {
            *path = said == "CWD album" ? "/pub/album" : "/pub";
            return "200 Fine\r\n";
        }
        return std::nullopt;
    };
    habits.listing = [](const std::string&) {
        return Line("a");
    };
    fRemote.AddFile("/a", "1"); // where this server really is
    Behave(habits);
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/a"), "1");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadTreeFaultsTest, WithoutAPathItIsWhereTheLoginLeads)
{
    fRemote.AddFile("/a", "1");
    BMessage request = DownloadRequest({"a"});
    request.RemoveName("FtpPath");
    Run(request);
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadTreeFaultsTest, HostileNamesAreToldAndNeverUsed)
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

TEST_F(DownloadTreeFaultsTest, HostileRequestsAreToldAndNeverUsed)
{
    Download({"../evil", "/etc/evil", "a/b", "..", "."}, {"..", "../.."});
    EXPECT_EQ(fTree.List("to"), "");
    EXPECT_EQ(fUI.problems.size(), 7u) << Problems();
    EXPECT_EQ(fServer->CommandLog().find("RETR"), std::string::npos);
    EXPECT_EQ(fServer->CommandLog().find("CWD .."), std::string::npos);
}

TEST_F(DownloadTreeFaultsTest, TheSameNameListedTwiceReplacesNothing)
{
    fRemote.AddFile("/pub/album/a", "1");
    List("/pub/album", Line("a") + Line("a") + Line("a", "drwxr-xr-x"));
    fUI.answers = {kAnswerOverwriteAll};
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/a"), "1");
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fUI.problems.size(), 2u) << Problems();
}

TEST_F(DownloadTreeFaultsTest, AFolderSwappedForALinkLeadsNowhereElse)
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

} // namespace norvane
