#include <Errors.h>
#include <socket.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace {

constexpr bigtime_t kLong = 10'000'000;

/// Two ends of a connection on loopback.
class SocketTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fListening = open_socket(AF_INET, SOCK_STREAM);
        ASSERT_GE(fListening, 0);
        fAddress.sin_family = AF_INET;
        fAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(fAddress);
        ASSERT_EQ(bind(fListening, Raw(), length), 0);
        ASSERT_EQ(listen(fListening, 1), 0);
        ASSERT_EQ(getsockname(fListening, Raw(), &length), 0);
    }

    void TearDown() override
    {
        for (const int one : {fListening, fNear, fFar}) {
            if (one >= 0) {
                closesocket(one);
            }
        }
    }

    sockaddr* Raw() { return reinterpret_cast<sockaddr*>(&fAddress); }

    void Connect()
    {
        fNear = open_socket(AF_INET, SOCK_STREAM);
        const status_t begun = connect_socket(fNear, Raw(), sizeof(fAddress));
        ASSERT_TRUE(begun == B_OK || begun == B_WOULD_BLOCK);
        ASSERT_EQ(wait_for_socket(fListening, B_SOCKET_READABLE, kLong), B_OK);
        fFar = accept_socket(fListening, nullptr, nullptr);
        ASSERT_GE(fFar, 0);
        ASSERT_EQ(wait_for_socket(fNear, B_SOCKET_WRITABLE, kLong), B_OK);
        ASSERT_EQ(socket_error(fNear), B_OK);
    }

    sockaddr_in fAddress = {};
    int fListening = -1;
    int fNear = -1;
    int fFar = -1;
};

TEST_F(SocketTest, SendsAndReceives)
{
    Connect();
    char buffer[16] = {};
    EXPECT_EQ(receive_socket(fFar, buffer, sizeof(buffer)), B_WOULD_BLOCK);

    EXPECT_EQ(send_socket(fNear, "hello", 5), 5);

    ASSERT_EQ(wait_for_socket(fFar, B_SOCKET_READABLE, kLong), B_OK);
    EXPECT_EQ(receive_socket(fFar, buffer, sizeof(buffer)), 5);
    EXPECT_STREQ(buffer, "hello");
}

TEST_F(SocketTest, TellsTheEnd)
{
    Connect();
    char byte = 0;

    closesocket(fNear);
    fNear = -1;

    ASSERT_EQ(wait_for_socket(fFar, B_SOCKET_READABLE, kLong), B_OK);
    EXPECT_EQ(receive_socket(fFar, &byte, 1), 0);
}

TEST_F(SocketTest, TellsABrokenPipeWithoutASignal)
{
    Connect();
    shutdown(fNear, SHUT_WR);

    EXPECT_EQ(send_socket(fNear, "x", 1), B_BUSTED_PIPE);
}

TEST_F(SocketTest, NeverBlocksInSending)
{
    Connect();
    const std::string block(1 << 20, 'x');
    ssize_t sent = 0;
    for (int i = 0; i < 1000 && sent >= 0; i++) {
        sent = send_socket(fNear, block.data(), block.size());
    }

    EXPECT_EQ(sent, B_WOULD_BLOCK);
    EXPECT_EQ(wait_for_socket(fNear, B_SOCKET_WRITABLE, 1000), B_TIMED_OUT);
}

TEST_F(SocketTest, WaitsNoLongerThanItMay)
{
    EXPECT_EQ(wait_for_socket(fListening, B_SOCKET_READABLE, 0), B_TIMED_OUT);
    EXPECT_EQ(wait_for_socket(fListening, B_SOCKET_READABLE, -5), B_TIMED_OUT);
    EXPECT_EQ(accept_socket(fListening, nullptr, nullptr), B_WOULD_BLOCK);
}

TEST_F(SocketTest, EndsAWaitWhenItIsShutDown)
{
    Connect();
    std::thread other([this] { shutdown(fNear, SHUT_RDWR); });

    EXPECT_EQ(wait_for_socket(fNear, B_SOCKET_READABLE, kLong), B_OK);

    other.join();
}

TEST_F(SocketTest, TellsARefusedConnection)
{
    closesocket(fListening);
    fListening = -1;
    fNear = open_socket(AF_INET, SOCK_STREAM);

    status_t status = connect_socket(fNear, Raw(), sizeof(fAddress));
    if (status == B_WOULD_BLOCK) {
        EXPECT_EQ(wait_for_socket(fNear, B_SOCKET_WRITABLE, kLong), B_OK);
        status = socket_error(fNear);
    }

    EXPECT_LT(status, B_OK);
}

TEST_F(SocketTest, IsNotInherited)
{
    Connect();

    for (const int one : {fListening, fNear, fFar}) {
        EXPECT_NE(fcntl(one, F_GETFD) & FD_CLOEXEC, 0);
    }
}

TEST_F(SocketTest, HasAnyNumber)
{
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit before = limit;
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 4096);
    setrlimit(RLIMIT_NOFILE, &limit);
    Connect();
    const int high = fcntl(fFar, F_DUPFD_CLOEXEC, 2000);
    ASSERT_GE(high, 2000);
    closesocket(fFar);
    fFar = high;

    EXPECT_EQ(wait_for_socket(fFar, B_SOCKET_READABLE, 0), B_TIMED_OUT);
    send_socket(fNear, "x", 1);
    EXPECT_EQ(wait_for_socket(fFar, B_SOCKET_READABLE, kLong), B_OK);

    setrlimit(RLIMIT_NOFILE, &before);
}

TEST(ClosedSocketTest, IsAnError)
{
    char byte = 0;

    EXPECT_EQ(closesocket(-1), B_FILE_ERROR);
    EXPECT_EQ(wait_for_socket(100'000, B_SOCKET_READABLE, 0), B_FILE_ERROR);
    EXPECT_EQ(wait_for_socket(-1, B_SOCKET_READABLE, 0), B_FILE_ERROR);
    EXPECT_LT(receive_socket(-1, &byte, 1), 0);
    EXPECT_LT(open_socket(-1, SOCK_STREAM), 0);
}

} // namespace
