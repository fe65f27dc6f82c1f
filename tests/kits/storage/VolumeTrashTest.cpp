#include "OwnVolume.h"
#include "TrashFixture.h"

#include <FindDirectory.h>
#include <Path.h>
#include <TrashRecord.h>
#include <Volume.h>
#include <fs_info.h>

#include <sys/stat.h>

namespace {

class VolumeTrashTest : public TrashTest
{
protected:
    VolumeTrashTest() { fTree.MakeFolder("volume"); }

    std::string Root() { return fTree.Path("volume"); }
    std::string Own() { return ".Trash-" + std::to_string(geteuid()); }

    /// The Trash of the volume, or what was said instead, as text.
    std::string Find(bool createIt)
    {
        BVolume volume(static_cast<dev_t>(dev_for_path(Root().c_str())));
        BPath path;
        const status_t status = find_directory(B_TRASH_DIRECTORY, &path, createIt, &volume);
        return status == B_OK                ? std::string(path.Path()).substr(Root().size() + 1)
               : status == B_ENTRY_NOT_FOUND ? "(none)"
               : status == B_NOT_ALLOWED     ? "(unsafe)"
                                             : "(failed)";
    }

    mode_t ModeOf(const std::string& name)
    {
        struct stat st = {};
        lstat(fTree.Path("volume/" + name).c_str(), &st);
        return st.st_mode & 07777;
    }

