#include "FtpClient.h"
#include "FtpTree.h"
#include "TempTree.h"

#include <DataIO.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;

constexpr size_t kBlock = 8192;

int Get(FtpClient& client, const char* name, std::string* got)
{
    char* data = nullptr;
    int length = 0;
    const int code = client.ftp.DownloadBuffer(&data, &length, name, true, true);
    got->assign(data != nullptr ? data : "", static_cast<size_t>(length));
    std::free(data);
    return code;
}

/// A client that is logged into a tree.
class FtpTransferRulesTest : public testing::Test
{
protected:
    FtpTransferRulesTest() : fServer(fFiles.Handler()), fClient(fServer)
    {
        fFiles.AddFile("/a", "apple");
        EXPECT_EQ(fClient.LogIn(), 0);
    }

    /// What was sent since the login, but for where data connections go.
    std::string Commands() const
    {
        std::string log;
        for (const std::string& command : fServer.Commands()) {
            const bool isOther = command.rfind("USER", 0) == 0 || command.rfind("PASS", 0) == 0 ||
                                 command == "PASV" || command.rfind("PORT", 0) == 0;
            log += isOther ? "" : command + "\n";
        }
        return log;
    }

    void Answering(const std::string& command, const std::string& line)
    {
        FtpTree::Habits habits;
        habits.answer = [=](const std::string& sent) -> std::optional<std::string> {
            if (sent.rfind(command, 0) == 0) {
                return line + "\r\n";
            }
            return std::nullopt;
        };
        fFiles.SetHabits(habits);
    }

    FtpTree fFiles;
    FtpServer fServer;
    FtpClient fClient;
    TempTree fTree;
};

TEST_F(FtpTransferRulesTest, SendsTheTypeOnlyWhenItChanges)
{
    fClient.ftp.UploadBuffer("x", 1, "x", true, true);
    fClient.ftp.UploadBuffer("y", 1, "y", true, false);
    fClient.Listing();
    fClient.ftp.UploadBuffer("z", 1, "z", true, true);
    fClient.ftp.UploadBuffer("z", 1, "z", false, true);
    fClient.Listing();

    EXPECT_EQ(Commands(),
              "TYPE I\nSTOR x\nSTOR y\nTYPE A\nLIST\nTYPE I\nSTOR z\nTYPE A\nSTOR z\nLIST\n");
}

TEST_F(FtpTransferRulesTest, SendsTheTypeAgainAfterAnotherLogin)
{
    fClient.Listing();
    EXPECT_EQ(fClient.LogIn(), 0);
    fClient.Listing();

    EXPECT_EQ(Commands(), "TYPE A\nLIST\nTYPE A\nLIST\n");
}

TEST_F(FtpTransferRulesTest, KeepsTheTypeThatWasNotTaken)
{
    Answering("TYPE I", "504 No");
    EXPECT_EQ(fClient.ftp.UploadBuffer("x", 1, "x", true, true), 504);
    Answering("nothing", "");

    EXPECT_EQ(fClient.ftp.UploadBuffer("x", 1, "x", true, true), 0);

    EXPECT_EQ(Commands(), "TYPE I\nTYPE I\nSTOR x\n");
}

TEST_F(FtpTransferRulesTest, PreparesThenSetsTheTypeThenNamesThePassivePort)
{
    fClient.Listing();
    fClient.ftp.UploadBuffer("x", 1, "x", true, false);

    const std::vector<std::string> commands = fServer.Commands();
    ASSERT_EQ(commands.size(), 8u);
    EXPECT_EQ(commands[2] + commands[3] + commands[4], "TYPE APASVLIST");
    EXPECT_EQ(commands[5].substr(0, 15), "PORT 127,0,0,1,");
    EXPECT_EQ(commands[6] + commands[7], "TYPE ISTOR x");
}

