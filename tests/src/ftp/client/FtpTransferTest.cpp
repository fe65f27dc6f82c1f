#include "FtpClient.h"
#include "FtpTree.h"
#include "TempTree.h"

#include <File.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <memory>

namespace {

using namespace norvane;

/// Lists with a client, and frees what it gets.
std::string ListedBy(FtpClient& client, bool passive, int* code)
{
    char* listing = nullptr;
    *code = client.ftp.List(nullptr, &listing, passive);
    const std::string text = listing != nullptr ? listing : "(null)";
    std::free(listing);
    return text;
}

struct Way
{
    const char* name;
    const char* host;
    bool isPassive;
};

/// Every transfer, by every kind of data connection.
class FtpTransferTest : public testing::TestWithParam<Way>
{
protected:
    FtpTransferTest() : fServer(fFiles.Handler(), GetParam().host), fClient(fServer)
    {
        fFiles.AddFile("/a", "apple");
        fFiles.AddFolder("/empty");
    }

    void SetUp() override
    {
        if (!fServer.IsListening()) {
            GTEST_SKIP() << "This machine has no " << GetParam().host;
        }
        ASSERT_EQ(fClient.LogIn(), 0);
    }

    bool Passive() const { return GetParam().isPassive; }

    FtpTree fFiles;
    FtpServer fServer;
    FtpClient fClient;
    TempTree fTree;
};

TEST_P(FtpTransferTest, ListsAFolder)
{
    int code = -1;

    const std::string text = ListedBy(fClient, Passive(), &code);

    EXPECT_EQ(code, 0);
    EXPECT_NE(text.find(" a\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.size() - 6), "empty\r");
    EXPECT_TRUE(fClient.ftp.ListingHasLineFeed());
}

TEST_P(FtpTransferTest, UploadsAFile)
{
    fTree.Write("local", "pear");

    const int code = fClient.ftp.Upload(fTree.Path("local").c_str(), "/empty/b", true, Passive());

    EXPECT_EQ(code, 0);
    EXPECT_EQ(fFiles.Read("/empty/b"), "pear");
}

TEST_P(FtpTransferTest, UploadsFromMemory)
{
    EXPECT_EQ(fClient.ftp.UploadBuffer("plum", 4, "b", true, Passive()), 0);

    EXPECT_EQ(fFiles.Read("/b"), "plum");
}

TEST_P(FtpTransferTest, DownloadsAFile)
{
    const int code =
        fClient.ftp.Download("a", (fTree.Path() + "/").c_str(), "local", true, Passive());

    EXPECT_EQ(code, 0);
    EXPECT_EQ(fTree.Read("local"), "apple");
}

TEST_P(FtpTransferTest, DownloadsIntoMemory)
{
    char* data = nullptr;
    int length = -1;

    EXPECT_EQ(fClient.ftp.DownloadBuffer(&data, &length, "a", true, Passive()), 0);

    EXPECT_EQ(std::string(data, static_cast<size_t>(length)), "apple");
    std::free(data);
}

INSTANTIATE_TEST_SUITE_P(Ways, FtpTransferTest,
                         testing::Values(Way{"Active", "127.0.0.1", false},
                                         Way{"Passive", "127.0.0.1", true},
                                         Way{"ActiveSix", "::1", false},
                                         Way{"PassiveSix", "::1", true}),
                         [](const auto& way) { return std::string(way.param.name); });

} // namespace
