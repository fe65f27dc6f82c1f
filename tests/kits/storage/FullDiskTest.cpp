#include "OwnVolume.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>

#include <TempTree.h>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Writes by 4096 bytes until something is refused; the status, and what was taken until then.
status_t FillUp(BFile* file, off_t limit, off_t* taken)
{
    char chunk[4096];
    memset(chunk, 'x', sizeof(chunk));
    for (*taken = 0; *taken < limit; *taken += ssize_t(sizeof(chunk))) {
        const ssize_t written = file->Write(chunk, sizeof(chunk));
        if (written < 0) {
            return static_cast<status_t>(written);
        }
    }
    return static_cast<status_t>(file->Write(chunk, 0));
}

class FullDiskTest : public testing::Test
{
protected:
    FullDiskTest() { fTree.MakeFolder("volume"); }

    std::string Volume() { return fTree.Path("volume"); }
    std::string Path(const char* name) { return fTree.Path(std::string("volume/") + name); }

    TempTree fTree;
};

constexpr uint32 kNew = B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE;

} // namespace

TEST_F(FullDiskTest, TellsThatTheDiskIsFullWithinABlock)
{
    OnVolume(Volume(), "size=1m", [this] {
        BFile file(Path("f").c_str(), kNew);
        off_t taken = 0;
        off_t size = 0;
        const status_t status = FillUp(&file, 8 << 20, &taken);
        struct stat st;
        stat(Path("f").c_str(), &st);
        return Expect(status == B_DEVICE_FULL, "full") &&
               Expect(taken < (1 << 20) + (256 << 10), "at most a block late") &&
               Expect(st.st_size > (1 << 20) - (64 << 10), "all that fits is there") &&
               Expect(file.Write("x", 1) == B_DEVICE_FULL, "the status stays") &&
               Expect(file.GetSize(&size) == B_DEVICE_FULL, "for every call") &&
               Expect(file.Close() == B_DEVICE_FULL, "closing too");
    });
}

TEST_F(FullDiskTest, TellsItThroughTheWritingThread)
{
    OnVolume(Volume(), "size=12m", [this] {
        BFile file(Path("f").c_str(), kNew);
        off_t taken = 0;
        const status_t status = FillUp(&file, 64 << 20, &taken);
        return Expect(status == B_DEVICE_FULL, "full") &&
               Expect(taken <= (12 << 20) + 6 * (256 << 10), "soon enough");
    });
}

TEST_F(FullDiskTest, TellsItAtTheLastShortWrite)
{
    OnVolume(Volume(), "size=64k", [this] {
        BFile file(Path("f").c_str(), kNew);
        char chunk[4096] = {};
        for (int i = 0; i < 16; ++i) {
            if (!Expect(file.Write(chunk, sizeof(chunk)) == ssize_t(sizeof(chunk)), "buffered")) {
                return false;
            }
        }
        return Expect(file.Write(chunk, sizeof(chunk)) > 0, "still buffered") &&
               Expect(file.Write(chunk, 1) == B_DEVICE_FULL, "the short one tells");
    });
}

TEST_F(FullDiskTest, TellsThatNothingMoreCanBeCreated)
{
    OnVolume(Volume(), "nr_inodes=3", [this] {
        BDirectory folder(Volume().c_str());
        status_t status = B_OK;
        for (int i = 0; i < 5 && status == B_OK; ++i) {
            status = folder.CreateDirectory(std::to_string(i).c_str(), nullptr);
        }
        return Expect(status == B_DEVICE_FULL, "no more nodes");
    });
}

TEST_F(FullDiskTest, TellsThatAVolumeIsReadOnly)
{
    OnVolume(Volume(), "size=1m", [this] {
        {
            BFile file(Path("f").c_str(), kNew);
        }
        if (mount(nullptr, Volume().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
            return Expect(false, "remounting");
        }
        BDirectory folder(Volume().c_str());
        BEntry entry(Path("f").c_str());
        BFile file;
        return Expect(folder.CreateNewFile("g", 0600, &file) == B_READ_ONLY_DEVICE, "new file") &&
               Expect(entry.Rename("h") == B_READ_ONLY_DEVICE, "rename") &&
               Expect(entry.Remove() == B_READ_ONLY_DEVICE, "removal") &&
               Expect(file.SetTo(&entry, B_READ_WRITE) == B_READ_ONLY_DEVICE, "opening");
    });
}

TEST_F(FullDiskTest, RefusesAMoveToAnotherVolume)
{
    OnVolume(Volume(), "size=1m", [this] {
        fTree.Write("f", "kept");
        BEntry entry(fTree.Path("f").c_str());
        BDirectory folder(Volume().c_str());
        return Expect(entry.MoveTo(&folder) == B_CROSS_DEVICE_LINK, "another device") &&
               Expect(fTree.Read("f") == "kept", "untouched");
    });
}
