// Odd and hostile servers on the control connection. A server gives up after twenty seconds at
// most, so a client that waited for ever would get another code than the one expected.

#include "HostileServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;
using namespace std::chrono_literals;

class FtpHostileControlTest : public testing::TestWithParam<HostileCase>
{
};

TEST_P(FtpHostileControlTest, EndsWithItsCode)
{
    FtpServer server(GetParam().script);
    FtpClient client(server, FtpClient::kShort);

    EXPECT_EQ(GetParam().act(client), GetParam().code) << client.log.substr(0, 2000);

    client.ftp.Disconnect();
    EXPECT_FALSE(client.ftp.IsConnected());
}

int ToLogIn(FtpClient& client)
{
    return client.LogIn();
}

int ToDelete(FtpClient& client)
{
    const int code = client.LogIn();
    return code == 0 ? client.ftp.DeleteFile("x") : -code;
}

int ToDeleteTwice(FtpClient& client)
{
    ToDelete(client);
    return client.ftp.DeleteFile("x");
}

std::string Zeros(const char* before, const char* behind)
{
    return std::string(before) + std::string(3, '\0') + behind;
}

const FtpStep kIn = Answer("USER", "230 In");

const HostileCase kGreetings[] = {
    {"None", {Hang()}, &ToLogIn, 421},
    {"ClosedAtOnce", {Close()}, &ToLogIn, 421},
    {"ResetAtOnce", {Reset()}, &ToLogIn, 421},
    {"InBytes", {SayInPieces("220 Hi\r\n", 1, 5ms), kIn, Hang()}, &ToLogIn, 0},
    {"SlowerThanTheTimeout", {SayInPieces("220 Hello there\r\n", 1, 300ms), kIn}, &ToLogIn, 421},
    {"ManySlowLines",
     {SayInPieces("220-Hi\r\n220-a\r\n220-b\r\n220 c\r\n", 7, 400ms), kIn, Hang()},
     &ToLogIn,
     0},
    {"WithoutALineEnd", {SayRaw("220 Hi"), Hang()}, &ToLogIn, 421},
    {"WithoutALineEndThenClosed", {SayRaw("220 Hi"), Close()}, &ToLogIn, kFtpNotConnected},
    {"WithABareLineFeed", {SayRaw("220 Hi\n"), kIn, Hang()}, &ToLogIn, 0},
    {"WithABareCarriageReturn", {SayRaw("220 Hi\r"), Hang()}, &ToLogIn, 421},
    {"HugeLine", {SayRaw("220 " + std::string(1'000'000, 'x') + "\r\n"), kIn, Hang()}, &ToLogIn, 0},
    {"EndlessLine", {Flood(std::string(1 << 20, 'x'))}, &ToLogIn, 421},
    {"ManyLines",
     {Repeat(1, "220-a\r\n"), Repeat(3000, " line\r\n"), Say("220 b"), kIn, Hang()},
     &ToLogIn,
     0},
    {"EndlessLines", {Flood("220-more\r\n")}, &ToLogIn, 421},
    {"LinesNeverEnded", {SayRaw("220-Hi\r\n220-There\r\n"), Hang()}, &ToLogIn, 421},
    {"LinesInBytes",
     {SayInPieces("220-Hi\r\n b\r\n220 There\r\n", 1, 2ms), kIn, Hang()},
     &ToLogIn,
     0},
    {"LinesWithOtherCodes",
     {SayRaw("220-a\r\n331 b\r\n 220 c\r\n220 d\r\n"), kIn, Hang()},
     &ToLogIn,
     0},
    {"ZerosInside", {SayRaw(Zeros("220 ", "Hi\r\n")), kIn, Hang()}, &ToLogIn, 0},
    {"ZerosFirst", {SayRaw(Zeros("", "220 Hi\r\n")), Hang()}, &ToLogIn, 421},
    {"NegativeCode", {Say("-220 Hi"), Hang()}, &ToLogIn, 421},
    {"LongCode", {Say("2200 Hi"), Hang()}, &ToLogIn, 421},
    {"ZeroCode", {Say("000 Hi"), Hang()}, &ToLogIn, 421},
    {"HugeCode", {Say("99999999999999999999 Hi"), Hang()}, &ToLogIn, 421},
    {"NoCode", {Say("Hello"), Hang()}, &ToLogIn, 421},
    {"EmptyLinesFirst", {SayRaw("\r\n\r\n\n220 Hi\r\n"), kIn, Hang()}, &ToLogIn, 0},
    {"NonsenseFirst", {Say("Warning"), Say("220 Hi"), kIn, Hang()}, &ToLogIn, 0},
    {"NonsenseForEver", {Flood("Hello\r\n")}, &ToLogIn, 421},
    {"EmptyLinesForEver", {Flood("\r\n")}, &ToLogIn, 421},
    {"TelnetBytes", {SayRaw("\xff\xfb\x01\xff\xfd\x03"), Say("220 Hi"), Hang()}, &ToLogIn, 421},
    {"Goodbye", {Say("421 Too many"), Close()}, &ToLogIn, 421},
    {"DelaysForEver", {Flood("120 Soon\r\n")}, &ToLogIn, 421},
    {"EightBits", {Say("220 \xe4\xf6\xff\xfe"), kIn, Hang()}, &ToLogIn, 0},
};

INSTANTIATE_TEST_SUITE_P(Greetings, FtpHostileControlTest, testing::ValuesIn(kGreetings),
                         [](const auto& one) { return std::string(one.param.name); });

