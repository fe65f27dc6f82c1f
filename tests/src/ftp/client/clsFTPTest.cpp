#include "FtpClient.h"
#include "FtpTree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;

struct Case
{
    const char* name;
    FtpScript script; // after the greeting
    std::function<int(clsFTP&)> call;
    int code;
    const char* commands; // what the server got
};

/// Each command: what is sent, and what its replies become.
class ClsFTPCommandTest : public testing::TestWithParam<Case>
{
};

TEST_P(ClsFTPCommandTest, SendsItsLineAndTellsTheCode)
{
    FtpScript script = GetParam().script;
    script.insert(script.begin(), Say("220 Here"));
    script.push_back(Hang());
    FtpServer server(script);
    FtpClient client(server);
    ASSERT_EQ(client.ftp.Connect(nullptr, nullptr, nullptr), 220);

    EXPECT_EQ(GetParam().call(client.ftp), GetParam().code) << client.log;

    EXPECT_EQ(server.CommandLog(), GetParam().commands);
    EXPECT_EQ(server.Surprise(), "");
}

int User(clsFTP& ftp)
{
    return ftp.SendUser("anna");
}
int Pass(clsFTP& ftp)
{
    return ftp.SendPass("secret");
}
int Acct(clsFTP& ftp)
{
    return ftp.SendAcct("account");
}
int Down(clsFTP& ftp)
{
    return ftp.ChangeDir("a b");
}
int Up(clsFTP& ftp)
{
    return ftp.ChangeDir("..");
}
int Remove(clsFTP& ftp)
{
    return ftp.DeleteFile("x");
}
int Rename(clsFTP& ftp)
{
    return ftp.RenameFile("x", "a longer name");
}
int Make(clsFTP& ftp)
{
    return ftp.MakeDir("x");
}
int RemoveFolder(clsFTP& ftp)
{
    return ftp.RemoveDir("x");
}
int Quit(clsFTP& ftp)
{
    return ftp.Disconnect();
}
int QuitTwice(clsFTP& ftp)
{
    return ftp.Disconnect() == 221 ? ftp.Disconnect() : -1;
}
int LineBreaks(clsFTP& ftp)
{
    const char* bad[] = {"a\r", "a\nDELE b", "\n"};
    for (const char* name : bad) {
        char* text = nullptr;
        int length = 0;
        const int codes[] = {ftp.SendUser(name),
                             ftp.SendPass(name),
                             ftp.SendAcct(name),
                             ftp.ChangeDir(name),
                             ftp.DeleteFile(name),
                             ftp.RenameFile(name, "b"),
                             ftp.RenameFile("b", name),
                             ftp.MakeDir(name),
                             ftp.RemoveDir(name),
                             ftp.List(name, &text, true),
                             ftp.Upload("/dev/null", name, true, true),
                             ftp.UploadBuffer("", 0, name, true, true),
                             ftp.Download(name, "/tmp", "b", true, true),
                             ftp.DownloadBuffer(&text, &length, name, true, true)};
        for (const int code : codes) {
            if (code != kFtpBadName) {
                return code;
            }
        }
    }
    return kFtpBadName;
}
int NoNames(clsFTP& ftp)
{
    return ftp.DeleteFile(nullptr) == kFtpBadName ? ftp.ChangeDir(nullptr) : -1;
}

