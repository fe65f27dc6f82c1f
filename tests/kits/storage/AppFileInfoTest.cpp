#include <AppFileInfo.h>
#include <Entry.h>
#include <Errors.h>
#include <File.h>

#include "DesktopPrograms.h"
#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

constexpr const char* kTerminal = "application/x-vnd.be-shel";

/// What programs' files say of the programs.
class AppFileInfoTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DesktopPrograms::CopyRecorder(fTree.Path("terminal"));
        DesktopPrograms::CopyRecorder(fTree.Path("other"));
        fTree.Link("link", "terminal");
    }

    status_t SignatureOf(const std::string& name, std::string* signature)
    {
        BFile file(fTree.Path(name).c_str(), B_READ_ONLY);
        char text[B_MIME_TYPE_LENGTH] = "";
        const status_t status = BAppFileInfo(&file).GetSignature(text);
        *signature = text;
        return status;
    }

    TempTree fTree;
    const Variable fTerminal{"TERMINAL", fTree.Path("link").c_str()};
};

TEST_F(AppFileInfoTest, TheTerminalHasThePlatformsSignature)
{
    std::string signature;
    EXPECT_EQ(SignatureOf("terminal", &signature), B_OK);
    EXPECT_EQ(signature, kTerminal);
    EXPECT_EQ(SignatureOf("link", &signature), B_OK);
    EXPECT_EQ(signature, kTerminal);
    EXPECT_EQ(SignatureOf("other", &signature), B_ENTRY_NOT_FOUND);
}

TEST_F(AppFileInfoTest, KeepsASignature)
{
    BFile file(fTree.Path("other").c_str(), B_READ_WRITE);
    BAppFileInfo program(&file);
    const status_t status = program.SetSignature("application/x-vnd.Some-Program");
    if (status == B_UNSUPPORTED) {
        GTEST_SKIP() << "no attributes here";
    }
    ASSERT_EQ(status, B_OK);
    std::string signature;
    EXPECT_EQ(SignatureOf("other", &signature), B_OK);
    EXPECT_EQ(signature, "application/x-vnd.Some-Program");
    EXPECT_EQ(program.SetSignature("no / type"), B_BAD_VALUE);
    EXPECT_EQ(program.SetSignature(nullptr), B_OK);
    EXPECT_EQ(SignatureOf("other", &signature), B_ENTRY_NOT_FOUND);
}

TEST_F(AppFileInfoTest, ThereIsNoneWithoutAFile)
{
    char text[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(BAppFileInfo().InitCheck(), B_NO_INIT);
    EXPECT_EQ(BAppFileInfo().GetSignature(text), B_NO_INIT);
    BFile missing(fTree.Path("missing").c_str(), B_READ_ONLY);
    EXPECT_EQ(BAppFileInfo(&missing).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BAppFileInfo(&missing).GetSignature(text), B_NO_INIT);
}

} // namespace