const HostileCase kLogins[] = {
    {"RepliesBeforeTheCommand",
     {SayRaw("220 Hi\r\n230 In already\r\n"), Answer("USER", "530 No"), Hang()},
     &ToLogIn,
     530},
    {"ClosedAtUser", {Say("220 Hi"), Expect("USER"), Close()}, &ToLogIn, kFtpNotConnected},
    {"ResetAtUser", {Say("220 Hi"), Expect("USER"), Reset()}, &ToLogIn, kFtpNotConnected},
    {"SilentAtUser", {Say("220 Hi"), Expect("USER"), Hang()}, &ToLogIn, kFtpTimedOut},
    {"GoodbyeAtUser", {Say("220 Hi"), Answer("USER", "421 Bye"), Close()}, &ToLogIn, 421},
    {"PreliminaryFlood", {Say("220 Hi"), Expect("USER"), Flood("150 Wait\r\n")}, &ToLogIn, 150},
    {"PasswordForEver",
     {Say("220 Hi"), Answer("USER", "331 Who"), Answer("PASS", "331 Who"), Hang()},
     &ToLogIn,
     331},
};

INSTANTIATE_TEST_SUITE_P(Logins, FtpHostileControlTest, testing::ValuesIn(kLogins),
                         [](const auto& one) { return std::string(one.param.name); });

const FtpStep kOldIn = All({Say("220 Hi"), Answer("USER", "331 Who"), Expect("PASS")});
const FtpStep kDelete = All({LogIn(), Expect("DELE")});

const HostileCase kCommands[] = {
    {"UnaskedReply",
     {kOldIn, SayRaw("230 In\r\n250 Gone\r\n"), Answer("DELE", "550 No"), Hang()},
     &ToDelete,
     550},
    {"UnaskedGoodbye",
     {kOldIn, SayRaw("230 In\r\n421 Idle\r\n"), Close()},
     &ToDelete,
     kFtpNotConnected},
    {"HalfAnUnaskedLine",
     {kOldIn, SayRaw("230 In\r\n250 Go"), Pause(200ms), SayRaw("ne\r\n"), Answer("DELE", "550 No"),
      Hang()},
     &ToDelete,
     550},
    {"Silence", {kDelete, Hang()}, &ToDelete, kFtpTimedOut},
    {"SilenceForTwo", {kDelete, Hang()}, &ToDeleteTwice, kFtpTimedOut},
    {"Closed", {kDelete, Close()}, &ToDelete, kFtpNotConnected},
    {"ClosedBeforeAnother", {kDelete, Close()}, &ToDeleteTwice, kFtpNotConnected},
    {"ResetInTheMiddle",
     {kDelete, SayRaw("250 Go"), Pause(100ms), Reset()},
     &ToDelete,
     kFtpNotConnected},
    {"ClosedWithoutALineEnd", {kDelete, SayRaw("250 Gone"), Close()}, &ToDelete, 0},
    {"InBytes", {kDelete, SayInPieces("250 Gone\r\n", 1, 5ms), Hang()}, &ToDelete, 0},
    {"HugeLine",
     {kDelete, SayRaw("250 " + std::string(500'000, 'x') + "\r\n"), Hang()},
     &ToDelete,
     0},
    {"PreliminaryReply", {kDelete, Say("150 Wait"), Hang()}, &ToDelete, 150},
    {"LinesOfOneCode", {kDelete, SayRaw("550-a\r\n550-b\r\n550 c\r\n"), Hang()}, &ToDelete, 550},
    {"LinesNeverEnded", {kDelete, SayRaw("250-a\r\n250-b\r\n"), Hang()}, &ToDelete, kFtpTimedOut},
    {"ZeroCodeIsNoSuccess", {kDelete, Say("0 ok"), Hang()}, &ToDelete, kFtpTimedOut},
    {"EmptyIsNoSuccess", {kDelete, Say(""), Hang()}, &ToDelete, kFtpTimedOut},
    {"LocalCode", {kDelete, Say("3 Cancelled"), Hang()}, &ToDelete, kFtpTimedOut},
    {"Nonsense", {kDelete, Flood("Gone\r\n")}, &ToDelete, kFtpTooMuch},
    {"EndlessLines", {kDelete, Flood("250-Gone\r\n")}, &ToDelete, kFtpTooMuch},
    {"EndlessLine", {kDelete, Flood(std::string(1 << 20, '2'))}, &ToDelete, kFtpTimedOut},
    {"SilentQuit", {LogIn(), Answer("DELE", "250 Gone"), Expect("QUIT"), Hang()}, &ToDelete, 0},
    {"FloodAtQuit",
     {LogIn(), Answer("DELE", "250 Gone"), Expect("QUIT"), Flood("250 x\r\n")},
     &ToDelete,
     0},
};

INSTANTIATE_TEST_SUITE_P(Commands, FtpHostileControlTest, testing::ValuesIn(kCommands),
                         [](const auto& one) { return std::string(one.param.name); });

/// Whether a flood is too much, or one of its lines an answer, is the scheduler's choice.
TEST(FtpHostileFloodTest, EndsACommand)
{
    FtpServer server(FtpScript{kOldIn, Say("230 In"), Flood("550 No\r\n")});
    FtpClient client(server, FtpClient::kShort);

    const int code = ToDelete(client);

    EXPECT_TRUE(code == 550 || code == kFtpTooMuch) << code;
}

} // namespace
