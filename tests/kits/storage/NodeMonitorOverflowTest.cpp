#include "NodeMonitorFixture.h"
#include "StoppedWatcher.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <semaphore.h>
#include <set>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Fills what the kernel keeps for a reader that does not come, by writing to two files in turn:
/// equal events in a row would count as one.
void FillQueue(const TempTree& tree)
{
    int limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    ASSERT_GT(limit, 0);
    const int files[2] = {open(tree.Path("d/even").c_str(), O_WRONLY),
                          open(tree.Path("d/odd").c_str(), O_WRONLY)};
    for (int i = 0; i <= limit; ++i) {
        ASSERT_EQ(pwrite(files[i % 2], "x", 1, 0), 1);
    }
    close(files[0]);
    close(files[1]);
}

} // namespace

TEST_F(NodeMonitorTest, TellsTheDifferencesAfterAnOverflow)
{
    constexpr int kMade = 1000;
    fTree.Write("d/even", "");
    fTree.Write("d/odd", "");
    fTree.Write("d/old", "");
    fTree.Write("d/kept", "");
    const int64 old = Ino("d/old");
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_STAT), B_OK);
    {
        const StoppedWatcher stopped;
        ASSERT_NO_FATAL_FAILURE(FillQueue(fTree));
        for (int i = 0; i < kMade; ++i) {
            ASSERT_EQ(symlink("x", fTree.Path("d/" + std::to_string(i)).c_str()), 0);
        }
        fTree.Remove("d/old");
        fTree.Write("d/kept", "changed");
    }

    const auto has = [](const std::vector<Notice>& notices, int32 opcode, const char* name) {
        for (const Notice& notice : notices) {
            if (notice.opcode == opcode && notice.name == name) {
                return true;
            }
        }
        return false;
    };
    const auto notices = fWatcher->WaitFor([&](const auto& all) {
        return all.size() >= kMade + 2 && has(all, B_ENTRY_REMOVED, "old") &&
               has(all, B_STAT_CHANGED, "kept");
    });

    std::set<std::string> created;
    for (const Notice& notice : notices) {
        if (notice.opcode == B_ENTRY_CREATED) {
            EXPECT_TRUE(created.insert(notice.name).second) << notice.name;
        }
        if (notice.opcode == B_ENTRY_REMOVED) {
            EXPECT_EQ(notice.node, old);
        }
    }
    EXPECT_EQ(created.size(), size_t(kMade));
    EXPECT_TRUE(has(notices, B_ENTRY_REMOVED, "old"));
    EXPECT_TRUE(has(notices, B_STAT_CHANGED, "kept"));
}
