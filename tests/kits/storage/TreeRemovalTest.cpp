#include "OwnVolume.h"
#include "TrashFixture.h"

#include <TreeHooks.h>

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

/// Writes down what it is told, and keeps what it is told to keep.
class Hooks : public BTreeHooks
{
public:
    std::set<std::string> kept;
    std::vector<std::string> asked;
    std::vector<std::string> failed;
    std::atomic<int> untilStop{-1}; // how many entries may still be looked at
    bool checks = false;

    bool IsStopped() const override
    {
        auto& left = const_cast<std::atomic<int>&>(untilStop);
        return left >= 0 && left-- <= 0;
    }
    void Failed(const char* path, status_t) override { failed.push_back(path); }
    bool ChecksEntries() const override { return checks; }
    bool MayRemove(const char* path, const struct stat&) override
    {
        asked.push_back(path);
        return kept.count(path) == 0;
    }
};

class TreeRemovalTest : public testing::Test
{
protected:
    status_t Remove(const char* name, BTreeHooks* hooks = nullptr)
    {
        return BEntry(fTree.Path(name).c_str()).RemoveTree(hooks);
    }
    void MakeTree(int folders, int files)
    {
        for (int i = 0; i < folders; ++i) {
            for (int k = 0; k < files; ++k) {
                fTree.Write("top/" + std::to_string(i) + "/sub/" + std::to_string(k), "x");
            }
        }
    }

    void MakeDeep(int levels)
    {
        fTree.MakeFolder("top");
        BDirectory at(fTree.Path("top").c_str());
        for (int i = 0; i < levels; ++i) {
            BDirectory next;
            ASSERT_EQ(at.CreateNewDirectory("deep", 0777, &next), B_OK);
            ASSERT_EQ(at.CreateNewDirectory("empty", 0777, &fUnused), B_OK);
            at = next;
        }
    }

    TempTree fTree;
    BDirectory fUnused;
};

} // namespace

TEST_F(TreeRemovalTest, RemovesAFolderWithAllBelowIt)
{
    MakeTree(40, 5);
    fTree.Link("top/link", "3");
    mkfifo(fTree.Path("top/fifo").c_str(), 0600);

    EXPECT_EQ(Remove("top"), B_OK);

    EXPECT_EQ(fTree.List(), "");
}

TEST_F(TreeRemovalTest, RemovesASingleFileAndALink)
{
    fTree.Write("kept/file", "");
    fTree.Write("file", "");
    fTree.Link("link", "kept");

    EXPECT_EQ(Remove("file"), B_OK);
    EXPECT_EQ(Remove("link"), B_OK);

    EXPECT_EQ(fTree.List(), "kept\n");
    EXPECT_TRUE(fTree.Exists("kept/file"));
}

TEST_F(TreeRemovalTest, TellsWhenItCannotEvenBegin)
{
    fTree.Write("gone/file", "");
    BEntry entry(fTree.Path("gone/file").c_str());
    ASSERT_EQ(Remove("gone"), B_OK);
    Hooks hooks;

    EXPECT_NE(entry.RemoveTree(&hooks), B_OK);

    EXPECT_EQ(hooks.failed, std::vector<std::string>{"file"});
}

TEST_F(TreeRemovalTest, FollowsNoLink)
{
    fTree.Write("kept/file", "");
    fTree.Link("top/a/link", "../../kept");
    fTree.Link("top/b", fTree.Path("kept"));

    EXPECT_EQ(Remove("top"), B_OK);

    EXPECT_TRUE(fTree.Exists("kept/file"));
}

TEST_F(TreeRemovalTest, GetsToTheBottomOfADeepTree)
{
    // Deeper than a path can be long.
    MakeDeep(1200);

    EXPECT_EQ(Remove("top"), B_OK);

    EXPECT_EQ(fTree.List(), "");
}

TEST_F(TreeRemovalTest, GetsToTheBottomWithFewDescriptors)
{
    struct rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    MakeDeep(300);
    // So many that are free, whatever others hold.
    int end = 0;
    for (int left = 100; left > 0; ++end) {
        left -= fcntl(end, F_GETFD) < 0 ? 1 : 0;
    }
    const struct rlimit few = {static_cast<rlim_t>(end), before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);

    const status_t status = Remove("top");

    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(status, B_OK);
    EXPECT_EQ(fTree.List(), "");
}

