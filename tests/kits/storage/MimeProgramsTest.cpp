#include <Entry.h>
#include <Errors.h>
#include <Message.h>
#include <Mime.h>
#include <Path.h>
#include <Roster.h>

#include "DesktopPrograms.h"
#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/// Which of the desktop's programs opens what.
class MimeProgramsTest : public ::testing::Test
{
protected:
    void SetUp() override { fPrograms.Clear(); }

    static Names NamesIn(const BMessage& signatures)
    {
        Names names;
        const char* signature = nullptr;
        for (int32 index = 0; signatures.FindString("applications", index, &signature) == B_OK;
             index++) {
            char name[B_MIME_TYPE_LENGTH] = "(none)";
            BMimeType(signature).GetShortDescription(name);
            names.emplace_back(name);
        }
        return names;
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
    TempTree fTree;
    const Variable fConfig{"XDG_CONFIG_HOME", fTree.Path("config").c_str()};
    const Variable fData{"XDG_DATA_HOME", fTree.Path("data").c_str()};
};

TEST_F(MimeProgramsTest, ThePreferredOneIsThatOfTheDesktop)
{
    char signature[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(BMimeType("text/x-python").GetPreferredApp(signature), B_OK);
    EXPECT_STREQ(signature, "application/x-vnd.desktop.text");
    const BMimeType program(signature);
    EXPECT_TRUE(program.IsInstalled());
    char name[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(program.GetShortDescription(name), B_OK);
    EXPECT_STREQ(name, "text");
    entry_ref ref;
    EXPECT_EQ(program.GetAppHint(&ref), B_OK);
    EXPECT_EQ(std::string(BPath(&ref).Path()),
              fPrograms.Tree().Path("share/applications/text.desktop"));
}

TEST_F(MimeProgramsTest, WhereNoneIsSetThereIsNone)
{
    char signature[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(BMimeType("audio/x-wav").GetPreferredApp(signature), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BMimeType().GetPreferredApp(signature), B_NO_INIT);
    EXPECT_EQ(BMimeType("text/plain").GetPreferredApp(nullptr), B_BAD_VALUE);
    const BMimeType missing("application/x-vnd.desktop.no-such-program");
    EXPECT_FALSE(missing.IsInstalled());
    entry_ref ref;
    EXPECT_EQ(missing.GetAppHint(&ref), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BMimeType("text/plain").GetAppHint(&ref), B_ENTRY_NOT_FOUND);
}

TEST_F(MimeProgramsTest, ListsThoseForATypeThePreferredOneFirstAndAllByTheirNames)
{
    BMessage some;
    EXPECT_EQ(BMimeType("image/png").GetSupportingApps(&some), B_OK);
    EXPECT_EQ(NamesIn(some), (Names{"bare"}));
    BMessage all;
    EXPECT_EQ(BMimeType::GetWildcardApps(&all), B_OK);
    const Names names = NamesIn(all);
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_NE(std::find(names.begin(), names.end(), "address"), names.end());
    EXPECT_EQ(std::find(names.begin(), names.end(), "bare"), names.end()) << "it takes no files";
}

TEST_F(MimeProgramsTest, OpensFilesByASignature)
{
    const std::string path = fTree.Path("a b");
    const char* words[] = {path.c_str()};
    EXPECT_EQ(be_roster->Launch("application/x-vnd.desktop.text", 1, words), B_OK);
    const std::vector<StartRecord> started = fPrograms.Await();
    ASSERT_EQ(started.size(), 1u);
    EXPECT_EQ(started[0].arguments[1], "text");
    EXPECT_EQ(started[0].arguments[2], path);
    EXPECT_EQ(be_roster->Launch("application/x-vnd.desktop.no-such-program", 1, words),
              B_LAUNCH_FAILED_APP_NOT_FOUND);
    EXPECT_EQ(be_roster->Launch("application/x-vnd.other", 1, words),
              B_LAUNCH_FAILED_APP_NOT_FOUND);
    EXPECT_EQ(be_roster->Launch("no / signature", 1, words), B_BAD_VALUE);
}

TEST_F(MimeProgramsTest, TheTerminalIsKnownByItsSignature)
{
    const BMimeType terminal("application/x-vnd.be-shel");
    entry_ref ref;
    {
        const Variable none("TERMINAL", nullptr);
        const Variable path("PATH", fTree.Path("bin").c_str());
        EXPECT_FALSE(terminal.IsInstalled());
        EXPECT_EQ(terminal.GetAppHint(&ref), B_ENTRY_NOT_FOUND);
        fTree.MakeFolder("bin");
        DesktopPrograms::CopyRecorder(fTree.Path("bin/konsole"));
        DesktopPrograms::CopyRecorder(fTree.Path("bin/xterm"));
        EXPECT_EQ(terminal.GetAppHint(&ref), B_OK);
        EXPECT_STREQ(ref.name, "konsole");
        DesktopPrograms::CopyRecorder(fTree.Path("bin/x-terminal-emulator"));
        EXPECT_EQ(terminal.GetAppHint(&ref), B_OK);
        EXPECT_STREQ(ref.name, "x-terminal-emulator");
    }
    const Variable chosen("TERMINAL", (fTree.Path("bin/xterm") + " --hold").c_str());
    EXPECT_TRUE(terminal.IsInstalled());
    EXPECT_EQ(terminal.GetAppHint(&ref), B_OK);
    EXPECT_STREQ(ref.name, "xterm");
}

/// Signatures are types, whose letters are few; desktop files are called anything.
TEST_F(MimeProgramsTest, AnyNameOfAProgramComesBackFromItsSignature)
{
    BMessage all;
    EXPECT_EQ(BMimeType::GetWildcardApps(&all), B_OK);
    const Names names = NamesIn(all);
    EXPECT_NE(std::find(names.begin(), names.end(), "odd name"), names.end());
}

TEST_F(MimeProgramsTest, SetsAProgramForATypeAsThePersonsOwnChoice)
{
    BMimeType type("application/x-norvane-test");
    EXPECT_EQ(type.SetPreferredApp("application/x-vnd.desktop.no-such-program"), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(type.SetPreferredApp("application/x-vnd.desktop.text"), B_OK);
    char signature[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(type.GetPreferredApp(signature), B_OK);
    EXPECT_STREQ(signature, "application/x-vnd.desktop.text");
    EXPECT_EQ(type.SetPreferredApp(nullptr), B_BAD_VALUE);
    EXPECT_EQ(BMimeType().SetPreferredApp("application/x-vnd.desktop.text"), B_NO_INIT);
}

} // namespace
