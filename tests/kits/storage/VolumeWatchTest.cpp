#include "NodeMonitorFixture.h"

#include <VolumeRoster.h>

#include <PrivateMounts.h>
#include <sys/mount.h>
#include <sys/stat.h>

namespace {

/// Mounts and unmounts while a roster watches; says whether both were told.
bool HearsOfAMount(const std::string& folder, Watcher* watcher, const BMessenger& messenger)
{
    BVolumeRoster roster;
    if (roster.StartWatching(messenger) != B_OK || !MountMemory(folder, 1 << 20)) {
        return false;
    }
    auto notices = watcher->WaitForCount(1);
    umount(folder.c_str());
    notices = watcher->WaitForCount(2);
    roster.StopWatching();
    return notices.size() == 2 && notices[0].opcode == B_DEVICE_MOUNTED &&
           notices[1].opcode == B_DEVICE_UNMOUNTED && !roster.Messenger().IsValid();
}

} // namespace

TEST_F(NodeMonitorTest, RosterTellsWhatIsMountedAndUnmounted)
{
    fTree.MakeFolder("volume");
    const PrivateResult result = RunWithPrivateMounts(
        [this] { return HearsOfAMount(fTree.Path("volume"), fWatcher, fMessenger); });
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }

    EXPECT_EQ(result, PrivateResult::kPassed);
}

TEST_F(NodeMonitorTest, RosterThatEndsWatchesNoMore)
{
    fTree.MakeFolder("watched");
    {
        BVolumeRoster roster;
        ASSERT_EQ(roster.StartWatching(fMessenger), B_OK);
        EXPECT_TRUE(roster.Messenger().IsValid());
        ASSERT_EQ(Watch("watched"), B_OK);
    }

    // What else the target watches goes on.
    fTree.Write("watched/file", "");
    EXPECT_EQ(fWatcher->WaitForCount(1).size(), 1u);
}

TEST_F(NodeMonitorTest, RosterNeedsATarget)
{
    BVolumeRoster roster;

    EXPECT_EQ(roster.StartWatching(BMessenger()), B_BAD_VALUE);
}