    /// Makes a folder of the volume the root of all: one that no mount is listed for.
    bool EnterPlainRoot()
    {
        fTree.MakeFolder("volume/top/proc");
        fTree.Write("volume/top/folder/file", "text");
        fTree.MakeFolder("volume/top/home");
        const std::string top = Root() + "/top";
        return mount("/proc", (top + "/proc").c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0 &&
               chroot(top.c_str()) == 0 && chdir("/") == 0;
    }

    std::string TrashOf(const char* path)
    {
        const BEntry entry(path);
        BPath trash;
        return find_trash_for(&entry, &trash, true) == B_OK ? trash.Path() : "(none)";
    }
};

} // namespace

TEST_F(VolumeTrashTest, IsMadeOnDemandAndPrivate)
{
    OnVolume(Root(), "size=1m", [this] {
        return Expect(Find(false) == "(none)", "none at first") &&
               Expect(Find(true) == Own() + "/files", "made") &&
               Expect(ModeOf(Own()) == 0700, "private") &&
               Expect(ModeOf(Own() + "/files") == 0700, "files too") &&
               Expect(Find(false) == Own() + "/files", "found");
    });
}

TEST_F(VolumeTrashTest, LiesInTheSharedFolderWhenThatIsSticky)
{
    OnVolume(Root(), "size=1m", [this] {
        const std::string shared = ".Trash/" + std::to_string(geteuid()) + "/files";
        fTree.MakeFolder("volume/.Trash");
        const std::string path = fTree.Path("volume/.Trash");
        const bool isIgnored = Expect(Find(true) == Own() + "/files", "not sticky");
        chmod(path.c_str(), 01777);
        return isIgnored && Expect(Find(true) == shared, "sticky") &&
               Expect(ModeOf(".Trash/" + std::to_string(geteuid())) == 0700, "private");
    });
}

TEST_F(VolumeTrashTest, IsNeverReachedThroughALink)
{
    OnVolume(Root(), "size=1m", [this] {
        fTree.MakeFolder("volume/elsewhere");
        chmod(fTree.Path("volume/elsewhere").c_str(), 01777);
        fTree.Link("volume/.Trash", "elsewhere");
        const bool isShared = Expect(Find(true) == Own() + "/files", "shared folder is a link");
        fTree.Remove("volume/" + Own());
        fTree.Link("volume/" + Own(), "elsewhere");
        return isShared && Expect(Find(true) == "(unsafe)", "own folder is a link") &&
               Expect(fTree.List("volume/elsewhere").empty(), "nothing made behind it");
    });
}

TEST_F(VolumeTrashTest, IsNotUsedWhenOthersMayWriteInIt)
{
    OnVolume(Root(), "size=1m", [this] {
        fTree.MakeFolder("volume/" + Own());
        chmod(fTree.Path("volume/" + Own()).c_str(), 0777);
        return Expect(Find(true) == "(unsafe)", "open to others");
    });
}

TEST_F(VolumeTrashTest, TellsWhereAnEntryWasOnTheVolume)
{
    OnVolume(Root(), "size=1m", [this] {
        fTree.Write("volume/a b/report", "text");
        BEntry entry(fTree.Path("volume/a b/report").c_str());
        BPath path;
        BPath origin;
        if (!Expect(find_trash_for(&entry, &path, true) == B_OK, "found")) {
            return false;
        }
        BDirectory files(path.Path());
        const bool isTold = Expect(entry.MoveTo(&files) == B_OK, "moved") &&
                            Expect(find_trash_origin(&entry, &origin) == B_OK, "told") &&
                            Expect(origin.Path() == Root() + "/a b/report", "its place");
        // A record there speaks of that volume alone.
        fTree.Write("volume/" + Own() + "/info/report.trashinfo", "[Trash Info]\nPath=/etc/x\n");
        return isTold && Expect(find_trash_origin(&entry, &origin) == B_MISMATCHED_VALUES, "other");
    });
}

TEST_F(VolumeTrashTest, NotesPathsFromTheVolumesTop)
{
    OnVolume(Root(), "size=1m", [this] {
        fTree.Write("volume/a b/report", "text");
        BEntry entry(fTree.Path("volume/a b/report").c_str());
        BPath path;
        if (!Expect(find_trash_for(&entry, &path, true) == B_OK, "found") ||
            !Expect(path.Path() == Root() + "/" + Own() + "/files", "the volume's own")) {
            return false;
        }
        BDirectory files(path.Path());
        const std::string record = "volume/" + Own() + "/info/report.trashinfo";
        const bool isNoted =
            Expect(is_trash_folder(&files), "recognized") &&
            Expect(entry.MoveTo(&files) == B_OK, "moved") &&
            Expect(fTree.Read(record).find("\nPath=a%20b/report\n") != std::string::npos,
                   "noted") &&
            Expect(is_in_trash(&entry), "in a Trash");
        return isNoted && Expect(entry.Remove() == B_OK, "removed") &&
               Expect(!fTree.Exists(record), "forgotten");
    });
}

TEST_F(VolumeTrashTest, IsTheHomeTrashOnTheHomeVolume)
{
    BVolume volume(static_cast<dev_t>(dev_for_path(fTree.Path().c_str())));
    if (volume.InitCheck() != B_OK) {
        GTEST_SKIP() << "the system lists no mount for the folder of tests";
    }
    BPath path;

    ASSERT_EQ(find_directory(B_TRASH_DIRECTORY, &path, false, &volume), B_OK);

    EXPECT_EQ(path.Path(), fTree.Path("home/.local/share/Trash/files"));
}

TEST_F(VolumeTrashTest, IsFoundWhereNoMountIsListedForTheRoot)
{
    OnVolume(Root(), "size=1m", [this] {
        if (!Expect(EnterPlainRoot(), "a plain root")) {
            return false;
        }
        setenv("XDG_DATA_HOME", "/home/.local/share", 1);
        const bool isHome =
            Expect(TrashOf("/folder/file") == "/home/.local/share/Trash/files", "the home Trash");
        // With the home elsewhere it is a volume like any other.
        setenv("XDG_DATA_HOME", "/proc/none", 1);
        return isHome && Expect(TrashOf("/folder/file") == "/" + Own() + "/files", "its own");
    });
}

TEST_F(VolumeTrashTest, IsNoneOfTheKernelsFileSystems)
{
    const BEntry entry("/proc/self/status");
    BPath path;

    EXPECT_EQ(find_trash_for(&entry, &path, true), B_UNSUPPORTED);
}
