#include "ftp/client/FtpAddresses.h"
#include "ftp/client/FtpTokens.h"

#include "CaseName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace norvane;

SocketAddress Address(const char* host, uint16 port)
{
    sockaddr_in6 six = {};
    six.sin6_family = AF_INET6;
    if (inet_pton(AF_INET6, host, &six.sin6_addr) == 1) {
        SocketAddress address(reinterpret_cast<sockaddr*>(&six), sizeof(six));
        address.SetPort(port);
        return address;
    }
    sockaddr_in four = {};
    four.sin_family = AF_INET;
    inet_pton(AF_INET, host, &four.sin_addr);
    SocketAddress address(reinterpret_cast<sockaddr*>(&four), sizeof(four));
    address.SetPort(port);
    return address;
}

TEST(FtpAddressesTest, AnnouncesAnAddress)
{
    EXPECT_EQ(PortCommand(Address("10.0.0.5", 5001)), "PORT 10,0,0,5,19,137\r\n");
    EXPECT_EQ(PortCommand(Address("fe80::1", 5001)), "EPRT |2|fe80::1|5001|\r\n");
}

TEST(FtpAddressesTest, ComparesHostsWithoutPorts)
{
    EXPECT_TRUE(Address("10.0.0.5", 1).IsSameHost(Address("10.0.0.5", 2)));
    EXPECT_FALSE(Address("10.0.0.5", 1).IsSameHost(Address("10.0.0.6", 1)));
    EXPECT_FALSE(Address("::1", 1).IsSameHost(Address("127.0.0.1", 1)));
}

struct Case
{
    const char* label;
    const char* text;
    const char* host; // "" when it is no address
    int port;
};

class PassiveReplyTest : public testing::TestWithParam<Case>
{
};

TEST_P(PassiveReplyTest, IsRead)
{
    SocketAddress address = Address("1.2.3.4", 7);

    const bool isRead = ReadPassiveReply(GetParam().text, &address);

    const bool isExpected = *GetParam().host != '\0';
    EXPECT_EQ(isRead, isExpected);
    EXPECT_EQ(address.HostText(), isExpected ? GetParam().host : "1.2.3.4");
    EXPECT_EQ(address.Port(), isExpected ? GetParam().port : 7);
}

const Case kCases[] = {
    {"as usual", "227 Entering Passive Mode (192,168,1,2,19,137)", "192.168.1.2", 5001},
    {"the last bracket counts", "227 (a) (192,168,1,2,19,137)\r\n", "192.168.1.2", 5001},
    {"no closing bracket", "227 Here (192,168,1,2,19,137\r\n", "192.168.1.2", 5001},
    {"no bracket", "227 Here 192,168,1,2,19,137.\r\n", "192.168.1.2", 5001},
    {"blanks", "227 Here ( 192, 168, 1, 2, 19, 137 )", "192.168.1.2", 5001},
    {"the largest port", "227 (1,2,3,4,255,255)", "1.2.3.4", 65535},
    {"more numbers", "227 (192,168,1,2,19,137,9)", "192.168.1.2", 5001},
    {"port zero", "227 (192,168,1,2,0,0)", "", 0},
    {"five numbers", "227 (192,168,1,2,19)", "", 0},
    {"a number above a byte", "227 (192,168,1,256,19,137)", "", 0},
    {"a huge number", "227 (192,168,1,2,99999999999999999999,137)", "", 0},
    {"a negative number", "227 (192,168,1,2,-1,137)", "", 0},
    {"letters", "227 (a,b,c,d,e,f)", "", 0},
    {"empty numbers", "227 (,,,,,)", "", 0},
    {"an open bracket alone", "227 (", "", 0},
    {"nothing", "", "", 0},
    {"a code alone", "227", "", 0},
};

INSTANTIATE_TEST_SUITE_P(Cases, PassiveReplyTest, testing::ValuesIn(kCases),
                         [](const auto& one) { return CaseName(one.param.label); });

TEST(ExtendedPassiveReplyTest, IsRead)
{
    uint16 port = 0;

    EXPECT_TRUE(ReadExtendedPassiveReply("229 Here (|||6446|)\r\n", &port));
    EXPECT_EQ(port, 6446);
    EXPECT_TRUE(ReadExtendedPassiveReply("229 Here (!!!7!)", &port));
    EXPECT_EQ(port, 7);
}

TEST(ExtendedPassiveReplyTest, IsRefusedWhenItIsNone)
{
    for (const char* text :
         {"229 Here", "229 (", "229 (|||", "229 (||||)", "229 (|||0|)", "229 (|||65536|)",
          "229 (|||-5|)", "229 (|||5!)", "229 (||5|)", "229 (|||99999999999999999999|)", ""}) {
        uint16 port = 7;
        EXPECT_FALSE(ReadExtendedPassiveReply(text, &port)) << text;
        EXPECT_EQ(port, 7) << text;
    }
}

std::vector<std::string> Tokens(const char* text, const char* delims)
{
    char** tokens = nullptr;
    const int count = StrTokenize(text, delims, &tokens);
    std::vector<std::string> found(tokens, tokens + count);
    FreeTokens(&tokens, count);
    EXPECT_EQ(tokens, nullptr);
    return found;
}

TEST(FtpTokensTest, SkipsEmptyTokens)
{
    EXPECT_EQ(Tokens("a,,b;c,", ",;"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(Tokens(",,", ","), std::vector<std::string>{});
    EXPECT_EQ(Tokens("", ","), std::vector<std::string>{});
    EXPECT_EQ(Tokens("one", ","), std::vector<std::string>{"one"});
}

} // namespace
