#include "OwnVolume.h"

#include <Entry.h>
#include <TreeHooks.h>

#include <TempTree.h>
#include <sys/stat.h>

namespace {

class TreeMeasureTest : public testing::Test
{
protected:
    int64 Measure(const char* name, BEntry::measure_scope scope = BEntry::kAllVolumes)
    {
        int64 bytes = -1;
        fStatus = BEntry(fTree.Path(name).c_str()).MeasureTree(&bytes, scope);
        return bytes;
    }

    TempTree fTree;
    status_t fStatus = B_OK;
};

class StopAtOnce : public BTreeHooks
{
public:
    bool IsStopped() const override { return true; }
};

} // namespace

TEST_F(TreeMeasureTest, AddsUpRegularFilesOnly)
{
    int64 expected = 0;
    for (int i = 0; i < 200; ++i) {
        const std::string text(static_cast<size_t>(i * 7), 'x');
        fTree.Write("top/" + std::to_string(i % 20) + "/" + std::to_string(i), text);
        expected += i * 7;
    }
    fTree.Write("other", "not counted");
    fTree.Link("top/link", "../other");
    fTree.Link("top/3/around", "..");
    mkfifo(fTree.Path("top/fifo").c_str(), 0600);

    EXPECT_EQ(Measure("top"), expected);
    EXPECT_EQ(fStatus, B_OK);
}

TEST_F(TreeMeasureTest, MeasuresASingleEntry)
{
    fTree.Write("file", "12345");
    fTree.Link("link", "file");

    EXPECT_EQ(Measure("file"), 5);
    EXPECT_EQ(Measure("link"), 0);
    EXPECT_EQ(Measure("none"), 0);
    EXPECT_EQ(fStatus, B_ENTRY_NOT_FOUND);
}

TEST_F(TreeMeasureTest, EndsWhenStopped)
{
    fTree.Write("top/file", "12345");
    StopAtOnce hooks;
    int64 bytes = -1;

    EXPECT_EQ(BEntry(fTree.Path("top").c_str()).MeasureTree(&bytes, BEntry::kAllVolumes, &hooks),
              B_CANCELED);

    EXPECT_EQ(bytes, 0);
}

TEST_F(TreeMeasureTest, EntersOtherVolumesWhenItMay)
{
    fTree.Write("top/file", "12345");
    fTree.MakeFolder("top/volume");
    OnVolume(fTree.Path("top/volume"), "size=1m", [this] {
        fTree.Write("top/volume/sub/file", "123");
        return Expect(Measure("top") == 8, "all volumes") &&
               Expect(Measure("top", BEntry::kOneVolume) == 5, "one volume") &&
               Expect(Measure("top/volume", BEntry::kOneVolume) == 3, "where it starts");
    });
}

TEST_F(TreeMeasureTest, EntersNoFileSystemOfTheKernel)
{
    fTree.Write("top/file", "12345");
    fTree.MakeFolder("top/system");
    fTree.MakeFolder("volume");
    OnVolume(fTree.Path("volume"), "size=1m", [this] {
        if (mount("/proc", fTree.Path("top/system").c_str(), nullptr, MS_BIND | MS_REC, nullptr) !=
            0) {
            return Expect(false, "binding /proc");
        }
        return Expect(Measure("top") == 5, "the system's left out");
    });
}
