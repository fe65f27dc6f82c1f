#include "ftp/remote/RemoteDeletion.h"

#include "FtpServer.h"
#include "FtpTree.h"
#include "ftp/client/clsFTP.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

using namespace norvane;

/// Deletes on a server whose habits the test sets.
class RemoteDeletionTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fServed.AddFile("/pub/sub/a", "a");
        fServed.AddFile("/pub/sub/below/b", "b");
        fServed.AddFile("/pub/kept", "kept");
    }

    /// Answers the commands that begin like this with a line; the others are carried out.
    void Answer(const std::string& command, const std::string& line)
    {
        FtpTree::Habits habits;
        habits.answer = [command, line](const std::string& said) -> std::optional<std::string> {
            return said.starts_with(command) ? std::optional<std::string>(line + "\r\n")
                                             : std::nullopt;
        };
        fServed.SetHabits(habits);
    }

    void Connect()
    {
        fServer = std::make_unique<FtpServer>(fServed.Handler());
        fClient.SetHost(fServer->Host(), fServer->Port(), nullptr, 0);
        ASSERT_EQ(fClient.Connect(FtpTree::kUser, FtpTree::kPassword, nullptr), 0);
        ASSERT_EQ(fFolder.Go("/pub"), 0);
    }

    std::string Delete(const std::string& folder)
    {
        RemoteConnection::Desk desk{fClient, fFolder, fIsCancelled};
        RemoteDeletion deletion(desk, [this] { fAsked++; });
        deletion.DeleteFolders({folder});
        return deletion.Problems().IsEmpty() ? "" : deletion.Problems().Text();
    }

    int Count(const std::string& command) const
    {
        const std::vector<std::string> commands = fServer->Commands();
        return static_cast<int>(
            std::count_if(commands.begin(), commands.end(),
                          [&](const std::string& said) { return said.starts_with(command); }));
    }

    FtpTree fServed;
    std::unique_ptr<FtpServer> fServer;
    clsFTP fClient{2000, nullptr, nullptr};
    RemoteFolder fFolder{fClient, false};
    std::atomic<bool> fIsCancelled{false};
    int fAsked = 0;
};

TEST_F(RemoteDeletionTest, AWholeTreeGoesFromTheBottomUp)
{
    Connect();
    EXPECT_EQ(Delete("sub"), "");
    EXPECT_EQ(fServed.List(), "/\n/pub/\n/pub/kept\n");
    EXPECT_EQ(fAsked, 1); // not again for what lies below
    EXPECT_EQ(fFolder.Path(), "/pub");
}

TEST_F(RemoteDeletionTest, AnEmptyFolderIsNotAskedAbout)
{
    fServed.AddFolder("/pub/empty");
    Connect();
    EXPECT_EQ(Delete("empty"), "");
    EXPECT_EQ(fAsked, 0);
    EXPECT_FALSE(fServed.Exists("/pub/empty"));
}

TEST_F(RemoteDeletionTest, AFolderThatCannotBeEnteredIsLeftAlone)
{
    Answer("CWD sub", "550 No");
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("\tsub: the server says \"550 No\""), std::string::npos) << problems;
    EXPECT_EQ(Count("LIST"), 0);
    EXPECT_EQ(Count("DELE"), 0);
    EXPECT_EQ(Count("CDUP"), 0);
}

// A server that says yes and stays would have the folder's own folder emptied.
TEST_F(RemoteDeletionTest, AFolderThatTheServerDoesNotGoIntoIsLeftAlone)
{
    Answer("CWD sub", "250 Of course");
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("\tsub: the server stays where it is"), std::string::npos) << problems;
    EXPECT_EQ(Count("DELE"), 0);
    EXPECT_EQ(fServed.Read("/pub/kept"), "kept");
}

TEST_F(RemoteDeletionTest, WhatCannotBeListedIsNotEmptied)
{
    Answer("LIST", "550 No");
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("\tsub: "), std::string::npos) << problems;
    EXPECT_EQ(Count("DELE"), 0);
    EXPECT_EQ(fFolder.Path(), "/pub");
}

TEST_F(RemoteDeletionTest, WhatIsRefusedBelowIsToldAndTheRestGoes)
{
    Answer("DELE b", "550 Not yours");
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("\tb: the server says \"550 Not yours\""), std::string::npos)
        << problems;
    EXPECT_EQ(fServed.List(),
              "/\n/pub/\n/pub/kept\n/pub/sub/\n/pub/sub/below/\n/pub/sub/below/b\n");
    EXPECT_EQ(fFolder.Path(), "/pub");
}

TEST_F(RemoteDeletionTest, NamesThatLeadElsewhereAreSentNowhere)
{
    FtpTree::Habits habits;
    habits.listing = [](const std::string& folder) -> std::optional<std::string> {
        if (folder != "/pub/sub/below") {
            return std::nullopt;
        }
        return "-rw-r--r--   1 a b 1 Jan 1 10:00 ../../kept\r\n"
               "-rw-r--r--   1 a b 1 Jan 1 10:00 /pub/kept\r\n"
               "-rw-r--r--   1 a b 1 Jan 1 10:00 b\r\n";
    };
    fServed.SetHabits(habits);
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("\t../../kept: "), std::string::npos) << problems;
    EXPECT_EQ(Count("DELE .."), 0);
    EXPECT_EQ(Count("DELE /"), 0);
    EXPECT_EQ(fServed.Read("/pub/kept"), "kept");
}

// Many servers take such a name for a home folder.
TEST_F(RemoteDeletionTest, ANameWithATildeMeansThatEntry)
{
    fServed.AddFile("/pub/~/~", "x");
    Connect();
    EXPECT_EQ(Delete("~"), "");
    EXPECT_EQ(Count("RMD ~") + Count("DELE ~") + Count("CWD ~"), 0);
    EXPECT_FALSE(fServed.Exists("/pub/~"));
}

// Each folder of this server has a folder "again" in it.
TEST_F(RemoteDeletionTest, AnEndlessTreeIsLeftSomewhere)
{
    int depth = 0;
    FtpTree::Habits habits;
    habits.answer = [&depth](const std::string& said) -> std::optional<std::string> {
        if (said.starts_with("CWD again")) {
            depth++;
            return "250 Deeper\r\n";
        }
        if (said == "CDUP" && depth > 0) {
            depth--;
            return "250 Up\r\n";
        }
        if (said == "PWD" && depth > 0) {
            return "257 \"/pub/sub/" + std::to_string(depth) + "\"\r\n";
        }
        return said.starts_with("RMD") ? std::optional<std::string>("550 Not empty\r\n")
                                       : std::nullopt;
    };
    habits.listing = [](const std::string& folder) -> std::optional<std::string> {
        return folder == "/pub/sub"
                   ? std::optional<std::string>("drwxr-xr-x   2 a b 1 Jan 1 10:00 again\r\n")
                   : std::nullopt;
    };
    fServed.SetHabits(habits);
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems.find("too many folders in folders"), std::string::npos) << problems;
    EXPECT_EQ(fFolder.Path(), "/pub");
}

TEST_F(RemoteDeletionTest, AServerThatGoesEndsIt)
{
    Answer("DELE", "421 Goodbye");
    Connect();
    const std::string problems = Delete("sub");
    EXPECT_NE(problems, "");
    EXPECT_EQ(fServed.Read("/pub/kept"), "kept");
}

TEST_F(RemoteDeletionTest, ThePersonMayEndIt)
{
    Connect();
    fIsCancelled = true;
    EXPECT_EQ(Delete("sub"), "");
    EXPECT_EQ(Count("RMD"), 0);
}

} // namespace
