#include <fs_info.h>

#include "OwnVolume.h"

#include <Directory.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

TEST(FsInfoTest, TellsTheDeviceOfAPath)
{
    TempTree tree;
    struct stat st;
    ASSERT_EQ(stat(tree.Path().c_str(), &st), 0);

    EXPECT_EQ(dev_for_path(tree.Path().c_str()), static_cast<int32>(st.st_dev));
    EXPECT_EQ(dev_for_path(tree.Path("none").c_str()), B_ENTRY_NOT_FOUND);
}

TEST(FsInfoTest, KnowsWhatTheKernelFills)
{
    TempTree tree;

    EXPECT_TRUE(is_kernel_volume(BDirectory("/proc/self")));
    EXPECT_FALSE(is_kernel_volume(BDirectory(tree.Path().c_str())));
    EXPECT_FALSE(is_kernel_volume(BDirectory()));
}

TEST(FsInfoTest, KnowsMountPointsOfTheSameDeviceToo)
{
    TempTree tree;
    tree.MakeFolder("volume");
    tree.MakeFolder("bound");
    tree.MakeFolder("plain/below");
    tree.Write("file", "");
    tree.Write("bound file", "");
    tree.Link("link", "volume");
    OnVolume(tree.Path("volume"), "", [&tree] {
        const auto bind = [&tree](const char* from, const char* to) {
            return mount(tree.Path(from).c_str(), tree.Path(to).c_str(), nullptr, MS_BIND,
                         nullptr) == 0;
        };
        if (!Expect(bind("plain", "bound") && bind("file", "bound file"), "mounting")) {
            return false;
        }
        const BDirectory folder(tree.Path().c_str());
        const auto answer = [&folder](const char* name) {
            bool is = false;
            return is_mount_point(folder, name, &is) != B_OK ? -1 : is ? 1 : 0;
        };
        return Expect(answer("volume") == 1, "another volume") &&
               Expect(answer("bound") == 1, "a part of the same one") &&
               Expect(answer("bound file") == 1, "a file of the same one") &&
               Expect(answer("plain") == 0, "a folder") && Expect(answer("file") == 0, "a file") &&
               Expect(answer("link") == 0, "a link to one") &&
               Expect(answer("none") == -1, "nothing");
    });
}

TEST(FsInfoTest, RefusesNamesThatAreNone)
{
    TempTree tree;
    const BDirectory folder(tree.Path().c_str());
    bool is = true;

    for (const char* name : {"", "..", "a/b", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(is_mount_point(folder, name, &is), B_BAD_VALUE);
    }
    EXPECT_EQ(is_mount_point(folder, "none", &is), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(is_mount_point(BDirectory(), "a", &is), B_NO_INIT);
    EXPECT_TRUE(is);
}

TEST(FsInfoTest, TrustsTheNumbersOfVolumesThatStoreThem)
{
    TempTree tree;
    const BDirectory folder(tree.Path().c_str());

    EXPECT_TRUE(has_stable_nodes(folder));
    EXPECT_TRUE(has_stable_nodes(BDirectory()));
}

TEST(FsInfoTest, TellsOfAVolume)
{
    TempTree tree;
    struct stat st;
    ASSERT_EQ(stat(tree.Path().c_str(), &st), 0);

    fs_info info;
    ASSERT_EQ(fs_stat_dev(st.st_dev, &info), B_OK);

    EXPECT_EQ(info.dev, st.st_dev);
    EXPECT_GT(info.block_size, 0);
    EXPECT_GT(info.total_blocks, 0);
    EXPECT_LE(info.free_blocks, info.total_blocks);
    EXPECT_STRNE(info.fsh_name, "");
    EXPECT_STRNE(info.volume_name, "");
}

TEST(FsInfoTest, LeavesTheRecordWhenThereIsNoSuchVolume)
{
    fs_info info;
    info.total_blocks = 7;

    EXPECT_EQ(fs_stat_dev(dev_t(0x7fffffff), &info), B_BAD_VALUE);
    EXPECT_EQ(fs_stat_dev(0, nullptr), B_BAD_VALUE);
    EXPECT_EQ(info.total_blocks, 7);
}
