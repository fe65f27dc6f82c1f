#include "ftp/client/SessionFile.h"

#include "SettingsFixture.h"

#include <Errors.h>

#include <sys/stat.h>
#include <unistd.h>

namespace norvane {

namespace {

class SessionFileTest : public SettingsFixture
{
protected:
    std::string PathOf(const std::string& file) const
    {
        return fTree.Path("config/Norvane/" + file);
    }
    void WriteFile(const std::string& file, const std::string& contents)
    {
        fTree.Write("config/Norvane/" + file, contents);
    }
    std::string ReadFile(const std::string& file) const
    {
        return fTree.Read("config/Norvane/" + file);
    }
    static FtpSession Home()
    {
        FtpSession session;
        session.host = "ftp.example.org";
        session.port = "2121";
        session.user = "anna";
        session.password = "geheim = so";
        session.remoteDir = "/pub/neu";
        session.localDir = "/home/anna";
        return session;
    }
    mode_t ModeOf(const std::string& path) const
    {
        struct stat st = {};
        EXPECT_EQ(stat(path.c_str(), &st), 0);
        return st.st_mode & 0777;
    }
};

TEST_F(SessionFileTest, CreatesItOnceForItsOwnerAlone)
{
    ASSERT_EQ(SessionFile("home.ftp").Create(), B_OK);
    EXPECT_EQ(ModeOf(PathOf("home.ftp")), mode_t(0600));
    EXPECT_EQ(SessionFile("home.ftp").Create(), B_FILE_EXISTS);
    EXPECT_EQ(SessionFile("in/side.ftp").Create(), B_BAD_VALUE);

    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);
    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);
    EXPECT_EQ(read.host, "ftp.example.org");
}

TEST_F(SessionFileTest, LinkThatLeadsNowhereIsInTheWay)
{
    ASSERT_EQ(SessionFile("home.ftp").Create(), B_OK);
    ASSERT_EQ(unlink(PathOf("home.ftp").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", PathOf("home.ftp").c_str()), 0);

    EXPECT_EQ(SessionFile("home.ftp").Create(), B_FILE_EXISTS);
}

TEST_F(SessionFileTest, ReadsWhatItWrote)
{
    FtpSession written = Home();
    written.isPassive = true;
    ASSERT_EQ(SessionFile("home.ftp").Write(written), B_OK);

    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);

    EXPECT_EQ(read.name, "home");
    EXPECT_EQ(read.host, "ftp.example.org");
    EXPECT_EQ(read.port, "2121");
    EXPECT_EQ(read.user, "anna");
    EXPECT_EQ(read.password, "geheim = so");
    EXPECT_EQ(read.remoteDir, "/pub/neu");
    EXPECT_EQ(read.localDir, "/home/anna");
    EXPECT_TRUE(read.isPassive);
}

TEST_F(SessionFileTest, WritesTheSixKeysOfAnActiveSession)
{
    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);

    EXPECT_EQ(ReadFile("home.ftp"), "Host=ftp.example.org\nPort=2121\nUser=anna\nPass=geheim = so\n"
                                    "RemoteDir=/pub/neu\nLocalDir=/home/anna\n");
}

TEST_F(SessionFileTest, PassiveGoesOnAndOff)
{
    FtpSession session = Home();
    session.isPassive = true;
    ASSERT_EQ(SessionFile("home.ftp").Write(session), B_OK);
    EXPECT_NE(ReadFile("home.ftp").find("\nPassive=1\n"), std::string::npos);
    session.isPassive = false;
    ASSERT_EQ(SessionFile("home.ftp").Write(session), B_OK);

    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);
    EXPECT_FALSE(read.isPassive);
}

TEST_F(SessionFileTest, OnlyOneIsPassive)
{
    FtpSession session;
    for (const char* value : {"0", "", "2", "yes", "1 ", "11"}) {
        WriteFile("home.ftp", std::string("Passive=") + value + "\n");
        ASSERT_EQ(SessionFile("home.ftp").Read(&session), B_OK);
        EXPECT_FALSE(session.isPassive) << value;
    }
}

TEST_F(SessionFileTest, IsItsOwnersOnly)
{
    const mode_t old = umask(0);
    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);
    umask(old);

    EXPECT_EQ(ModeOf(PathOf("home.ftp")), 0600u);
    EXPECT_EQ(ModeOf(PathOf("")), 0700u);
}

TEST_F(SessionFileTest, IsMadeItsOwnersOnly)
{
    WriteFile("home.ftp", "Host=a\n");
    ASSERT_EQ(chmod(PathOf("home.ftp").c_str(), 0644), 0);

    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);

    EXPECT_EQ(ModeOf(PathOf("home.ftp")), 0600u);
}

