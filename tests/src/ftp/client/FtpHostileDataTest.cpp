// Odd and hostile servers in transfers. A server gives up after twenty seconds at most, so a client
// that waited for ever would get another code than the one expected.

#include "HostileServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;
using namespace std::chrono_literals;

class FtpHostileDataTest : public testing::TestWithParam<HostileCase>
{
};

TEST_P(FtpHostileDataTest, EndsWithItsCode)
{
    FtpServer server(GetParam().script);
    FtpClient client(server, FtpClient::kShort);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(GetParam().act(client), GetParam().code) << client.log.substr(0, 2000);

    EXPECT_EQ(server.Surprise(), "");
}

enum class Way { kActive, kPassive };

/// Downloads "x", which must be `expected` when it ends well.
int Get(FtpClient& client, Way way, const std::string& expected)
{
    char* data = nullptr;
    int length = 0;
    const int code = client.ftp.DownloadBuffer(&data, &length, "x", true, way == Way::kPassive);
    if (code == 0) {
        EXPECT_EQ(std::string(data != nullptr ? data : "", static_cast<size_t>(length)), expected);
    }
    std::free(data);
    return code;
}

int ToGet(FtpClient& client)
{
    return Get(client, Way::kPassive, "apple");
}

int ToGetNothing(FtpClient& client)
{
    return Get(client, Way::kPassive, "");
}

int ToGetActively(FtpClient& client)
{
    return Get(client, Way::kActive, "apple");
}

/// More than what the system holds for a connection.
int ToPut(FtpClient& client)
{
    const std::string data(64 << 20, 'x');
    return client.ftp.UploadBuffer(data.data(), static_cast<int>(data.size()), "x", true, true);
}

int ToPutLittle(FtpClient& client)
{
    return client.ftp.UploadBuffer("apple", 5, "x", true, true);
}

int ToList(FtpClient& client)
{
    client.ftp.SetMemoryLimit(1 << 20);
    char* listing = nullptr;
    const int code = client.ftp.List(nullptr, &listing, true);
    EXPECT_TRUE(code == 0 || listing == nullptr);
    std::free(listing);
    return code;
}

/// Answers PASV with a port that nobody listens at any more, so that no client can be quicker.
FtpStep NameDeadPort()
{
    return [](FtpSession& session) {
        session.ListenForData();
        const unsigned int port = session.DataPort();
        session.CloseListening();
        return session.Reply("227 Here (127,0,0,1," + std::to_string(port / 256) + "," +
                             std::to_string(port % 256) + ")");
    };
}

const FtpStep kType = All({LogIn(), Answer("TYPE I", "200 I")});
const FtpStep kPasv = All({kType, Passive(), Expect("RETR")});
const FtpStep kPreliminary = All({kPasv, Say("150 Coming (5 bytes)"), OpenData()});
const FtpStep kSent = All({kPreliminary, SendData("apple"), CloseData()});
/// What follows where the passive reply decides.
const FtpStep kRest = All({Expect("RETR"), Say("150 Coming"), OpenData(), SendData("apple"),
                           CloseData(), Say("226 Done"), Hang()});
const FtpStep kPort = All({LogIn(), TakePort(), Answer("TYPE I", "200 I")});
const FtpStep kPortPreliminary = All({kPort, Answer("RETR", "150 Coming")});

