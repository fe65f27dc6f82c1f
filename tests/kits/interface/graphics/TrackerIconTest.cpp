#include "interface/graphics/IconDrawings.h"
#include "interface/graphics/IconKinds.h"

#include <Bitmap.h>
#include <Entry.h>
#include <Node.h>
#include <NodeInfo.h>

#include <TempTree.h>
#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/xattr.h>

using kits::IconKind;
using kits::IconKindOfEntry;

namespace {

const BRect kMini(0, 0, 15, 15);

std::string Pixels(const QImage& image)
{
    return std::string(reinterpret_cast<const char*>(image.constBits()),
                       static_cast<size_t>(image.sizeInBytes()));
}

std::string Pixels(const BBitmap& bitmap)
{
    return std::string(static_cast<const char*>(bitmap.Bits()),
                       static_cast<size_t>(bitmap.BitsLength()));
}

} // namespace

TEST(TrackerIconTest, DrawsEveryKindDifferently)
{
    for (const int32 size : {16, 32, 64}) {
        std::set<std::string> drawings;
        for (int32 kind = 0; kind < kits::kIconKinds; ++kind) {
            const QImage icon = kits::DrawIcon(static_cast<IconKind>(kind), size);
            EXPECT_EQ(icon.width(), size);
            drawings.insert(Pixels(icon));
        }
        EXPECT_EQ(drawings.size(), static_cast<size_t>(kits::kIconKinds));
    }
}

TEST(TrackerIconTest, KnowsKindsByNameAndMode)
{
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFDIR | 0755), IconKind::kFolder);
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFLNK | 0777), IconKind::kLink);
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFREG | 0644), IconKind::kImage);
    EXPECT_EQ(IconKindOfEntry("A.PNG", S_IFREG | 0755), IconKind::kImage);
    EXPECT_EQ(IconKindOfEntry("a.txt", S_IFREG | 0644), IconKind::kText);
    EXPECT_EQ(IconKindOfEntry("a.mp3", S_IFREG | 0644), IconKind::kSound);
    EXPECT_EQ(IconKindOfEntry("a.mkv", S_IFREG | 0644), IconKind::kVideo);
    EXPECT_EQ(IconKindOfEntry("a.tar.gz", S_IFREG | 0644), IconKind::kArchive);
    EXPECT_EQ(IconKindOfEntry("a.zip", S_IFREG | 0644), IconKind::kArchive);
    EXPECT_EQ(IconKindOfEntry("tool", S_IFREG | 0755), IconKind::kProgram);
    EXPECT_EQ(IconKindOfEntry("\xff\xfe", S_IFREG | 0644), IconKind::kGeneric);
    EXPECT_EQ(IconKindOfEntry("fifo", S_IFIFO | 0644), IconKind::kGeneric);
}

TEST(TrackerIconTest, FillsOnlyBitmapsThatFit)
{
    BBitmap wrong(BRect(0, 0, 16, 15), B_CMAP8);
    BBitmap icon(kMini, B_CMAP8);
    const std::string empty = Pixels(icon);

    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &wrong, B_MINI_ICON), B_BAD_VALUE);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &icon, B_LARGE_ICON), B_BAD_VALUE);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, nullptr, B_MINI_ICON), B_BAD_VALUE);
    EXPECT_EQ(Pixels(icon), empty);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &icon, B_MINI_ICON), B_OK);
    EXPECT_NE(Pixels(icon), empty);
}

TEST(TrackerIconTest, KeepsStoredIcons)
{
    TempTree tree;
    tree.Write("a", "");
    if (setxattr(tree.Path("a").c_str(), "user.probe", "x", 1, 0) != 0) {
        GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
    }
    BNode node(tree.Path("a").c_str());
    BNodeInfo info(&node);
    BBitmap stored(kMini, B_CMAP8);
    BBitmap read(kMini, B_CMAP8);
    std::memset(stored.Bits(), 42, static_cast<size_t>(stored.BitsLength()));

    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(info.SetIcon(&stored, B_MINI_ICON), B_OK);
    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_OK);
    EXPECT_EQ(Pixels(read), Pixels(stored));
    EXPECT_EQ(info.GetTrackerIcon(&read, B_MINI_ICON), B_OK);
    EXPECT_EQ(Pixels(read), Pixels(stored));
    EXPECT_EQ(info.SetIcon(nullptr, B_MINI_ICON), B_OK);
    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_ENTRY_NOT_FOUND);
}

TEST(TrackerIconTest, IsTheSameByRefAndByName)
{
    TempTree tree;
    tree.MakeFolder("folder");
    tree.Write("a.txt", "");
    for (const auto& [name, mode] : {std::pair("folder", S_IFDIR), std::pair("a.txt", S_IFREG)}) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(tree.Path(name).c_str(), &ref), B_OK);
        BBitmap byRef(kMini, B_CMAP8);
        BBitmap byName(kMini, B_CMAP8);

        EXPECT_EQ(BNodeInfo::GetTrackerIcon(&ref, &byRef, B_MINI_ICON), B_OK);
        EXPECT_EQ(BNodeInfo::GetTrackerIcon(name, mode | 0644u, &byName, B_MINI_ICON), B_OK);
        EXPECT_EQ(Pixels(byRef), Pixels(byName)) << name;
    }
}
