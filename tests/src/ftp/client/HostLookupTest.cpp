#include "ftp/client/HostLookup.h"

#include "Event.h"
#include "FtpClient.h"
#include "FtpTree.h"

#include <OS.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

using namespace norvane;

constexpr bigtime_t kLong = 10'000'000;

/// A resolver that does not answer until it is let go.
struct SlowResolver
{
    Event asked;
    Event mayAnswer;
    Event answered;
};

HostResolver Slow(const std::shared_ptr<SlowResolver>& slow)
{
    return [slow](const std::string&) {
        slow->asked.Happen();
        slow->mayAnswer.Await();
        slow->answered.Happen();
        return AddressInDigits("127.0.0.1");
    };
}

TEST(HostLookupTest, FindsWhatTheResolverFinds)
{
    HostLookup lookup("host", [](const std::string& host) {
        return host == "host" ? AddressInDigits("127.0.0.1") : std::vector<SocketAddress>();
    });

    ASSERT_TRUE(lookup.WaitUntil(system_time() + kLong));

    const std::vector<SocketAddress> found = lookup.TakeAddresses();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].HostText(), "127.0.0.1");
}

TEST(HostLookupTest, IsLetGoOfWhenNobodyWaits)
{
    auto slow = std::make_shared<SlowResolver>();
    {
        HostLookup lookup("host", Slow(slow));
        EXPECT_FALSE(lookup.WaitUntil(system_time() + 1000));
    }

    slow->mayAnswer.Happen();

    EXPECT_TRUE(slow->answered.Await());
}

TEST(HostLookupTest, PutsAddressesOfIPv4First)
{
    const std::vector<SocketAddress> found = ResolveHost("localhost");

    bool isSixSeen = false;
    for (const SocketAddress& address : found) {
        EXPECT_FALSE(isSixSeen && address.Family() == AF_INET);
        isSixSeen = isSixSeen || address.Family() == AF_INET6;
    }
    EXPECT_FALSE(found.empty());
}

TEST(HostLookupTest, MovesAddressesOfIPv4ToTheFront)
{
    std::vector<SocketAddress> addresses;
    for (const char* host : {"::1", "127.0.0.2", "::2", "127.0.0.1"}) {
        addresses.push_back(AddressInDigits(host).front());
    }

    PutFourFirst(&addresses);

    std::string hosts;
    for (const SocketAddress& address : addresses) {
        hosts += address.HostText() + " ";
    }
    EXPECT_EQ(hosts, "127.0.0.2 127.0.0.1 ::1 ::2 ");
}

TEST(HostLookupTest, KnowsAddressesFromNames)
{
    EXPECT_EQ(AddressInDigits("127.0.0.1").size(), 1u);
    EXPECT_EQ(AddressInDigits("::1").size(), 1u);
    EXPECT_TRUE(AddressInDigits("localhost").empty());
}

TEST(HostLookupTest, IsNotNeededForAnAddressInDigits)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    int asked = 0;
    client.ftp.SetResolver([&asked](const std::string&) {
        asked++;
        return std::vector<SocketAddress>();
    });

    EXPECT_EQ(client.LogIn(), 0);

    EXPECT_EQ(asked, 0);
}

TEST(HostLookupTest, FindsNoHostThatCannotBe)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    // A part of a name has 63 characters at most, so nobody is asked.
    client.ftp.SetHost(std::string(100, 'x').c_str(), server.Port(), nullptr, 0);

    EXPECT_EQ(client.LogIn(), kFtpNoSuchHost);

    EXPECT_EQ(client.log, "Error initailizing local host.\n");
}

TEST(HostLookupTest, IsGivenUpAtTheTimeout)
{
    auto slow = std::make_shared<SlowResolver>();
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server, FtpClient::kShort);
    client.ftp.SetHost("slow", server.Port(), nullptr, 0);
    client.ftp.SetResolver(Slow(slow));

    EXPECT_EQ(client.LogIn(), kFtpNoSuchHost);

    EXPECT_EQ(slow->answered.Count(), 0);
    slow->mayAnswer.Happen();
    EXPECT_TRUE(slow->answered.Await());
}

TEST(HostLookupTest, IsGivenUpWhenCancelled)
{
    auto slow = std::make_shared<SlowResolver>();
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    client.ftp.SetHost("slow", server.Port(), nullptr, 0);
    client.ftp.SetResolver(Slow(slow));
    std::thread canceller([&] {
        slow->asked.Await();
        client.ftp.Cancel();
    });

    EXPECT_EQ(client.LogIn(), kFtpCancelled);

    EXPECT_EQ(slow->answered.Count(), 0);
    canceller.join();
    slow->mayAnswer.Happen();
    EXPECT_TRUE(slow->answered.Await());
}

} // namespace
