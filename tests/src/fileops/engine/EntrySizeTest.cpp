#include "fileops/engine/EntrySize.h"

#include "PrivateMounts.h"
#include "TempTree.h"

#include <Entry.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace norvane {

class EntrySizeTest : public ::testing::Test
{
protected:
    int64 Measure(const std::string& name, MeasureScope scope = MeasureScope::kAllVolumes)
    {
        const BEntry entry(fTree.Path(name).c_str());
        return MeasureEntry(entry, scope);
    }

    TempTree fTree;
};

TEST_F(EntrySizeTest, AddsUpAFolder)
{
    fTree.Write("a/one", std::string(1000, 'x'));
    fTree.Write("a/b/two", std::string(200, 'x'));
    fTree.Write("a/b/c/three", std::string(30, 'x'));
    fTree.MakeFolder("a/empty");
    EXPECT_EQ(Measure("a"), 1230);
    EXPECT_EQ(Measure("a/one"), 1000);
}

TEST_F(EntrySizeTest, CountsLinksAsNothing)
{
    fTree.Write("file", "12345");
    fTree.Link("a/to-file", fTree.Path("file"));
    fTree.Link("a/to-itself", fTree.Path("a"));
    EXPECT_EQ(Measure("a"), 0);
    EXPECT_EQ(Measure("a/to-file"), 0);
}

TEST_F(EntrySizeTest, CountsOtherKindsAndMissingAsNothing)
{
    fTree.MakeFolder("a");
    ASSERT_EQ(mkfifo(fTree.Path("a/fifo").c_str(), 0600), 0);
    EXPECT_EQ(Measure("a"), 0);
    EXPECT_EQ(Measure("gone"), 0);
}

TEST_F(EntrySizeTest, EndsWhenCancelled)
{
    fTree.Write("a/one", "12345");
    const std::atomic<bool> isCancelled{true};
    const BEntry entry(fTree.Path("a").c_str());
    EXPECT_EQ(MeasureEntry(entry, MeasureScope::kAllVolumes, &isCancelled), 0);
}

TEST_F(EntrySizeTest, HoldsMoreThanFourGigabytes)
{
    fTree.Write("a/big", "");
    ASSERT_EQ(truncate(fTree.Path("a/big").c_str(), 6'000'000'000), 0);
    EXPECT_EQ(Measure("a"), 6'000'000'000);
}

TEST_F(EntrySizeTest, LeavesOtherVolumesOutWhenAsked)
{
    fTree.Write("a/here", "12345");
    fTree.MakeFolder("a/other");
    const PrivateResult result = RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("a/other"), 1 << 20)) {
            return false;
        }
        fTree.Write("a/other/there", "123");
        return Measure("a", MeasureScope::kAllVolumes) == 8 &&
               Measure("a", MeasureScope::kOneVolume) == 5;
    });
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }
    EXPECT_EQ(result, PrivateResult::kPassed);
}

TEST_F(EntrySizeTest, NeverEntersTheKernelsFileSystems)
{
    const BEntry entry("/proc");
    EXPECT_EQ(MeasureEntry(entry, MeasureScope::kAllVolumes), 0);
}

} // namespace norvane
