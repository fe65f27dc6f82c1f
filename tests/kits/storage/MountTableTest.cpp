#include "storage/MountTable.h"
#include "OwnVolume.h"
#include "storage/KernelVolume.h"

#include <TempTree.h>
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
