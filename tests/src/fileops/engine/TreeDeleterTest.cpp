#include "fileops/engine/NorvaneEntry.h"

#include "CopyFixture.h"
#include "PrivateMounts.h"

#include <algorithm>
#include <sys/mount.h>
#include <sys/stat.h>

namespace norvane {

/// Deletions: of all that can go, and of nothing else.
class TreeDeleterTest : public CopyFixture
{
protected:
    bool Delete(const std::string& name)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return NorvaneEntry(&ref).DeleteEntry(fUI);
    }

    std::string ProblemNames() const
    {
        std::string names;
        for (const auto& [name, reason] : fUI.problems) {
            names += name + " ";
        }
        return names;
    }
};

TEST_F(TreeDeleterTest, DeletesAFileALinkAndATree)
{
    fTree.Write("kept/inside", "1");
    fTree.Write("file", "1");
    fTree.Link("link", "kept");
    fTree.Write("tree/a", "1");
    fTree.Write("tree/deep/deeper/b", "2");
    fTree.MakeFolder("tree/empty");
    fTree.Link("tree/to-kept", fTree.Path("kept"));
    EXPECT_TRUE(Delete("file"));
    EXPECT_TRUE(Delete("link"));
    EXPECT_TRUE(Delete("tree"));
    EXPECT_EQ(fTree.List(), "kept\n");
    EXPECT_EQ(fTree.Read("kept/inside"), "1");
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(TreeDeleterTest, DeletesEveryKindOfNodeAndName)
{
    ASSERT_EQ(mkdir(fTree.Path("tree").c_str(), 0755), 0);
    ASSERT_EQ(mkfifo(fTree.Path("tree/fifo").c_str(), 0600), 0);
    fTree.Link("tree/broken", "gone");
    fTree.Write("tree/two\nlines", "1");
    fTree.Write("tree/-rf", "1");
    fTree.Write("tree/bad-\xff", "1");
    fTree.Write("tree/" + std::string(255, 'n') + "/x", "1");
    EXPECT_TRUE(Delete("tree"));
    EXPECT_EQ(fTree.List(), "");
}

TEST_F(TreeDeleterTest, WithoutAnyoneToTellItIsSilent)
{
    fTree.Write("tree/a", "1");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("tree").c_str(), &ref), B_OK);
    NorvaneEntry(&ref).DeleteEntry();
    EXPECT_EQ(fTree.List(), "");
}

TEST_F(TreeDeleterTest, RemovesWhatItCanAndTellsWhatStays)
{
    fTree.Write("tree/closed/stays", "1");
    fTree.Write("tree/a", "1");
    fTree.Write("tree/open/b", "1");
    SetMode("tree/closed", 0555);
    {
        const WithoutFileRights rights;
        EXPECT_FALSE(Delete("tree"));
    }
    EXPECT_EQ(fTree.List("tree"), "closed\n");
    EXPECT_EQ(fTree.Read("tree/closed/stays"), "1");
    EXPECT_EQ(ProblemNames(), "stays ");
    SetMode("tree/closed", 0755);
}

TEST_F(TreeDeleterTest, AnUnreadableFolderStaysAndIsTold)
{
    fTree.Write("tree/closed/x", "1");
    fTree.MakeFolder("tree/empty");
    SetMode("tree/closed", 0000);
    SetMode("tree/empty", 0000);
    {
        const WithoutFileRights rights;
        EXPECT_FALSE(Delete("tree"));
    }
    SetMode("tree/closed", 0755);
    EXPECT_EQ(ProblemNames(), "closed ");
    EXPECT_EQ(fTree.List("tree"), "closed\n");
}

TEST_F(TreeDeleterTest, EntersNoMountPoint)
{
    fTree.Write("other/precious", "1");
    fTree.Write("tree/a/x", "1");
    fTree.MakeFolder("tree/a/bound");
    fTree.MakeFolder("tree/b/memory");
    fTree.Write("tree/c", "1");
    const PrivateResult result = RunWithPrivateMounts([this] {
        // The first is on the same device: only its being mounted tells.
        if (mount(fTree.Path("other").c_str(), fTree.Path("tree/a/bound").c_str(), nullptr, MS_BIND,
                  nullptr) != 0 ||
            !MountMemory(fTree.Path("tree/b/memory"), 1 << 20)) {
            return false;
        }
        fTree.Write("tree/b/memory/kept", "2");
        const bool isGone = Delete("tree");
        return !isGone && fTree.Read("other/precious") == "1" &&
               fTree.Read("tree/b/memory/kept") == "2" && fTree.List("tree") == "a\nb\n" &&
               fTree.List("tree/a") == "bound\n" && ProblemNames() == "bound memory ";
    });
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }
    EXPECT_EQ(result, PrivateResult::kPassed);
}

TEST_F(TreeDeleterTest, StoppingDeletesNothingMore)
{
    for (int number = 100; number < 200; number++) {
        fTree.Write("tree/" + std::to_string(number), "1");
    }
    fUI.onVisit = [this](int64 visited) {
        fUI.isStopped = visited >= 50;
    };
    EXPECT_FALSE(Delete("tree"));
    // Which ones depends on the order in which the volume lists them.
    const std::string left = fTree.List("tree");
    EXPECT_GE(std::count(left.begin(), left.end(), '\n'), 50);
    EXPECT_LT(std::count(left.begin(), left.end(), '\n'), 100);
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(TreeDeleterTest, AStoppedOperationDeletesNothing)
{
    fTree.Write("tree/a", "1");
    fTree.Write("file", "1");
    fUI.mayDelete = false;
    EXPECT_FALSE(Delete("tree"));
    EXPECT_FALSE(Delete("file"));
    EXPECT_EQ(fTree.List("tree"), "a\n");
    EXPECT_TRUE(fTree.Exists("file"));
}

TEST_F(TreeDeleterTest, CountsWhatItComesUpon)
{
    fTree.Write("tree/a", "1");
    fTree.Write("tree/sub/b", "1");
    Delete("tree");
    EXPECT_GE(fUI.visited, 3);
}

} // namespace norvane