TEST_F(TreeRemovalTest, GoesOnAroundWhatStays)
{
    MakeTree(20, 3);
    Hooks hooks;
    hooks.checks = true;
    hooks.kept = {"top/7/sub/1", "top/9"};

    EXPECT_EQ(Remove("top", &hooks), B_NOT_ALLOWED);

    EXPECT_EQ(fTree.List("top"), "7\n9\n");
    EXPECT_EQ(fTree.List("top/7/sub"), "1\n");
    EXPECT_EQ(fTree.List("top/9/sub"), "0\n1\n2\n");
    EXPECT_TRUE(hooks.failed.empty());
    EXPECT_EQ(std::count(hooks.asked.begin(), hooks.asked.end(), "top/9/sub"), 0);
    EXPECT_EQ(std::count(hooks.asked.begin(), hooks.asked.end(), "top"), 1);
}

TEST_F(TreeRemovalTest, AsksAboutASingleFile)
{
    fTree.Write("file", "");
    Hooks hooks;
    hooks.checks = true;
    hooks.kept = {"file"};

    EXPECT_EQ(Remove("file", &hooks), B_NOT_ALLOWED);

    EXPECT_TRUE(fTree.Exists("file"));
}

TEST_F(TreeRemovalTest, EndsWhenStopped)
{
    MakeTree(30, 10);
    Hooks hooks;
    hooks.untilStop = 20;

    EXPECT_EQ(Remove("top", &hooks), B_CANCELED);

    EXPECT_TRUE(fTree.Exists("top"));
    EXPECT_TRUE(hooks.failed.empty());
}

TEST_F(TreeRemovalTest, TellsThatThereIsNothing)
{
    Hooks hooks;

    EXPECT_EQ(Remove("none", &hooks), B_ENTRY_NOT_FOUND);

    EXPECT_EQ(hooks.failed, std::vector<std::string>{"none"});
}

TEST_F(TreeRemovalTest, EntersNoMountPoint)
{
    fTree.Write("top/a/file", "");
    fTree.MakeFolder("top/b/volume");
    OnVolume(fTree.Path("top/b/volume"), "size=1m", [this] {
        fTree.Write("top/b/volume/file", "kept");
        fTree.Write("top/b/other", "");
        Hooks hooks;
        return Expect(Remove("top", &hooks) == B_BUSY, "busy") &&
               Expect(fTree.Read("top/b/volume/file") == "kept", "the volume's file") &&
               Expect(fTree.List("top") == "b\n", "the rest of the tree") &&
               Expect(fTree.List("top/b") == "volume\n", "around the mount point") &&
               Expect(hooks.failed == std::vector<std::string>{"top/b/volume"}, "told");
    });
}

TEST_F(TreeRemovalTest, EntersNoMountOfItsOwnVolume)
{
    fTree.Write("other/file", "kept");
    fTree.MakeFolder("top/bound");
    fTree.MakeFolder("volume");
    OnVolume(fTree.Path("volume"), "size=1m", [this] {
        mount(fTree.Path("other").c_str(), fTree.Path("top/bound").c_str(), nullptr, MS_BIND,
              nullptr);
        return Expect(Remove("top") == B_BUSY, "busy") &&
               Expect(fTree.Read("other/file") == "kept", "kept");
    });
}

TEST_F(TreeRemovalTest, TellsWhatCannotBeRemoved)
{
    fTree.Write("top/open/file", "");
    fTree.Write("top/volume/file", "");
    OnVolume(fTree.Path("top/volume"), "size=1m", [this] {
        fTree.Write("top/volume/sub/file", "");
        mount(nullptr, fTree.Path("top/volume").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
        Hooks hooks;
        return Expect(Remove("top/volume/sub", &hooks) == B_READ_ONLY_DEVICE, "read only") &&
               Expect(hooks.failed == std::vector<std::string>{"sub/file"}, "told once");
    });
}

TEST_F(TrashTest, RemovingATreeForgetsItsOrigin)
{
    fTree.Write("folder/sub/file", "");
    ASSERT_EQ(Trash("folder"), B_OK);

    EXPECT_EQ(BEntry(fTree.Path(InFiles("folder")).c_str()).RemoveTree(), B_OK);

    EXPECT_FALSE(fTree.Exists(InFiles("folder")));
    EXPECT_FALSE(fTree.Exists(InInfo("folder")));
}