const HostileCase kPassive[] = {
    {"OtherAddress", {kType, Passive("227 Here (10,1,2,3,%p)"), kRest}, &ToGet, 0},
    {"NoParenthesis", {kType, Passive("227 Here %h,%p."), kRest}, &ToGet, 0},
    {"ManyParentheses", {kType, Passive("227 ((x) (%h,%p)"), kRest}, &ToGet, 0},
    {"Garbage", {kType, Passive("227 Here (a,b,c)"), Hang()}, &ToGet, kFtpNoDataConnection},
    {"HugeNumbers",
     {kType, Passive("227 Here (127,0,0,1,99999999999,5)"), Hang()},
     &ToGet,
     kFtpNoDataConnection},
    {"NegativeNumbers",
     {kType, Passive("227 Here (127,0,0,1,-1,5)"), Hang()},
     &ToGet,
     kFtpNoDataConnection},
    {"PortZero", {kType, Passive("227 Here (%h,0,0)"), Hang()}, &ToGet, kFtpNoDataConnection},
    {"FewNumbers", {kType, Passive("227 Here (127,0)"), Hang()}, &ToGet, kFtpNoDataConnection},
    {"Nothing", {kType, Passive("227"), Hang()}, &ToGet, kFtpNoDataConnection},
    {"LongText",
     {kType, Passive("227 " + std::string(5000, 'x') + " (%h,%p)"), Hang()},
     &ToGet,
     kFtpNoDataConnection},
    {"Refused", {kType, Passive("502 No"), Hang()}, &ToGet, 502},
    {"Silent", {kType, Expect("PASV"), Hang()}, &ToGet, kFtpTimedOut},
    {"Closed", {kType, Expect("PASV"), Close()}, &ToGet, kFtpNotConnected},
    {"NobodyListens", {kType, Expect("PASV"), NameDeadPort(), Hang()}, &ToGet, kFtpNotConnected},
    {"TypeRefused", {LogIn(), Answer("TYPE I", "504 No"), Hang()}, &ToGet, 504},
};

const HostileCase kReplies[] = {
    {"FileRefused", {kPasv, Say("550 No"), Hang()}, &ToGet, 550},
    {"FileSilent", {kPasv, Hang()}, &ToGet, kFtpTimedOut},
    {"Goodbye", {kPasv, Say("421 Bye"), Close()}, &ToGet, 421},
    {"FinalAlone", {kPasv, Say("226 Empty"), Hang()}, &ToGet, 226},
    {"FinalBeforeTheData",
     {kPreliminary, Say("226 Done"), Pause(100ms), SendData("apple"), CloseData(), Hang()},
     &ToGet,
     0},
    {"FinalMissing", {kSent, Hang()}, &ToGet, kFtpTimedOut},
    {"FinalNegative", {kSent, Say("426 Broken"), Hang()}, &ToGet, 426},
    {"FinalGoodbye", {kSent, Say("421 Bye"), Close()}, &ToGet, 421},
    {"FinalNonsense", {kSent, Say("Done"), Hang()}, &ToGet, kFtpTimedOut},
    {"FinalOfManyLines", {kSent, SayRaw("226-a\r\n226-b\r\n226 c\r\n"), Hang()}, &ToGet, 0},
    {"BothInOnePiece",
     {kPasv, SayRaw("150 Coming\r\n226 Done\r\n"), OpenData(), SendData("apple"), CloseData(),
      Hang()},
     &ToGet,
     0},
    {"PreliminaryOfManyLines",
     {kPasv, SayRaw("150-a\r\n150-b\r\n150 c\r\n"), OpenData(), SendData("apple"), CloseData(),
      Say("226 Done"), Hang()},
     &ToGet,
     0},
    {"SomePreliminaries", {kSent, Repeat(5, "150 Still\r\n"), Say("226 Done"), Hang()}, &ToGet, 0},
    {"PreliminaryFlood", {kSent, Flood("150 Still\r\n")}, &ToGet, 150},
    {"ControlClosedInTheMiddle",
     {kPreliminary, SendData("app"), Close()},
     &ToGet,
     kFtpNotConnected},
    {"HugeSize",
     {kPasv, Say("150 Coming (99999999999999999999999 bytes)"), OpenData(), SendData("apple"),
      CloseData(), Say("226 Done"), Hang()},
     &ToGet,
     0},
    {"NegativeSize",
     {kPasv, Say("150 Coming (-5 bytes)"), OpenData(), SendData("apple"), CloseData(),
      Say("226 Done"), Hang()},
     &ToGet,
     0},
};