TEST_F(FtpTransferRulesTest, TellsAnUploadInBlocks)
{
    const std::string data(3 * kBlock + 100, 'x');

    EXPECT_EQ(fClient.ftp.UploadBuffer(data.data(), static_cast<int>(data.size()), "b", true, true),
              0);

    EXPECT_EQ(fFiles.Read("/b"), data);
    ASSERT_GE(fClient.steps.size(), 4u);
    EXPECT_EQ(fClient.steps[0].bytes, static_cast<int>(kBlock));
    EXPECT_EQ(fClient.steps[0].percent, 33);
    EXPECT_EQ(fClient.steps.back().bytes, static_cast<int>(data.size()));
    EXPECT_EQ(fClient.steps.back().percent, 100);
    EXPECT_NE(fClient.log.find("Sending 24676 bytes to server.\n"), std::string::npos);
}

TEST_F(FtpTransferRulesTest, TellsADownloadInBlocks)
{
    const std::string data(3 * kBlock + 100, 'x');
    fFiles.AddFile("/b", data);
    std::string got;

    EXPECT_EQ(Get(fClient, "b", &got), 0);

    EXPECT_EQ(got, data);
    int before = 0;
    for (const FtpClient::Step& step : fClient.steps) {
        EXPECT_LE(step.bytes - before, static_cast<int>(kBlock));
        EXPECT_EQ(step.percent,
                  static_cast<int>(step.bytes * 100.0 / static_cast<double>(data.size())));
        before = step.bytes;
    }
    EXPECT_EQ(before, static_cast<int>(data.size()));
    EXPECT_NE(fClient.log.find("Read 24676 bytes from server.\n"), std::string::npos);
}

TEST_F(FtpTransferRulesTest, CannotBeStoppedInAnUpload)
{
    const std::string data(100 * kBlock, 'x');
    fClient.atStep = [] {
        return 0;
    };

    EXPECT_EQ(fClient.ftp.UploadBuffer(data.data(), static_cast<int>(data.size()), "b", true, true),
              0);

    EXPECT_EQ(fFiles.Read("/b"), data);
}

TEST_F(FtpTransferRulesTest, StopsADownloadWhenTheCallbackSaysSo)
{
    fFiles.AddFile("/b", std::string(64 << 20, 'x'));
    fClient.atStep = [] {
        return 0;
    };
    std::string got;

    EXPECT_EQ(Get(fClient, "b", &got), 426);

    EXPECT_EQ(got.size(), kBlock);
    EXPECT_EQ(fClient.steps.size(), 1u);
    fClient.atStep = nullptr;
    EXPECT_EQ(Get(fClient, "a", &got), 0);
    EXPECT_EQ(got, "apple");
}