TEST_F(SessionFileTest, KeepsUnknownKeysThatALongerValueOverwrites)
{
    WriteFile("home.ftp", "Host=a\nColour=blue\nPort=21\nNote=see = there\n");

    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);

    const std::string contents = ReadFile("home.ftp");
    EXPECT_NE(contents.find("\nColour=blue\n"), std::string::npos) << contents;
    EXPECT_NE(contents.find("\nNote=see = there\n"), std::string::npos) << contents;
    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);
    EXPECT_EQ(read.host, "ftp.example.org");
    EXPECT_EQ(read.port, "2121");
}

TEST_F(SessionFileTest, DoesNotGrowFromEditToEdit)
{
    FtpSession session = Home();
    for (int round = 0; round < 60; round++) {
        session.host = std::string(5 + 41 * (round % 2), 'h');
        session.password = std::string(3 + 29 * (round % 3), 'p');
        ASSERT_EQ(SessionFile("home.ftp").Write(session), B_OK) << round;
    }

    EXPECT_LT(ReadFile("home.ftp").size(), 1500u) << ReadFile("home.ftp");
}

TEST_F(SessionFileTest, ReadsAFileWithBrokenLines)
{
    WriteFile("home.ftp", "\n=\nHost\nhost=no\nUser=" + std::string(400, 'u') +
                              "\nUser=anna\n\xff\xfe=1\nHost=here\nHost=there\nPort=21\nx");
    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);

    EXPECT_EQ(read.host, "here");
    EXPECT_EQ(read.user, "anna");
    EXPECT_EQ(read.port, "21");
    EXPECT_EQ(read.password, "");
}

TEST_F(SessionFileTest, WritesAFileWithBrokenLines)
{
    WriteFile("home.ftp", "\n=\nHost\nUser=" + std::string(400, 'u') + "\n\xff\xfe=1\nPort=21\nx");

    ASSERT_EQ(SessionFile("home.ftp").Write(Home()), B_OK);

    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);
    EXPECT_EQ(read.host, "ftp.example.org");
    EXPECT_EQ(read.user, "anna");
    EXPECT_EQ(read.localDir, "/home/anna");
}

TEST_F(SessionFileTest, AMissingFileIsTold)
{
    FtpSession session;
    session.host = "untouched";

    EXPECT_EQ(SessionFile("home.ftp").Read(&session), B_ENTRY_NOT_FOUND);

    EXPECT_EQ(session.host, "untouched");
    EXPECT_EQ(access(PathOf("home.ftp").c_str(), F_OK), -1);
}

TEST_F(SessionFileTest, WhatIsNoSessionIsNotRead)
{
    fTree.MakeFolder("config/Norvane/folder.ftp");
    ASSERT_EQ(mkfifo(PathOf("fifo.ftp").c_str(), 0600), 0);
    WriteFile("huge.ftp", "Host=a\n");
    ASSERT_EQ(truncate(PathOf("huge.ftp").c_str(), off_t{1} << 40), 0);
    fTree.Link("config/Norvane/endless.ftp", "/dev/zero");
    fTree.Link("config/Norvane/circle.ftp", "circle.ftp");

    FtpSession session;
    for (const char* name : {"folder.ftp", "fifo.ftp", "huge.ftp", "endless.ftp"}) {
        EXPECT_EQ(SessionFile(name).Read(&session), B_BAD_TYPE) << name;
        EXPECT_EQ(SessionFile(name).Write(Home()), B_BAD_TYPE) << name;
    }
    EXPECT_NE(SessionFile("circle.ftp").Read(&session), B_OK);
    EXPECT_NE(SessionFile("circle.ftp").Write(Home()), B_OK);
}