const Case kCases[] = {
    {"UserIsEnough", {Answer("USER", "230 In")}, &User, 0, "USER anna\n"},
    {"UserIsSuperfluous", {Answer("USER", "202 Fine")}, &User, 0, "USER anna\n"},
    {"UserNeedsPassword", {Answer("USER", "331 More")}, &User, 331, "USER anna\n"},
    {"PassIsRight", {Answer("PASS", "230 In")}, &Pass, 0, "PASS secret\n"},
    {"PassIsSuperfluous", {Answer("PASS", "202 Fine")}, &Pass, 0, "PASS secret\n"},
    {"PassIsWrong", {Answer("PASS", "530 No")}, &Pass, 530, "PASS secret\n"},
    {"AcctIsRight", {Answer("ACCT", "230 In")}, &Acct, 0, "ACCT account\n"},
    {"AcctIsWrong", {Answer("ACCT", "530 No")}, &Acct, 530, "ACCT account\n"},
    {"FolderByTheUsualReply", {Answer("CWD", "250 In")}, &Down, 250, "CWD a b\n"},
    {"FolderByTheOther", {Answer("CWD", "257 In")}, &Down, 0, "CWD a b\n"},
    {"FolderIsMissing", {Answer("CWD", "550 No")}, &Down, 550, "CWD a b\n"},
    {"FolderAbove", {Answer("CDUP", "250 In")}, &Up, 250, "CDUP\n"},
    {"FileIsDeleted", {Answer("DELE", "250 Gone")}, &Remove, 0, "DELE x\n"},
    {"FileIsNotDeleted", {Answer("DELE", "550 No")}, &Remove, 550, "DELE x\n"},
    {"FileDeletedByAnotherReply", {Answer("DELE", "200 Gone")}, &Remove, 200, "DELE x\n"},
    {"FileIsRenamed",
     {Answer("RNFR", "350 To"), Answer("RNTO", "250 Done")},
     &Rename,
     0,
     "RNFR x\nRNTO a longer name\n"},
    {"FileIsNotThereToRename", {Answer("RNFR", "550 No")}, &Rename, 550, "RNFR x\n"},
    {"FileCannotBeRenamed",
     {Answer("RNFR", "350 To"), Answer("RNTO", "553 No")},
     &Rename,
     553,
     "RNFR x\nRNTO a longer name\n"},
    {"FolderIsMade", {Answer("MKD", "257 Made")}, &Make, 0, "MKD x\n"},
    {"FolderIsNotMade", {Answer("MKD", "250 Made")}, &Make, 250, "MKD x\n"},
    {"FolderIsRemoved", {Answer("RMD", "250 Gone")}, &RemoveFolder, 0, "RMD x\n"},
    {"FolderIsNotRemoved", {Answer("RMD", "550 No")}, &RemoveFolder, 550, "RMD x\n"},
    {"QuitIsAnswered", {Answer("QUIT", "221 Bye")}, &Quit, 221, "QUIT\n"},
    {"QuitIsAnsweredOddly", {Answer("QUIT", "200 Bye"), Close()}, &Quit, 0, "QUIT\n"},
    {"QuitTwiceSendsItOnce", {Answer("QUIT", "221 Bye")}, &QuitTwice, 221, "QUIT\n"},
    {"LineBreaksAreNotSent", {}, &LineBreaks, kFtpBadName, ""},
    {"NoNamesAreNotSent", {}, &NoNames, kFtpBadName, ""},
};

INSTANTIATE_TEST_SUITE_P(Commands, ClsFTPCommandTest, testing::ValuesIn(kCases),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(ClsFTPTest, HoldsSecondsAndTheirRestAsMicroseconds)
{
    clsFTP ftp(1500, nullptr, nullptr);

    EXPECT_EQ(ftp.Timeout(), 1'000'500);
    ftp.SetTimeout(30'000);
    EXPECT_EQ(ftp.Timeout(), 30'000'000);
}

TEST(ClsFTPTest, NeverSaysThePassword)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);

    EXPECT_EQ(client.LogIn(), 0);

    EXPECT_EQ(client.log, "220 Ready\\r\\n\n"
                          "USER anna\\r\\n\n"
                          "331 Password please\\r\\n\n"
                          "PASS ******\\r\\n\n"
                          "230 Welcome\\r\\n\n");
}

TEST(ClsFTPTest, DoesWithoutACallback)
{
    FtpTree files;
    FtpServer server(files.Handler());
    clsFTP ftp(server.Host(), server.Port(), nullptr, 0, FtpClient::kLong, nullptr, nullptr);

    EXPECT_EQ(ftp.Connect(FtpTree::kUser, FtpTree::kPassword, nullptr), 0);
    EXPECT_EQ(ftp.UploadBuffer("x", 1, "x", true, true), 0);
}

TEST(ClsFTPTest, TellsEachClientsCallbackItsOwnLines)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient one(server);
    FtpClient other(server);

    EXPECT_EQ(one.LogIn(), 0);

    EXPECT_NE(one.log, "");
    EXPECT_EQ(other.log, "");
}

TEST(ClsFTPTest, KnowsWhetherItIsConnected)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    EXPECT_FALSE(client.ftp.IsConnected());

    ASSERT_EQ(client.LogIn(), 0);
    EXPECT_TRUE(client.ftp.IsConnected());

    EXPECT_EQ(client.ftp.Disconnect(), 221);
    EXPECT_FALSE(client.ftp.IsConnected());
}

