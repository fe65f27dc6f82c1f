#include "FtpClient.h"

#include "ftp/client/RemoteFolder.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;
using namespace ftp_script;

TEST(RemoteFolderTest, AQuoteIsWrittenTwiceInAPath)
{
    EXPECT_EQ(PathInReply("/pub/quote\"\"s"), "/pub/quote\"s");
    EXPECT_EQ(PathInReply("/\"\"\"\""), "/\"\"");
    EXPECT_EQ(PathInReply("/one\"alone"), "/one\"alone");
    EXPECT_EQ(PathInReply("/plain"), "/plain");
    EXPECT_EQ(PathInReply(nullptr), "");
}

TEST(RemoteFolderTest, ComesBackToAFolderWithAQuote)
{
    FtpServer server(FtpScript{LogIn(), Answer("CWD a\"b", "250 In"),
                               Answer("PWD", "257 \"/a\"\"b\" is here"), Answer("CWD /", "250 In"),
                               Answer("PWD", "257 \"/\" is here"), Answer("CWD /a\"b", "250 In"),
                               Answer("PWD", "257 \"/a\"\"b\" is here"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    RemoteFolder folder(client.ftp, true);
    ASSERT_EQ(folder.Enter("a\"b"), 0);
    const std::string path = folder.Path();
    ASSERT_EQ(folder.Go("/"), 0);

    EXPECT_EQ(folder.Go(path), 0);

    EXPECT_EQ(path, "/a\"b");
    EXPECT_EQ(server.Surprise(), "");
}

TEST(RemoteFolderTest, EntersNobodysHome)
{
    FtpServer server(FtpScript{LogIn(), Answer("CWD ./~", "250 In"),
                               Answer("PWD", "257 \"/pub/~\" is here"), Hang()});
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);
    RemoteFolder folder(client.ftp, true);

    EXPECT_EQ(folder.Enter("~"), 0);

    EXPECT_EQ(folder.Path(), "/pub/~");
    EXPECT_EQ(server.Surprise(), "");
}

} // namespace
