#include "FtpClient.h"
#include "FtpTree.h"
#include "TempTree.h"

#include <DataIO.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

namespace {

using namespace norvane;
using namespace ftp_script;

enum class End { kCancel, kShutDown };

/// Runs `act`, ending it from another thread as soon as the server got `command`.
int Ended(FtpClient& client, const FtpServer& server, const char* command, End end,
          const std::function<int()>& act)
{
    std::thread other([&] {
        server.AwaitCommand(command);
        end == End::kCancel ? client.ftp.Cancel() : client.ftp.ShutDown();
    });
    const int code = act();
    other.join();
    return code;
}

int Get(FtpClient& client, const char* name, bool passive)
{
    char* data = nullptr;
    int length = 0;
    const int code = client.ftp.DownloadBuffer(&data, &length, name, true, passive);
    std::free(data);
    return code;
}

TEST(FtpCancelTest, EndsACommandAndReadsOverItsReplyLater)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE a"), Pause(std::chrono::milliseconds(300)),
                               Say("250 Gone"), Answer("DELE b", "550 No"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    const int code =
        Ended(client, server, "DELE a", End::kCancel, [&] { return client.ftp.DeleteFile("a"); });

    EXPECT_EQ(code, kFtpCancelled);
    EXPECT_TRUE(client.ftp.IsConnected());
    EXPECT_EQ(client.ftp.DeleteFile("b"), 550);
}

TEST(FtpCancelTest, SendsNothingUntilTheMissingReplyHasCome)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE a"), Hang()});
    FtpClient client(server, FtpClient::kShort);
    ASSERT_EQ(client.LogIn(), 0);
    client.ftp.SetTimeout(FtpClient::kLong);
    ASSERT_EQ(
        Ended(client, server, "DELE a", End::kCancel, [&] { return client.ftp.DeleteFile("a"); }),
        kFtpCancelled);
    client.ftp.SetTimeout(FtpClient::kShort);

    EXPECT_EQ(client.ftp.DeleteFile("b"), kFtpTimedOut);

    EXPECT_EQ(server.CommandLog(), "USER anna\nPASS secret\nDELE a\n");
}

TEST(FtpCancelTest, DoesNothingWhenNothingRuns)
{
    FtpTree files;
    FtpServer server(files.Handler());
    FtpClient client(server);
    client.ftp.Cancel();
    ASSERT_EQ(client.LogIn(), 0);

    client.ftp.Cancel();

    EXPECT_EQ(client.ftp.ChangeDir("/"), 250);
}

TEST(FtpCancelTest, EndsALogin)
{
    FtpServer server(FtpScript{Say("220 Here"), Expect("USER"), Hang()});
    FtpClient client(server);

    EXPECT_EQ(Ended(client, server, "USER", End::kCancel, [&] { return client.LogIn(); }),
              kFtpCancelled);

    EXPECT_FALSE(client.ftp.IsConnected());
}

/// A server whose transfers take half a minute.
class FtpCancelTransferTest : public testing::TestWithParam<bool>
{
protected:
    FtpCancelTransferTest() : fServer(fFiles.Handler()), fClient(fServer)
    {
        FtpTree::Habits habits;
        habits.pause = std::chrono::milliseconds(100);
        fFiles.SetHabits(habits);
        fFiles.AddFile("/large", std::string(20 << 20, 'x'));
        fFiles.AddFile("/a", "apple");
    }

    void SetUp() override { ASSERT_EQ(fClient.LogIn(), 0); }

    FtpTree fFiles;
    FtpServer fServer;
    FtpClient fClient;
};

TEST_P(FtpCancelTransferTest, EndsADownloadAndGoesOn)
{
    const int code = Ended(fClient, fServer, "RETR large", End::kCancel,
                           [&] { return Get(fClient, "large", GetParam()); });

    EXPECT_EQ(code, kFtpCancelled);
    EXPECT_LT(fClient.ftp.BytesMoved(), 20 << 20);
    EXPECT_EQ(fClient.ftp.ChangeDir("/"), 250);
    EXPECT_EQ(Get(fClient, "a", GetParam()), 0);
}

