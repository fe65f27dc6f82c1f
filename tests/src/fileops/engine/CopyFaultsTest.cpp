#include "fileops/engine/NorvaneEntry.h"

#include "CopyFixture.h"
#include "PrivateMounts.h"

#include <fcntl.h>
#include <unistd.h>

namespace norvane {

constexpr char kCannotRead[] = "Couldn't open the file for reading.";
constexpr char kNoSpace[] = "Out of space on the target volume.";

/// Copies that cannot succeed: nothing that was there before may suffer.
using CopyFaultsTest = CopyFixture;

TEST_F(CopyFaultsTest, AnUnreadableFileIsToldAndTheOthersAreCopied)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    SetMode("from/tree/a", 0000);
    fTree.MakeFolder("to");
    {
        const WithoutFileRights rights;
        EXPECT_TRUE(Copy("from/tree", "to"));
    }
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.notices, std::vector<std::string>{kCannotRead});
    EXPECT_EQ(fTree.List("to/tree"), "b\n");
}

TEST_F(CopyFaultsTest, AnUnreadableFolderIsReported)
{
    fTree.Write("from/tree/closed/x", "1");
    fTree.Write("from/tree/open/y", "2");
    SetMode("from/tree/closed", 0000);
    fTree.MakeFolder("to");
    {
        const WithoutFileRights rights;
        Copy("from/tree", "to");
    }
    SetMode("from/tree/closed", 0755);
    EXPECT_FALSE(fIsWhole);
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "closed");
    EXPECT_EQ(fTree.Read("to/tree/open/y"), "2");
}

TEST_F(CopyFaultsTest, ATargetFolderThatMayNotBeWrittenIsReported)
{
    fTree.Write("from/a", "1");
    fTree.MakeFolder("to");
    SetMode("to", 0555);
    {
        const WithoutFileRights rights;
        Copy("from/a", "to");
    }
    SetMode("to", 0755);
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to"), "");
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].second, "permission denied");
}

TEST_F(CopyFaultsTest, AMissingTargetFolderIsReported)
{
    fTree.Write("from/a", "1");
    EXPECT_FALSE(Copy("from/a", "gone"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.problems.size(), 1u);
    EXPECT_FALSE(fTree.Exists("gone"));
}

TEST_F(CopyFaultsTest, ASourceThatShrinksIsNotWhole)
{
    fTree.Write("from/a", std::string(1'000'000, 'x'));
    fTree.MakeFolder("to");
    fUI.onBytes = [this](int64) {
        ASSERT_EQ(truncate(fTree.Path("from/a").c_str(), 300'000), 0);
    };
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.problems.size(), 1u);
}

TEST_F(CopyFaultsTest, ASourceThatGrowsIsNotWhole)
{
    fTree.Write("from/a", std::string(100'000, 'x'));
    fTree.MakeFolder("to");
    fUI.onBytes = [this](int64) {
        ASSERT_EQ(truncate(fTree.Path("from/a").c_str(), 200'000), 0);
    };
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
}

TEST_F(CopyFaultsTest, ASourceThatShrinksReplacesNothing)
{
    fTree.Write("from/a", std::string(1'000'000, 'x'));
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite};
    fUI.onBytes = [this](int64) {
        ASSERT_EQ(truncate(fTree.Path("from/a").c_str(), 300'000), 0);
    };
    Copy("from/a", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.List("to"), "a\n");
}

TEST_F(CopyFaultsTest, ASourceThatVanishesIsTold)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    fTree.Write("from/tree/sub/c", "3");
    fTree.MakeFolder("to");
    fUI.onFile = [this](const std::string&) {
        fUI.onFile = nullptr;
        fTree.Remove("from/tree/b");
        fTree.Remove("from/tree/sub/c");
        fTree.Remove("from/tree/sub");
    };
    Copy("from/tree", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.notices, std::vector<std::string>{kCannotRead});
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "sub");
    EXPECT_EQ(fTree.List("to/tree"), "a\n");
}

TEST_F(CopyFaultsTest, AFolderSwappedForALinkLeadsNowhereElse)
{
    fTree.Write("secret/x", "1");
    fTree.Write("from/tree/a", "1");
    fTree.MakeFolder("from/tree/sub");
    fTree.MakeFolder("to");
    fUI.onFile = [this](const std::string&) {
        fUI.onFile = nullptr;
        fTree.Remove("from/tree/sub");
        fTree.Link("from/tree/sub", fTree.Path("secret"));
    };
    Copy("from/tree", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to/tree"), "a\n");
}

TEST_F(CopyFaultsTest, AFileSwappedForALinkLeadsNowhereElse)
{
    fTree.Write("secret", "secret");
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    fTree.MakeFolder("to");
    fUI.onFile = [this](const std::string&) {
        fUI.onFile = nullptr;
        fTree.Remove("from/tree/b");
        fTree.Link("from/tree/b", fTree.Path("secret"));
    };
    Copy("from/tree", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.notices, std::vector<std::string>{kCannotRead});
    EXPECT_EQ(fTree.List("to/tree"), "a\n");
}

TEST_F(CopyFaultsTest, AFullVolumeIsToldAndKeepsThePartOfANewFile)
{
    fTree.Write("from/a", std::string(3 << 20, 'x'));
    fTree.MakeFolder("to");
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        const bool isDone = Copy("from/a", "to");
        return Check(!isDone, "says false") && Check(!fIsWhole, "not whole") &&
               Check(fUI.notices == std::vector<std::string>{kNoSpace}, "told once") &&
               Check(fTree.Exists("to/a"), "the part stays") &&
               Check(fTree.Read("to/a").size() <= (1 << 20), "no more than fits");
    }));
}

TEST_F(CopyFaultsTest, AFullVolumeLeavesTheReplacedFileUnharmed)
{
    fTree.Write("from/a", std::string(3 << 20, 'x'));
    fTree.MakeFolder("to");
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        fTree.Write("to/a", "old");
        fUI.answers = {kAnswerOverwrite};
        const bool isDone = Copy("from/a", "to");
        return Check(!isDone, "says false") && Check(!fIsWhole, "not whole") &&
               Check(fTree.Read("to/a") == "old", "the old file is there") &&
               Check(fTree.List("to") == "a\n", "nothing beside it");
    }));
}

TEST_F(CopyFaultsTest, OneSmallFileThatJustDoesNotFitIsNoticed)
{
    // One write, shorter than any block: its failure shows only when the buffer is handed over.
    fTree.Write("from/fill", std::string(1 << 20, 'x'));
    fTree.Write("from/small", std::string(3000, 'y'));
    fTree.MakeFolder("to");
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 20)) {
            return false;
        }
        const bool fits = Copy("from/fill", "to") && fIsWhole;
        const bool isDone = Copy("from/small", "to");
        return Check(fits, "the first fits") &&
               Check(!isDone && !fIsWhole, "the second does not") &&
               Check(fUI.notices == std::vector<std::string>{kNoSpace}, "told once");
    }));
}

TEST_F(CopyFaultsTest, AReadOnlyTargetIsReported)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("to/tree/kept", "old");
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountReadOnly(fTree.Path("to"))) {
            return false;
        }
        Copy("from/tree", "to");
        return Check(!fIsWhole, "not whole") &&
               Check(fUI.problems.size() == 1 && fUI.problems[0].first == "a", "one problem") &&
               Check(fTree.List("to/tree") == "kept\n", "nothing was made");
    }));
}

} // namespace norvane
