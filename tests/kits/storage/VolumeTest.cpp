#include "OwnVolume.h"

#include <Directory.h>
#include <Path.h>
#include <Volume.h>
#include <VolumeRoster.h>
#include <fs_info.h>

#include <TempTree.h>
#include <algorithm>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <vector>

namespace {

std::vector<dev_t> AllVolumes()
{
    BVolumeRoster roster;
    BVolume volume;
    std::vector<dev_t> devices;
    while (roster.GetNextVolume(&volume) == B_OK) {
        devices.push_back(volume.Device());
    }
    return devices;
}

dev_t DeviceOf(const std::string& path)
{
    struct stat st = {};
    stat(path.c_str(), &st);
    return st.st_dev;
}

std::string RootOf(const BVolume& volume)
{
    BDirectory root;
    return volume.GetRootDirectory(&root) == B_OK ? BPath(&root).Path() : "(none)";
}

class VolumeTest : public testing::Test
{
protected:
    VolumeTest() { fTree.MakeFolder("one two"); }

    std::string Folder() { return fTree.Path("one two"); }

    TempTree fTree;
};

} // namespace

TEST_F(VolumeTest, TellsAboutAFileSystemInMemory)
{
    OnVolume(Folder(), "size=1m", [this] {
        const BVolume volume(DeviceOf(Folder()));
        char name[B_FILE_NAME_LENGTH] = {};
        fTree.Write("one two/f", std::string(300'000, 'x'));
        return Expect(volume.InitCheck() == B_OK, "found") &&
               Expect(volume.GetName(name) == B_OK && std::string(name) == "one two", "name") &&
               Expect(RootOf(volume) == Folder(), "root") &&
               Expect(volume.Capacity() == 1 << 20, "capacity") &&
               Expect(volume.FreeBytes() <= (1 << 20) - 300'000, "free bytes") &&
               Expect(volume.FreeBytes() >= (1 << 20) - 400'000, "no less free") &&
               Expect(!volume.IsPersistent() && !volume.IsReadOnly(), "kind") &&
               Expect(!volume.IsShared() && !volume.IsRemovable(), "place") &&
               Expect(volume.KnowsQuery(), "queries");
    });
}

TEST_F(VolumeTest, TellsThatNothingCanBeWritten)
{
    OnVolume(Folder(), "size=1m,ro",
             [this] { return Expect(BVolume(DeviceOf(Folder())).IsReadOnly(), "read only"); });
}

TEST_F(VolumeTest, RefusesANumberThatNothingHas)
{
    BVolume volume(makedev(4000, 77));
    BDirectory root;

    EXPECT_EQ(volume.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(volume.GetRootDirectory(&root), B_NO_INIT);
    EXPECT_LT(volume.Capacity(), 0);
    EXPECT_EQ(volume, BVolume());
}

TEST_F(VolumeTest, IsGoneOnceItWasUnmounted)
{
    OnVolume(Folder(), "size=1m", [this] {
        const BVolume volume(DeviceOf(Folder()));
        umount(Folder().c_str());
        BDirectory root;
        return Expect(volume.GetRootDirectory(&root) == B_BAD_VALUE, "root") &&
               Expect(volume.FreeBytes() == B_BAD_VALUE, "free bytes");
    });
}

TEST_F(VolumeTest, IsListedOnceHoweverOftenItIsMounted)
{
    fTree.MakeFolder("again");
    OnVolume(Folder(), "size=1m", [this] {
        const std::string again = fTree.Path("again");
        mount(Folder().c_str(), again.c_str(), nullptr, MS_BIND, nullptr);
        const std::vector<dev_t> all = AllVolumes();
        return Expect(std::count(all.begin(), all.end(), DeviceOf(again)) == 1, "once");
    });
}

TEST_F(VolumeTest, IsNotListedWhileAnotherHidesIt)
{
    OnVolume(Folder(), "size=1m", [this] {
        const dev_t hidden = DeviceOf(Folder());
        mount("tmpfs", Folder().c_str(), "tmpfs", 0, "size=2m");
        const std::vector<dev_t> all = AllVolumes();
        return Expect(std::count(all.begin(), all.end(), hidden) == 0, "hidden") &&
               Expect(std::count(all.begin(), all.end(), DeviceOf(Folder())) == 1, "hiding");
    });
}

TEST_F(VolumeTest, LeavesOutTheKernelsFileSystems)
{
    const std::vector<dev_t> all = AllVolumes();

    EXPECT_EQ(std::count(all.begin(), all.end(), DeviceOf("/proc")), 0);
    if (DeviceOf("/sys") != DeviceOf("/")) { // else it is a plain folder here
        EXPECT_EQ(std::count(all.begin(), all.end(), DeviceOf("/sys")), 0);
    }
}

TEST_F(VolumeTest, RosterEndsAndStartsAgain)
{
    OnVolume(Folder(), "size=1m", [] {
        BVolumeRoster roster;
        BVolume volume;
        size_t count = 0;
        while (roster.GetNextVolume(&volume) == B_OK) {
            ++count;
        }
        const bool isOver = Expect(roster.GetNextVolume(&volume) == B_BAD_VALUE, "over") &&
                            Expect(volume.InitCheck() == B_NO_INIT, "unset");
        roster.Rewind();
        size_t again = 0;
        while (roster.GetNextVolume(&volume) == B_OK) {
            ++again;
        }
        return isOver && Expect(count > 0 && count == again, "the same again");
    });
}

TEST_F(VolumeTest, BootVolumeHoldsTheHomeFolder)
{
    OnVolume(Folder(), "size=1m", [this] {
        setenv("HOME", Folder().c_str(), 1);
        BVolumeRoster roster;
        BVolume volume;
        return Expect(roster.GetBootVolume(&volume) == B_OK, "found") &&
               Expect(volume.Device() == DeviceOf(Folder()), "the home folder's");
    });
}

TEST_F(VolumeTest, KnowsAttributesWhereAFileCanHaveThem)
{
    const std::string file = fTree.Path("one two/f");
    fTree.Write("one two/f", "");
    const bool canHave = setxattr(file.c_str(), "user.probe", "x", 1, 0) == 0;
    const BVolume volume(DeviceOf(Folder()));
    ASSERT_EQ(volume.InitCheck(), B_OK);

    EXPECT_EQ(volume.KnowsAttr(), canHave);
    EXPECT_EQ(volume.KnowsMime(), canHave);
    EXPECT_FALSE(BVolume().KnowsAttr());
}

TEST_F(VolumeTest, RootIsOneThoughNoMountIsListedForIt)
{
    OnVolume(Folder(), "size=1m", [this] {
        fTree.MakeFolder("one two/top/proc");
        const std::string top = Folder() + "/top";
        if (mount("/proc", (top + "/proc").c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0 ||
            chroot(top.c_str()) != 0 || chdir("/") != 0) {
            return Expect(false, "a plain root");
        }
        const std::vector<dev_t> volumes = AllVolumes();
        const BVolume volume(DeviceOf("/"));
        char name[B_FILE_NAME_LENGTH] = {};
        return Expect(volumes == std::vector<dev_t>{DeviceOf("/")}, "listed alone") &&
               Expect(volume.InitCheck() == B_OK, "found") &&
               Expect(RootOf(volume) == "/", "its top") &&
               Expect(volume.GetName(name) == B_OK && *name != '\0', "its name") &&
               Expect(volume.Capacity() > 0 && !volume.IsShared() && !volume.IsPersistent(),
                      "what it is");
    });
}