const HostileCase kData[] = {
    {"ClosedAtOnce", {kPreliminary, CloseData(), Say("226 Done"), Hang()}, &ToGetNothing, 0},
    {"ResetAtOnce",
     {kPreliminary, ResetData(), Say("226 Done"), Hang()},
     &ToGet,
     kFtpNoDataConnection},
    {"ResetInTheMiddle",
     {kPreliminary, SendData("app"), Pause(50ms), ResetData(), Say("426 Broken"), Hang()},
     &ToGet,
     426},
    {"Stalls", {kPreliminary, SendData("app"), Hang()}, &ToGet, kFtpTimedOut},
    {"Silent", {kPreliminary, Hang()}, &ToGet, kFtpTimedOut},
    {"EndlessListing",
     {LogIn(), Answer("TYPE A", "200 A"), Passive(), Answer("LIST", "150 Coming"), OpenData(),
      [](FtpSession& session) {
          while (session.SendData(std::string(1000, 'x') + "\r\n")) {
          }
          return session.Reply("426 Broken");
      },
      Hang()},
     &ToList,
     kFtpTooMuch},
    {"NeverConnects", {kPortPreliminary, Hang()}, &ToGetActively, kFtpTimedOut},
    {"ConnectsFromElsewhere",
     {kPortPreliminary, OpenData("127.0.0.2"), SendData("apple"), CloseData(), Hang()},
     &ToGetActively,
     kFtpTimedOut},
    {"ConnectsFromElsewhereFirst",
     {kPortPreliminary, OpenData("127.0.0.2"), CloseData(), OpenData(), SendData("apple"),
      CloseData(), Say("226 Done"), Hang()},
     &ToGetActively,
     0},
    {"PortRefused",
     {LogIn(), Answer("PORT", "500 No"), Hang()},
     &ToGetActively,
     kFtpNoDataConnection},
    {"PortSilent", {LogIn(), Expect("PORT"), Hang()}, &ToGetActively, kFtpNoDataConnection},
    {"CannotConnect", {kPort, Answer("RETR", "425 Cannot connect"), Hang()}, &ToGetActively, 425},
};

const FtpStep kStore = All({kType, Passive(), Expect("STOR"), Say("150 Waiting"), OpenData()});

const HostileCase kUploads[] = {
    {"Refused", {kType, Passive(), Answer("STOR", "553 No"), Hang()}, &ToPutLittle, 553},
    {"Full", {kStore, TakeSomeData(1000), ResetData(), Say("452 Full"), Hang()}, &ToPut, 452},
    {"ResetYetDone",
     {kStore, TakeSomeData(1000), ResetData(), Say("226 Done"), Hang()},
     &ToPut,
     kFtpNoDataConnection},
    {"NobodyReads", {kStore, Hang()}, &ToPut, kFtpTimedOut},
    {"FinalMissing", {kStore, TakeData(), Hang()}, &ToPutLittle, kFtpTimedOut},
    {"ControlClosed", {kStore, TakeData(), Close()}, &ToPutLittle, kFtpNotConnected},
    {"EverythingClosed", {kStore, TakeSomeData(1000), Close()}, &ToPut, kFtpNoDataConnection},
};

std::string NameOf(const testing::TestParamInfo<HostileCase>& one)
{
    return one.param.name;
}

INSTANTIATE_TEST_SUITE_P(Passive, FtpHostileDataTest, testing::ValuesIn(kPassive), NameOf);
INSTANTIATE_TEST_SUITE_P(Replies, FtpHostileDataTest, testing::ValuesIn(kReplies), NameOf);
INSTANTIATE_TEST_SUITE_P(Data, FtpHostileDataTest, testing::ValuesIn(kData), NameOf);
INSTANTIATE_TEST_SUITE_P(Uploads, FtpHostileDataTest, testing::ValuesIn(kUploads), NameOf);

TEST(FtpHostileSixTest, RefusesAnExtendedReplyThatIsNone)
{
    FtpServer server(
        FtpScript{LogIn(), Answer("TYPE I", "200 I"), Answer("EPSV", "229 Here (|||)"), Hang()},
        "::1");
    if (!server.IsListening()) {
        GTEST_SKIP() << "This machine has no IPv6";
    }
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(Get(client, Way::kPassive, ""), kFtpNoDataConnection);
}

} // namespace
