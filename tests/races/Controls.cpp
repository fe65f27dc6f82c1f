#include "Controls.h"

#include "../../kits/storage/UniqueFd.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using kits::UniqueFd;

constexpr const char* kName = "item";
constexpr const char* kAsideName = ".norvane-control";

bool IsSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

/// Whether the name still stands for the node that was seen.
bool IsStill(int folder, const char* name, const struct stat& seen)
{
    struct stat now = {};
    return fstatat(folder, name, &now, AT_SYMLINK_NOFOLLOW) == 0 && IsSame(now, seen);
}

bool CopyAll(int from, int to)
{
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(from, buffer, sizeof(buffer));
        if (count <= 0) {
            return count == 0;
        }
        if (write(to, buffer, static_cast<size_t>(count)) != count) {
            return false;
        }
    }
}

enum class Care {
    kGreat,
    kNone,
};

class OneMove
{
public:
    OneMove(const Scene& scene, Care care)
        : fCare(care), fFrom(open(scene.Path("one/source").c_str(), O_RDONLY | O_DIRECTORY)),
          fTo(open(scene.Path("one/target").c_str(), O_RDONLY | O_DIRECTORY))
    {
    }

    bool Run() { return Copy() && Remove(); }

private:
    bool Copy()
    {
        const UniqueFd source(openat(fFrom.Get(), kName, O_RDONLY | O_NOFOLLOW));
        if (fstat(source.Get(), &fSource) != 0 || !S_ISREG(fSource.st_mode)) {
            return false;
        }
        const UniqueFd target(
            openat(fTo.Get(), kName, O_WRONLY | O_CREAT | O_EXCL, fSource.st_mode & 0600));
        if (!target.IsOpen() || !CopyAll(source.Get(), target.Get())) {
            return false;
        }
        if (fCare == Care::kNone) {
            return true;
        }
        struct stat now = {};
        return fstat(source.Get(), &now) == 0 && IsSame(now, fSource) &&
               fstat(target.Get(), &fTarget) == 0 && fTarget.st_size == fSource.st_size &&
               fsync(target.Get()) == 0 && fsync(fTo.Get()) == 0;
    }

    bool Remove()
    {
        if (fCare == Care::kNone) {
            return unlinkat(fFrom.Get(), kName, 0) == 0;
        }
        // Nobody else knows the other name: what is looked at there is what is removed.
        if (renameat2(fFrom.Get(), kName, fFrom.Get(), kAsideName, RENAME_NOREPLACE) != 0) {
            return false;
        }
        if (IsStill(fFrom.Get(), kAsideName, fSource) && IsStill(fTo.Get(), kName, fTarget)) {
            return unlinkat(fFrom.Get(), kAsideName, 0) == 0;
        }
        renameat2(fFrom.Get(), kAsideName, fFrom.Get(), kName, RENAME_NOREPLACE);
        return false;
    }

    const Care fCare;
    const UniqueFd fFrom;
    const UniqueFd fTo;
    struct stat fSource = {};
    struct stat fTarget = {};
};

Job MakeMove(const char* name, Care care)
{
    Job job;
    job.name = name;
    job.task = {Task::kMove, "one/source/item", "one/target", {}};
    job.makeItem = [](const Scene& scene) {
        scene.MakeFile("one/source/item", 200'000, 0640);
        scene.Age("one/source/item");
    };
    job.run = [care](const Scene& scene, uint32) -> JobResult {
        const bool isDone = OneMove(scene, care).Run();
        return {isDone, !isDone};
    };
    return job;
}

} // namespace

Job CarefulMove()
{
    return MakeMove("control, careful", Care::kGreat);
}

Job CarelessMove()
{
    return MakeMove("control, careless", Care::kNone);
}