TEST(ClsFTPTest, SendsNothingWhileItIsNotConnected)
{
    clsFTP ftp(FtpClient::kLong, nullptr, nullptr);
    char* path = nullptr;

    EXPECT_EQ(ftp.DeleteFile("x"), kFtpNotConnected);
    EXPECT_EQ(ftp.UploadBuffer("x", 1, "x", true, false), kFtpNotConnected);
    EXPECT_EQ(ftp.PrintDir(&path), kFtpNotConnected);
    EXPECT_STREQ(path, "");
    std::free(path);
    EXPECT_EQ(ftp.Disconnect(), 0);
}

struct Place
{
    const char* name;
    const char* reply;
    const char* path;
    int code; // of PrintDir(), after a ChangeDir() that ended with 250
};

class ClsFTPPrintDirTest : public testing::TestWithParam<Place>
{
};

TEST_P(ClsFTPPrintDirTest, FindsThePath)
{
    FtpServer server(
        FtpScript{LogIn(), Answer("CWD", "250 In"), Answer("PWD", GetParam().reply), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    ASSERT_EQ(client.ftp.ChangeDir("x"), 250);
    char* path = nullptr;

    EXPECT_EQ(client.ftp.PrintDir(&path), GetParam().code);

    EXPECT_STREQ(path, GetParam().path);
    std::free(path);
}

const std::string kLongPath = "257 \"/" + std::string(3000, 'x') + "\" is here";

const Place kPlaces[] = {
    {"AsUsual", "257 \"/a b\" is here", "/a b", 0},
    {"Root", "257 \"/\"", "/", 0},
    {"ByAnotherReply", "250 \"/a\"", "/a", 0},
    {"UpToTheLastQuote", "257 \"/a \"b\" c\" is here", "/a \"b\" c", 0},
    {"Empty", "257 \"\"", "", 0},
    {"WithoutQuotes", "257 /a", "", 0},
    {"WithWordsBefore", "257 is \"/a\"", "", 0},
    {"WithOneQuote", "257 \"/a", "", 0},
    {"Short", "257", "", 0},
    {"Refused", "550 \"/a\" no", "", 550},
    {"LongerThanAReply", kLongPath.c_str(), "", 0},
};

INSTANTIATE_TEST_SUITE_P(Replies, ClsFTPPrintDirTest, testing::ValuesIn(kPlaces),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(ClsFTPTest, PrintsThePlaceWithTheCodeOfTheCommandBefore)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    char* path = nullptr;

    EXPECT_EQ(client.ftp.PrintDir(&path), 230);

    EXPECT_STREQ(path, "/");
    std::free(path);
}

TEST(ClsFTPTest, DropsUnreadLinesIntoTheLog)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE a"),
                               SayRaw("550-No\r\n550-really\r\n550 no\r\n"),
                               Answer("DELE b", "250 Gone"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    EXPECT_EQ(client.ftp.DeleteFile("a"), 550);
    EXPECT_STREQ(client.ftp.ReplyText(), "550-No\r550-really\r");
    client.log.clear();

    EXPECT_EQ(client.ftp.DeleteFile("b"), 0);

    EXPECT_EQ(client.log, "550 no\\r\nDELE b\\r\\n\n250 Gone\\r\\n\n");
}

TEST(ClsFTPTest, ReadsOverALateReply)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE a"), Pause(std::chrono::milliseconds(1500)),
                               Say("250 Gone"), Answer("DELE b", "550 No"), Hang()});
    FtpClient client(server, FtpClient::kShort);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(client.ftp.DeleteFile("a"), kFtpTimedOut);
    EXPECT_STREQ(client.ftp.ReplyText(), "TIMEOUT");
    EXPECT_EQ(client.ftp.DeleteFile("b"), 550);
}

TEST(ClsFTPTest, SendsNothingWhileAReplyIsMissing)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE a"), Hang()});
    FtpClient client(server, FtpClient::kShort);
    ASSERT_EQ(client.LogIn(), 0);
    ASSERT_EQ(client.ftp.DeleteFile("a"), kFtpTimedOut);

    EXPECT_EQ(client.ftp.DeleteFile("b"), kFtpTimedOut);

    EXPECT_EQ(server.CommandLog(), "USER anna\nPASS secret\nDELE a\n");
}

} // namespace
