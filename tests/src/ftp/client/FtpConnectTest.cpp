#include "FtpClient.h"
#include "FtpTree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;

struct Case
{
    const char* name;
    FtpScript script;
    const char* user;
    const char* pass;
    const char* account;
    int code;
    const char* commands;
};

class FtpConnectTest : public testing::TestWithParam<Case>
{
};

TEST_P(FtpConnectTest, LogsIn)
{
    FtpScript script = GetParam().script;
    script.push_back(Hang());
    FtpServer server(script);
    FtpClient client(server);

    const int code = client.ftp.Connect(GetParam().user, GetParam().pass, GetParam().account);

    EXPECT_EQ(code, GetParam().code) << client.log;
    EXPECT_EQ(server.CommandLog(), GetParam().commands);
    const bool isIn = code == 0 || code == 220 || code == 331 || code == 332;
    EXPECT_EQ(client.ftp.IsConnected(), isIn);
    const std::string failure =
        "Exception: " + std::to_string(code) + " - Error connecting to server.\n";
    EXPECT_EQ(client.log.find(failure) == std::string::npos, isIn) << client.log;
}

const FtpStep kUser = Answer("USER", "331 More");
const FtpStep kPass = Answer("PASS", "332 More");

const Case kCases[] = {
    {"WithoutAUser", {Say("220 Hi")}, nullptr, "p", "a", 220, ""},
    {"ByUser", {Say("220 Hi"), Answer("USER", "230 In")}, "u", "p", "a", 0, "USER u\n"},
    {"ByPassword",
     {Say("220 Hi"), kUser, Answer("PASS", "230 In")},
     "u",
     "p",
     "a",
     0,
     "USER u\nPASS p\n"},
    {"ByAccount",
     {Say("220 Hi"), kUser, kPass, Answer("ACCT", "230 In")},
     "u",
     "p",
     "a",
     0,
     "USER u\nPASS p\nACCT a\n"},
    {"ByUserAndAccount",
     {Say("220 Hi"), Answer("USER", "332 More"), Answer("ACCT", "202 In")},
     "u",
     "p",
     "a",
     0,
     "USER u\nACCT a\n"},
    {"WithoutAPassword", {Say("220 Hi"), kUser}, "u", nullptr, "a", 331, "USER u\n"},
    {"WithAnEmptyPassword",
     {Say("220 Hi"), kUser, Answer("PASS ", "230 In")},
     "u",
     "",
     nullptr,
     0,
     "USER u\nPASS \n"},
    {"WithoutAnAccount", {Say("220 Hi"), kUser, kPass}, "u", "p", nullptr, 332, "USER u\nPASS p\n"},
    {"AskedTwice",
     {Say("220 Hi"), kUser, Answer("PASS", "331 Again")},
     "u",
     "p",
     "a",
     331,
     "USER u\nPASS p\n"},
    {"RefusedUser", {Say("220 Hi"), Answer("USER", "530 No")}, "u", "p", "a", 530, "USER u\n"},
    {"RefusedPassword",
     {Say("220 Hi"), kUser, Answer("PASS", "530 No")},
     "u",
     "p",
     "a",
     530,
     "USER u\nPASS p\n"},
    {"RefusedGreeting", {Say("500 No")}, "u", "p", "a", 421, ""},
    {"AfterThreeDelays",
     {SayRaw("120 Soon\r\n120 Soon\r\n120 Soon\r\n220 Hi\r\n"), Answer("USER", "230 In")},
     "u",
     "p",
     "a",
     0,
     "USER u\n"},
    {"AfterFourDelays",
     {SayRaw("120 Soon\r\n120 Soon\r\n120 Soon\r\n120 Soon\r\n220 Hi\r\n")},
     "u",
     "p",
     "a",
     421,
     ""},
    {"WithALineBreak", {Say("220 Hi")}, "u\r\nDELE x", "p", "a", kFtpBadName, ""},
};

INSTANTIATE_TEST_SUITE_P(Logins, FtpConnectTest, testing::ValuesIn(kCases),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(FtpProxyTest, NamesTheRealHostInTheUser)
{
    FtpServer proxy(FtpScript{Say("220 Proxy"), Answer("USER", "230 In"), Hang()});
    FtpClient client(proxy);
    client.ftp.SetHost("far.example", 2121, proxy.Host(), proxy.Port());

    EXPECT_EQ(client.ftp.Connect("u", "p", nullptr), 0);

    EXPECT_EQ(proxy.CommandLog(), "USER u@far.example:2121\n");
}

TEST(FtpReconnectTest, TellsThatNobodyListens)
{
    unsigned int port = 0;
    {
        FtpServer gone(FtpScript{Hang()});
        port = gone.Port();
    }
    FtpServer server(FtpScript{Hang()});
    FtpClient client(server);
    client.ftp.SetHost("127.0.0.1", port, nullptr, 0);

    EXPECT_EQ(client.LogIn(), kFtpNotConnected);

    EXPECT_EQ(client.log, "Unable to connect to host\n");
    EXPECT_EQ(client.ftp.Disconnect(), 0);
}

TEST(FtpReconnectTest, RefusesPortsThatCannotBe)
{
    FtpServer server(FtpScript{Hang()});
    FtpClient client(server);

    for (const unsigned int port : {0u, 65536u, 65536u + server.Port()}) {
        client.ftp.SetHost("127.0.0.1", port, nullptr, 0);
        EXPECT_EQ(client.LogIn(), kFtpNotConnected) << port;
    }
    EXPECT_EQ(server.Connections(), 0);
}

TEST(FtpReconnectTest, TriesIPv4BeforeIPv6)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    client.ftp.SetHost("localhost", server.Port(), nullptr, 0);

    EXPECT_EQ(client.LogIn(), 0);
}

TEST(FtpReconnectTest, GoesOnToTheNextAddress)
{
    FtpTree files;
    FtpServer server(files.Handler(), "::1");
    if (!server.IsListening()) {
        GTEST_SKIP() << "This machine has no IPv6";
    }
    FtpClient client(server);
    client.ftp.SetHost("both", server.Port(), nullptr, 0);
    client.ftp.SetResolver([](const std::string&) {
        std::vector<SocketAddress> both = AddressInDigits("127.0.0.1");
        both.push_back(AddressInDigits("::1").front());
        return both;
    });

    EXPECT_EQ(client.LogIn(), 0);
}

TEST(FtpReconnectTest, ConnectsAnewWithAClearMind)
{
    FtpServer server(std::vector<FtpScript>{
        {LogIn(), Answer("TYPE I", "200 I"), Passive(), Answer("RETR", "550 No"), Expect("DELE")},
        {LogIn(), Answer("TYPE I", "200 I"), Passive(), Answer("RETR", "550 No"), Hang()}});
    FtpClient client(server);
    char* data = nullptr;
    int length = 0;
    ASSERT_EQ(client.LogIn(), 0);
    EXPECT_EQ(client.ftp.DownloadBuffer(&data, &length, "a", true, true), 550);
    EXPECT_EQ(client.log.find("TIMEOUT"), std::string::npos) << client.log;
    EXPECT_EQ(client.ftp.DeleteFile("a"), kFtpNotConnected);
    EXPECT_FALSE(client.ftp.IsConnected());

    EXPECT_EQ(client.LogIn(), 0);

    EXPECT_EQ(client.ftp.DownloadBuffer(&data, &length, "a", true, true), 550);
    EXPECT_EQ(server.Surprise(), "");
}

} // namespace