TEST_F(FtpTransferRulesTest, TellsNoPercentsOfAnUnknownSize)
{
    FtpServer server(FtpScript{LogIn(), Answer("TYPE I", "200 I"), Passive(), Expect("RETR"),
                               Say("150 Coming"), OpenData(), SendData("apple"), CloseData(),
                               Say("226 Done"), Passive(), Expect("RETR"), Say("150 Coming"),
                               OpenData(), SendData("pear"), CloseData(), Say("226 Done"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(client.ftp.Download("a", fTree.Path().c_str(), "a", true, true), 0);
    ASSERT_EQ(client.steps.size(), 1u);
    EXPECT_EQ(client.steps[0].percent, 0);

    std::string got;
    EXPECT_EQ(Get(client, "a", &got), 0);
    EXPECT_EQ(client.steps.size(), 1u); // into memory it tells nothing then
    EXPECT_EQ(got, "pear");
}

TEST_F(FtpTransferRulesTest, CutsPercentsAtTheLargestNumber)
{
    FtpServer server(FtpScript{LogIn(), Answer("TYPE I", "200 I"), Passive(), Expect("RETR"),
                               Say("150 Coming (1 bytes)"), OpenData(),
                               SendData(std::string(kBlock * 4000, 'x')), CloseData(),
                               Say("226 Done"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    std::string got;

    EXPECT_EQ(Get(client, "a", &got), 0);

    EXPECT_EQ(client.steps.back().percent, INT_MAX);
}

TEST_F(FtpTransferRulesTest, UsesOneSlashBelowTheFolder)
{
    EXPECT_EQ(fClient.ftp.Download("a", (fTree.Path() + "/").c_str(), "one", true, true), 0);
    EXPECT_EQ(fClient.ftp.Download("a", fTree.Path().c_str(), "two", true, true), 0);

    EXPECT_EQ(fTree.List(), "one\ntwo\n");
}

TEST_F(FtpTransferRulesTest, EmptiesTheFileItDownloadsOnto)
{
    fTree.Write("a", "something longer");

    EXPECT_EQ(fClient.ftp.Download("a", fTree.Path().c_str(), "a", true, true), 0);

    EXPECT_EQ(fTree.Read("a"), "apple");
}

TEST_F(FtpTransferRulesTest, AbortsADownloadThatHasNoFile)
{
    const std::string folder = fTree.Path("missing");

    EXPECT_EQ(fClient.ftp.Download("a", folder.c_str(), "a", true, true), kFtpLocalFile);

    EXPECT_TRUE(fServer.AwaitCommand("ABOR"));
    EXPECT_EQ(Commands(), "TYPE I\nRETR a\nABOR\n");
    const std::string told =
        "Error creating file: " + folder +
        "/a\nError opening local file.\nException: 7 - Error downloading file.\n";
    EXPECT_NE(fClient.log.find(told), std::string::npos) << fClient.log;
}

TEST_F(FtpTransferRulesTest, GoesOnAfterAnAbort)
{
    fFiles.AddFile("/large", std::string(64 << 20, 'x'));
    EXPECT_EQ(fClient.ftp.Download("large", fTree.Path("missing").c_str(), "a", true, true),
              kFtpLocalFile);
    std::string got;

    EXPECT_EQ(fClient.ftp.ChangeDir("/"), 250);
    EXPECT_EQ(Get(fClient, "a", &got), 0);

    EXPECT_EQ(got, "apple");
}

TEST_F(FtpTransferRulesTest, GoesOnAfterAServerThatAnswersAnAbortOnce)
{
    FtpServer server(FtpScript{LogIn(), Answer("TYPE I", "200 I"), Passive(), Expect("RETR"),
                               Say("150 Coming"), OpenData(), Answer("ABOR", "226 Aborted"),
                               Answer("DELE", "250 Gone"), Hang()});
    FtpClient client(server, FtpClient::kShort);
    ASSERT_EQ(client.LogIn(), 0);
    EXPECT_EQ(client.ftp.Download("a", fTree.Path("missing").c_str(), "a", true, true),
              kFtpLocalFile);

    EXPECT_EQ(client.ftp.DeleteFile("b"), 0);
}

TEST_F(FtpTransferRulesTest, FollowsNoLinkWhereItDownloadsTo)
{
    fTree.Write("kept", "mine");
    fTree.Link("a", "kept");

    EXPECT_EQ(fClient.ftp.Download("a", fTree.Path().c_str(), "a", true, true), kFtpLocalFile);

    EXPECT_EQ(fTree.Read("kept"), "mine");
    EXPECT_EQ(fTree.ReadLink("a"), "kept");
}

TEST_F(FtpTransferRulesTest, RefusesLocalNamesThatLeadElsewhere)
{
    for (const char* name : {"", ".", "..", "../a", "a/b", "/a"}) {
        EXPECT_EQ(fClient.ftp.Download("a", fTree.Path().c_str(), name, true, true), kFtpBadName)
            << name;
    }

    EXPECT_EQ(Commands(), "");
}

TEST_F(FtpTransferRulesTest, LeavesTheServersFileWhenItsOwnCannotBeRead)
{
    const int code = fClient.ftp.Upload(fTree.Path("missing").c_str(), "a", true, true);

    EXPECT_EQ(code, kFtpLocalFile);
    EXPECT_EQ(fFiles.Read("/a"), "apple");
    const std::string told = "Error opening local file.\nException: 7 - Error uploading file.\n";
    EXPECT_NE(fClient.log.find(told), std::string::npos) << fClient.log;
}

TEST_F(FtpTransferRulesTest, UploadsAnEmptyFile)
{
    fTree.Write("empty", "");

    EXPECT_EQ(fClient.ftp.Upload(fTree.Path("empty").c_str(), "b", true, true), 0);

    EXPECT_EQ(fFiles.Read("/b"), "");
    EXPECT_EQ(fClient.steps.size(), 0u);
}

TEST_F(FtpTransferRulesTest, TellsWhichTransferFailed)
{
    std::string got;
    char* listing = nullptr;
    EXPECT_EQ(Get(fClient, "missing", &got), 550);
    EXPECT_EQ(fClient.ftp.UploadBuffer("x", 1, "/missing/x", true, false), 553);
    EXPECT_EQ(fClient.ftp.List("/missing", &listing, true), 550);

    for (const char* told :
         {"Exception: 550 - Error downloading file.\n", "Exception: 553 - Error uploading file.\n",
          "Exception: 550 - Error retrieving list.\n"}) {
        EXPECT_NE(fClient.log.find(told), std::string::npos) << told << fClient.log;
    }
}

TEST_F(FtpTransferRulesTest, ReturnsAFinalReplyWithoutFurtherWords)
{
    FtpTree::Habits habits;
    habits.breakAfter = 2;
    fFiles.SetHabits(habits);

    EXPECT_EQ(fClient.ftp.UploadBuffer("apple", 5, "b", true, true), 426);

    EXPECT_EQ(fClient.log.find("Exception"), std::string::npos) << fClient.log;
}

TEST_F(FtpTransferRulesTest, TellsThatActiveModeIsNotPossible)
{
    Answering("PORT", "500 No");

    EXPECT_EQ(fClient.ftp.UploadBuffer("x", 1, "x", true, false), kFtpNoDataConnection);

    EXPECT_NE(fClient.log.find("Exception: 1 - Error uploading file.\n"), std::string::npos);
    EXPECT_FALSE(fFiles.Exists("/x"));
}

TEST_F(FtpTransferRulesTest, AppendsToABlockThatIsThere)
{
    char* data = static_cast<char*>(std::malloc(3));
    int length = 0;

    EXPECT_EQ(fClient.ftp.DownloadBuffer(&data, &length, "a", true, true), 0);

    EXPECT_EQ(std::string(data, static_cast<size_t>(length)), "apple");
    auto* bytes = reinterpret_cast<unsigned char*>(data);
    fClient.ftp.DisposeBuffer(&bytes);
    EXPECT_EQ(bytes, nullptr);
}

/// A file that fails after some bytes.
class FailingFile : public BDataIO
{
public:
    explicit FailingFile(ssize_t left) : fLeft(left) {}

    ssize_t Read(void* buffer, size_t size) override
    {
        const ssize_t read = std::min(fLeft, static_cast<ssize_t>(size));
        std::fill_n(static_cast<char*>(buffer), read, 'x');
        fLeft -= read;
        return read > 0 ? read : B_IO_ERROR;
    }

    ssize_t Write(const void* /*buffer*/, size_t size) override
    {
        fLeft -= static_cast<ssize_t>(size);
        return fLeft >= 0 || size == 0 ? static_cast<ssize_t>(size) : B_DEVICE_FULL;
    }

private:
    ssize_t fLeft;
};

TEST_F(FtpTransferRulesTest, EndsAnUploadWhoseFileFails)
{
    FailingFile file(100'000);
    std::string got;

    EXPECT_EQ(fClient.ftp.UploadFrom(file, 200'000, "b", true, true), kFtpLocalFile);

    EXPECT_EQ(Get(fClient, "a", &got), 0);
    EXPECT_EQ(got, "apple");
}

TEST_F(FtpTransferRulesTest, EndsADownloadWhoseFileFails)
{
    fFiles.AddFile("/large", std::string(64 << 20, 'x'));
    FailingFile file(100'000);
    std::string got;

    EXPECT_EQ(fClient.ftp.DownloadTo(file, "large", true, true), kFtpLocalFile);

    EXPECT_EQ(Get(fClient, "a", &got), 0);
    EXPECT_EQ(got, "apple");
}

TEST_F(FtpTransferRulesTest, HearsOfBytesThatWereWrittenBehind)
{
    class LateFile : public FailingFile
    {
    public:
        LateFile() : FailingFile(5) {}
        ssize_t Write(const void* /*buffer*/, size_t size) override
        {
            return size > 0 ? static_cast<ssize_t>(size) : B_DEVICE_FULL;
        }
    };
    LateFile file;

    EXPECT_EQ(fClient.ftp.DownloadTo(file, "a", true, true), kFtpLocalFile);
}

} // namespace