TEST_F(SessionFileTest, NoNameLeadsOutOfTheFolder)
{
    fTree.Write("config/secret.ftp", "Host=a\n");
    FtpSession session;

    EXPECT_EQ(SessionFile("../secret.ftp").Read(&session), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(SessionFile("../other.ftp").Write(Home()), B_BAD_VALUE);

    EXPECT_FALSE(fTree.Exists("config/other.ftp"));
}

TEST_F(SessionFileTest, ListsTheNamesOfSessionsSorted)
{
    for (const char* name : {"b.ftp", "a.b.ftp", "Z.ftp", "Norvane.pref", "upper.FTP", "ftp",
                             "c.ftp.bak", ".ftp", "d.ftpx"}) {
        WriteFile(name, "");
    }
    std::vector<std::string> names = {"old"};

    ASSERT_EQ(SessionFile::List(&names), B_OK);

    EXPECT_EQ(names, (std::vector<std::string>{"Z", "a.b", "b"}));
}

TEST_F(SessionFileTest, ListingMakesTheFolder)
{
    std::vector<std::string> names = {"old"};

    ASSERT_EQ(SessionFile::List(&names), B_OK);

    EXPECT_TRUE(names.empty());
    EXPECT_EQ(ModeOf(PathOf("")), 0700u);
}

TEST_F(SessionFileTest, ListingTellsWhyNot)
{
    fTree.Write("config/Norvane", "a file");
    std::vector<std::string> names = {"old"};

    EXPECT_EQ(SessionFile::List(&names), B_NOT_A_DIRECTORY);

    EXPECT_EQ(names.size(), 1u);
}

TEST_F(SessionFileTest, RemovesTheFileAlone)
{
    WriteFile("target", "kept");
    fTree.Link("config/Norvane/link.ftp", "target");
    WriteFile("home.ftp", "");

    EXPECT_EQ(SessionFile("home.ftp").Remove(), B_OK);
    EXPECT_EQ(SessionFile("link.ftp").Remove(), B_OK);
    EXPECT_EQ(SessionFile("home.ftp").Remove(), B_ENTRY_NOT_FOUND);

    EXPECT_EQ(fTree.List("config/Norvane"), "target\n");
}

TEST_F(SessionFileTest, NamesAreWhatFilesCanBeCalled)
{
    EXPECT_EQ(SessionFile("a.b.ftp").Name(), "a.b");
    EXPECT_EQ(SessionFile::FileNameOf("a.b"), "a.b.ftp");
    for (const std::string& name :
         {std::string("a"), std::string("..."), std::string("a b"), std::string("\xc3\xa4.ftp"),
          std::string(".hidden"), std::string(251, 'n')}) {
        EXPECT_EQ(SessionFile::ReasonAgainstName(name), nullptr) << name;
    }
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("a/b"), std::string("/"),
          std::string("../a"), std::string("a\nb"), std::string("a\r"), std::string(252, 'n')}) {
        EXPECT_NE(SessionFile::ReasonAgainstName(name), nullptr) << name;
    }
}

TEST_F(SessionFileTest, TheLongestNameIsWritten)
{
    const std::string file = SessionFile::FileNameOf(std::string(251, 'n'));

    ASSERT_EQ(SessionFile(file).Write(Home()), B_OK);

    FtpSession read;
    EXPECT_EQ(SessionFile(file).Read(&read), B_OK);
    EXPECT_EQ(read.user, "anna");
}

TEST_F(SessionFileTest, PortsAreNumbersFromOneTo65535)
{
    for (const char* port : {"1", "21", "65535", "00021"}) {
        EXPECT_TRUE(SessionFile::IsPort(port)) << port;
    }
    for (const char* port : {"", "0", "00000", "65536", "99999", "-1", "+21", " 21", "21 ", "2x",
                             "x", "100000", "99999999999999999999"}) {
        EXPECT_FALSE(SessionFile::IsPort(port)) << port;
    }
}

TEST_F(SessionFileTest, TellsWhichValueCannotBeKept)
{
    struct
    {
        std::string FtpSession::*text;
        const char* key;
    } const kAll[] = {{&FtpSession::host, "Host"},           {&FtpSession::port, "Port"},
                      {&FtpSession::user, "User"},           {&FtpSession::password, "Pass"},
                      {&FtpSession::remoteDir, "RemoteDir"}, {&FtpSession::localDir, "LocalDir"}};
    for (const auto& [text, key] : kAll) {
        for (const std::string& value : {std::string("a\nb"), std::string("a\r"),
                                         std::string(258 - std::string(key).size(), 'v')}) {
            FtpSession session = Home();
            session.*text = value;
            EXPECT_STREQ(SessionFile::KeyThatCannotBeKept(session), key);
            EXPECT_EQ(SessionFile("home.ftp").Write(session), B_BAD_VALUE);
        }
    }
    EXPECT_EQ(access(PathOf("home.ftp").c_str(), F_OK), -1);
}

TEST_F(SessionFileTest, KeepsTheLongestValueWhole)
{
    FtpSession session = Home();
    session.password = std::string(253, 'p'); // "Pass=", the line feed and the end make 260
    ASSERT_EQ(SessionFile::KeyThatCannotBeKept(session), nullptr);
    ASSERT_EQ(SessionFile("home.ftp").Write(session), B_OK);

    FtpSession read;
    ASSERT_EQ(SessionFile("home.ftp").Read(&read), B_OK);

    EXPECT_EQ(read.password, session.password);
    EXPECT_EQ(read.remoteDir, "/pub/neu");
}

} // namespace

} // namespace norvane
