#include "storage/MountTable.h"
#include "OwnVolume.h"
#include "storage/KernelVolume.h"

#include <TempTree.h>
#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <vector>

namespace {

bool IsWoken(const kits::MountTable& table)
{
    struct pollfd polled = {table.Descriptor(), POLLPRI, 0};
    return poll(&polled, 1, 5000) == 1;
}

} // namespace

TEST(MountTableTest, TellsWhatIsMountedAndUnmounted)
{
    TempTree tree;
    tree.MakeFolder("volume");
    const std::string folder = tree.Path("volume");
    OnVolume(folder, "size=1m", [&folder] {
        kits::MountTable table;
        std::vector<dev_t> mounted;
        std::vector<dev_t> unmounted;
        if (mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=2m") != 0) {
            return Expect(false, "mounting");
        }
        struct stat st = {};
        stat(folder.c_str(), &st);
        const bool isMountTold = Expect(IsWoken(table), "woken by the mount");
        table.Update(&mounted, &unmounted);
        const bool isMountRight =
            Expect(mounted == std::vector<dev_t>{st.st_dev} && unmounted.empty(), "mounted");
        mounted.clear();
        umount(folder.c_str());
        const bool isEndTold = Expect(IsWoken(table), "woken by the end");
        table.Update(&mounted, &unmounted);
        const bool isEndRight =
            Expect(unmounted == std::vector<dev_t>{st.st_dev} && mounted.empty(), "unmounted");
        return isMountTold && isMountRight && isEndTold && isEndRight;
    });
}

// A file system whose server says nothing, not even that it is there, holds up nobody who looks for
// another one.
TEST(MountTableTest, WaitsForNoServer)
{
    TempTree tree;
    tree.MakeFolder("volume");
    tree.MakeFolder("volume/served");
    const std::string folder = tree.Path("volume");
    OnVolume(folder, "size=1m", [&folder] {
        const std::string served = folder + "/served";
        const int server = open("/dev/fuse", O_RDWR | O_CLOEXEC); // its end is the mount's, too
        const std::string options =
            "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0";
        if (mkdir(served.c_str(), 0700) != 0 || server < 0 ||
            mount("server", served.c_str(), "fuse", 0, options.c_str()) != 0) {
            _exit(kNotAllowed);
        }
        alarm(5);
        struct stat st = {};
        stat(folder.c_str(), &st);
        kits::MountedVolume found;
        const bool isFound = Expect(kits::FindVolume(st.st_dev, &found), "the volume above it");
        const std::vector<kits::MountedVolume> all = kits::ReadLocalVolumes();
        const bool isListed = Expect(std::any_of(all.begin(), all.end(),
                                                 [&served](const kits::MountedVolume& volume) {
                                                     return volume.mount.point == served;
                                                 }),
                                     "the one of the server");
        return isFound && isListed && Expect(found.mount.point == folder, "its place");
    });
}

// Whoever copies asks an open folder, whoever lists volumes the list of mounts.
TEST(MountTableTest, FoldersAndMountsAgreeOnWhatIsTheKernels)
{
    int32 compared = 0;
    for (const kits::Mount& mount : kits::ReadMounts()) {
        const kits::UniqueFd point(open(mount.point.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        kits::Mount reached;
        if (mount.kind == kits::MountKind::kNetwork || !point.IsOpen() ||
            !kits::FindMountOf(point.Get(), &reached) || reached.id != mount.id) {
            continue; // out of reach, or hidden by another
        }
        ++compared;
        EXPECT_EQ(kits::IsKernelVolume(point.Get()), mount.kind == kits::MountKind::kKernel)
            << mount.point << " is of type " << mount.type;
    }
    EXPECT_GT(compared, 1);
}