TEST_P(FtpCancelTransferTest, EndsAnUploadAndGoesOn)
{
    FtpTree::Habits habits;
    habits.pause = std::chrono::milliseconds(500);
    fFiles.SetHabits(habits);
    const std::string data(64 << 20, 'y');

    const int code = Ended(fClient, fServer, "STOR b", End::kCancel, [&] {
        return fClient.ftp.UploadBuffer(data.data(), static_cast<int>(data.size()), "b", true,
                                        GetParam());
    });

    EXPECT_EQ(code, kFtpCancelled);
    EXPECT_EQ(fClient.ftp.ChangeDir("/"), 250);
    EXPECT_EQ(Get(fClient, "a", GetParam()), 0);
}

TEST_P(FtpCancelTransferTest, IsShutDownForGood)
{
    const int code = Ended(fClient, fServer, "RETR large", End::kShutDown,
                           [&] { return Get(fClient, "large", GetParam()); });

    EXPECT_EQ(code, kFtpCancelled);
    EXPECT_EQ(fClient.ftp.ChangeDir("/"), kFtpCancelled);
    EXPECT_EQ(fClient.LogIn(), kFtpCancelled);
    EXPECT_EQ(fClient.ftp.Disconnect(), 0);
}

INSTANTIATE_TEST_SUITE_P(Ways, FtpCancelTransferTest, testing::Values(false, true),
                         [](const auto& way) { return way.param ? "Passive" : "Active"; });

/// Ends its only transfer as it began it.
FtpScript BeginsTwice()
{
    return {LogIn(),
            Answer("TYPE I", "200 I"),
            Passive(),
            Expect("RETR"),
            OpenData(),
            Say("150 Coming (100 bytes)"),
            SendData("some"),
            Pause(std::chrono::milliseconds(200)),
            Say("150 It was on its way for long"),
            Answer("DELE a", "250 Gone"),
            Answer("DELE b", "550 No"),
            Hang()};
}

TEST(FtpCancelTest, GoesOnWhenABrokenTransferEndsLikeItsBegin)
{
    FtpServer server(BeginsTwice());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    client.atStep = [&] {
        client.ftp.Cancel();
        return 1;
    };

    EXPECT_EQ(Get(client, "large", true), kFtpCancelled);

    EXPECT_EQ(client.ftp.DeleteFile("a"), 0);
    EXPECT_EQ(client.ftp.DeleteFile("b"), 550);
}

TEST(FtpCancelTest, GoesOnWhenAnUnwantedTransferEndsLikeItsBegin)
{
    FtpServer server(BeginsTwice());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    client.atStep = [] {
        return 0;
    };

    EXPECT_EQ(Get(client, "large", true), 426);

    EXPECT_EQ(client.ftp.DeleteFile("a"), 0);
    EXPECT_EQ(client.ftp.DeleteFile("b"), 550);
}

TEST(FtpCancelTest, EndsTheWaitForADataConnection)
{
    FtpServer server(FtpScript{LogIn(), TakePort(), Answer("TYPE I", "200 I"),
                               Answer("RETR", "150 Coming"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(Ended(client, server, "RETR", End::kCancel, [&] { return Get(client, "a", false); }),
              kFtpCancelled);
}

TEST(FtpCancelTest, EndsAWaitByShuttingDown)
{
    FtpServer server(FtpScript{LogIn(), Expect("DELE"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(
        Ended(client, server, "DELE", End::kShutDown, [&] { return client.ftp.DeleteFile("a"); }),
        kFtpCancelled);
}

TEST(FtpCancelTest, EndsFromItsOwnCallback)
{
    FtpTree files;
    files.AddFile("/large", std::string(20 << 20, 'x'));
    FtpServer server(files.Handler());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    client.atStep = [&] {
        client.ftp.Cancel();
        return 1;
    };

    EXPECT_EQ(Get(client, "large", true), kFtpCancelled);
}

/// For the thread sanitizer: sockets come and go while others end them.
TEST(FtpCancelTest, MayComeAtAnyTime)
{
    FtpTree files;
    files.AddFile("/a", "apple");
    FtpServer server(files.Handler());
    for (int round = 0; round < 20; round++) {
        FtpClient client(server);
        std::atomic<bool> isOver = false;
        std::thread other([&] {
            while (!isOver) {
                client.ftp.Cancel();
                client.ftp.BytesMoved();
                std::this_thread::yield();
            }
        });
        client.LogIn();
        Get(client, "a", round % 2 == 0);
        client.ftp.Disconnect();
        isOver = true;
        other.join();

        std::thread last([&] { client.ftp.ShutDown(); });
        client.LogIn();
        Get(client, "a", round % 2 == 0);
        last.join();
        EXPECT_EQ(client.LogIn(), kFtpCancelled);
    }
}

} // namespace
