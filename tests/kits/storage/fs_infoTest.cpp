#include <fs_info.h>

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
